// The verbs that read record files: inspect, extract and export. The frames are replayed through
// PxRecordPlayer into a sensor without a connection, as the application's record player does, one
// frame at a time, so any file size takes the same memory.

#include "PtDocumentReader.h"
#include "PxCli.h"
#include "PxCliVerbs.h"
#include "PxRecordPlayer.h"
#include "PxResultEchoes.h"
#include "PxResultProvider.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxSimSensor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTextStream>

#include <map>

namespace PxCli {

namespace {
// A player for a Parvex 16 record file. Another file is refused with a message saying what it is.
std::unique_ptr<PxRecordPlayer> OpenRecord(const QString& aFile)
{
  if (!QFileInfo(aFile).isFile()) {
    Fail(Tr("no file %1").arg(aFile));
  }
  {
    PtDocumentReader lReader(aFile);
    if (lReader.DocumentType() != PxSimSensor::RECORD_DOCUMENT) {
      Fail(Tr("%1 is not a Parvex 16 record file").arg(aFile));
    }
  }
  // Through the record-player registry, as the application opens files: the driver registered it.
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(aFile));
  if (!lPlayer) {
    Fail(Tr("%1 is not a Parvex 16 record file").arg(aFile));
  }
  lPlayer->Start();
  return lPlayer;
}

// The first and last timestamps of a record, in the device's milliseconds.
std::pair<PtU32, PtU32> TimeSpan(PxRecordPlayer& aPlayer)
{
  if (aPlayer.RecordSize() == 0 || !aPlayer.MoveTo(1)) {
    return {0, 0};
  }
  const PtU32 lFirst = aPlayer.RelativeTimestamp();
  aPlayer.MoveTo(aPlayer.RecordSize());
  return {lFirst, aPlayer.RelativeTimestamp()};
}

// The files of one recording: the recorder names each "<device name>-<start time>.ptl" in the same
// directory, and each one's frames continue where the previous one's end.
QStringList RecordingFiles(const QString& aFile, const QString& aSerialNumber)
{
  static const QRegularExpression sName(
      QStringLiteral("^(.*)-\\d{4}-\\d\\d-\\d\\d-\\d\\d-\\d\\d-\\d\\d-\\d{3}\\.ptl$"));
  const QFileInfo lInfo(aFile);
  const QRegularExpressionMatch lMatch = sName.match(lInfo.fileName());
  if (!lMatch.hasMatch()) {
    return {lInfo.absoluteFilePath()};
  }
  QStringList lCandidates = lInfo.absoluteDir().entryList(
      {QRegularExpression::escape(lMatch.captured(1)).replace(QStringLiteral("\\"), QString()) +
       QStringLiteral("-*.ptl")},
      QDir::Files, QDir::Name);
  struct Part
  {
    QString mFile;
    PtU32 mFirst;
    PtU32 mLast;
  };
  std::vector<Part> lParts;
  size_t lSelf = 0;
  for (const QString& lName : lCandidates) {
    const QString lPath = lInfo.absoluteDir().absoluteFilePath(lName);
    if (!sName.match(lName).hasMatch() || sName.match(lName).captured(1) != lMatch.captured(1)) {
      continue;
    }
    try {
      std::unique_ptr<PxRecordPlayer> lPlayer = OpenRecord(lPath);
      if (lPlayer->Sensor()->SerialNumber() != aSerialNumber) {
        continue;
      }
      const auto [lFirst, lLast] = TimeSpan(*lPlayer);
      if (lPath == lInfo.absoluteFilePath()) {
        lSelf = lParts.size();
      }
      lParts.push_back({lPath, lFirst, lLast});
    } catch (const std::exception&) {
      // Not a record of ours, or damaged beyond its header: not part of this recording.
    }
  }
  // A new file starts with the frame after the last one of the previous file: within a second.
  auto lFollows = [](const Part& aBefore, const Part& aAfter) {
    return aAfter.mFirst >= aBefore.mLast && aAfter.mFirst - aBefore.mLast <= 1000;
  };
  size_t lBegin = lSelf;
  while (lBegin > 0 && lFollows(lParts[lBegin - 1], lParts[lBegin])) {
    --lBegin;
  }
  size_t lEnd = lSelf + 1;
  while (lEnd < lParts.size() && lFollows(lParts[lEnd - 1], lParts[lEnd])) {
    ++lEnd;
  }
  QStringList lFiles;
  for (size_t i = lBegin; i < lEnd; ++i) {
    lFiles << lParts[i].mFile;
  }
  return lFiles;
}

QString GroupName(PtU32 aId)
{
  switch (aId) {
  case PxResultProvider::ID_STATE:
    return QStringLiteral("state");
  case PxResultProvider::ID_TRACES:
    return QStringLiteral("raw-traces");
  case PxResultProvider::ID_TRACES_32:
    return QStringLiteral("filtered-traces");
  case PxResultProvider::ID_ECHOES:
    return QStringLiteral("echoes");
  default:
    return QString::number(aId);
  }
}

// Counts the frames in which each group was published.
class GroupCounter
{
public:
  explicit GroupCounter(PxSensor& aSensor)
  {
    for (PtU32 lId : {PxResultProvider::ID_STATE, PxResultProvider::ID_TRACES, PxResultProvider::ID_TRACES_32,
                      PxResultProvider::ID_ECHOES}) {
      if (PxResultProvider* lProvider = aSensor.GetProvider(lId)) {
        QObject::connect(lProvider, &PxResultProvider::NewData, &mContext, [this, lId] { ++mCounts[lId]; });
      }
    }
  }
  std::map<PtU32, qint64> mCounts;

private:
  QObject mContext;
};
} // namespace

