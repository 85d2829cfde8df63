#include "PtDocumentWriter.h"
#include "PxRecorder.h"
#include "PxTest.h"
#include "RecordingTestSupport.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>

using namespace RecordingTest;

namespace {
// A record file written by hand, for layouts the recorder does not make.
QString WriteFile(const QString& aFile, PtU32 aType, const std::function<void(PtDocumentWriter&)>& aContent)
{
  PtDocumentWriter lWriter(aFile, aType);
  aContent(lWriter);
  lWriter.EndLastSection();
  return aFile;
}

void Header(PtDocumentWriter& aWriter, PtU32 aInside = PxRecorder::SECTION_PROPERTIES)
{
  aWriter.StartSection(PxRecorder::SECTION_HEADER);
  aWriter.StartSection(aInside);
  aWriter.EndSection();
  aWriter.EndSection();
}
} // namespace

TEST(RecordPlayer, StepsAndJumpsThroughTheFrames)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  const QString lFile = RecordSynthetic(lDir.path(), 10, 2, 8);
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
  ASSERT_NE(lPlayer, nullptr);
  lPlayer->Start();
  EXPECT_EQ(lPlayer->RecordSize(), 10u);
  EXPECT_FALSE(lPlayer->ReadPrevious());

  QSignalSpy lState(lPlayer->Sensor()->StateProvider(), &PxResultProvider::NewData);
  // Each step: the call, what it returns, and the frame then current, counted from 1 as users
  // count them (the synthetic frames carry their own number from 0).
  struct Step
  {
    const char* mCall;
    std::function<bool()> mDo;
    bool mResult;
    long mIndex;
  } const lSteps[] = {
      {"ReadNext", [&] { return lPlayer->ReadNext(); }, true, 1},
      {"ReadPrevious on the first", [&] { return lPlayer->ReadPrevious(); }, false, 1},
      {"MoveTo 7", [&] { return lPlayer->MoveTo(7); }, true, 7},
      {"ReadPrevious", [&] { return lPlayer->ReadPrevious(); }, true, 6},
      {"MoveTo 2 (back)", [&] { return lPlayer->MoveTo(2); }, true, 2},
      {"ReadNext", [&] { return lPlayer->ReadNext(); }, true, 3},
      {"MoveTo 11 (beyond)", [&] { return lPlayer->MoveTo(11); }, false, 3},
      {"MoveTo RecordSize", [&] { return lPlayer->MoveTo(lPlayer->RecordSize()); }, true, 10},
      {"ReadNext after the last", [&] { return lPlayer->ReadNext(); }, false, 10},
      {"MoveTo 1", [&] { return lPlayer->MoveTo(1); }, true, 1},
  };
  for (const Step& lStep : lSteps) {
    SCOPED_TRACE(lStep.mCall);
    EXPECT_EQ(lStep.mDo(), lStep.mResult);
    EXPECT_EQ(Shown(*lPlayer->Sensor()), lStep.mIndex - 1);
    EXPECT_EQ(lPlayer->CurrentIndex(), static_cast<unsigned long>(lStep.mIndex));
    // Device timestamps are 10 ms apart; replayed ones count from the first frame of the file.
    EXPECT_EQ(lPlayer->RelativeTimestamp(), static_cast<unsigned int>(10 * (lStep.mIndex - 1)));
  }
  EXPECT_GT(lState.count(), 0);
  // Back before the first frame: the next ReadNext replays frame 1 again.
  EXPECT_TRUE(lPlayer->MoveTo(0));
  EXPECT_EQ(lPlayer->CurrentIndex(), 0u);
  ASSERT_TRUE(lPlayer->ReadNext());
  EXPECT_EQ(Shown(*lPlayer->Sensor()), 0);

  // Ranges outside the frames; the ones inside are extracted by the replay form's and the command
  // line's suites, which replay what they get.
  for (const auto& [lFirst, lLast] : {std::pair{0ul, 3ul}, {5ul, 11ul}, {6ul, 5ul}}) {
    EXPECT_FALSE(lPlayer->Extract(lFirst, lLast, lDir.path() + QStringLiteral("/part.ptl"))) << lFirst << "-" << lLast;
  }
}

