#include "PtException.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"
#include "PxTestSensor.h"
#include "PxTestTransport.h"

#include <QSignalSpy>
#include <gtest/gtest.h>
#include <memory>

namespace
{
TEST(Sensor, EverySensorPropertyIsRegisteredUnderItsIds)
{
  PxTestSensor lSensor;
  struct {
    PtU32 mId;
    PtU16 mDeviceId;
    PtU32 mUnitSize;
  } lCases[] = {{4117, 432, 4},  {4099, 4100, 4},   {4098, 4101, 4},   {4100, 4102, 4},   {4105, 4107, 4},
                {4102, 4105, 4}, {2097152, 0, 4},   {2097153, 0, 4},   {2097155, 0, 4}};
  for (const auto& c : lCases) {
    SCOPED_TRACE(c.mId);
    PxProperty* lProperty = lSensor.FindProperty(c.mId);
    ASSERT_NE(lProperty, nullptr);
    EXPECT_EQ(lProperty->DeviceId(), c.mDeviceId);
    EXPECT_EQ(lProperty->UnitSize(), c.mUnitSize);
    if (c.mDeviceId != 0) {
      EXPECT_EQ(lSensor.FindPropertyByDeviceId(c.mDeviceId), lProperty) << "answers reach it by device id";
    }
  }
  EXPECT_EQ(lSensor.RefreshRateProperty().FormattedValue(0), QStringLiteral("Refresh Rate: 0 Hz"));
  EXPECT_EQ(lSensor.ChannelCountProperty().MaxValue(), 16);
  EXPECT_FLOAT_EQ(lSensor.FieldOfViewProperty().MinValue(), -1.0f);
  EXPECT_FLOAT_EQ(lSensor.FieldOfViewProperty().MaxValue(), 360.0f);
  EXPECT_NE(lSensor.FindCommand(PxSensor::COMMAND_DEBUG_1), nullptr);
  EXPECT_EQ(lSensor.FindCommand(PxSensor::COMMAND_DEBUG_2)->ParameterCount(), 4u);
}

TEST(Sensor, DataMaskFollowsTheSubscriptions)
{
  PxTestSensor lSensor;
  PxResultSubscription lState(2);
  auto lEchoes = std::make_unique<PxResultSubscription>(16);
  lSensor.Subscribe(&lState);
  lSensor.Subscribe(lEchoes.get());
  EXPECT_EQ(lSensor.DataMask(), 18u);
  lState.SetMask(4); // ignored while subscribed: the mask was computed from the old one
  EXPECT_EQ(lState.Mask(), 2u);
  lSensor.Unsubscribe(&lState);
  EXPECT_EQ(lSensor.DataMask(), 16u);
  EXPECT_FALSE(lState.Subscribed());
  lSensor.Unsubscribe(&lState);
  EXPECT_EQ(lSensor.DataMask(), 16u);
  lEchoes.reset(); // a view closed without unsubscribing
  EXPECT_EQ(lSensor.DataMask(), 0u);
  EXPECT_TRUE(lSensor.Subscriptions().empty());

  // A sensor destroyed first leaves its subscribers free, not dangling.
  PxResultSubscription lLate(2);
  {
    PxTestSensor lGone;
    lGone.Subscribe(&lLate);
  }
  EXPECT_FALSE(lLate.Subscribed());
}

TEST(Sensor, ProvidersAreMadeOnFirstRequest)
{
  PxTestSensor lSensor;
  PxResultProvider* lState = lSensor.GetProvider(PxResultProvider::ID_STATE);
  ASSERT_NE(lState, nullptr);
  EXPECT_EQ(lSensor.GetProvider(PxResultProvider::ID_STATE), lState);
  EXPECT_EQ(lSensor.GetProvider(32), nullptr);
  EXPECT_EQ(lSensor.GetProvider(PxResultProvider::ID_ECHOES), &lSensor.EchoesProvider());
  EXPECT_EQ(lSensor.GetProvider(PxResultProvider::ID_TRACES), &lSensor.TraceProvider());
  // The state provider's results are in the shared maps, for files and for answers.
  auto* lTimestamp = static_cast<PxResultState*>(lState)->TimestampResult();
  const PtU32 lTimestampId = lTimestamp->Id();
  EXPECT_EQ(lSensor.FindResult(lTimestampId), lTimestamp);
  EXPECT_EQ(lSensor.DeviceResults().at(lTimestamp->DeviceId()), lTimestamp);

  // Made again, the old provider's results leave the maps with it.
  PxResultProvider* lAgain = lSensor.CreateProvider(PxResultProvider::ID_STATE);
  lSensor.AddProvider(lAgain);
  EXPECT_EQ(lSensor.GetProvider(PxResultProvider::ID_STATE), lAgain);
  EXPECT_EQ(lSensor.FindResult(lTimestampId), static_cast<PxResultState*>(lAgain)->TimestampResult());
}

TEST(Sensor, InitializeReadsTheDeviceOnlyWhenLive)
{
  PxTestSensor lOffline;
  lOffline.Initialize();
  EXPECT_TRUE(lOffline.mCalls.isEmpty());

  PxTestTransport lLink;
  PxTestSensor lSensor(&lLink);
  lSensor.Initialize();
  EXPECT_EQ(lSensor.mCalls,
            (QStringList{"ReadIdentity", "ReadConfiguration", "WriteConfiguration", "ApplyConfiguration"}));
  ASSERT_NE(lSensor.StateProvider(), nullptr) << "the rate colour needs the state provider";
}

TEST(Sensor, DebugCommandsRunInTheDriverWithTheirParameters)
{
  PxTestSensor lSensor;
  PxCommand* lCommand = lSensor.FindCommand(PxSensor::COMMAND_DEBUG_2);
  lCommand->SetParameter(0, QVariant::fromValue<qulonglong>(0x100000000ull));
  lCommand->SetParameter(1, 64u);
  lCommand->SetParameter(2, 3u);
  lCommand->SetParameter(3, QVariant::fromValue<qulonglong>(0xFFFFFFFFFFFFFFFFull));
  lSensor.ExecuteCommand(PxSensor::COMMAND_DEBUG_2);
  EXPECT_EQ(lSensor.mCalls, (QStringList{"Debug2 4294967296 64 3 18446744073709551615"}));
  EXPECT_EQ(lSensor.mCommandStateDuringRun, PxSensor::COMMAND_BUSY);
  EXPECT_EQ(lCommand->State(), PxSensor::COMMAND_DONE);
  EXPECT_THROW(lSensor.ExecuteCommand(77), std::invalid_argument);
}

TEST(SensorDeathTest, NullArgumentsStopAtTheirLines)
{
  PxTestSensor lSensor;
  EXPECT_DEATH(lSensor.AddProvider(nullptr), "aProvider, file PxSensor, line 191");
  EXPECT_DEATH(lSensor.AddResult(nullptr), "aResult, file PxSensor, line 213");
  EXPECT_DEATH(lSensor.Subscribe(nullptr), "aSubscription, file PxSensor, line 390");
}
} // namespace
