#include "PxSensorUi.h"

#include "PtErrorLogForm.h"
#include "PtFileChooser.h"
#include "PtMessageBox.h"
#include "PtPreferencesDialog.h"
#include "PtTime.h"
#include "PxCalibrationEditor.h"
#include "PxDataLogger.h"
#include "PxDebugForm.h"
#include "PxEchoForm.h"
#include "PxHost.h"
#include "PxRecorder.h"
#include "PxSensor.h"
#include "PxStaticUi.h"
#include "PxSystemStateForm.h"
#include "PxTraceForm.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace {
// Generous bounds: the recorder splits files and stops by these, it does not need them small.
constexpr int MAX_FILE_SIZE_MB = 100000;
constexpr int MAX_RECORD_MINUTES = 100000;

QLabel* StatusLabel()
{
  auto* lLabel = new QLabel;
  lLabel->setObjectName(QStringLiteral("PxSensorUiStatus"));
  lLabel->hide();
  return lLabel;
}

// Shown only while there is something to say, and never squeezed below its text: the status bar
// hands out room by size hint, which a label updated every tick would otherwise lose.
void SetStatus(QLabel* aLabel, const QString& aText)
{
  if (!aLabel) {
    return;
  }
  aLabel->setText(aText);
  aLabel->setMinimumWidth(std::max(aLabel->minimumWidth(), aLabel->fontMetrics().horizontalAdvance(aText)));
  aLabel->setVisible(!aText.isEmpty());
}

// A directory line edit with its "Browse..." button, in one row.
QWidget* DirectoryRow(QLineEdit* aEdit, QPushButton* aBrowse)
{
  auto* lRow = new QWidget;
  auto* lLayout = new QHBoxLayout(lRow);
  lLayout->setContentsMargins(0, 0, 0, 0);
  lLayout->addWidget(aEdit, 1);
  lLayout->addWidget(aBrowse);
  return lRow;
}
} // namespace

PxSensorUi::PxSensorUi(PxSensor* aSensor)
    : PxDeviceUi(aSensor)
    , mRecord(tr("Start Recording"))
    , mLog(tr("Start Data Logging"))
    , mViewState(tr("State"))
    , mViewRawTraces(tr("Raw Traces"))
    , mViewFilteredTraces(tr("Filtered Traces"))
    , mViewEchoes(tr("Raw Detections"))
    , mDebug(tr("Debug"))
    , mCalibration(tr("Calibration..."))
    , mRecordStatus(StatusLabel())
    , mLogStatus(StatusLabel())
{
  PxHost* lHost = PxStaticUi::Host();
  lHost->AddFileAction(&mRecord);
  lHost->AddFileAction(&mLog);
  PxStaticUi::AddDeviceAction(&mDebug);
  PxStaticUi::AddDeviceAction(&mCalibration);
  for (QAction* lAction : {&mViewState, &mViewRawTraces, &mViewFilteredTraces, &mViewEchoes}) {
    lAction->setCheckable(true);
    PxStaticUi::AddViewAction(lAction);
  }
  mDebug.setCheckable(true);
  lHost->AddStatusWidget(mRecordStatus);
  lHost->AddStatusWidget(mLogStatus);

  connect(&mRecord, &QAction::triggered, this, &PxSensorUi::MIFileRecordTriggered);
  connect(&mLog, &QAction::triggered, this, &PxSensorUi::MIFileLogTriggered);
  connect(&mViewState, &QAction::triggered, this, &PxSensorUi::MIViewStateTriggered);
  connect(&mViewRawTraces, &QAction::triggered, this, &PxSensorUi::MIViewRawTracesTriggered);
  connect(&mViewFilteredTraces, &QAction::triggered, this, &PxSensorUi::MIViewFilteredTracesTriggered);
  connect(&mViewEchoes, &QAction::triggered, this, &PxSensorUi::MIViewEchoesTriggered);
  connect(&mDebug, &QAction::triggered, this, &PxSensorUi::MIDeviceDebugTriggered);
  connect(&mCalibration, &QAction::triggered, this, &PxSensorUi::MIDeviceCalibTriggered);
  connect(lHost, &PxHost::Tick, this, &PxSensorUi::HostTick);
}

PxSensorUi::~PxSensorUi()
{
  // The forms outlive this part of the UI by a moment (the device UI deletes them) and must not
  // reach the actions, which go first.
  for (PxDockWidget* lWindow : Windows()) {
    lWindow->SetLinkedActions(nullptr);
  }
  delete mRecordStatus;
  delete mLogStatus;
}