TEST(RecordPlayer, RefusesFilesItCannotReplay)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  const QString lBase = lDir.path() + QStringLiteral("/f");
  const PtU32 lRecord = PxTestSensor::RECORD_DOCUMENT;
  struct Case
  {
    const char* mName;
    std::function<QString()> mFile;
    unsigned int mCode; // 0: opens; the player is then driven to its end
    bool mRegistered;
  } const lCases[] = {
      {"missing file", [&] { return lBase + QStringLiteral("missing.ptl"); }, QFileDevice::OpenError, true},
      {"shorter than two words",
       [&] {
         PxTest::WriteFile(lBase + QStringLiteral("short.ptl"), "PXDC");
         return lBase + QStringLiteral("short.ptl");
       },
       QFileDevice::ReadError, true},
      {"other document type",
       [&] { return WriteFile(lBase + QStringLiteral("1.ptl"), 0x1234, [](PtDocumentWriter& w) { Header(w); }); }, 0,
       false},
      {"no header first",
       [&] {
         return WriteFile(lBase + QStringLiteral("6.ptl"), lRecord, [](PtDocumentWriter& w) {
           w.StartSection(PxRecorder::SECTION_FRAME);
           w.EndSection();
         });
       },
       6, true},
      {"unknown header section",
       [&] {
         return WriteFile(lBase + QStringLiteral("9.ptl"), lRecord, [](PtDocumentWriter& w) { Header(w, 0x777); });
       },
       9, true},
      {"not a frame",
       [&] {
         return WriteFile(lBase + QStringLiteral("7.ptl"), lRecord, [](PtDocumentWriter& w) {
           Header(w);
           w.StartSection(0x1234);
           w.EndSection();
           w.StartSection(PxRecorder::SECTION_FRAME);
           w.EndSection();
         });
       },
       7, true},
  };
  for (const Case& lCase : lCases) {
    SCOPED_TRACE(lCase.mName);
    const QString lFile = lCase.mFile();
    PxRecordPlayer* lMade = nullptr;
    const unsigned int lCode = PxTest::ErrorCode(
        [&] {
          std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
          lMade = lPlayer.get();
          if (lPlayer) {
            lPlayer->Start();
            while (lPlayer->ReadNext()) {
            }
          }
        },
        true);
    EXPECT_EQ(lCode, lCase.mCode);
    if (lCase.mCode == 0) {
      EXPECT_EQ(lMade != nullptr, lCase.mRegistered);
    }
  }
}

TEST(RecordPlayer, DeliversTheKnownSectionsOfAFrameAndSkipsTheRest)
{
  RegisterTestPlayer();
  QTemporaryDir lDir;
  SyntheticSensor lSource(0, 0);
  lSource.PublishEchoes(5);
  const QString lFile =
      WriteFile(lDir.path() + QStringLiteral("/x.ptl"), PxTestSensor::RECORD_DOCUMENT, [&](PtDocumentWriter& w) {
        Header(w);
        w.StartSection(PxRecorder::SECTION_FRAME);
        w.StartSection(0x4444); // from a newer recorder
        const PtU32 lValue = 1;
        w.AddElement(1, &lValue, 4, 1, 4);
        w.EndSection();
        lSource.mSensor.EchoesProvider().Save(w);
        w.EndSection();
        w.StartSection(PxRecorder::SECTION_FRAME);
        w.EndSection();
      });
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
  lPlayer->Start();
  QSignalSpy lEchoes(&lPlayer->Sensor()->EchoesProvider(), &PxResultProvider::NewData);
  ASSERT_TRUE(lPlayer->ReadNext());
  EXPECT_EQ(lEchoes.count(), 1);
  QString lWhy;
  EXPECT_EQ(FrameShown(*lPlayer->Sensor(), false, &lWhy), 5) << lWhy.toStdString();
  EXPECT_FALSE(lPlayer->ReadNext());

  // A recording closed before its first frame has none.
  QTemporaryDir lEmpty;
  std::unique_ptr<PxRecordPlayer> lNothing(PxRecordPlayer::CreateFromFile(RecordSynthetic(lEmpty.path(), 0, 2, 8)));
  lNothing->Start();
  EXPECT_EQ(lNothing->RecordSize(), 0u);
  EXPECT_FALSE(lNothing->ReadNext());
  EXPECT_FALSE(lNothing->MoveTo(1));
  EXPECT_TRUE(lNothing->MoveTo(0));
}