int RunInspect(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("inspect"),
                 Tr("Prints what a record file holds: the recorded device and its properties, the number of "
                    "frames, the duration, the groups present, and the files of the same recording."));
  lParser.AddPositional(QStringLiteral("file"), Tr("The record file."), QStringLiteral("FILE.ptl"));
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 1, 1)) {
    return EXIT_OK;
  }
  const QString lFile = lParser.Positional().front();
  std::unique_ptr<PxRecordPlayer> lPlayer = OpenRecord(lFile);
  PxSensor& lSensor = *lPlayer->Sensor();
  const auto& lSimSensor = static_cast<const PxSimSensor&>(lSensor);
  const unsigned long lFrames = lPlayer->RecordSize();
  QJsonArray lProperties;
  for (const PxProperty* lProperty : SortedProperties(lSimSensor)) {
    lProperties.append(PropertyJson(*lProperty));
  }
  // Every frame once, to see which groups it holds.
  GroupCounter lGroups(lSensor);
  PtU32 lFirst = 0;
  PtU32 lLast = 0;
  for (unsigned long i = 0; i < lFrames && lPlayer->ReadNext(); ++i) {
    lLast = lPlayer->RelativeTimestamp();
    if (i == 0) {
      lFirst = lLast;
    }
  }
  QJsonObject lGroupCounts;
  QStringList lGroupTexts;
  for (const auto& [lId, lCount] : lGroups.mCounts) {
    lGroupCounts.insert(GroupName(lId), lCount);
    lGroupTexts << QStringLiteral("%1 (%2 frames)").arg(GroupName(lId)).arg(lCount);
  }
  const QStringList lFiles = RecordingFiles(lFile, lSensor.SerialNumber());
  if (lParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("file"), lFile},
                          {QStringLiteral("device"), lSimSensor.Name()},
                          {QStringLiteral("serialNumber"), lSensor.SerialNumber()},
                          {QStringLiteral("name"), lSensor.DeviceName().TextValue(0)},
                          {QStringLiteral("frames"), static_cast<qint64>(lFrames)},
                          {QStringLiteral("durationMs"), static_cast<qint64>(lLast - lFirst)},
                          {QStringLiteral("groups"), lGroupCounts},
                          {QStringLiteral("recordingFiles"), QJsonArray::fromStringList(lFiles)},
                          {QStringLiteral("properties"), lProperties}});
    return EXIT_OK;
  }
  Print(Tr("file: %1").arg(lFile));
  Print(Tr("device: %1, serial number %2, name %3")
            .arg(lSimSensor.Name(), lSensor.SerialNumber(), lSensor.DeviceName().TextValue(0)));
  Print(Tr("frames: %1").arg(lFrames));
  Print(Tr("duration: %1 s").arg((lLast - lFirst) / 1000.0, 0, 'f', 3));
  Print(Tr("groups: %1").arg(lGroupTexts.join(QStringLiteral(", "))));
  Print(Tr("recording files: %1").arg(lFiles.size()));
  for (const QString& lPart : lFiles) {
    Print(QStringLiteral("  ") + lPart);
  }
  Print(Tr("properties:"));
  for (const QJsonValue& lProperty : lProperties) {
    QString lValue = lProperty[QStringLiteral("text")].toString();
    if (const QString lUnit = lProperty[QStringLiteral("unit")].toString(); !lUnit.isEmpty()) {
      lValue += QLatin1Char(' ') + lUnit;
    }
    Print(QStringLiteral("  %1 %2").arg(lProperty[QStringLiteral("key")].toString(), -26).arg(lValue));
  }
  return EXIT_OK;
}

