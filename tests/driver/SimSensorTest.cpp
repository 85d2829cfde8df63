// The Parvex 16 driver against the simulated sensor, in-process and over TCP to a parvex-sim
// started by the test: what the application does with a connected sensor, from connecting to
// acquisition, and how each failure of the device or the link ends.

#include "PtDocumentReader.h"
#include "PtErrorLogForm.h"
#include "PxCommand.h"
#include "PxInProcessConnection.h"
#include "PxRecordPlayer.h"
#include "PxRecorder.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"
#include "PxSimDriver.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"
#include "PxTestHost.h"
#include "PxTransportError.h"
#include "SimProcess.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>

using namespace PxSimProtocol;

namespace {
constexpr int TIMEOUT_MS = 300;

enum class Transport { IN_PROCESS, TCP };

class SimSensorLink : public ::testing::TestWithParam<Transport>
{
protected:
  void SetUp() override
  {
    PxSimDriver::Register();
    if (GetParam() == Transport::TCP) {
      mProcess = std::make_unique<SimProcess>();
      ASSERT_NE(mProcess->Port(), 0) << "parvex-sim did not start";
      auto lTcp = std::make_unique<PxTcpConnection>(QStringLiteral("127.0.0.1"), mProcess->Port());
      lTcp->SetTimeout(TIMEOUT_MS);
      mLink = std::move(lTcp);
    } else {
      auto lInProcess = std::make_unique<PxInProcessConnection>();
      lInProcess->SetTimeout(TIMEOUT_MS);
      mLink = std::move(lInProcess);
    }
    ASSERT_TRUE(mLink->Connect());
    // As the connection dialog makes it: through the registry, by the type the device reports.
    mSensor.reset(dynamic_cast<PxSimSensor*>(PxDevice::Create(PxSimSensor::TYPE, mLink.get())));
    ASSERT_TRUE(mSensor);
    mSensor->Initialize();
  }

  template <class T>
  T& Setting(PtU16 aDeviceId)
  {
    return dynamic_cast<T&>(*mSensor->FindPropertyByDeviceId(aDeviceId));
  }
  void Apply()
  {
    mSensor->WriteConfiguration();
    mSensor->ApplyConfiguration();
  }
  // Runs one of the debug commands as the debug form does.
  void Debug(PtU32 aCommand, PtU64 aP1, PtU32 aP2, PtByte aP3, PtU64 aP4)
  {
    PxCommand* lCommand = mSensor->FindCommand(aCommand);
    lCommand->SetParameter(0, QVariant::fromValue(aP1));
    lCommand->SetParameter(1, aP2);
    lCommand->SetParameter(2, aP3);
    lCommand->SetParameter(3, QVariant::fromValue(aP4));
    mSensor->ExecuteCommand(aCommand);
  }

  std::unique_ptr<SimProcess> mProcess;
  std::unique_ptr<PxControlConnection> mLink;
  std::unique_ptr<PxSimSensor> mSensor;
};

// Counts the frames each provider announces, in order.
class FrameLog
{
public:
  explicit FrameLog(PxSimSensor& aSensor)
  {
    for (PtU32 lId : {2u, 4u, 8u, 16u}) {
      QObject::connect(aSensor.GetProvider(lId), &PxResultProvider::NewData, &mContext,
                       [this, lId] { mOrder.push_back(lId); });
    }
  }
  size_t Count(PtU32 aId) const { return static_cast<size_t>(std::count(mOrder.begin(), mOrder.end(), aId)); }
  std::vector<PtU32> mOrder;

private:
  QObject mContext;
};
} // namespace

