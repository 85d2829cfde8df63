#include "PtModalScript.h"
#include "PxEchoForm.h"
#include "PxRecordPlayerForm.h"
#include "PxResultState.h"
#include "PxStaticUi.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "ReplayTestUi.h"

#include <QAction>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPointer>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTemporaryDir>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>

using namespace RecordingTest;
using namespace ReplayTest;

namespace {

// The value of one info row: its label is named after the row.
QString Info(QWidget& aForm, const char* aRow)
{
  auto* lLabel = aForm.findChild<QLabel*>(QLatin1String(aRow));
  return lLabel ? lLabel->text() : QStringLiteral("(no row %1)").arg(QLatin1String(aRow));
}

// Tags frames aFrom to aTo of aForm's record, extracts them to aFile as a user does (the worker
// writes while the window goes on) and opens the result in a form of its own.
std::unique_ptr<PxRecordPlayerForm> Extract(PxRecordPlayerForm& aForm, unsigned long aFrom, unsigned long aTo,
                                            const QString& aFile)
{
  aForm.Seek(aFrom);
  aForm.PBStartTagClicked();
  aForm.Seek(aTo);
  aForm.PBEndTagClicked();
  QSignalSpy lDone(&aForm, &PxRecordPlayerForm::ExtractFinished);
  PtModalScript lScript;
  lScript.Queue(aFile);
  aForm.PBExtractClicked();
  EXPECT_TRUE(lDone.wait(PxTest::WAIT_MS) && lDone.at(0).at(0).toBool());
  auto lPart = std::make_unique<PxRecordPlayerForm>(nullptr);
  EXPECT_TRUE(lPart->OpenFile(aFile));
  return lPart;
}

class ReplayForm : public ::testing::Test
{
protected:
  void SetUp() override
  {
    RegisterUiPlayer();
    // Traces too: a frame shows whole only when its traces, echoes and state belong together.
    mFile = RecordSynthetic(mDir.path(), 20, 2, 16);
    ASSERT_FALSE(mFile.isEmpty());
    mForm.resize(640, 360);
    mForm.show();
  }

  QTemporaryDir mDir;
  QString mFile;
  PxRecordPlayerForm mForm{nullptr};
};
} // namespace

TEST_F(ReplayForm, ChoosesARecordAndMovesThroughItsFrames)
{
  {
    PtModalScript lScript;
    lScript.Queue(mFile);
    mForm.PBOpenClicked();
    ASSERT_EQ(lScript.Interactions().size(), 1);
    EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_OPEN_FILE);
  }
  ASSERT_NE(mForm.Player(), nullptr);
  EXPECT_EQ(PxRecordPlayerForm::RecentFiles().value(0), QFileInfo(mFile).absoluteFilePath());
  EXPECT_EQ(Info(mForm, "Frames"), QStringLiteral("20"));
  EXPECT_EQ(Info(mForm, "Duration"), QStringLiteral("0:00:00.190")) << "19 intervals of 10 ms";
  EXPECT_EQ(mForm.Player()->CurrentIndex(), 1u) << "the first frame is shown at once";

  auto* lSlider = mForm.findChild<QSlider*>();
  auto* lBox = mForm.findChild<QSpinBox*>();
  auto* lState = qobject_cast<PxResultState*>(mForm.Sensor()->GetProvider(PxResultProvider::ID_STATE));
  ASSERT_NE(lState, nullptr);
  struct Step
  {
    const char* mWhat;
    std::function<void()> mDo;
    unsigned long mIndex;
  } const lSteps[] = {
      {"next", [&] { mForm.PBNextClicked(); }, 2},
      {"back", [&] { mForm.PBPreviousClicked(); }, 1},
      {"back on the first stays", [&] { mForm.PBPreviousClicked(); }, 1},
      {"last", [&] { mForm.PBLastClicked(); }, 20},
      {"next after the last stays", [&] { mForm.PBNextClicked(); }, 20},
      {"first", [&] { mForm.PBFirstClicked(); }, 1},
      {"slider dragged", [&] { lSlider->setValue(12); }, 12},
      {"frame box",
       [&] {
         lBox->setValue(5);
         emit lBox->editingFinished();
       },
       5},
  };
  for (const Step& lStep : lSteps) {
    SCOPED_TRACE(lStep.mWhat);
    lStep.mDo();
    EXPECT_EQ(mForm.Player()->CurrentIndex(), lStep.mIndex);
    EXPECT_EQ(Shown(*mForm.Sensor()), static_cast<long>(lStep.mIndex) - 1);
    EXPECT_EQ(lSlider->value(), static_cast<int>(lStep.mIndex));
    EXPECT_EQ(lBox->value(), static_cast<int>(lStep.mIndex));
    // What the state form shows as the elapsed time: counted from the record's first frame.
    EXPECT_EQ(lState->TimestampResult()->IntValue(0), (lStep.mIndex - 1) * 10);
  }
  QCoreApplication::processEvents(); // the labels' new sizes reach the layout
  PxTest::SaveToGallery(&mForm, QStringLiteral("replay_form"));

  // A tagged range extracted replays as a record of its own.
  const std::unique_ptr<PxRecordPlayerForm> lPart = Extract(mForm, 4, 8, mDir.filePath(QStringLiteral("part.ptl")));
  mForm.CloseFile();
  ASSERT_NE(lPart->Player(), nullptr);
  EXPECT_EQ(lPart->Player()->RecordSize(), 5u);
  EXPECT_EQ(Shown(*lPart->Sensor()), 3);
  lPart->PBLastClicked();
  EXPECT_EQ(Shown(*lPart->Sensor()), 7);
}

