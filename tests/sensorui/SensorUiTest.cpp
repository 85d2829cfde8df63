#include "ConfigWindow.h"
#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PxControlConnection.h"
#include "PxDataLogger.h"
#include "PxDockWidget.h"
#include "PxEntry.h"
#include "PxIntegerProperty.h"
#include "PxRecorder.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxSimDriver.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxStaticUi.h"
#include "PxTest.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>
#include <set>

namespace {
// The sensor UI with the recording's running time under the test's control, so that the time
// limit is reached without waiting for it.
class TimedUi : public PxSimDeviceUi
{
public:
  using PxSimDeviceUi::PxSimDeviceUi;
  unsigned int mElapsed = 0;

protected:
  unsigned int RecordElapsedTime() const override { return mElapsed; }
};

// parvex-config's window with the simulated sensor connected in-process.
class SensorUiFlow : public ::testing::Test
{
protected:
  void TearDown() override { PxShutdown(); }
  void SetUp() override
  {
    mWindow = std::make_unique<ConfigWindow>();
    ASSERT_TRUE(PxInit(mWindow.get()));
    PxSimDriver::Register(mWindow.get());
    PxSimConnectionTypes::SetSimulatorStateDir(mState.filePath(QStringLiteral("sim")));
    PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, mState.filePath(QStringLiteral("records")), 500, 1);
    PxDataLogger::SetParameters(mState.filePath(QStringLiteral("logs")));
    mWindow->show();
    PxControlConnection* lLink = PxSimConnectionTypes::CreateSimulatorConnection();
    ASSERT_TRUE(lLink->Connect());
    auto* lSensor = static_cast<PxSimSensor*>(PxDevice::Create(PxSimSensor::TYPE, lLink));
    lLink->setParent(lSensor);
    lSensor->Initialize();
    mUi = new TimedUi(lSensor);
    PxStaticUi::Singleton()->InstallUi(mUi);
    ASSERT_EQ(PxStaticUi::Ui(), mUi);
  }
  PxSimSensor* Sensor() const { return static_cast<PxSimSensor*>(mUi->Sensor()); }
  void EditSetting()
  {
    auto& lPower =
        static_cast<PxIntegerProperty&>(Sensor()->Property(PxSimSensor::PropertyId(PxSimProtocol::ID_LIGHT_POWER)));
    lPower.SetValue(0, lPower.Value(0) == 50 ? 60 : 50);
    ASSERT_TRUE(Sensor()->PropertyModified());
  }
  // The open windows' permanent ids.
  std::multiset<unsigned int> OpenIds() const
  {
    std::multiset<unsigned int> lIds;
    for (PxDockWidget* lWindow : mUi->Windows()) {
      lIds.insert(lWindow->PermanentId());
    }
    return lIds;
  }

  QTemporaryDir mState;
  std::unique_ptr<ConfigWindow> mWindow;
  TimedUi* mUi = nullptr;
};

struct RunCase
{
  const char* mName;
  // Plain functions rather than member pointers: GCC's vptr sanitizer misreads calls through a
  // member pointer of a base with several bases and stops the sanitizer build.
  QAction* (*mAction)(PxSensorUi&);
  bool (*mRunning)(PxSensor&);
  QString (*mStatus)(const PxSensorUi&);
  QString mRefusal;
  QString mFailure;
  QString mStart;
  QString mStop;
  QString mStatusPrefix;
};

const RunCase RUN_CASES[] = {
    {"recording", [](PxSensorUi& u) { return u.RecordAction(); }, [](PxSensor& s) { return s.Recorder() != nullptr; },
     [](const PxSensorUi& u) { return u.RecordStatus(); },
     QStringLiteral("Cannot start recording while there are unapplied changes."),
     QStringLiteral("Failed to create recording directory."), QStringLiteral("Start Recording"),
     QStringLiteral("Stop Recording"), QStringLiteral("Record ")},
    {"logging", [](PxSensorUi& u) { return u.LogAction(); }, [](PxSensor& s) { return s.DataLogger() != nullptr; },
     [](const PxSensorUi& u) { return u.LogStatus(); },
     QStringLiteral("Cannot start logging while there are unapplied changes."),
     QStringLiteral("Failed to create logging directory."), QStringLiteral("Start Data Logging"),
     QStringLiteral("Stop Data Logging"), QStringLiteral("Log ")},
};