PxSensor* PxSensorUi::Sensor() const
{
  return static_cast<PxSensor*>(Device());
}

QString PxSensorUi::RecordStatus() const
{
  return mRecordStatus ? mRecordStatus->text() : QString();
}

QString PxSensorUi::LogStatus() const
{
  return mLogStatus ? mLogStatus->text() : QString();
}

void PxSensorUi::UpdateControls()
{
  PxDeviceUi::UpdateControls();
  PxSensor* lSensor = Sensor();
  mRecord.setText(lSensor->Recorder() ? tr("Stop Recording") : tr("Start Recording"));
  mLog.setText(lSensor->DataLogger() ? tr("Stop Data Logging") : tr("Start Data Logging"));
  const bool lLive = lSensor->IsLive();
  mRecord.setEnabled(lLive);
  mLog.setEnabled(lLive);
  // Memory accesses and calibration writes would disturb the data being written: both wait until
  // recording and logging have stopped.
  mDebug.setEnabled(lLive && !lSensor->MemoryNames().isEmpty() &&
                    (FindWindow(static_cast<int>(mDebugId)) || lSensor->CanModifyConfiguration()));
  mCalibration.setEnabled(lSensor->CanModifyConfiguration());
  mViewFilteredTraces.setVisible(lSensor->DeliversFilteredTraces());
}

// ---- Forms -------------------------------------------------------------------------------------

PxSystemStateForm* PxSensorUi::CreateStateWindow()
{
  return new PxSystemStateForm(PxStaticUi::Host());
}

void PxSensorUi::MIViewStateTriggered()
{
  if (CloseWindow(static_cast<int>(mStateId))) {
    return;
  }
  PxSystemStateForm* lForm = CreateStateWindow();
  mStateId = lForm->Id();
  lForm->SetLinkedActions(&mViewState);
  lForm->SetSensor(Sensor());
  AddFloatingWindow(lForm, 0);
}

void PxSensorUi::MIViewEchoesTriggered()
{
  if (CloseWindow(static_cast<int>(mEchoId))) {
    return;
  }
  auto* lForm = new PxEchoForm(Sensor(), PxStaticUi::Host());
  mEchoId = lForm->Id();
  lForm->SetLinkedActions(&mViewEchoes);
  AddFloatingWindow(lForm, 0);
}

void PxSensorUi::MIDeviceDebugTriggered()
{
  if (CloseWindow(static_cast<int>(mDebugId))) {
    UpdateControls();
    return;
  }
  auto* lForm = new PxDebugForm(PxStaticUi::Host());
  mDebugId = lForm->Id();
  lForm->SetLinkedActions(&mDebug);
  lForm->SetSensor(Sensor());
  AddFloatingWindow(lForm, 0);
  UpdateControls();
}

void PxSensorUi::MIDeviceCalibTriggered()
{
  PxCalibrationEditor lEditor(Sensor(), PxStaticUi::Host());
  lEditor.exec();
}

void PxSensorUi::MIViewRawTracesTriggered()
{
  ManageTraceWindow(0);
}

void PxSensorUi::MIViewFilteredTracesTriggered()
{
  ManageTraceWindow(1);
}

void PxSensorUi::ManageTraceWindow(int aKind)
{
  const unsigned int lBit = 1u << aKind;
  PxDockWidget* lWindow = FindWindow(static_cast<int>(mTraceId));
  if (!lWindow) {
    auto* lForm = new PxTraceForm(PxStaticUi::Host());
    mTraceId = lForm->Id();
    lForm->SetLinkedActions(&mViewRawTraces, &mViewFilteredTraces);
    lForm->SetFlags(lBit);
    lForm->SetSensor(Sensor());
    // The other kind's action may still be checked from a form the user closed some other way.
    TraceAction(1 - aKind)->setChecked(false);
    AddFloatingWindow(lForm, aKind);
    return;
  }
  const unsigned int lFlags = lWindow->Flags();
  if (!(lFlags & lBit)) {
    lWindow->SetFlags(lFlags | lBit);
    TraceAction(aKind)->setChecked(true);
  } else if ((lFlags & ~lBit) == 0) {
    CloseWindow(static_cast<int>(mTraceId));
  } else {
    lWindow->SetFlags(lFlags & ~lBit);
    TraceAction(aKind)->setChecked(false);
  }
}