TEST_P(SimSensorLink, ConnectingReadsIdentityAndEveryValueTheDeviceOffers)
{
  EXPECT_EQ(PxDevice::TypeToName(PxSimSensor::TYPE), QStringLiteral("Parvex 16"));
  EXPECT_EQ(mSensor->SerialNumber(), QStringLiteral("PX16-SIM-000042"));
  EXPECT_EQ(mSensor->SoftwareVersion().Value(0), 0x4000 | 212);
  EXPECT_EQ(mSensor->HardwarePartNumber().TextValue(0), QStringLiteral("74E0016-2"));
  EXPECT_EQ(mSensor->DeviceName().TextValue(0), QStringLiteral("Simulated Parvex 16"));
  EXPECT_EQ(mSensor->ChannelCount(), 16);
  EXPECT_FLOAT_EQ(mSensor->RefreshRateProperty().Value(0), 50.0f) << "the rate display's reference";
  EXPECT_FLOAT_EQ(mSensor->EchoDistanceOffsetProperty().Value(0), 0.5f);
  EXPECT_EQ(Setting<PxFloatProperty>(ID_DISTANCE_OFFSETS).Count(), 16u);
  for (const PxProperty* lProperty : mSensor->Properties()) {
    if (lProperty->DeviceId() > 1) {
      EXPECT_GT(lProperty->Count(), 0u) << "property " << lProperty->Id() << " was not read";
    }
  }
  EXPECT_TRUE(Setting<PxFloatProperty>(ID_DETECTION_THRESHOLD).Editable(0));
  EXPECT_TRUE(mSensor->DeviceName().Editable(0));
  EXPECT_FALSE(mSensor->ChannelCountProperty().Editable(0)) << "constants are not offered for editing";
  EXPECT_FALSE(mSensor->FindProperty(PxDevice::ID_SERIAL_NUMBER)->Editable(0));
  EXPECT_FALSE(mSensor->PropertyModified());
}

TEST_P(SimSensorLink, AppliedChangesAreReadBackSavedAndUnsavedOnesLostOnReset)
{
  Setting<PxIntegerProperty>(ID_SMOOTHING).SetValue(0, -5);
  Setting<PxEnumProperty>(ID_ACCUMULATION).SetValue(0, 16);
  Setting<PxFloatProperty>(ID_DISTANCE_OFFSETS).SetValue(3, -1.25f);
  Setting<PxBitFieldProperty>(ID_SEGMENT_MASK).SetValue(0, 0x0FF0);
  Setting<PxTextProperty>(ID_LOCATION).SetTextValue(0, QStringLiteral("Bay 7"));
  mSensor->DeviceName().SetTextValue(0, QStringLiteral("Line 3"));
  Setting<PxFloatProperty>(ID_REFRESH_RATE).SetValue(0, 100.0f);
  ASSERT_TRUE(mSensor->PropertyModified());
  Apply();
  EXPECT_FALSE(mSensor->PropertyModified()) << "read back after apply";

  // A change written but not applied is not saved: the restart brings back the saved values.
  Setting<PxIntegerProperty>(ID_LIGHT_POWER).SetValue(0, 20);
  mSensor->WriteConfiguration();
  mSensor->Reset();
  EXPECT_TRUE(mLink->Connected());
  EXPECT_EQ(Setting<PxIntegerProperty>(ID_LIGHT_POWER).Value(0), 100);

  // What the device holds after the restart, read into the model again.
  EXPECT_EQ(Setting<PxIntegerProperty>(ID_SMOOTHING).Value(0), -5) << "narrow signed values keep their sign";
  EXPECT_EQ(Setting<PxEnumProperty>(ID_ACCUMULATION).Value(0), 16u);
  EXPECT_FLOAT_EQ(Setting<PxFloatProperty>(ID_DISTANCE_OFFSETS).Value(3), -1.25f);
  EXPECT_FLOAT_EQ(Setting<PxFloatProperty>(ID_DISTANCE_OFFSETS).Value(2), 0.0f);
  EXPECT_EQ(Setting<PxBitFieldProperty>(ID_SEGMENT_MASK).Value(0), 0x0FF0u);
  EXPECT_EQ(Setting<PxTextProperty>(ID_LOCATION).TextValue(0), QStringLiteral("Bay 7"));
  EXPECT_EQ(mSensor->DeviceName().TextValue(0), QStringLiteral("Line 3"));
  EXPECT_FLOAT_EQ(mSensor->RefreshRateProperty().Value(0), 100.0f);
  EXPECT_FALSE(mSensor->PropertyModified());
}