TEST_F(SensorUiFlow, RecordingAndLoggingWaitForApplyAndTheirFolderAndShowTheirRunningTime)
{
  ASSERT_TRUE(PxTest::WriteFile(mState.filePath(QStringLiteral("plain-file")), {}));
  for (const RunCase& lCase : RUN_CASES) {
    SCOPED_TRACE(lCase.mName);
    QAction* lAction = lCase.mAction(*mUi);
    EditSetting();
    // Refused while a change is not applied; then, applied, failing on a folder that cannot be
    // made (its parent is a file). Both are said, nothing runs, and the application goes on.
    PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, mState.filePath(QStringLiteral("plain-file/sub")), 500, 1);
    PxDataLogger::SetParameters(mState.filePath(QStringLiteral("plain-file/sub")));
    for (const auto& [lKind, lText] :
         {std::pair{PtModalScript::K_INFORMATION, lCase.mRefusal}, {PtModalScript::K_ERROR, lCase.mFailure}}) {
      PtModalScript lScript;
      lAction->trigger();
      ASSERT_EQ(lScript.Interactions().size(), 1);
      EXPECT_EQ(lScript.Interactions()[0].mKind, lKind);
      EXPECT_TRUE(lScript.Interactions()[0].mText.contains(lText)) << lScript.Interactions()[0].mText.toStdString();
      EXPECT_FALSE(lCase.mRunning(*Sensor()));
      EXPECT_EQ(lAction->text(), lCase.mStart);
      EXPECT_TRUE(mUi->LoadAction()->isEnabled());
      mUi->ApplyAction()->trigger();
    }
    PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, mState.filePath(QStringLiteral("records")), 500, 1);
    PxDataLogger::SetParameters(mState.filePath(QStringLiteral("logs")));

    PtModalScript lScript;
    lAction->trigger();
    EXPECT_TRUE(lScript.Interactions().isEmpty());
    ASSERT_TRUE(lCase.mRunning(*Sensor()));
    EXPECT_EQ(lAction->text(), lCase.mStop);
    // The configuration is locked while data is written.
    EXPECT_FALSE(mUi->LoadAction()->isEnabled());
    EXPECT_FALSE(mUi->CalibrationAction()->isEnabled());
    Q_EMIT mWindow->Tick();
    EXPECT_EQ(lCase.mStatus(*mUi), lCase.mStatusPrefix + QStringLiteral("0:00:00 "));

    lAction->trigger();
    EXPECT_FALSE(lCase.mRunning(*Sensor()));
    EXPECT_EQ(lAction->text(), lCase.mStart);
    EXPECT_EQ(lCase.mStatus(*mUi), QString());
    EXPECT_TRUE(mUi->LoadAction()->isEnabled());
  }
}

TEST_F(SensorUiFlow, TimeLimitStopsTheRecordingOnTheFirstTickPastIt)
{
  mUi->RecordAction()->trigger();
  ASSERT_NE(Sensor()->Recorder(), nullptr);
  Sensor()->Acquire(); // a frame, so that the file closes without waiting for one
  for (const auto& [lElapsed, lRunning, lStatus] :
       {std::make_tuple(59999u, true, QStringLiteral("Record 0:00:59 ")), std::make_tuple(60000u, false, QString())}) {
    mUi->mElapsed = lElapsed;
    Q_EMIT mWindow->Tick();
    EXPECT_EQ(Sensor()->Recorder() != nullptr, lRunning) << lElapsed;
    EXPECT_EQ(mUi->RecordStatus(), lStatus);
  }
  EXPECT_EQ(mUi->RecordAction()->text(), QStringLiteral("Start Recording"));
  // The file is finished: the recording can start again.
  mUi->mElapsed = 0;
  mUi->RecordAction()->trigger();
  EXPECT_NE(Sensor()->Recorder(), nullptr);
}

TEST_F(SensorUiFlow, OneTraceFormServesRawAndFilteredTraces)
{
  // Each step: the entry triggered, then the form's flags (0: no form), raw and filtered bits of
  // which also tell which entries are checked.
  QAction* lRaw = mUi->RawTracesAction();
  QAction* lFiltered = mUi->FilteredTracesAction();
  for (const auto& [lAction, lFlags] :
       {std::pair{lRaw, 1u}, {lFiltered, 3u}, {lRaw, 2u}, {lFiltered, 0u}, {lFiltered, 2u}}) {
    SCOPED_TRACE(lFlags);
    lAction->trigger();
    PxDockWidget* lForm = mUi->RequestWindow(3, 0);
    EXPECT_EQ(lForm ? lForm->Flags() : 0u, lFlags);
    EXPECT_EQ(OpenIds().count(3), lFlags ? 1u : 0u);
    EXPECT_EQ(lRaw->isChecked(), (lFlags & 1) != 0);
    EXPECT_EQ(lFiltered->isChecked(), (lFlags & 2) != 0);
  }
  // A layout asking for both kinds gets the one form with both bits, and both entries checked.
  PxDockWidget* lBoth = mUi->RequestWindow(3, 3);
  ASSERT_NE(lBoth, nullptr);
  EXPECT_EQ(lBoth->Flags(), 3u);
  EXPECT_EQ(OpenIds().count(3), 1u);
  EXPECT_TRUE(lRaw->isChecked() && lFiltered->isChecked());
  EXPECT_EQ(mUi->RequestWindow(7, 0), nullptr);
}