PxDockWidget* PxSensorUi::RequestWindow(unsigned int aId, unsigned int aFlags)
{
  // A saved layout asks for each window once; one that is already open is found, not toggled.
  switch (aId) {
  case WINDOW_STATE:
    if (!FindWindow(static_cast<int>(mStateId))) {
      MIViewStateTriggered();
    }
    return FindWindow(static_cast<int>(mStateId));
  case WINDOW_DEBUG:
    // The layout is shared with the live sensor's; a replayed one has no memories to read.
    if (!Sensor()->IsLive()) {
      return nullptr;
    }
    if (!FindWindow(static_cast<int>(mDebugId))) {
      MIDeviceDebugTriggered();
    }
    return FindWindow(static_cast<int>(mDebugId));
  case WINDOW_TRACES:
    for (int lKind = 0; lKind < 2; ++lKind) {
      PxDockWidget* lOpen = FindWindow(static_cast<int>(mTraceId));
      if ((aFlags & (1u << lKind)) && !(lOpen && (lOpen->Flags() & (1u << lKind)))) {
        ManageTraceWindow(lKind);
      }
    }
    return FindWindow(static_cast<int>(mTraceId));
  case WINDOW_ECHOES:
    if (!FindWindow(static_cast<int>(mEchoId))) {
      MIViewEchoesTriggered();
    }
    return FindWindow(static_cast<int>(mEchoId));
  default:
    return nullptr;
  }
}

// ---- Recording and logging ---------------------------------------------------------------------

void PxSensorUi::CreateRecorder()
{
  CloseWindow(static_cast<int>(mDebugId));
  Sensor()->CreateRecorder();
}

void PxSensorUi::CreateDataLogger()
{
  CloseWindow(static_cast<int>(mDebugId));
  Sensor()->CreateDataLogger();
}

