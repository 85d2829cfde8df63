// parvex-cli as a user or a script runs it: each verb's output and exit code against a parvex-sim
// started here, and the messages and codes of bad command lines and unreachable devices.

#include "PxSimFirmware.h"
#include "PxSimProtocol.h"
#include "PxSimUpdateJob.h"
#include "PxTest.h"
#include "SimProcess.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QtEndian>

#include <csignal>
#include <gtest/gtest.h>

namespace {
struct CliRun
{
  int mExit = -1;
  QString mOut;
  QString mErr;
  QJsonObject Json() const { return QJsonDocument::fromJson(mOut.toUtf8()).object(); }
};

// parvex-cli as a child; the recorder's and logger's settings land in the scratch folder, not the
// user's.
void Start(QProcess& aProcess, const QStringList& aArguments)
{
  QProcessEnvironment lEnvironment = QProcessEnvironment::systemEnvironment();
  lEnvironment.remove(QStringLiteral("PARVEX_CONNECT"));
  lEnvironment.insert(QStringLiteral("XDG_CONFIG_HOME"), PxTest::ScratchDir());
  aProcess.setProcessEnvironment(lEnvironment);
  aProcess.start(QStringLiteral(PARVEX_CLI_PROGRAM), aArguments);
}

CliRun Cli(const QStringList& aArguments)
{
  QProcess lProcess;
  Start(lProcess, aArguments);
  CliRun lRun;
  if (!lProcess.waitForFinished(PxTest::WAIT_MS)) {
    lProcess.kill();
    lProcess.waitForFinished();
    lRun.mErr = QStringLiteral("timed out");
    return lRun;
  }
  lRun.mExit = lProcess.exitStatus() == QProcess::NormalExit ? lProcess.exitCode() : -2;
  lRun.mOut = QString::fromUtf8(lProcess.readAllStandardOutput());
  lRun.mErr = QString::fromUtf8(lProcess.readAllStandardError());
  return lRun;
}

std::ostream& operator<<(std::ostream& aStream, const CliRun& aRun)
{
  return aStream << "exit " << aRun.mExit << "\nstdout: " << aRun.mOut.toStdString()
                 << "\nstderr: " << aRun.mErr.toStdString();
}

class CliAgainstSim : public ::testing::Test
{
protected:
  void SetUp() override { ASSERT_NE(mSim.Port(), 0) << "parvex-sim did not start"; }

  // The verb, connected to the simulator.
  CliRun Device(QStringList aArguments)
  {
    return Cli(aArguments << QStringLiteral("--connect") << QStringLiteral("tcp://127.0.0.1:%1").arg(mSim.Port()));
  }
  // "record" from the simulator into mDir for up to a minute, once it has shown aReports progress
  // lines (one at the first frame, then one a second).
  void StartRecording(QProcess& aRecord, int aReports, const QStringList& aMore = {})
  {
    aRecord.setReadChannel(QProcess::StandardError);
    Start(aRecord, QStringList{"record", "--seconds", "60", "--out", mDir.path()}
                       << aMore << "--connect" << QStringLiteral("tcp://127.0.0.1:%1").arg(mSim.Port()));
    QByteArray lProgress;
    while (lProgress.count("recording:") < aReports && aRecord.waitForReadyRead(PxTest::WAIT_MS)) {
      lProgress += aRecord.readAllStandardError();
    }
    ASSERT_EQ(lProgress.count("recording:"), aReports) << lProgress.toStdString();
  }
  QJsonObject Property(const QString& aKey)
  {
    const CliRun lRun = Device({"config", "get", aKey, "--json"});
    EXPECT_EQ(lRun.mExit, 0) << lRun;
    return lRun.Json();
  }

  SimProcess mSim;
  QTemporaryDir mDir;
};
} // namespace

