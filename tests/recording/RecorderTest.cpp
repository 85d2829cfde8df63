#include "PtDocumentReader.h"
#include "PxDataLogger.h"
#include "PxRecorder.h"
#include "PxTest.h"
#include "RecordingTestSupport.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace RecordingTest;

namespace {
// The sections of a record file: main section ids, and for each the ids of the sections in it.
struct Layout
{
  std::vector<PtU32> mMain;
  std::vector<std::vector<PtU32>> mInside;
  bool mClosed = false;
  PtU32 mType = 0;
};

Layout ReadLayout(const QString& aFile)
{
  Layout lLayout;
  PtDocumentReader lReader(aFile);
  lLayout.mClosed = lReader.WasClosed();
  lLayout.mType = lReader.DocumentType();
  while (lReader.Advance()) {
    lLayout.mMain.push_back(lReader.Id());
    lLayout.mInside.emplace_back();
    while (lReader.Advance()) {
      if (lReader.IsSection()) {
        lLayout.mInside.back().push_back(lReader.Id());
        lReader.SkipCurrentSection();
      }
    }
  }
  return lLayout;
}
} // namespace

TEST(Recorder, AssemblesFramesInTheOrderTheResultsArrive)
{
  constexpr PtU32 T = PxResultTrace::SECTION_16, E = PxResultEchoes::SECTION_ID, S = PxResultState::SECTION_ID;
  struct Case
  {
    unsigned int mFlags;
    const char* mPublished; // T traces, E echoes, S state
    std::vector<std::vector<PtU32>> mFrames;
  } const lCases[] = {
      {33, "TES", {{E, S}}}, // the default records state and echoes only
      {37, "TES", {{T, E, S}}},       {37, "TESTES", {{T, E, S}, {T, E, S}}},
      {37, "TTES", {{T}, {T, E, S}}}, // traces again before the state: a new frame
      {37, "EES", {{E}, {E, S}}},     {37, "ESS", {{E, S}, {S}}},
  };
  for (const Case& lCase : lCases) {
    SCOPED_TRACE(std::string(lCase.mPublished) + " flags " + std::to_string(lCase.mFlags));
    QTemporaryDir lDir;
    PxRecorder::SetParameters(lCase.mFlags, lDir.path(), 500, 60);
    SyntheticSensor lSource(2, 8);
    lSource.mSensor.CreateRecorder();
    PtU32 lFrame = 0;
    for (const char* p = lCase.mPublished; *p; ++p) {
      *p == 'T'   ? lSource.PublishTraces(lFrame)
      : *p == 'E' ? lSource.PublishEchoes(lFrame)
                  : lSource.PublishState(lFrame++);
    }
    lSource.mSensor.StopRecorder();
    ASSERT_EQ(lSource.mSensor.Recorder(), nullptr);

    const QStringList lFiles = RecordFiles(lDir.path());
    ASSERT_EQ(lFiles.size(), 1);
    const Layout lLayout = ReadLayout(lFiles[0]);
    EXPECT_TRUE(lLayout.mClosed);
    EXPECT_EQ(lLayout.mType, PxTestSensor::RECORD_DOCUMENT);
    ASSERT_EQ(lLayout.mMain.size(), lCase.mFrames.size() + 2);
    EXPECT_EQ(lLayout.mMain.front(), PxRecorder::SECTION_HEADER);
    EXPECT_EQ(lLayout.mInside.front(), std::vector<PtU32>{PxRecorder::SECTION_PROPERTIES});
    for (size_t i = 0; i < lCase.mFrames.size(); ++i) {
      EXPECT_EQ(lLayout.mMain[i + 1], PxRecorder::SECTION_FRAME);
      EXPECT_EQ(lLayout.mInside[i + 1], lCase.mFrames[i]) << "frame " << i;
    }
    EXPECT_EQ(lLayout.mMain.back(), PxRecorder::SECTION_FRAME);
    EXPECT_TRUE(lLayout.mInside.back().empty()) << "the closing frame is empty";
  }
}