TEST_P(SimSensorLink, LoadedFilesReachTheDevice)
{
  struct Case
  {
    const char* mWhat;
    bool mCalibration;
    float mThresholdAfterLoad; // a calibration file carries no settings
  } const lCases[] = {{"configuration", false, 20.0f}, {"calibration", true, 5.0f}};
  QTemporaryDir lDir;
  auto& lOffsets = Setting<PxFloatProperty>(ID_DISTANCE_OFFSETS);
  auto& lThreshold = Setting<PxFloatProperty>(ID_DETECTION_THRESHOLD);
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    const QString lFile = lDir.filePath(QString::fromLatin1(c.mWhat));
    lOffsets.SetValue(5, 2.0f);
    lThreshold.SetValue(0, 20.0f);
    Apply();
    if (c.mCalibration) {
      mSensor->SaveCalibration(lFile, QStringLiteral("bench"));
    } else {
      mSensor->SaveConfiguration(lFile, QStringLiteral("bench"));
    }
    lOffsets.SetValue(5, 0.0f);
    lThreshold.SetValue(0, 5.0f);
    Apply();

    PtDocumentReader lReader(lFile);
    PxDevice::FileHeader lHeader;
    mSensor->PreLoadFile(lReader, lHeader);
    EXPECT_EQ(lHeader.mSerialNumber, QStringLiteral("PX16-SIM-000042"));
    if (c.mCalibration) {
      mSensor->LoadCalibration(lReader);
    } else {
      mSensor->LoadConfiguration(lReader);
    }
    mSensor->ReadConfiguration();
    EXPECT_FLOAT_EQ(lOffsets.Value(5), 2.0f);
    EXPECT_FLOAT_EQ(lThreshold.Value(0), c.mThresholdAfterLoad);
    EXPECT_FALSE(mSensor->PropertyModified());
  }
}

TEST_P(SimSensorLink, AcquisitionFetchesExactlyTheSubscribedGroupsStateLast)
{
  const std::vector<PtU32> lMasks[] = {{2}, {4, 8}, {4, 8, 16, 2}};
  for (const std::vector<PtU32>& lGroups : lMasks) {
    PtU32 lMask = 0;
    for (PtU32 lGroup : lGroups) {
      lMask |= lGroup;
    }
    SCOPED_TRACE(lMask);
    PxResultSubscription lView(lMask);
    mSensor->Subscribe(&lView);
    FrameLog lFrames(*mSensor);
    mSensor->Acquire();
    mSensor->Acquire();
    std::vector<PtU32> lExpected = lGroups;
    lExpected.insert(lExpected.end(), lGroups.begin(), lGroups.end());
    EXPECT_EQ(lFrames.mOrder, lExpected);
    mSensor->Unsubscribe(&lView);
  }
}

TEST_P(SimSensorLink, TwoHundredFramesArriveAtTheConfiguredRate)
{
  Setting<PxFloatProperty>(ID_REFRESH_RATE).SetValue(0, 100.0f);
  Apply();
  PxResultSubscription lView(2 | 4 | 8 | 16);
  mSensor->Subscribe(&lView);
  FrameLog lFrames(*mSensor);
  for (int i = 0; i < 200; ++i) {
    mSensor->Acquire();
  }
  for (PtU32 lId : {2u, 4u, 8u, 16u}) {
    EXPECT_EQ(lFrames.Count(lId), 200u) << "provider " << lId;
  }
  auto* lState = static_cast<PxResultState*>(mSensor->GetProvider(2));
  EXPECT_NEAR(lState->RateResult()->Value(0), 100.0, 10.0);
  EXPECT_NE(lState->RateResult()->FormattedColorStyle(0), Qt::red) << "measured against the configured rate";
  ASSERT_TRUE(lState->TemperatureResult());
  EXPECT_EQ(lState->TemperatureResult()->Count(), 2u);
  EXPECT_GT(lState->TemperatureResult()->Value(0), 0.0) << "degrees, not raw units";
  EXPECT_LT(lState->TemperatureResult()->Value(0), 85.0) << "degrees, not raw units";
  EXPECT_GT(mSensor->EchoesProvider().EchoCount(), 16u) << "the wall in every segment, and the targets";
  EXPECT_EQ(mSensor->TraceProvider().TraceLength(), 512u);
  auto* lFiltered = static_cast<PxResultTrace*>(mSensor->GetProvider(8));
  EXPECT_TRUE(lFiltered->ThirtyTwoBit());
  EXPECT_EQ(lFiltered->Traces().size(), 16u);

  // Second debug command (the scene's flags): it answers with the frame counter of the last frame.
  Debug(PxSensor::COMMAND_DEBUG_2, 0, SCENE_FREEZE_MOTION | SCENE_NO_NOISE, 0, 0);
  EXPECT_EQ(mSensor->LastDebugResult(), 199u) << "the frame counter of the last of frames 0 to 199";
}