TEST_F(ReplayForm, PlaysInRecordedTimeAtTheChosenSpeedAndLoops)
{
  ASSERT_TRUE(mForm.OpenFile(mFile));
  QSignalSpy lPlaying(&mForm, &PxRecordPlayerForm::PlayingChanged);
  // 19 intervals of 10 ms: real time takes 190 ms, 4x a quarter of it; never less.
  for (const auto& [lSpeed, lLeastMs] : {std::pair{1.0, 170}, {4.0, 40}, {0.0, 0}}) {
    SCOPED_TRACE(lSpeed);
    mForm.PBFirstClicked();
    mForm.SetSpeed(lSpeed);
    lPlaying.clear();
    QElapsedTimer lClock;
    lClock.start();
    mForm.PBPlayClicked();
    ASSERT_TRUE(mForm.IsPlaying());
    ASSERT_TRUE(lPlaying.wait(PxTest::WAIT_MS));
    ASSERT_EQ(lPlaying.size(), 2) << "started, then stopped at the end";
    EXPECT_GE(lClock.elapsed(), lLeastMs);
    EXPECT_EQ(mForm.Player()->CurrentIndex(), 20u);
    EXPECT_EQ(Shown(*mForm.Sensor()), 19);
  }

  // Loop: the first frame follows the last until the user pauses.
  mForm.SetLoop(true);
  mForm.SetSpeed(PxRecordPlayerForm::SPEED_AS_FAST_AS_POSSIBLE);
  QSignalSpy lShown(&mForm, &PxRecordPlayerForm::FrameShown);
  mForm.PBPlayClicked();
  bool lWrapped = false;
  for (int i = 0; i < 200 && !lWrapped; ++i) {
    ASSERT_TRUE(lShown.wait(PxTest::WAIT_MS));
    lWrapped = lShown.last().at(0).toULongLong() < 5 && lShown.size() > 1;
  }
  EXPECT_TRUE(lWrapped);
  EXPECT_TRUE(mForm.IsPlaying());
  mForm.PBPlayClicked();
  EXPECT_FALSE(mForm.IsPlaying());
}