void PxSensorUi::StopRecording()
{
  mRecordShown = false;
  SetStatus(mRecordStatus, QString());
  try {
    Sensor()->StopRecorder();
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

void PxSensorUi::StopLogging()
{
  mLogShown = false;
  SetStatus(mLogStatus, QString());
  try {
    Sensor()->StopDataLogger();
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

void PxSensorUi::MIFileRecordTriggered()
{
  if (Sensor()->Recorder()) {
    StopRecording();
    return;
  }
  if (Sensor()->PropertyModified()) {
    ShowInfo(tr("Cannot start recording while there are unapplied changes."));
    return;
  }
  try {
    CreateRecorder();
    mRecordShown = true;
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

void PxSensorUi::MIFileLogTriggered()
{
  if (Sensor()->DataLogger()) {
    StopLogging();
    return;
  }
  if (Sensor()->PropertyModified()) {
    ShowInfo(tr("Cannot start logging while there are unapplied changes."));
    return;
  }
  try {
    CreateDataLogger();
    mLogShown = true;
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

unsigned int PxSensorUi::RecordElapsedTime() const
{
  return Sensor()->Recorder() ? Sensor()->Recorder()->ElapsedTime() : 0;
}

unsigned int PxSensorUi::LogElapsedTime() const
{
  return Sensor()->DataLogger() ? Sensor()->DataLogger()->ElapsedTime() : 0;
}

void PxSensorUi::HostTick()
{
  PxSensor* lSensor = Sensor();
  if (lSensor->Recorder()) {
    const unsigned int lElapsed = RecordElapsedTime();
    if (static_cast<PtU64>(lElapsed) < static_cast<PtU64>(PxRecorder::MaxTime()) * 60000u) {
      SetStatus(mRecordStatus, tr("Record ") + PtToElapsedTimeString(lElapsed) + QLatin1Char(' '));
    } else {
      StopRecording();
    }
  } else if (mRecordShown) {
    // The recorder stopped itself after a write error (and said so): follow it.
    mRecordShown = false;
    SetStatus(mRecordStatus, QString());
    UpdateControls();
  }
  if (lSensor->DataLogger()) {
    SetStatus(mLogStatus, tr("Log ") + PtToElapsedTimeString(LogElapsedTime()) + QLatin1Char(' '));
  } else if (mLogShown) {
    mLogShown = false;
    SetStatus(mLogStatus, QString());
    UpdateControls();
  }
}

// ---- Preferences -------------------------------------------------------------------------------

void PxSensorUi::PreferencesDialogOpen(PtPreferencesDialog* aDialog)
{
  auto* lRecorderPage = new QWidget;
  auto* lRecorderLayout = new QVBoxLayout(lRecorderPage);

  auto* lWhere = new QGroupBox(tr("Where"));
  auto* lWhereLayout = new QFormLayout(lWhere);
  mRecordDirectory = new QLineEdit(PxRecorder::Directory());
  auto* lBrowseR = new QPushButton(tr("Browse..."));
  connect(lBrowseR, &QPushButton::clicked, this, &PxSensorUi::PBBrowseRClicked);
  lWhereLayout->addRow(tr("Directory:"), DirectoryRow(mRecordDirectory, lBrowseR));

  auto* lWhat = new QGroupBox(tr("What"));
  auto* lWhatLayout = new QVBoxLayout(lWhat);
  mRawTraces = new QCheckBox(tr("Raw Traces"));
  mRawTraces->setChecked(PxRecorder::Flags() & PxRecorder::CONTENT_RAW_TRACES);
  mFilteredTraces = new QCheckBox(tr("Filtered Traces"));
  mFilteredTraces->setChecked(PxRecorder::Flags() & PxRecorder::CONTENT_FILTERED_TRACES);
  lWhatLayout->addWidget(mRawTraces);
  lWhatLayout->addWidget(mFilteredTraces);

  auto* lHowLong = new QGroupBox(tr("How Long"));
  auto* lHowLongLayout = new QFormLayout(lHowLong);
  mMaxFileSize = new QSpinBox;
  mMaxFileSize->setRange(1, MAX_FILE_SIZE_MB);
  mMaxFileSize->setValue(static_cast<int>(PxRecorder::MaxFileSize()));
  mMaxTime = new QSpinBox;
  mMaxTime->setRange(1, MAX_RECORD_MINUTES);
  mMaxTime->setValue(static_cast<int>(PxRecorder::MaxTime()));
  lHowLongLayout->addRow(tr("Maximum file size (MB):"), mMaxFileSize);
  lHowLongLayout->addRow(tr("Maximum record time (minutes):"), mMaxTime);

  lRecorderLayout->addWidget(lWhere);
  lRecorderLayout->addWidget(lWhat);
  lRecorderLayout->addWidget(lHowLong);
  lRecorderLayout->addStretch(1);
  aDialog->AddPage(QString(), tr("Recorder"), lRecorderPage);

  auto* lLoggerPage = new QWidget;
  auto* lLoggerLayout = new QFormLayout(lLoggerPage);
  mLogDirectory = new QLineEdit(PxDataLogger::Directory());
  auto* lBrowseL = new QPushButton(tr("Browse..."));
  connect(lBrowseL, &QPushButton::clicked, this, &PxSensorUi::PBBrowseLClicked);
  lLoggerLayout->addRow(tr("Directory:"), DirectoryRow(mLogDirectory, lBrowseL));
  aDialog->AddPage(QString(), tr("Data Logger"), lLoggerPage);

  PxDeviceUi::PreferencesDialogOpen(aDialog);
}

void PxSensorUi::PBBrowseRClicked()
{
  if (!mRecordDirectory) {
    return;
  }
  const QString lDirectory =
      PtFileChooser::ExistingDirectory(mRecordDirectory->window(), tr("Recording Directory"), mRecordDirectory->text());
  if (!lDirectory.isEmpty()) {
    mRecordDirectory->setText(lDirectory);
  }
}

void PxSensorUi::PBBrowseLClicked()
{
  if (!mLogDirectory) {
    return;
  }
  const QString lDirectory =
      PtFileChooser::ExistingDirectory(mLogDirectory->window(), tr("Logging Directory"), mLogDirectory->text());
  if (!lDirectory.isEmpty()) {
    mLogDirectory->setText(lDirectory);
  }
}

void PxSensorUi::PreferencesDialogClosed(bool aCancel)
{
  if (!aCancel) {
    if (mRecordDirectory && mRawTraces && mFilteredTraces && mMaxFileSize && mMaxTime) {
      // Only the two trace bits are the user's to choose; anything else a default carried goes.
      const unsigned int lFlags = (mRawTraces->isChecked() ? PxRecorder::CONTENT_RAW_TRACES : 0u) |
                                  (mFilteredTraces->isChecked() ? PxRecorder::CONTENT_FILTERED_TRACES : 0u);
      PxRecorder::SetParameters(lFlags, mRecordDirectory->text(), static_cast<unsigned int>(mMaxFileSize->value()),
                                static_cast<unsigned int>(mMaxTime->value()));
    }
    if (mLogDirectory) {
      PxDataLogger::SetParameters(mLogDirectory->text());
    }
  }
  PxDeviceUi::PreferencesDialogClosed(aCancel);
  ForgetPages();
}

void PxSensorUi::ForgetPages()
{
  mRecordDirectory = nullptr;
  mMaxFileSize = nullptr;
  mMaxTime = nullptr;
  mRawTraces = nullptr;
  mFilteredTraces = nullptr;
  mLogDirectory = nullptr;
}