TEST_P(SimSensorLink, EveryInjectedFaultEndsAsDocumented)
{
  const unsigned int lTransport =
      GetParam() == Transport::TCP ? PxTransportError::TRANSPORT_TCP : PxTransportError::TRANSPORT_IN_PROCESS;
  struct Case
  {
    const char* mWhat;
    Fault mFault;
    PtU32 mParameter;
    unsigned int mCode; // logged: the answer code, 1000, or a transport failure
    bool mKeepsLink;
  } const lCases[] = {
      {"error answer", FAULT_ERROR_ANSWER, 42, 42, true},
      {"late answer", FAULT_LATE_ANSWER, 4 * TIMEOUT_MS, lTransport << 16 | PxTransportError::REASON_TIMEOUT, false},
      {"dropped link", FAULT_DROP_LINK, 0, lTransport << 16 | PxTransportError::REASON_LINK_LOST, false},
      {"corrupt header", FAULT_CORRUPT_HEADER, 0, PxProtocolReader::E_ANSWER_HEADER, false},
  };
  PxResultSubscription lView(2);
  mSensor->Subscribe(&lView);
  FrameLog lFrames(*mSensor);
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    Debug(PxSensor::COMMAND_DEBUG_1, REQ_STATE, c.mParameter, c.mFault, 1);
    EXPECT_EQ(mSensor->FindCommand(PxSensor::COMMAND_DEBUG_1)->State(), PxSensor::COMMAND_DONE);
    EXPECT_EQ(mSensor->LastDebugResult(), c.mFault);
    PtErrorLogForm::Clear();
    QSignalSpy lLost(mLink.get(), &PxConnection::Disconnected);
    lFrames.mOrder.clear();
    QElapsedTimer lClock;
    lClock.start();
    EXPECT_NO_THROW(mSensor->Acquire()) << "a Tick slot lets nothing escape";
    EXPECT_LT(lClock.elapsed(), TIMEOUT_MS + 1500) << "a dead link ends within the time-out";
    EXPECT_TRUE(lFrames.mOrder.empty()) << "no frame announced from a failed answer";
    ASSERT_EQ(PtErrorLogForm::Entries().size(), 1);
    EXPECT_EQ(PtErrorLogForm::Entries().front().mCode, c.mCode);
    EXPECT_EQ(mLink->Connected(), c.mKeepsLink);
    QCoreApplication::processEvents(); // a late signal from the socket must not make it twice
    mSensor->Acquire();                // nor the next tick on a link that is down
    EXPECT_EQ(lLost.count(), c.mKeepsLink ? 0 : 1);
    EXPECT_EQ(PtErrorLogForm::Entries().size(), 1) << "the next tick logged nothing new";
    if (!c.mKeepsLink) {
      ASSERT_TRUE(mLink->Connect());
      mSensor->Acquire();
    }
    EXPECT_EQ(lFrames.Count(2), 1u) << "the fault hit once";
  }
}

INSTANTIATE_TEST_SUITE_P(Transports, SimSensorLink, ::testing::Values(Transport::IN_PROCESS, Transport::TCP),
                         [](const ::testing::TestParamInfo<Transport>& aInfo) {
                           return aInfo.param == Transport::TCP ? std::string("Tcp") : std::string("InProcess");
                         });

TEST(SimSensor, WithoutALinkNothingIsSentAndNothingAborts)
{
  PxInProcessConnection lDown;
  for (PxConnection* lConnection : {static_cast<PxConnection*>(nullptr), static_cast<PxConnection*>(&lDown)}) {
    PxSimSensor lSensor(lConnection);
    lSensor.Initialize();
    PxResultSubscription lView(2 | 4 | 8 | 16);
    lSensor.Subscribe(&lView);
    EXPECT_NO_THROW(lSensor.Acquire());
    EXPECT_NO_THROW(lSensor.ReadConfiguration()) << "an offline or replayed sensor keeps its values";
    EXPECT_THROW(lSensor.Reset(), PxConnection::Exception);
    lSensor.Unsubscribe(&lView);
  }
}

TEST(SimSensor, ASensorMadeForTheApplicationAcquiresOnTheHostsTick)
{
  PxTest::Host lHost;
  PxSimDriver::Register(&lHost);
  PxInProcessConnection lLink;
  ASSERT_TRUE(lLink.Connect());
  std::unique_ptr<PxDevice> lSensor(PxDevice::Create(PxSimSensor::TYPE, &lLink));
  PxSimDriver::Register(); // the other suites make sensors without a host
  auto& lSimSensor = dynamic_cast<PxSimSensor&>(*lSensor);
  lSimSensor.Initialize();
  PxResultSubscription lView(2);
  lSimSensor.Subscribe(&lView);
  QSignalSpy lFrames(lSimSensor.GetProvider(2), &PxResultProvider::NewData);
  Q_EMIT lHost.Tick();
  Q_EMIT lHost.Tick();
  EXPECT_EQ(lFrames.count(), 2);
  lSimSensor.Unsubscribe(&lView);
}
