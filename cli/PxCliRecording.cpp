// The verbs that acquire: record (binary record files) and log (the text echo log). Both run the
// event loop with the sensor's acquisition on a timer at the refresh rate, as the application's
// tick does, and stop cleanly on Ctrl-C so that the files are complete.

#include "PxCli.h"
#include "PxCliVerbs.h"
#include "PxConnection.h"
#include "PxControlConnection.h"
#include "PxDataLogger.h"
#include "PxRecorder.h"
#include "PxResultProvider.h"
#include "PxSimSensor.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QTimer>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace PxCli {

namespace {
int sSignalPipe[2] = {-1, -1};

void OnSignal(int)
{
  // Only async-signal-safe work here: wake the event loop, which stops the acquisition.
  const char lByte = 1;
  [[maybe_unused]] const auto lWritten = ::write(sSignalPipe[0], &lByte, 1);
}

// Acquires until the limit, Ctrl-C (SIGINT or SIGTERM) or the loss of the link.
class Acquisition
{
public:
  enum class End { LIMIT, INTERRUPTED, LINK_LOST, FAILED };

  Acquisition(Session& aSession, double aSeconds, qint64 aFrames)
      : mSession(aSession)
      , mSeconds(aSeconds)
      , mFrames(aFrames)
  {
  }

  // aEachFrame runs after every complete frame (its state has arrived).
  End Run(const std::function<void()>& aEachFrame)
  {
    if (sSignalPipe[0] < 0 && ::socketpair(AF_UNIX, SOCK_STREAM, 0, sSignalPipe) != 0) {
      Fail(Tr("cannot watch for Ctrl-C"));
    }
    QEventLoop lLoop;
    End lEnd = End::LIMIT;
    auto lStop = [&](End aEnd) {
      lEnd = aEnd;
      lLoop.quit();
    };
    QSocketNotifier lNotifier(sSignalPipe[1], QSocketNotifier::Read);
    QObject::connect(&lNotifier, &QSocketNotifier::activated, &lLoop, [&] {
      char lByte;
      [[maybe_unused]] const auto lRead = ::read(sSignalPipe[1], &lByte, 1);
      lStop(End::INTERRUPTED);
    });
    struct sigaction lAction = {};
    lAction.sa_handler = OnSignal;
    sigemptyset(&lAction.sa_mask);
    lAction.sa_flags = SA_RESTART;
    struct sigaction lOldInt = {};
    struct sigaction lOldTerm = {};
    sigaction(SIGINT, &lAction, &lOldInt);
    sigaction(SIGTERM, &lAction, &lOldTerm);

    QObject::connect(&mSession.Link(), &PxConnection::Disconnected, &lLoop, [&] { lStop(End::LINK_LOST); });
    PxSimSensor& lSensor = mSession.Sensor();
    QObject::connect(lSensor.GetProvider(PxResultProvider::ID_STATE), &PxResultProvider::NewData, &lLoop, [&] {
      ++mFrameCount;
      aEachFrame();
      if (mFrames > 0 && mFrameCount >= mFrames) {
        lStop(End::LIMIT);
      }
    });
    mFailure = [&](End aEnd) { lStop(aEnd); };

    // The application's tick: one acquisition cycle per period of the device's refresh rate.
    const float lRate = lSensor.RefreshRateProperty().Count() > 0 ? lSensor.RefreshRateProperty().Value(0) : 50.0f;
    QTimer lTick;
    lTick.setTimerType(Qt::PreciseTimer);
    lTick.setInterval(std::max(1, static_cast<int>(1000.0f / std::max(lRate, 1.0f))));
    QObject::connect(&lTick, &QTimer::timeout, &lSensor, &PxSimSensor::Acquire);
    QTimer lLimit;
    lLimit.setSingleShot(true);
    if (mSeconds > 0) {
      lLimit.start(static_cast<int>(mSeconds * 1000.0));
      QObject::connect(&lLimit, &QTimer::timeout, &lLoop, [&] { lStop(End::LIMIT); });
    }
    mClock.start();
    lTick.start();
    QTimer::singleShot(0, &lSensor, &PxSimSensor::Acquire);
    lLoop.exec();
    lTick.stop();
    mFailure = nullptr;
    sigaction(SIGINT, &lOldInt, nullptr);
    sigaction(SIGTERM, &lOldTerm, nullptr);
    return lEnd;
  }

  // Ends the run from inside (a recorder that cannot write).
  void Abort(End aEnd)
  {
    if (mFailure) {
      mFailure(aEnd);
    }
  }