TEST(Recorder, NamesFilesAfterTheDeviceAndTheStartTime)
{
  struct Case
  {
    const char* mDeviceName;
    const char* mPrefix;
  } const lCases[] = {{"Unit 3", "Unit 3-"}, {"A/B:C\\D", "A_B_C_D-"}};
  for (const Case& lCase : lCases) {
    for (const QString& lExtension : {QStringLiteral(".ptl"), QStringLiteral(".txt")}) {
      SCOPED_TRACE(std::string(lCase.mDeviceName) + lExtension.toStdString());
      QTemporaryDir lDir;
      PxRecorder::SetParameters(33, lDir.path(), 500, 60);
      PxDataLogger::SetParameters(lDir.path());
      SyntheticSensor lSource(0, 0, QString::fromUtf8(lCase.mDeviceName));
      const QDateTime lBefore = QDateTime::currentDateTime();
      lExtension == QStringLiteral(".ptl") ? lSource.mSensor.CreateRecorder() : lSource.mSensor.CreateDataLogger();
      const QDateTime lAfter = QDateTime::currentDateTime();
      lSource.mSensor.StopRecorder();
      lSource.mSensor.StopDataLogger();

      const QStringList lFiles = QDir(lDir.path()).entryList(QDir::Files);
      ASSERT_EQ(lFiles.size(), 1) << "no subdirectory, one file";
      const QRegularExpression lPattern(QStringLiteral("^%1(\\d{4}-\\d\\d-\\d\\d-\\d\\d-\\d\\d-\\d\\d-\\d{3})%2$")
                                            .arg(QRegularExpression::escape(QString::fromUtf8(lCase.mPrefix)),
                                                 QRegularExpression::escape(lExtension)));
      const QRegularExpressionMatch lMatch = lPattern.match(lFiles[0]);
      ASSERT_TRUE(lMatch.hasMatch()) << lFiles[0].toStdString();
      const QDateTime lStamp = QDateTime::fromString(lMatch.captured(1), QStringLiteral("yyyy-MM-dd-HH-mm-ss-zzz"));
      EXPECT_GE(lStamp, lBefore.addMSecs(-1));
      EXPECT_LE(lStamp, lAfter);
    }
  }
}

TEST(Recorder, SplitsAtTheSizeLimitBetweenFramesOnly)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  RecordSynthetic(lDir.path(), 150, 16, 512, 1); // about 17 KB a frame
  const QStringList lFiles = RecordFiles(lDir.path());
  ASSERT_EQ(lFiles.size(), 3);
  for (int i = 0; i < lFiles.size(); ++i) {
    SCOPED_TRACE(lFiles[i].toStdString());
    const Layout lLayout = ReadLayout(lFiles[i]);
    EXPECT_TRUE(lLayout.mClosed);
    EXPECT_TRUE(lLayout.mInside.back().empty());
    if (i + 1 < lFiles.size()) {
      // The frame that crossed the limit is whole in this file; the next one starts the next file.
      const qint64 lSize = QFileInfo(lFiles[i]).size();
      EXPECT_GE(lSize, 1 << 20);
      EXPECT_LT(lSize, (1 << 20) + 40000);
    }
  }
  QString lWhy;
  EXPECT_EQ(ReplayAll(lFiles, &lWhy), 150) << lWhy.toStdString();
}

TEST(Recorder, KeepsItsSettingsInTheRecorderGroup)
{
  struct Case
  {
    const char* mName;
    std::vector<std::pair<const char*, QVariant>> mStored;
    unsigned int mFlags;
    unsigned int mFileSize;
    const char* mDirectory;
    unsigned int mMaxTime;
  } const lCases[] = {
      {"defaults", {}, 33, 500, "C:/Data", 60},
      {"stored", {{"Flags", 45}, {"FileSize", 20}, {"Directory", "/data/rec"}, {"MaxTime", 5}}, 45, 20, "/data/rec", 5},
      // Edited by hand: a size of 0 or beyond 32 bits of bytes would split on every frame.
      {"unusable", {{"Flags", "x"}, {"FileSize", 0}, {"Directory", ""}, {"MaxTime", "-3"}}, 33, 500, "C:/Data", 60},
      {"too large", {{"FileSize", 4096}}, 33, 500, "C:/Data", 60},
  };
  for (const Case& lCase : lCases) {
    SCOPED_TRACE(lCase.mName);
    QSettings().remove(QStringLiteral("Recorder"));
    for (const auto& lValue : lCase.mStored) {
      QSettings().setValue(QStringLiteral("Recorder/") + QLatin1String(lValue.first), lValue.second);
    }
    PxRecorder::Initialize();
    EXPECT_EQ(PxRecorder::Flags(), lCase.mFlags);
    EXPECT_EQ(PxRecorder::MaxFileSize(), lCase.mFileSize);
    EXPECT_EQ(PxRecorder::Directory(), QString::fromUtf8(lCase.mDirectory));
    EXPECT_EQ(PxRecorder::MaxTime(), lCase.mMaxTime);
  }
}

// The link drops while recording and logging: the device UI destroys the sensor with both running.
TEST(Recorder, ASensorDestroyedWhileRecordingLeavesFinishedFiles)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  PxRecorder::SetParameters(37, lDir.path(), 500, 60);
  PxDataLogger::SetParameters(lDir.path());
  auto lSource = std::make_unique<SyntheticSensor>(2, 8);
  lSource->mSensor.CreateRecorder();
  lSource->mSensor.CreateDataLogger();
  const QString lLog = lSource->mSensor.DataLogger()->FileName();
  for (PtU32 n = 0; n < 3; ++n) {
    lSource->PublishFrame(n);
  }
  lSource.reset();

  const QString lRecord = RecordFiles(lDir.path()).value(0);
  EXPECT_TRUE(ReadLayout(lRecord).mClosed);
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lRecord));
  lPlayer->Start();
  EXPECT_EQ(lPlayer->RecordSize(), 3u);
  EXPECT_EQ(PxTest::ReadFile(lLog).count('\n'), static_cast<int>(EchoCountOf(0) + EchoCountOf(1) + EchoCountOf(2)));
}
