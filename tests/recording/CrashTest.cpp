#include "PxRecordPlayer.h"
#include "PxSimDriver.h"
#include "PxTest.h"
#include "RecordingTestSupport.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <random>

using namespace RecordingTest;

namespace {
// The largest n of the child's lines "<aTag> n"; -1 when there is none.
long LastReported(const QByteArray& aOutput, char aTag)
{
  long lLast = -1;
  for (const QByteArray& lLine : aOutput.split('\n')) {
    if (lLine.size() > 2 && lLine[0] == aTag) {
      lLast = std::max(lLast, lLine.mid(2).toLong());
    }
  }
  return lLast;
}
} // namespace

// A recording killed at any moment (a crash, a power cut of the process) leaves files that open in
// the player and replay, whole and in order, every frame that had reached them: synthetic frames
// from the test sensor, and the simulated sensor through the reference driver as the application
// records it.
TEST(RecordingCrash, KilledRecordingsReplayEveryCompletedFrame)
{
  RegisterTestPlayer();
  PxSimDriver::Register();
  std::mt19937 lRandom(20150302);
  for (const bool lSim : {false, true}) {
    for (int lRun = 0; lRun < 40; ++lRun) {
      SCOPED_TRACE(std::string(lSim ? "simulated sensor" : "synthetic") + ", run " + std::to_string(lRun));
      QTemporaryDir lDir;
      QProcess lChild;
      lChild.setProcessChannelMode(QProcess::ForwardedErrorChannel);
      lChild.start(QStringLiteral(RECORD_KILL_CHILD),
                   lSim ? QStringList{lDir.path(), QStringLiteral("sim")} : QStringList{lDir.path()});
      ASSERT_TRUE(lChild.waitForStarted(PxTest::WAIT_MS));
      QByteArray lOutput;
      while (!lOutput.contains("R\n")) {
        ASSERT_TRUE(lChild.waitForReadyRead(PxTest::WAIT_MS)) << "the child never started recording";
        lOutput += lChild.readAllStandardOutput();
      }
      const int lDelay = std::uniform_int_distribution<int>(0, 300)(lRandom);
      QElapsedTimer lTimer;
      lTimer.start();
      while (lTimer.elapsed() < lDelay) {
        lChild.waitForReadyRead(static_cast<int>(std::max<qint64>(1, lDelay - lTimer.elapsed())));
        lOutput += lChild.readAllStandardOutput();
      }
      lChild.kill(); // SIGKILL
      ASSERT_TRUE(lChild.waitForFinished(PxTest::WAIT_MS));
      lOutput += lChild.readAllStandardOutput();
      ASSERT_EQ(lChild.exitStatus(), QProcess::CrashExit) << "the child stopped before it was killed";
      const long lOnDisk = LastReported(lOutput, 'D');

      long lNext = 0;
      const QStringList lFiles = RecordFiles(lDir.path() + QStringLiteral("/rec"));
      ASSERT_FALSE(lFiles.isEmpty());
      for (int i = 0; i < lFiles.size(); ++i) {
        try {
          std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFiles[i]));
          ASSERT_NE(lPlayer, nullptr);
          lPlayer->Start();
          unsigned int lPrevious = 0; // times count from each file's first frame
          for (long lInFile = 0; lPlayer->ReadNext(); ++lInFile, ++lNext) {
            QString lWhy;
            if (lSim) {
              EXPECT_TRUE(lInFile == 0 || lPlayer->RelativeTimestamp() > lPrevious) << "frame " << lNext;
              lPrevious = lPlayer->RelativeTimestamp();
            } else {
              ASSERT_EQ(FrameShown(*lPlayer->Sensor(), true, &lWhy), lNext) << lWhy.toStdString();
            }
          }
        } catch (const std::exception& e) {
          // Only the file being written when the kill came may hold nothing yet (not even a whole
          // header); then none of the completed frames can be in it.
          ASSERT_EQ(i, lFiles.size() - 1) << e.what();
          ASSERT_GT(lNext, lOnDisk) << e.what();
        }
      }
      EXPECT_GT(lNext, lOnDisk) << "frames completed before the kill did not replay";
    }
  }
}