  qint64 Frames() const { return mFrameCount; }
  qint64 ElapsedMs() const { return mClock.elapsed(); }
  double Rate() const { return mClock.elapsed() > 0 ? mFrameCount * 1000.0 / mClock.elapsed() : 0.0; }

private:
  Session& mSession;
  double mSeconds;
  qint64 mFrames;
  qint64 mFrameCount = 0;
  QElapsedTimer mClock;
  std::function<void(End)> mFailure;
};

struct Limits
{
  double mSeconds = 0;
  qint64 mFrames = 0;
};

Limits ReadLimits(Parser& aParser, const QCommandLineOption& aSeconds, const QCommandLineOption* aFrames)
{
  Limits lLimits;
  const bool lHasSeconds = aParser.Qt().isSet(aSeconds);
  const bool lHasFrames = aFrames && aParser.Qt().isSet(*aFrames);
  if (lHasSeconds == lHasFrames) {
    Usage(aFrames ? Tr("give either --seconds or --frames") : Tr("give --seconds"));
  }
  if (lHasSeconds) {
    lLimits.mSeconds = aParser.Number(aSeconds, 0.001);
  } else {
    lLimits.mFrames = static_cast<qint64>(aParser.Number(*aFrames, 1));
  }
  return lLimits;
}

QString OutDirectory(Parser& aParser, const QCommandLineOption& aOut)
{
  const QString lDir = aParser.Qt().value(aOut);
  if (lDir.isEmpty()) {
    Usage(Tr("give the directory to write to with --out"));
  }
  if (!QDir().mkpath(lDir)) {
    Fail(Tr("cannot create the directory %1").arg(lDir));
  }
  return QDir(lDir).absolutePath();
}

int Finish(Acquisition::End aEnd, const QString& aWhat, const QString& aAddress)
{
  if (aEnd == Acquisition::End::LINK_LOST) {
    throw Error(EXIT_UNREACHABLE, Tr("lost the link to %1; %2 up to the loss is complete").arg(aAddress, aWhat));
  }
  return EXIT_OK;
}
} // namespace

int RunRecord(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("record"),
                 Tr("Records the device's state and echoes (and traces when asked) into record files (*.ptl) "
                    "in a directory, split at the size limit. Ctrl-C stops the recording cleanly: the files "
                    "are complete and replay every frame. Prints each file written."));
  const QCommandLineOption lSeconds(QStringLiteral("seconds"), Tr("Record for this many seconds."),
                                    QStringLiteral("n"));
  const QCommandLineOption lFrames(QStringLiteral("frames"), Tr("Record this many frames."), QStringLiteral("n"));
  const QCommandLineOption lOut(QStringLiteral("out"), Tr("The directory of the record files."), QStringLiteral("dir"));
  const QCommandLineOption lTraces(QStringLiteral("traces"), Tr("Also record traces: raw, filtered, or raw,filtered."),
                                   QStringLiteral("kinds"));
  const QCommandLineOption lSplit(
      QStringLiteral("split-mb"),
      Tr("Start a new file when one reaches this many megabytes (default %1).").arg(PxRecorder::DEFAULT_MAX_FILE_SIZE),
      QStringLiteral("mb"), QString::number(PxRecorder::DEFAULT_MAX_FILE_SIZE));
  const QCommandLineOption lQuiet(QStringLiteral("quiet"), Tr("No progress line."));
  for (const QCommandLineOption& lOption : {lSeconds, lFrames, lOut, lTraces, lSplit, lQuiet}) {
    lParser.AddOption(lOption);
  }
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 0, 0)) {
    return EXIT_OK;
  }
  const Limits lLimits = ReadLimits(lParser, lSeconds, &lFrames);
  unsigned int lFlags = 0;
  if (lParser.Qt().isSet(lTraces)) {
    for (const QString& lKind : lParser.Qt().value(lTraces).split(QLatin1Char(','))) {
      if (lKind == QLatin1String("raw")) {
        lFlags |= PxRecorder::CONTENT_RAW_TRACES;
      } else if (lKind == QLatin1String("filtered")) {
        lFlags |= PxRecorder::CONTENT_FILTERED_TRACES;
      } else {
        Usage(Tr("unknown trace kind \"%1\": expected raw, filtered or raw,filtered").arg(lKind));
      }
    }
  }
  const auto lSplitMb = static_cast<unsigned int>(lParser.Number(lSplit, 1));
  const QString lDir = OutDirectory(lParser, lOut);

  Session lSession(lParser.Address(), lParser.TimeoutMs());
  PxSimSensor& lSensor = lSession.Sensor();
  // The recorder's parameters are process-wide; these are the command line's own settings.
  PxRecorder::SetParameters(lFlags, lDir, lSplitMb, PxRecorder::MaxTime());
  lSensor.CreateRecorder();

  Acquisition lAcquisition(lSession, lLimits.mSeconds, lLimits.mFrames);
  QStringList lFiles;
  QString lFailure;
  Progress lProgress(!lParser.Qt().isSet(lQuiet));
  QObject::connect(lSensor.Recorder(), &PxRecorder::Failed, [&](const QString& aText) {
    lFailure = aText;
    lAcquisition.Abort(Acquisition::End::FAILED);
  });
  const Acquisition::End lEnd = lAcquisition.Run([&] {
    PxRecorder* lRecorder = lSensor.Recorder();
    if (!lRecorder) {
      return;
    }
    QString lFile;
    lRecorder->FileName(lFile);
    if (lFiles.isEmpty() || lFiles.last() != lFile) {
      lFiles << lFile;
    }
    lProgress.Show(Tr("recording: %1 frames, %2 Hz, %3, %4 s")
                       .arg(lAcquisition.Frames())
                       .arg(lAcquisition.Rate(), 0, 'f', 1)
                       .arg(FormatBytes(static_cast<qint64>(lRecorder->FileSize())))
                       .arg(lAcquisition.ElapsedMs() / 1000.0, 0, 'f', 1));
  });
  lProgress.Done();
  // Finishes the last file with its closing frame.
  if (lSensor.Recorder()) {
    QString lFile;
    lSensor.Recorder()->FileName(lFile);
    if (lFiles.isEmpty()) {
      lFiles << lFile;
    }
  }
  lSensor.StopRecorder();
  if (lEnd == Acquisition::End::FAILED) {
    Fail(Tr("recording stopped: %1").arg(lFailure));
  }
  if (lParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("files"), QJsonArray::fromStringList(lFiles)},
                          {QStringLiteral("frames"), lAcquisition.Frames()},
                          {QStringLiteral("milliseconds"), lAcquisition.ElapsedMs()},
                          {QStringLiteral("interrupted"), lEnd == Acquisition::End::INTERRUPTED}});
  } else {
    Print(lFiles.join(QLatin1Char('\n')));
  }
  if (!lParser.Qt().isSet(lQuiet)) {
    std::fprintf(stderr, "%s\n",
                 Tr("recorded %1 frames in %2 s%3")
                     .arg(lAcquisition.Frames())
                     .arg(lAcquisition.ElapsedMs() / 1000.0, 0, 'f', 1)
                     .arg(lEnd == Acquisition::End::INTERRUPTED ? Tr(", stopped by Ctrl-C") : QString())
                     .toUtf8()
                     .constData());
  }
  return Finish(lEnd, Tr("the recording"), lSession.Address());
}