TEST_F(ReplayForm, BadFilesEndInAClearMessage)
{
  const QByteArray lGood = PxTest::ReadFile(mFile);
  QByteArray lDamaged = lGood;
  // Garbage over a frame in the middle: the frames before it replay, that one is reported.
  lDamaged.replace(lGood.size() / 2, 64, QByteArray(64, '\xA5'));
  // Each file (no bytes: it does not exist), and whether it opens; the cut one, last, replays to
  // the cut without a message, all others end in one.
  for (const auto& [lName, lBytes, lOpens] :
       {std::tuple{"notes.ptl", QByteArray("These are my notes, not a recording.\n"), false},
        {"gone.ptl", QByteArray(), false},
        {"damaged.ptl", lDamaged, true},
        {"cut.ptl", lGood.left(lGood.size() * 6 / 10), true}}) {
    SCOPED_TRACE(lName);
    const QString lFile = mDir.filePath(QLatin1String(lName));
    if (!lBytes.isNull()) {
      PxTest::WriteFile(lFile, lBytes);
    }
    PtModalScript lScript;
    ASSERT_EQ(mForm.OpenFile(lFile), lOpens);
    if (lOpens) {
      mForm.SetSpeed(PxRecordPlayerForm::SPEED_AS_FAST_AS_POSSIBLE);
      QSignalSpy lPlaying(&mForm, &PxRecordPlayerForm::PlayingChanged);
      mForm.PBPlayClicked();
      ASSERT_TRUE(lPlaying.wait(PxTest::WAIT_MS));
    }
    const bool lCut = QLatin1String(lName) == QLatin1String("cut.ptl");
    ASSERT_EQ(lScript.Interactions().size(), lCut ? 0 : 1);
    if (!lCut) {
      EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_ERROR);
      EXPECT_TRUE(lScript.Interactions()[0].mText.contains(QLatin1String("cannot be replayed")))
          << lScript.Interactions()[0].mText.toStdString();
    }
    if (lOpens && !lCut) {
      // The message names the damaged frame, and the one before it still replays whole.
      const unsigned long lDamagedFrame = mForm.Player()->CurrentIndex();
      EXPECT_GT(lDamagedFrame, 1u);
      EXPECT_LT(lDamagedFrame, 20u);
      EXPECT_TRUE(lScript.Interactions()[0].mText.startsWith(QStringLiteral("Frame %1 ").arg(lDamagedFrame)));
      mForm.PBPreviousClicked();
      EXPECT_EQ(Shown(*mForm.Sensor()), static_cast<long>(lDamagedFrame) - 2);
    }
  }
  const unsigned long lSize = mForm.Player()->RecordSize();
  EXPECT_GT(lSize, 5u);
  EXPECT_LT(lSize, 20u);
  EXPECT_EQ(mForm.Player()->CurrentIndex(), lSize) << "played to the cut";
  EXPECT_EQ(Shown(*mForm.Sensor()), static_cast<long>(lSize) - 1);
  EXPECT_TRUE(Info(mForm, "Frames").contains(QLatin1String("cut short")));
  // A range that stops before the cut holds exactly the tagged frames, as a finished file.
  const std::unique_ptr<PxRecordPlayerForm> lPart =
      Extract(mForm, 2, lSize - 1, mDir.filePath(QStringLiteral("cut-part.ptl")));
  ASSERT_NE(lPart->Player(), nullptr);
  EXPECT_EQ(lPart->Player()->RecordSize(), lSize - 2);
  EXPECT_EQ(Info(*lPart, "Frames"), QString::number(lSize - 2));
  lPart->PBLastClicked();
  EXPECT_EQ(Shown(*lPart->Sensor()), static_cast<long>(lSize) - 2);
}