int RunExtract(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("extract"),
                 Tr("Copies the header and the frames A to B (counted from 1, both included) of a record file "
                    "into a new record file."));
  lParser.AddPositional(QStringLiteral("file"), Tr("The record file."), QStringLiteral("FILE.ptl"));
  const QCommandLineOption lFrom(QStringLiteral("from"), Tr("The first frame."), QStringLiteral("a"));
  const QCommandLineOption lTo(QStringLiteral("to"), Tr("The last frame."), QStringLiteral("b"));
  const QCommandLineOption lOut(QStringLiteral("out"), Tr("The new record file."), QStringLiteral("file"));
  for (const QCommandLineOption& lOption : {lFrom, lTo, lOut}) {
    lParser.AddOption(lOption);
  }
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 1, 1)) {
    return EXIT_OK;
  }
  if (!lParser.Qt().isSet(lFrom) || !lParser.Qt().isSet(lTo) || lParser.Qt().value(lOut).isEmpty()) {
    Usage(Tr("give --from, --to and --out"));
  }
  const auto lFirst = static_cast<unsigned long>(lParser.Number(lFrom, 1));
  const auto lLast = static_cast<unsigned long>(lParser.Number(lTo, 1));
  const QString lOutFile = lParser.Qt().value(lOut);
  std::unique_ptr<PxRecordPlayer> lPlayer = OpenRecord(lParser.Positional().front());
  if (lFirst > lLast || lLast > lPlayer->RecordSize()) {
    Fail(lPlayer->RecordSize() == 0 ? Tr("the file has no frames")
                                    : Tr("frames %1 to %2 are not in the file, which has frames 1 to %3")
                                          .arg(lFirst)
                                          .arg(lLast)
                                          .arg(lPlayer->RecordSize()));
  }
  if (!lPlayer->Extract(lFirst, lLast, lOutFile)) {
    Fail(Tr("could not extract frames %1 to %2").arg(lFirst).arg(lLast));
  }
  if (lParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("file"), lOutFile},
                          {QStringLiteral("frames"), static_cast<qint64>(lLast - lFirst + 1)}});
  } else {
    Print(Tr("wrote frames %1 to %2 to %3").arg(lFirst).arg(lLast).arg(lOutFile));
  }
  return EXIT_OK;
}

