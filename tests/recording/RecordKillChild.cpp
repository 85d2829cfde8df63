// Records a test sensor's synthetic frames as fast as a busy sensor publishes them, until it is
// killed. On stdout it reports, unbuffered so that a kill loses none of it: "R" once recording,
// "C n" every 32 frames completed, and "D n" whenever frame n and all before it are known to be in
// the files (their bytes are on disk, or their file was closed by a split).
#include "PxRecorder.h"
#include "RecordingTestSupport.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QSettings>
#include <QThread>

#include <cstdio>
#include <deque>
#include <unistd.h>

namespace {
void Report(const QByteArray& aLine)
{
  const QByteArray lLine = aLine + '\n';
  (void)!::write(STDOUT_FILENO, lLine.constData(), static_cast<size_t>(lLine.size()));
}
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: %s directory\n", argv[0]);
    return 2;
  }
  const QString lDirectory = QString::fromLocal8Bit(argv[1]);
  QCoreApplication::setOrganizationName(QStringLiteral("ParvexTest"));
  QCoreApplication::setApplicationName(QStringLiteral("record-kill-child"));
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, lDirectory + QStringLiteral("/settings"));

  // Raw traces too, and 1 MB files, so that kills also land around splits.
  PxRecorder::SetParameters(37, lDirectory + QStringLiteral("/rec"), 1, 60);
  RecordingTest::SyntheticSensor lSource(16, 256);
  lSource.mSensor.CreateRecorder();
  PxRecorder* lRecorder = lSource.mSensor.Recorder();
  Report("R");

  struct Written
  {
    PtU32 mFrame;
    QString mFile;
    PtU64 mEnd;
  };
  std::deque<Written> lNotYetOnDisk;
  long lDurable = -1;
  for (PtU32 n = 0;; ++n) {
    lSource.PublishFrame(n);
    QString lFile;
    lRecorder->FileName(lFile);
    lNotYetOnDisk.push_back({n, lFile, lRecorder->FileSize()});
    const long lBefore = lDurable;
    const qint64 lOnDisk = QFileInfo(lFile).size();
    while (!lNotYetOnDisk.empty() &&
           (lNotYetOnDisk.front().mFile != lFile || lNotYetOnDisk.front().mEnd <= static_cast<PtU64>(lOnDisk))) {
      lDurable = lNotYetOnDisk.front().mFrame;
      lNotYetOnDisk.pop_front();
    }
    if (lDurable != lBefore) {
      Report("D " + QByteArray::number(static_cast<qlonglong>(lDurable)));
    }
    if (n % 32 == 0) {
      Report("C " + QByteArray::number(n));
    }
    QThread::usleep(100);
  }
}