TEST(Cli, BadCommandLinesAndUnreachableDevicesEndWithAMessageAndTheirCode)
{
  // Takes connections (the system does, into the backlog) but never answers: a hung device.
  QTcpServer lSilent;
  ASSERT_TRUE(lSilent.listen(QHostAddress::LocalHost));
  struct Case
  {
    QStringList mArguments;
    int mExit;
    const char* mStderr;
  } const lCases[] = {
      {{}, 2, ""},
      {{"frobnicate"}, 2, "unknown verb \"frobnicate\""},
      {{"info", "--bogus"}, 2, "Unknown option 'bogus'"},
      {{"config", "set", "accumulation"}, 2, "takes 2 argument(s)"},
      {{"config", "get", "no-such-setting"}, 2, "no property named \"no-such-setting\""},
      {{"config", "get", "distance-offset[16]"}, 2, "there is no value 16"},
      {{"config", "set", "light-source-power", "bright"}, 2, "\"bright\" is not a whole number"},
      {{"config", "set", "accumulation", "3"}, 1, "not one of the choices: 1, 2, 4, 8, 16, 32, 64"},
      {{"config", "set", "serial-number", "X"}, 1, "serial-number is read-only"},
      {{"config", "set", "detection-threshold", "2000"}, 1, "detection-threshold does not take 2000 (0 to 1000)"},
      {{"config", "set", "location", QString(40, QLatin1Char('x'))}, 1, "longer than the 32 characters"},
      {{"firmware", "/no/such/file.ptb"}, 1, "no file /no/such/file.ptb"},
      {{"info", "--connect", "udp://127.0.0.1"}, 2, "unknown address \"udp://127.0.0.1\""},
      {{"info", "--timeout", "soon"}, 2, "--timeout needs a number"},
      // Port 1 on the loopback: refused at once.
      {{"info", "--connect", "tcp://127.0.0.1:1"}, 3, "cannot reach tcp://127.0.0.1:1"},
      {{"info", "--timeout", "200", "--connect", QStringLiteral("tcp://127.0.0.1:%1").arg(lSilent.serverPort())},
       3,
       "the device does not answer"},
      {{"record", "--out", "/tmp"}, 2, "give either --seconds or --frames"},
      {{"record", "--frames", "5", "--out", "/tmp", "--traces", "smooth"}, 2, "unknown trace kind \"smooth\""},
      {{"log", "--seconds", "1"}, 2, "give the directory to write to with --out"},
      {{"inspect", PARVEX_CLI_PROGRAM}, 1, "The file is not a Parvex document."},
      {{"export", "x.ptl", "--what", "noise", "--out", "-"}, 2, "--what takes echoes, state or traces"},
      {{"extract", "x.ptl", "--from", "1"}, 2, "give --from, --to and --out"},
  };
  for (const Case& c : lCases) {
    const CliRun lRun = Cli(c.mArguments);
    SCOPED_TRACE(c.mArguments.join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ(lRun.mExit, c.mExit) << lRun;
    EXPECT_TRUE(lRun.mErr.contains(QString::fromUtf8(c.mStderr))) << lRun;
    EXPECT_TRUE(lRun.mExit == 0 || lRun.mOut.isEmpty() || c.mArguments.isEmpty()) << "errors go to stderr\n" << lRun;
  }
}

TEST_F(CliAgainstSim, InfoAndConnectionsShowTheDeviceAndEveryProperty)
{
  const CliRun lInfo = Device({"info", "--json"});
  ASSERT_EQ(lInfo.mExit, 0) << lInfo;
  const QJsonObject lDevice = lInfo.Json();
  EXPECT_EQ(lDevice[QStringLiteral("serialNumber")].toString(), QStringLiteral("PX16-SIM-000042"));
  EXPECT_EQ(lDevice[QStringLiteral("name")].toString(), QStringLiteral("Simulated Parvex 16"));
  QHash<QString, QJsonObject> lProperties;
  for (const QJsonValue& lValue : lDevice[QStringLiteral("properties")].toArray()) {
    lProperties.insert(lValue[QStringLiteral("key")].toString(), lValue.toObject());
  }
  EXPECT_EQ(lProperties.size(), lDevice[QStringLiteral("properties")].toArray().size()) << "keys are unique";
  EXPECT_EQ(lProperties[QStringLiteral("accumulation")][QStringLiteral("value")].toInt(), 4);
  EXPECT_TRUE(lProperties[QStringLiteral("accumulation")][QStringLiteral("editable")].toBool());
  EXPECT_FALSE(lProperties[QStringLiteral("serial-number")][QStringLiteral("editable")].toBool());
  EXPECT_EQ(lProperties[QStringLiteral("refresh-rate")][QStringLiteral("unit")].toString(), QStringLiteral("Hz"));
  EXPECT_EQ(lProperties[QStringLiteral("distance-offset")][QStringLiteral("value")].toArray().size(), 16);
  EXPECT_EQ(lProperties[QStringLiteral("distance-offset")][QStringLiteral("unit")].toString(), QStringLiteral("m"));

  const CliRun lText = Device({"info"});
  EXPECT_TRUE(lText.mOut.contains(QRegularExpression(QStringLiteral("\\nrefresh-rate +\\d+ +e- 50.0 Hz\\n")))) << lText;

  const CliRun lConnections =
      Cli({"connections", "--probe", QStringLiteral("127.0.0.1:%1").arg(mSim.Port()), "--probe", "127.0.0.1:1"});
  EXPECT_EQ(lConnections.mExit, 0) << lConnections;
  EXPECT_TRUE(
      lConnections.mOut.contains(QStringLiteral("tcp://127.0.0.1:%1: Parvex 16 PX16-SIM-000042").arg(mSim.Port())))
      << lConnections;
  EXPECT_TRUE(lConnections.mOut.contains(QStringLiteral("tcp://127.0.0.1:1: no device answers"))) << lConnections;
  EXPECT_TRUE(lConnections.mOut.contains(QStringLiteral("sim: Parvex 16"))) << lConnections;
}

TEST_F(CliAgainstSim, SettingsReachTheDeviceAndConfigurationFilesBringThemBack)
{
  const QString lFile = mDir.filePath(QStringLiteral("bench.pto"));
  struct Step
  {
    QStringList mArguments;
    const char* mStdout;
  } const lSteps[] = {
      {{"config", "set", "light-source-power", "20"}, "light-source-power = 20 (applied)"},
      {{"config", "set", "oversampling", "x4"}, "oversampling = x4 (applied)"},
      {{"config", "set", "distance-offset[3]", "-1.25"}, "distance-offset = 0.000,0.000,0.000,-1.250,0.000"},
      {{"config", "save", lFile, "--comment", "bench"}, "saved the configuration of PX16-SIM-000042"},
      {{"config", "set", "light-source-power", "70"}, "light-source-power = 70 (applied)"},
      {{"config", "set", "distance-offset", "0"}, "distance-offset = 0.000,0.000,0.000,0.000,"},
      {{"config", "load", lFile}, "Comment: bench\nloaded and applied to PX16-SIM-000042"},
      {{"reset"}, "PX16-SIM-000042 restarted on its saved configuration"},
  };
  for (const Step& s : lSteps) {
    const CliRun lRun = Device(s.mArguments);
    SCOPED_TRACE(s.mArguments.join(QLatin1Char(' ')).toStdString());
    EXPECT_EQ(lRun.mExit, 0) << lRun;
    EXPECT_TRUE(lRun.mOut.contains(QString::fromUtf8(s.mStdout))) << lRun;
  }
  // Each run is a new connection: what it reads is what the device holds after the restart.
  EXPECT_EQ(Property(QStringLiteral("light-source-power"))[QStringLiteral("value")].toInt(), 20);
  EXPECT_EQ(Property(QStringLiteral("Oversampling:"))[QStringLiteral("text")].toString(), QStringLiteral("x4"));
  EXPECT_DOUBLE_EQ(Property(QStringLiteral("distance-offset"))[QStringLiteral("value")].toArray().at(3).toDouble(),
                   -1.25);
  const CliRun lPlain = Device({"config", "get", "0xA10104"});
  EXPECT_EQ(lPlain.mOut, QStringLiteral("20\n")) << "a script reads the bare value\n" << lPlain;
}

TEST_F(CliAgainstSim, FirmwareFilesAreCheckedThenInstalled)
{
  // Written as the driver writes its bundled files, then damaged, cut, lengthened or retargeted.
  auto lFile = [&](PtU16 aType, int aExtra, int aFlip) {
    PxSimSensor::FirmwareImage lImage{PxSimProtocol::COMPONENT_SOFTWARE, 0x40E0, 0, QByteArray(10000, '\0')};
    for (int i = 0; i < lImage.mData.size(); ++i) {
      lImage.mData[i] = static_cast<char>(i * 7 + 3);
    }
    lImage.mCrc = PxSimFirmware::Crc32(reinterpret_cast<const PtByte*>(lImage.mData.constData()), 10000);
    const QString lName = mDir.filePath(QStringLiteral("fw-%1-%2-%3.ptb").arg(aType).arg(aExtra).arg(aFlip));
    PxSimUpdateJob::WriteFirmwareFile(lName, lImage);
    QByteArray lBytes = PxTest::ReadFile(lName);
    qToLittleEndian<quint16>(aType, lBytes.data() + 6);
    lBytes = lBytes.leftJustified(lBytes.size() + aExtra, 'x', true); // cut, or padded with aExtra bytes
    if (aFlip >= 0) {
      lBytes[20 + aFlip] = static_cast<char>(lBytes[20 + aFlip] ^ 1);
    }
    EXPECT_TRUE(PxTest::WriteFile(lName, lBytes));
    return lName;
  };
  struct Case
  {
    const char* mWhat;
    QString mFile;
    int mExit;
    const char* mMessage;
    int mVersionAfter;
  } const lCases[] = {
      {"damaged", lFile(0x0A16, 0, 5000), 1, "is damaged: its checksum does not match", 0x40D4},
      {"cut short", lFile(0x0A16, -1, -1), 1, "holds 9999 image bytes instead of 10000", 0x40D4},
      {"with bytes after the image", lFile(0x0A16, 3, -1), 1, "holds 10003 image bytes instead of 10000", 0x40D4},
      {"for another device", lFile(0x0B20, 0, -1), 1, "firmware for device type 0x0b20", 0x40D4},
      {"good", lFile(0x0A16, 0, -1), 0, "firmware: 100% (9.8 KiB of 9.8 KiB)", 0x40E0},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    const CliRun lRun = Device({"firmware", c.mFile});
    EXPECT_EQ(lRun.mExit, c.mExit) << lRun;
    EXPECT_TRUE(lRun.mErr.contains(QString::fromUtf8(c.mMessage))) << lRun;
    EXPECT_EQ(Property(QStringLiteral("software-version"))[QStringLiteral("value")].toInt(), c.mVersionAfter);
  }
}

TEST_F(CliAgainstSim, CtrlCEndsARecordingWithAFileThatReplaysAndExports)
{
  QProcess lRecord;
  ASSERT_NO_FATAL_FAILURE(StartRecording(lRecord, 2, {"--traces", "raw"}));
  ::kill(static_cast<pid_t>(lRecord.processId()), SIGINT);
  ASSERT_TRUE(lRecord.waitForFinished(PxTest::WAIT_MS));
  EXPECT_EQ(lRecord.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(lRecord.exitCode(), 0);
  EXPECT_TRUE(lRecord.readAllStandardError().contains("stopped by Ctrl-C"));
  const QString lFile = QString::fromUtf8(lRecord.readAllStandardOutput()).trimmed();
  ASSERT_TRUE(lFile.endsWith(QStringLiteral(".ptl"))) << lFile.toStdString();

  const CliRun lInspect = Cli({"inspect", lFile, "--json"});
  ASSERT_EQ(lInspect.mExit, 0) << lInspect;
  const QJsonObject lRecord1 = lInspect.Json();
  const int lFrames = lRecord1[QStringLiteral("frames")].toInt();
  EXPECT_GT(lFrames, 30) << "at 50 Hz for more than a second";
  const QJsonObject lGroups = lRecord1[QStringLiteral("groups")].toObject();
  for (const char* lGroup : {"state", "echoes", "raw-traces"}) {
    EXPECT_EQ(lGroups[QLatin1String(lGroup)].toInt(), lFrames) << lGroup << " in every frame";
  }
  EXPECT_FALSE(lGroups.contains(QStringLiteral("filtered-traces"))) << "not asked for";
  EXPECT_EQ(lRecord1[QStringLiteral("serialNumber")].toString(), QStringLiteral("PX16-SIM-000042"));
  EXPECT_EQ(lRecord1[QStringLiteral("recordingFiles")].toArray(), QJsonArray{lFile});
  EXPECT_NEAR(lRecord1[QStringLiteral("durationMs")].toInt(), (lFrames - 1) * 20, 1) << "device time at 50 Hz";
  EXPECT_TRUE(Cli({"inspect", lFile})
                  .mOut.contains(QStringLiteral("duration: %1 s")
                                     .arg(lRecord1[QStringLiteral("durationMs")].toInt() / 1000.0, 0, 'f', 3)));

  const QString lEchoes = mDir.filePath(QStringLiteral("echoes.csv"));
  const CliRun lCsv = Cli({"export", lFile, "--what", "echoes", "--out", lEchoes});
  ASSERT_EQ(lCsv.mExit, 0) << lCsv;
  const QList<QByteArray> lLines = PxTest::ReadFile(lEchoes).trimmed().split('\n');
  EXPECT_EQ(lLines.front(), QByteArray("frame,timestamp,segment,distance_m,amplitude,flag"));
  EXPECT_GT(lLines.size(), lFrames * 16) << "the wall is seen by every segment";
  EXPECT_TRUE(lLines.at(1).startsWith("1,")) << "frames count from 1";
  EXPECT_TRUE(lLines.last().startsWith(QByteArray::number(lFrames) + ','));
  // The wall at 20 m, square to the sensor: the nearest-of-segment-0 echo in the first frame.
  EXPECT_NEAR(lLines.at(1).split(',').at(3).toDouble(), 21.7, 0.5);

  const QString lPart = mDir.filePath(QStringLiteral("part.ptl"));
  EXPECT_EQ(Cli({"extract", lFile, "--from", "3", "--to", "7", "--out", lPart, "--json"})
                .Json()[QStringLiteral("frames")]
                .toInt(),
            5);
  EXPECT_EQ(Cli({"inspect", lPart, "--json"}).Json()[QStringLiteral("frames")].toInt(), 5);
  // The last frame is frame lFrames; one more is beyond the file.
  EXPECT_EQ(
      Cli({"extract", lFile, "--from", QString::number(lFrames), "--to", QString::number(lFrames), "--out", lPart})
          .mExit,
      0);
  const CliRun lBeyond = Cli({"extract", lFile, "--from", "1", "--to", QString::number(lFrames + 1), "--out", lPart});
  EXPECT_EQ(lBeyond.mExit, 1) << lBeyond;
}

TEST_F(CliAgainstSim, FrameLimitedRecordingsAndEchoLogsStopByThemselves)
{
  const CliRun lRecord = Device({"record", "--frames", "5", "--out", mDir.filePath("rec"), "--json"});
  ASSERT_EQ(lRecord.mExit, 0) << lRecord;
  EXPECT_EQ(lRecord.Json()[QStringLiteral("frames")].toInt(), 5);
  const QString lFile = lRecord.Json()[QStringLiteral("files")].toArray().at(0).toString();
  EXPECT_EQ(Cli({"inspect", lFile, "--json"}).Json()[QStringLiteral("frames")].toInt(), 5);

  const CliRun lLog = Device({"log", "--seconds", "0.5", "--out", mDir.filePath("log")});
  ASSERT_EQ(lLog.mExit, 0) << lLog;
  QFile lText(lLog.mOut.trimmed());
  ASSERT_TRUE(lText.open(QIODevice::ReadOnly | QIODevice::Text)) << lLog;
  const QList<QByteArray> lLines = lText.readAll().split('\n');
  ASSERT_GT(lLines.size(), 16);
  // Timestamp, segment, amplitude, distance, flag, in their fixed widths.
  const QRegularExpression lLine(QStringLiteral("^ {0,8}\\d{1,9} {1,2}\\d{1,3} *\\d+\\.\\d\\d *\\d+\\.\\d\\d [01] $"));
  EXPECT_TRUE(lLine.match(QString::fromLatin1(lLines.front())).hasMatch()) << lLines.front().toStdString();
  EXPECT_EQ(lLines.front().size(), 29);
}

TEST_F(CliAgainstSim, ALostLinkEndsARecordingWithItsCodeAndAReplayableFile)
{
  QProcess lRecord;
  ASSERT_NO_FATAL_FAILURE(StartRecording(lRecord, 1));
  mSim.Stop(SIGTERM);
  ASSERT_TRUE(lRecord.waitForFinished(PxTest::WAIT_MS));
  EXPECT_EQ(lRecord.exitCode(), 3);
  EXPECT_TRUE(lRecord.readAllStandardError().contains("lost the link to tcp://127.0.0.1:"));
  const QString lFile = QString::fromUtf8(lRecord.readAllStandardOutput()).trimmed();
  EXPECT_GT(Cli({"inspect", lFile, "--json"}).Json()[QStringLiteral("frames")].toInt(), 0);
}