TEST_F(SensorUiFlow, ViewAndDeviceActionsToggleTheirForms)
{
  for (const auto& [lAction, lId] :
       {std::pair{mUi->StateAction(), 1u}, std::pair{mUi->DebugAction(), 2u}, std::pair{mUi->EchoesAction(), 4u}}) {
    lAction->trigger();
    EXPECT_EQ(OpenIds(), (std::multiset<unsigned int>{lId}));
    EXPECT_EQ(mUi->RequestWindow(lId, 0), mUi->RequestWindow(lId, 0)); // found, not toggled
    lAction->trigger();
    EXPECT_TRUE(OpenIds().empty() && !lAction->isChecked()) << lId;
  }
  // Recording closes the debug form: its memory accesses would stall the recording.
  mUi->DebugAction()->trigger();
  mUi->RecordAction()->trigger();
  Sensor()->Acquire();
  EXPECT_TRUE(OpenIds().empty());
  EXPECT_FALSE(mUi->DebugAction()->isEnabled());
}

TEST_F(SensorUiFlow, PreferencePagesStoreWhatTheUserChose)
{
  const QString lChosen = mState.filePath(QStringLiteral("chosen"));
  // The recorder's flags as the two boxes set them: raw traces 4, filtered traces 8.
  for (const unsigned int lFlags : {0u, 4u, 8u, 12u}) {
    SCOPED_TRACE(lFlags);
    // A stored default keeps bits no box shows; accepting the page drops them.
    PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, mState.filePath(QStringLiteral("records")), 500, 60);
    PtModalScript lScript;
    lScript.Queue([&](QDialog* aDialog) {
      auto* lPreferences = static_cast<PtPreferencesDialog*>(aDialog);
      QWidget* lRecorder = lPreferences->Page(QStringLiteral("Recorder"));
      QWidget* lLogger = lPreferences->Page(QStringLiteral("Data Logger"));
      ASSERT_TRUE(lRecorder && lLogger);
      if (lFlags == 0) {
        QStringList lTexts;
        for (QGroupBox* lGroup : lRecorder->findChildren<QGroupBox*>()) {
          lTexts << lGroup->title();
        }
        for (QLabel* lLabel : (lRecorder->findChildren<QLabel*>() + lLogger->findChildren<QLabel*>())) {
          lTexts << lLabel->text();
        }
        EXPECT_EQ(lTexts, (QStringList{"Where", "What", "How Long", "Directory:", "Maximum file size (MB):",
                                       "Maximum record time (minutes):", "Directory:"}));
      }
      const QList<QCheckBox*> lBoxes = lRecorder->findChildren<QCheckBox*>();
      ASSERT_EQ(lBoxes.size(), 2);
      lBoxes[0]->setChecked(lFlags & 4);
      lBoxes[1]->setChecked(lFlags & 8);
      lRecorder->findChildren<QSpinBox*>().at(1)->setValue(5);
      // "Browse..." puts the chosen directory in the field; the data logger's has its own.
      lRecorder->findChild<QPushButton*>()->click();
      EXPECT_EQ(lRecorder->findChild<QLineEdit*>()->text(), lChosen);
      aDialog->accept();
    });
    lScript.Queue(lChosen);
    PtPreferencesDialog lDialog(mWindow.get());
    lDialog.exec();
    EXPECT_EQ(lScript.Pending(), 0);
    EXPECT_EQ(PxRecorder::Flags(), lFlags);
    EXPECT_EQ(PxRecorder::MaxTime(), 5u);
    EXPECT_EQ(PxRecorder::Directory(), lChosen);
  }
  // Cancel keeps what was stored.
  PtModalScript lScript;
  lScript.QueueCancel();
  PtPreferencesDialog lDialog(mWindow.get());
  lDialog.exec();
  EXPECT_EQ(PxRecorder::Flags(), 12u);
}

} // namespace
