// Records a test sensor's synthetic frames as fast as a busy sensor publishes them, until it is
// killed. On stdout it reports, unbuffered so that a kill loses none of it: "R" once recording and
// "D n" as soon as the recorder has completed frame n.
#include "PxRecorder.h"
#include "PxResultSubscription.h"
#include "PxTestSimSensor.h"
#include "RecordingTestSupport.h"

#include <QCoreApplication>
#include <QSettings>
#include <QThread>

#include <cstdio>
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
    std::fprintf(stderr, "usage: %s directory [sim]\n", argv[0]);
    return 2;
  }
  const QString lDirectory = QString::fromLocal8Bit(argv[1]);
  QCoreApplication::setOrganizationName(QStringLiteral("ParvexTest"));
  QCoreApplication::setApplicationName(QStringLiteral("record-kill-child"));
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, lDirectory + QStringLiteral("/settings"));

  // Raw traces too, and 1 MB files, so that kills also land around splits.
  PxRecorder::SetParameters(37, lDirectory + QStringLiteral("/rec"), 1, 60);
  // Every frame is reported once the recorder has finished it: from then on it must survive a kill.
  if (argc > 2 && qstrcmp(argv[2], "sim") == 0) {
    // The simulated sensor through the reference driver, as the application records it.
    PxTest::SimSensor lSim;
    PxResultSubscription lView(2 | 4 | 16);
    lSim.mSensor->Subscribe(&lView);
    lSim.mSensor->CreateRecorder();
    Report("R");
    for (PtU32 n = 0;; ++n) {
      lSim.mSensor->Acquire();
      Report("D " + QByteArray::number(n));
    }
  }
  RecordingTest::SyntheticSensor lSource(16, 256);
  lSource.mSensor.CreateRecorder();
  Report("R");
  for (PtU32 n = 0;; ++n) {
    lSource.PublishFrame(n);
    Report("D " + QByteArray::number(n));
    QThread::usleep(100);
  }
}