int RunLog(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("log"),
                 Tr("Writes the device's echoes to a text echo log (*.txt) in a directory: one line per echo, "
                    "stamped with the state that follows it. Ctrl-C stops it cleanly. Prints the file."));
  const QCommandLineOption lSeconds(QStringLiteral("seconds"), Tr("Log for this many seconds."), QStringLiteral("n"));
  const QCommandLineOption lOut(QStringLiteral("out"), Tr("The directory of the log file."), QStringLiteral("dir"));
  const QCommandLineOption lQuiet(QStringLiteral("quiet"), Tr("No progress line."));
  for (const QCommandLineOption& lOption : {lSeconds, lOut, lQuiet}) {
    lParser.AddOption(lOption);
  }
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 0, 0)) {
    return EXIT_OK;
  }
  const Limits lLimits = ReadLimits(lParser, lSeconds, nullptr);
  const QString lDir = OutDirectory(lParser, lOut);
  Session lSession(lParser.Address(), lParser.TimeoutMs());
  PxSimSensor& lSensor = lSession.Sensor();
  PxDataLogger::SetParameters(lDir);
  lSensor.CreateDataLogger();
  const QString lFile = lSensor.DataLogger()->FileName();
  Acquisition lAcquisition(lSession, lLimits.mSeconds, 0);
  Progress lProgress(!lParser.Qt().isSet(lQuiet));
  const Acquisition::End lEnd = lAcquisition.Run([&] {
    lProgress.Show(Tr("logging: %1 frames, %2 Hz, %3 s")
                       .arg(lAcquisition.Frames())
                       .arg(lAcquisition.Rate(), 0, 'f', 1)
                       .arg(lAcquisition.ElapsedMs() / 1000.0, 0, 'f', 1));
  });
  lProgress.Done();
  lSensor.StopDataLogger();
  if (lParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("file"), lFile},
                          {QStringLiteral("frames"), lAcquisition.Frames()},
                          {QStringLiteral("bytes"), QFileInfo(lFile).size()}});
  } else {
    Print(lFile);
  }
  return Finish(lEnd, Tr("the log"), lSession.Address());
}

} // namespace PxCli