int RunExport(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("export"),
                 Tr("Writes one group of a record file as CSV or JSON, frame after frame (any file size takes "
                    "the same memory).\n\n"
                    "  echoes  frame,timestamp,segment,distance_m,amplitude,flag per echo\n"
                    "  state   frame,timestamp,board_c,light_source_c per frame\n"
                    "  traces  frame,timestamp,kind,segment,samples (raw, then filtered)"));
  lParser.AddPositional(QStringLiteral("file"), Tr("The record file."), QStringLiteral("FILE.ptl"));
  const QCommandLineOption lWhat(QStringLiteral("what"), Tr("echoes, state or traces."), QStringLiteral("group"));
  const QCommandLineOption lFormat(QStringLiteral("format"), Tr("csv or json (default csv)."), QStringLiteral("format"),
                                   QStringLiteral("csv"));
  const QCommandLineOption lOut(QStringLiteral("out"), Tr("The file to write; - for standard output."),
                                QStringLiteral("file"));
  for (const QCommandLineOption& lOption : {lWhat, lFormat, lOut}) {
    lParser.AddOption(lOption);
  }
  if (!lParser.Parse(aArguments, 1, 1)) {
    return EXIT_OK;
  }
  const QString lGroup = lParser.Qt().value(lWhat);
  const QString lKind = lParser.Qt().value(lFormat);
  if (lGroup != QLatin1String("echoes") && lGroup != QLatin1String("state") && lGroup != QLatin1String("traces")) {
    Usage(Tr("--what takes echoes, state or traces"));
  }
  if (lKind != QLatin1String("csv") && lKind != QLatin1String("json")) {
    Usage(Tr("--format takes csv or json"));
  }
  if (lParser.Qt().value(lOut).isEmpty()) {
    Usage(Tr("give the file to write with --out"));
  }
  std::unique_ptr<PxRecordPlayer> lPlayer = OpenRecord(lParser.Positional().front());
  QFile lFile;
  const bool lToStdout = lParser.Qt().value(lOut) == QLatin1String("-");
  const bool lOpened = lToStdout ? lFile.open(stdout, QIODevice::WriteOnly)
                                 : (lFile.setFileName(lParser.Qt().value(lOut)), lFile.open(QIODevice::WriteOnly));
  if (!lOpened) {
    Fail(Tr("cannot write %1: %2").arg(lParser.Qt().value(lOut), lFile.errorString()));
  }
  QTextStream lStream(&lFile);
  lStream.setCodec("UTF-8");
  lStream.setRealNumberNotation(QTextStream::FixedNotation);
  const bool lJson = lKind == QLatin1String("json");
  bool lFirstRow = true;
  // One row: CSV fields, or a JSON object of the same names, one per line.
  QStringList lColumns;
  auto lRow = [&](const QStringList& aValues) {
    if (lJson) {
      lStream << (lFirstRow ? "\n  {" : ",\n  {");
      for (int i = 0; i < aValues.size(); ++i) {
        const bool lText = lColumns.at(i) == QLatin1String("kind");
        const bool lArray = lColumns.at(i) == QLatin1String("samples");
        lStream << (i ? ", \"" : "\"") << lColumns.at(i) << "\": "
                << (lText ? QStringLiteral("\"%1\"").arg(aValues.at(i))
                    : lArray
                        ? QStringLiteral("[%1]").arg(QString(aValues.at(i)).replace(QLatin1Char(' '), QLatin1Char(',')))
                        : aValues.at(i));
      }
      lStream << '}';
    } else {
      lStream << aValues.join(QLatin1Char(',')) << '\n';
    }
    lFirstRow = false;
  };
  PxSensor& lSensor = *lPlayer->Sensor();
  if (lGroup == QLatin1String("echoes")) {
    lColumns = QStringList{"frame", "timestamp", "segment", "distance_m", "amplitude", "flag"};
  } else if (lGroup == QLatin1String("state")) {
    lColumns = QStringList{"frame", "timestamp", "board_c", "light_source_c"};
  } else {
    lColumns = QStringList{"frame", "timestamp", "kind", "segment", "samples"};
  }
  lStream << (lJson ? QStringLiteral("[") : lColumns.join(QLatin1Char(',')) + QLatin1Char('\n'));

  // The frame's groups arrive one after the other and the state, last, stamps them all.
  std::vector<QStringList> lPending;
  bool lEchoesNew = false;
  std::vector<std::pair<QString, PxResultTrace*>> lTracesNew;
  QObject lContext;
  QObject::connect(&lSensor.EchoesProvider(), &PxResultProvider::NewData, &lContext, [&] { lEchoesNew = true; });
  for (PtU32 lId : {PxResultProvider::ID_TRACES, PxResultProvider::ID_TRACES_32}) {
    auto* lTraces = static_cast<PxResultTrace*>(lSensor.GetProvider(lId));
    if (lTraces) {
      QObject::connect(lTraces, &PxResultProvider::NewData, &lContext, [&, lTraces, lId] {
        lTracesNew.emplace_back(lId == PxResultProvider::ID_TRACES ? QStringLiteral("raw") : QStringLiteral("filtered"),
                                lTraces);
      });
    }
  }
  const unsigned long lFrames = lPlayer->RecordSize();
  for (unsigned long lFrame = 0; lFrame < lFrames && lPlayer->ReadNext(); ++lFrame) {
    const QString lTimestamp = QString::number(lPlayer->RelativeTimestamp());
    const QString lIndex = QString::number(lPlayer->CurrentIndex());
    if (lGroup == QLatin1String("state")) {
      // The replay's own rate measures the replay, not the device: the timestamps tell the rate.
      PxResult* lTemperatures = lSensor.StateProvider() ? lSensor.StateProvider()->TemperatureResult() : nullptr;
      auto lTemperature = [&](size_t aIndex) {
        return lTemperatures && lTemperatures->Count() > aIndex ? QString::number(lTemperatures->Value(aIndex), 'f', 2)
                                                                : QStringLiteral("null");
      };
      lRow({lIndex, lTimestamp, lTemperature(0), lTemperature(1)});
    } else if (lGroup == QLatin1String("echoes") && lEchoesNew) {
      const PxResultEchoes& lEchoes = lSensor.EchoesProvider();
      for (PtU32 i = 0; i < lEchoes.EchoCount(); ++i) {
        const PxEcho& lEcho = lEchoes.Echoes()[i];
        lRow({lIndex, lTimestamp, QString::number(lEcho.mSegment),
              QString::number(lEcho.mDistance * lEchoes.DistanceScale(), 'f', 3),
              QString::number(lEcho.mAmplitude * lEchoes.AmplitudeScale(), 'f', 2),
              QString::number(lEcho.mFlag != 0 ? 1 : 0)});
      }
    } else if (lGroup == QLatin1String("traces")) {
      for (const auto& [lName, lTraces] : lTracesNew) {
        for (size_t lChannel = 0; lChannel < lTraces->Traces().size(); ++lChannel) {
          const PxTrace& lTrace = lTraces->Traces()[lChannel];
          QStringList lSamples;
          for (size_t i = 0; i < lTrace.Length(); ++i) {
            lSamples << QString::number(lTrace.RawSample(i));
          }
          lRow({lIndex, lTimestamp, lName, QString::number(lChannel), lSamples.join(QLatin1Char(' '))});
        }
      }
    }
    lEchoesNew = false;
    lTracesNew.clear();
  }
  if (lJson) {
    lStream << (lFirstRow ? "]\n" : "\n]\n");
  }
  lStream.flush();
  if (lFile.error() != QFileDevice::NoError) {
    Fail(Tr("cannot write %1: %2").arg(lParser.Qt().value(lOut), lFile.errorString()));
  }
  return EXIT_OK;
}

} // namespace PxCli
