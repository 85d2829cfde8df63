#include "PtException.h"
#include "PxTestSensor.h"
#include "PxTestTransport.h"

#include <gtest/gtest.h>
#include <memory>

namespace
{

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

} // namespace