TEST(ReplayInTheApplication, ReplayedSensorHasTheSensorFormsViewsOnlyUntilTheReplayEnds)
{
  RegisterUiPlayer();
  QTemporaryDir lDir;
  const QString lFile = RecordSynthetic(lDir.path(), 10, 2, 16);
  PxTest::Host lHost(true);
  ASSERT_TRUE(PxStaticUi::Initialize(&lHost));
  PxStaticUi* lApp = PxStaticUi::Singleton();
  // How often the View menu offers the replayed sensor's detections.
  auto lDetections = [&] {
    const QList<QAction*> lActions = lApp->ViewMenu()->actions();
    return std::count_if(lActions.begin(), lActions.end(), [](QAction* a) { return a->text() == "Raw Detections"; });
  };
  // Every way a replay ends; the forms opened in the first come back from the saved layout.
  struct End
  {
    const char* mHow;
    std::function<void()> mEnd;
  } const lEnds[] = {
      {"close button", [&] { lApp->RecordPlayerForm()->close(); }},
      {"Replay... again", [&] { lApp->ReplayAction()->trigger(); }},
      {"another record", [&] { lApp->RecordPlayerForm()->OpenFile(lFile); }},
      {"a record that fails to open",
       [&] {
         PtModalScript lScript;
         lApp->RecordPlayerForm()->OpenFile(lDir.filePath(QStringLiteral("gone.ptl")));
       }},
      {"quit",
       [&] {
         bool lAccept = true;
         emit lHost.QuitRequested(lAccept);
         EXPECT_TRUE(lAccept);
       }},
  };
  for (const End& lEnd : lEnds) {
    SCOPED_TRACE(lEnd.mHow);
    const bool lFirst = &lEnd == &lEnds[0];
    if (!lApp->RecordPlayerForm()) {
      lApp->ReplayAction()->trigger();
    }
    PxRecordPlayerForm* lForm = lApp->RecordPlayerForm();
    if (!lForm->Ui()) {
      ASSERT_TRUE(lForm->OpenFile(lFile));
    }
    auto* lUi = qobject_cast<PxSensorUi*>(PxStaticUi::ReplayUi());
    ASSERT_NE(lUi, nullptr);
    EXPECT_EQ(PxStaticUi::Ui(), nullptr);
    EXPECT_EQ(lHost.mDeviceContexts, 0) << "nothing is connected";
    EXPECT_EQ(lUi->Sensor(), lForm->Sensor());
    EXPECT_EQ(lDetections(), 1);
    EXPECT_FALSE(lApp->ConnectAction()->isEnabled());
    EXPECT_EQ(lApp->ConnectionStatus(), QStringLiteral(" Replay: %1 ").arg(QFileInfo(lFile).fileName()));
    for (QAction* lAction :
         {lUi->ApplyAction(), lUi->UndoAction(), lUi->LoadAction(), lUi->ResetAction(), lUi->UpdateAction(),
          lUi->RecordAction(), lUi->LogAction(), lUi->DebugAction(), lUi->CalibrationAction()}) {
      EXPECT_FALSE(lAction->isEnabled()) << lAction->text().toStdString();
    }
    EXPECT_FALSE(lUi->FilteredTracesAction()->isVisible()) << "the test sensor has no filtered traces";
    if (lFirst) {
      // Paused on frame 4: a form opened now shows it at once.
      lForm->Seek(4);
      for (QAction* lView : {lUi->StateAction(), lUi->RawTracesAction(), lUi->EchoesAction()}) {
        ASSERT_TRUE(lView->isEnabled());
        lView->trigger();
      }
      QCoreApplication::processEvents();
    }
    ASSERT_EQ(lUi->Windows().size(), 3) << "opened, or restored from the layout saved at the last end";
    QList<QPointer<PxDockWidget>> lForms;
    for (PxDockWidget* lWindow : lUi->Windows()) {
      lForms << lWindow;
      auto* lEchoes = qobject_cast<PxEchoForm*>(lWindow);
      if (lFirst && lEchoes) {
        // It shows frame 4 already: the rows stay as they are when that frame comes again.
        const int lRows = lEchoes->FilledRows();
        EXPECT_GT(lRows, 0);
        lEchoes->EchoesNewData();
        EXPECT_EQ(lEchoes->FilledRows(), lRows);
      }
      if (lFirst) {
        PxTest::SaveToGallery(lWindow, QStringLiteral("replay_form_%1").arg(lWindow->PermanentId()));
      }
    }
    QPointer<PxSensor> lSensor = lForm->Sensor();
    QSignalSpy lUiChanged(lApp, &PxStaticUi::UiChanged);
    lEnd.mEnd();
    EXPECT_TRUE(lSensor.isNull()) << "the replayed sensor goes with its UI";
    for (const QPointer<PxDockWidget>& lWindow : lForms) {
      EXPECT_TRUE(lWindow.isNull());
    }
    EXPECT_FALSE(lUiChanged.isEmpty());
    const bool lReplaying = PxStaticUi::ReplayUi() != nullptr;
    EXPECT_EQ(lDetections(), lReplaying ? 1 : 0);
    EXPECT_EQ(lApp->ConnectAction()->isEnabled(), lApp->RecordPlayerForm() == nullptr);
    if (!lApp->RecordPlayerForm()) {
      EXPECT_EQ(lApp->ConnectionStatus(), QStringLiteral(" Not connected "));
    }
  }
  PxStaticUi::Shutdown();
}
