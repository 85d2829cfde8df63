// The Parvex 16 driver against the simulated sensor, in-process and over TCP to a parvex-sim
// started by the test: what the application does with a connected sensor, from connecting to
// acquisition, and how each failure of the device or the link ends.

#include "PtErrorLogForm.h"
#include "PxCommand.h"
#include "PxInProcessConnection.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"
#include "PxSimDriver.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"
#include "PxTransportError.h"
#include "SimProcess.h"

#include <QElapsedTimer>
#include <QSignalSpy>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>

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

TEST_P(SimSensorLink, AcquisitionFetchesExactlyTheSubscribedGroupsStateLast)
{
  const std::vector<PtU32> lMasks[] = {{2}, {4, 8}, {4, 8, 16, 2}};
  for (const std::vector<PtU32>& lGroups : lMasks) {
    const PtU32 lMask = std::accumulate(lGroups.begin(), lGroups.end(), 0u, std::bit_or<>());
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
