#include "PxDataLogger.h"
#include "PxTest.h"
#include "RecordingTestSupport.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace RecordingTest;

namespace {
// One echo, or none with aCount 0.
void PublishEcho(SyntheticSensor& aSource, Pt32 aDistance, PtU32 aAmplitude, PtByte aSegment, PtByte aFlag,
                 PtU32 aCount = 1)
{
  PxResultEchoes& lEchoes = aSource.mSensor.EchoesProvider();
  lEchoes.StartUpdate();
  lEchoes.SetEchoCount(aCount);
  lEchoes.mEchoes[0].mDistance = aDistance;
  lEchoes.mEchoes[0].mAmplitude = aAmplitude;
  lEchoes.mEchoes[0].mSegment = aSegment;
  lEchoes.mEchoes[0].mFlag = aFlag;
  lEchoes.EndUpdate();
}
} // namespace

TEST(DataLogger, WritesEachEchoOnceStampedWithTheStateThatFollows)
{
  QTemporaryDir lDir;
  PxDataLogger::SetParameters(lDir.path() + QStringLiteral("/logs/new"));
  SyntheticSensor lSource(0, 0);
  lSource.mSensor.CreateDataLogger();
  ASSERT_NE(lSource.mSensor.DataLogger(), nullptr);
  EXPECT_EQ(lSource.mSensor.DataMask(), 18u);
  const QString lFile = lSource.mSensor.DataLogger()->FileName();

  // Scales: distance 1/1000, amplitude 1/100.
  PublishEcho(lSource, 12340, 4550, 3, 1);
  lSource.PublishTimestamp(123456);
  EXPECT_EQ(PxTest::ReadFile(lFile).count('\n'), 1) << "on the disk at once, for a reader while logging runs";
  lSource.PublishTimestamp(123466);         // no new echoes: nothing
  PublishEcho(lSource, 1, 1, 0, 0);         // replaced before its state: not written
  PublishEcho(lSource, 12345678, 0, 15, 0); // wider than its fields: written whole
  lSource.PublishTimestamp(4000000000u);
  PublishEcho(lSource, 5, 5, 5, 0, 0); // no echoes: the stale first slot is not logged
  lSource.PublishTimestamp(7);
  lSource.mSensor.StopDataLogger();
  EXPECT_EQ(lSource.mSensor.DataMask(), 0u);

  EXPECT_EQ(PxTest::ReadFile(lFile), QByteArray("   123456  3  45.50  12.34 1 \n"
                                                "4000000000 15   0.0012345.68 0 \n"));
}
