#include "PtException.h"
#include "PtModalScript.h"
#include "PxDataLogger.h"
#include "PxRecorder.h"
#include "PxTest.h"
#include "RecordingTestSupport.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/resource.h>

using namespace RecordingTest;

namespace {
// Tests run as root, so permissions stop nothing: a directory below a regular file cannot exist.
QString BelowAFile(const QTemporaryDir& aDir)
{
  PxTest::WriteFile(aDir.path() + QStringLiteral("/file"), {});
  return aDir.path() + QStringLiteral("/file/rec");
}
} // namespace

TEST(RecordingFailure, AnUncreatableDirectoryStopsNothingThatRuns)
{
  QTemporaryDir lDir;
  const QString lBad = BelowAFile(lDir);
  SyntheticSensor lSource(0, 0);
  PxRecorder::SetParameters(33, lBad, 500, 60);
  PxDataLogger::SetParameters(lBad);
  EXPECT_EQ(PxTest::ErrorText([&] { lSource.mSensor.CreateRecorder(); }), "Failed to create recording directory.");
  EXPECT_EQ(PxTest::ErrorText([&] { lSource.mSensor.CreateDataLogger(); }), "Failed to create logging directory.");
  EXPECT_EQ(lSource.mSensor.Recorder(), nullptr);
  EXPECT_EQ(lSource.mSensor.DataLogger(), nullptr);
  EXPECT_EQ(lSource.mSensor.DataMask(), 0u);
}

namespace {
// In a child process whose files may not grow beyond aLimit bytes (a full disk, as the writer sees
// it): records until writing fails, then checks what the user saw and what replays. Exits 0 when
// all is as it should be, else 1 with the reason on stderr.
[[noreturn]] void RecordOntoAFullDisk(const QString& aDirectory, rlim_t aLimit)
{
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit lLimit{aLimit, aLimit};
  setrlimit(RLIMIT_FSIZE, &lLimit);
  auto lFail = [](const QString& aWhy) {
    std::fprintf(stderr, "%s\n", aWhy.toUtf8().constData());
    std::_Exit(1);
  };

  PxRecorder::SetParameters(37, aDirectory, 4, 60);
  SyntheticSensor lSource(16, 512);
  PtModalScript lScript;
  lSource.mSensor.CreateRecorder();
  PxRecorder* lRecorder = lSource.mSensor.Recorder();
  bool lFailed = false;
  QObject::connect(lRecorder, &PxRecorder::Failed, [&] { lFailed = true; });
  long lWhole = 0; // frames whose last byte lies within the limit
  PtU32 n = 0;
  for (; n < 1000 && !lFailed; ++n) {
    lSource.PublishFrame(n);
    if (!lFailed && lRecorder->FileSize() <= aLimit) {
      lWhole = static_cast<long>(n) + 1;
    }
  }
  if (!lFailed) {
    lFail(QStringLiteral("writing never failed"));
  }
  lSource.PublishFrame(n); // the application goes on
  QCoreApplication::processEvents();
  if (lSource.mSensor.Recorder() != nullptr) {
    lFail(QStringLiteral("the sensor kept the failed recorder"));
  }
  if (lScript.Interactions().size() != 1 || lScript.Interactions()[0].mKind != PtModalScript::K_ERROR ||
      !lScript.Interactions()[0].mText.startsWith(QStringLiteral("Recording stopped"))) {
    lFail(QStringLiteral("the user was not told"));
  }
  QString lWhy;
  const long lReplayed = ReplayAll(RecordFiles(aDirectory), &lWhy);
  if (lReplayed != lWhole) {
    lFail(QStringLiteral("%1 frames replayed, %2 were whole on disk %3").arg(lReplayed).arg(lWhole).arg(lWhy));
  }
  std::fprintf(stderr, "%ld frames kept\n", lReplayed);
  std::_Exit(0);
}
} // namespace

TEST(RecordingFailure, AFullDiskStopsTheRecordingAndKeepsItsFrames)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  // Beyond the writer's first buffer, so that some frames are on disk when the disk fills.
  EXPECT_EXIT(RecordOntoAFullDisk(lDir.path(), 1536 * 1024), ::testing::ExitedWithCode(0), "frames kept");
}
