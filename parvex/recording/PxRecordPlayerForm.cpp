#include "PxRecordPlayerForm.h"

#include "PtErrorLogForm.h"
#include "PtFileChooser.h"
#include "PtMessageBox.h"
#include "PxDeviceUi.h"
#include "PxHost.h"
#include "PxIntegerProperty.h"
#include "PxRecordPlayer.h"
#include "PxSensor.h"
#include "PxStaticUi.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QLoggingCategory>
#include <QMenu>
#include <QProgressDialog>
#include <QPushButton>
#include <QSettings>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QThread>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {
Q_LOGGING_CATEGORY(lcReplay, "parvex.recording.replay")

const char* const SETTINGS_GROUP = "RecordPlayer";
const char* const KEY_RECENT = "RecentFiles";
const char* const KEY_DIRECTORY = "Directory";

// "As fast as possible" reads frames for this long before it lets the window paint and take input.
constexpr qint64 FAST_SLICE_MS = 15;
// Recorded gaps longer than this (a paused device, the seam of a split recording) are not waited
// out in real time.
constexpr PtU32 MAX_INTERVAL_MS = 2000;

struct SpeedChoice
{
  const char* mText;
  double mFactor;
};
const SpeedChoice SPEEDS[] = {
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "0.25x"), 0.25},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "0.5x"), 0.5},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "Real time"), 1.0},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "2x"), 2.0},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "4x"), 4.0},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "8x"), 8.0},
    {QT_TRANSLATE_NOOP("PxRecordPlayerForm", "as fast as possible"), PxRecordPlayerForm::SPEED_AS_FAST_AS_POSSIBLE},
};
constexpr int REAL_TIME_CHOICE = 2;

QString DurationText(PtU32 aMs)
{
  const PtU32 lSeconds = aMs / 1000;
  return QStringLiteral("%1:%2:%3.%4")
      .arg(lSeconds / 3600)
      .arg(lSeconds / 60 % 60, 2, 10, QLatin1Char('0'))
      .arg(lSeconds % 60, 2, 10, QLatin1Char('0'))
      .arg(aMs % 1000, 3, 10, QLatin1Char('0'));
}

QWidget* MessageParent(QWidget* aFallback)
{
  QWidget* lHost = PxStaticUi::Host();
  return lHost ? lHost : aFallback;
}
} // namespace

PxRecordPlayerForm::PxRecordPlayerForm(QWidget* aParent)
    : PxDockWidget(aParent)
{
  setObjectName(QStringLiteral("PxRecordPlayerForm"));
  setWindowTitle(tr("Replay"));
  BuildUi();
  mTimer.setSingleShot(true);
  connect(&mTimer, &QTimer::timeout, this, &PxRecordPlayerForm::TimerTimeout);
  mProgressTimer.setInterval(100);
  connect(&mProgressTimer, &QTimer::timeout, this, &PxRecordPlayerForm::ExtractProgress);
  UpdateControls();
}

PxRecordPlayerForm::~PxRecordPlayerForm()
{
  if (mExtractThread) {
    // The copy reads the file by a reader of its own; it must end before the form forgets it.
    mExtractThread->wait();
    delete mExtractThread;
  }
  mTimer.stop();
  // The sensor's forms let go of it, and the layout is kept, before the widget base goes.
  CloseFile();
}

void PxRecordPlayerForm::closeEvent(QCloseEvent* aEvent)
{
  // The replay ends with the window, not when the deferred delete gets to it: the owner enables
  // "Connect..." as soon as it learns of the close.
  CloseFile();
  PxDockWidget::closeEvent(aEvent);
}

void PxRecordPlayerForm::BuildUi()
{
  auto* lRoot = new QWidget(this);
  auto* lLayout = new QVBoxLayout(lRoot);

  auto* lFileRow = new QHBoxLayout;
  mOpen = new QToolButton(lRoot);
  mOpen->setText(tr("Open..."));
  mOpen->setToolTip(tr("Choose a record file; the arrow lists the files replayed recently."));
  mOpen->setPopupMode(QToolButton::MenuButtonPopup);
  mRecentMenu = new QMenu(mOpen);
  mOpen->setMenu(mRecentMenu);
  connect(mOpen, &QToolButton::clicked, this, &PxRecordPlayerForm::PBOpenClicked);
  connect(mRecentMenu, &QMenu::aboutToShow, this, &PxRecordPlayerForm::FillRecentMenu);
  connect(mRecentMenu, &QMenu::triggered, this, &PxRecordPlayerForm::MIRecentFileTriggered);
  mFile = new QLabel(tr("No record file open."), lRoot);
  mFile->setTextInteractionFlags(Qt::TextSelectableByMouse);
  lFileRow->addWidget(mOpen);
  lFileRow->addWidget(mFile, 1);
  lLayout->addLayout(lFileRow);

  auto* lInfo = new QFormLayout;
  mDevice = new QLabel(lRoot);
  mSerialNumber = new QLabel(lRoot);
  mDate = new QLabel(lRoot);
  mFrames = new QLabel(lRoot);
  mDuration = new QLabel(lRoot);
  mDevice->setObjectName(QStringLiteral("Device"));
  mSerialNumber->setObjectName(QStringLiteral("SerialNumber"));
  mDate->setObjectName(QStringLiteral("Date"));
  mFrames->setObjectName(QStringLiteral("Frames"));
  mDuration->setObjectName(QStringLiteral("Duration"));
  lInfo->addRow(tr("Device:"), mDevice);
  lInfo->addRow(tr("Serial number:"), mSerialNumber);
  lInfo->addRow(tr("Date:"), mDate);
  lInfo->addRow(tr("Frames:"), mFrames);
  lInfo->addRow(tr("Duration:"), mDuration);
  lLayout->addLayout(lInfo);

  mPosition = new QSlider(Qt::Horizontal, lRoot);
  mPosition->setTracking(true);
  mPosition->setToolTip(tr("Position in the record; the frames follow while the slider is dragged."));
  connect(mPosition, &QSlider::valueChanged, this, &PxRecordPlayerForm::SLPositionValueChanged);
  lLayout->addWidget(mPosition);

  auto* lTransport = new QHBoxLayout;
  auto lButton = [&](QStyle::StandardPixmap aIcon, const QString& aTip, void (PxRecordPlayerForm::*aSlot)()) {
    auto* lPush = new QPushButton(style()->standardIcon(aIcon), QString(), lRoot);
    lPush->setToolTip(aTip);
    connect(lPush, &QPushButton::clicked, this, aSlot);
    lTransport->addWidget(lPush);
    return lPush;
  };
  mFirst = lButton(QStyle::SP_MediaSkipBackward, tr("First frame"), &PxRecordPlayerForm::PBFirstClicked);
  mPrevious = lButton(QStyle::SP_MediaSeekBackward, tr("One frame back"), &PxRecordPlayerForm::PBPreviousClicked);
  mPlay = lButton(QStyle::SP_MediaPlay, tr("Play"), &PxRecordPlayerForm::PBPlayClicked);
  mNext = lButton(QStyle::SP_MediaSeekForward, tr("One frame forward"), &PxRecordPlayerForm::PBNextClicked);
  mLast = lButton(QStyle::SP_MediaSkipForward, tr("Last frame"), &PxRecordPlayerForm::PBLastClicked);
  lTransport->addSpacing(12);
  lTransport->addWidget(new QLabel(tr("Frame:"), lRoot));
  mFrame = new QSpinBox(lRoot);
  mFrame->setKeyboardTracking(false);
  connect(mFrame, &QSpinBox::editingFinished, this, &PxRecordPlayerForm::SBFrameEditingFinished);
  lTransport->addWidget(mFrame);
  mOfFrames = new QLabel(lRoot);
  lTransport->addWidget(mOfFrames);
  lTransport->addStretch(1);
  lLayout->addLayout(lTransport);
  auto* lTimeRow = new QFormLayout;
  mTimestamp = new QLabel(lRoot);
  mTimestamp->setObjectName(QStringLiteral("FrameTime"));
  mTimestamp->setToolTip(tr("Recorded time of the frame shown, and its time from the first frame"));
  lTimeRow->addRow(tr("Frame time:"), mTimestamp);
  lLayout->addLayout(lTimeRow);

  auto* lSpeedRow = new QHBoxLayout;
  lSpeedRow->addWidget(new QLabel(tr("Speed:"), lRoot));
  mSpeed = new QComboBox(lRoot);
  for (const SpeedChoice& lChoice : SPEEDS) {
    mSpeed->addItem(tr(lChoice.mText), lChoice.mFactor);
  }
  mSpeed->setCurrentIndex(REAL_TIME_CHOICE);
  connect(mSpeed, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          &PxRecordPlayerForm::CBSpeedCurrentIndexChanged);
  lSpeedRow->addWidget(mSpeed);
  mLoop = new QCheckBox(tr("Loop"), lRoot);
  mLoop->setToolTip(tr("Start again at the first frame after the last"));
  lSpeedRow->addWidget(mLoop);
  lSpeedRow->addStretch(1);
  lLayout->addLayout(lSpeedRow);

  auto* lTagRow = new QHBoxLayout;
  mStartTagButton = new QPushButton(tr("Start Tag"), lRoot);
  mStartTagButton->setToolTip(tr("The frame shown starts the range to extract"));
  connect(mStartTagButton, &QPushButton::clicked, this, &PxRecordPlayerForm::PBStartTagClicked);
  mEndTagButton = new QPushButton(tr("End Tag"), lRoot);
  mEndTagButton->setToolTip(tr("The frame shown ends the range to extract"));
  connect(mEndTagButton, &QPushButton::clicked, this, &PxRecordPlayerForm::PBEndTagClicked);
  mTags = new QLabel(lRoot);
  mExtract = new QPushButton(tr("Extract..."), lRoot);
  mExtract->setToolTip(tr("Write the tagged frames to a new record file"));
  connect(mExtract, &QPushButton::clicked, this, &PxRecordPlayerForm::PBExtractClicked);
  lTagRow->addWidget(mStartTagButton);
  lTagRow->addWidget(mEndTagButton);
  lTagRow->addWidget(mTags, 1);
  lTagRow->addWidget(mExtract);
  lLayout->addLayout(lTagRow);

  lLayout->addStretch(1);
  setWidget(lRoot);
}

QStringList PxRecordPlayerForm::RecentFiles()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  return lSettings.value(QLatin1String(KEY_RECENT)).toStringList();
}

void PxRecordPlayerForm::RememberFile(const QString& aFileName)
{
  const QString lPath = QFileInfo(aFileName).absoluteFilePath();
  QStringList lRecent = RecentFiles();
  lRecent.removeAll(lPath);
  lRecent.prepend(lPath);
  while (lRecent.size() > MAX_RECENT_FILES) {
    lRecent.removeLast();
  }
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  lSettings.setValue(QLatin1String(KEY_RECENT), lRecent);
  lSettings.setValue(QLatin1String(KEY_DIRECTORY), QFileInfo(lPath).absolutePath());
}

void PxRecordPlayerForm::FillRecentMenu()
{
  mRecentMenu->clear();
  const QStringList lRecent = RecentFiles();
  for (const QString& lPath : lRecent) {
    QAction* lAction = mRecentMenu->addAction(QFileInfo(lPath).fileName());
    lAction->setData(lPath);
    lAction->setToolTip(lPath);
  }
  if (lRecent.isEmpty()) {
    mRecentMenu->addAction(tr("No recent files"))->setEnabled(false);
  }
}

void PxRecordPlayerForm::MIRecentFileTriggered(QAction* aAction)
{
  const QString lPath = aAction->data().toString();
  if (!lPath.isEmpty()) {
    OpenFile(lPath);
  }
}

void PxRecordPlayerForm::PBOpenClicked()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  const QString lDirectory = lSettings.value(QLatin1String(KEY_DIRECTORY)).toString();
  const QString lFile = PtFileChooser::OpenFile(MessageParent(this), tr("Replay a Record File"), lDirectory,
                                                tr("Record Files (*.ptl);;All Files (*)"));
  if (!lFile.isEmpty()) {
    OpenFile(lFile);
  }
}

bool PxRecordPlayerForm::OpenFile(const QString& aFileName)
{
  CloseFile();
  std::unique_ptr<PxRecordPlayer> lPlayer;
  try {
    lPlayer.reset(PxRecordPlayer::CreateFromFile(aFileName));
    if (!lPlayer) {
      const QString lText = tr("\"%1\" cannot be replayed: it is not a record file of a device that this "
                               "application knows.")
                                .arg(QDir::toNativeSeparators(aFileName));
      PtErrorLogForm::LogError(lText);
      PtMessageBox::ShowError(MessageParent(this), lText);
      return false;
    }
    lPlayer->Start();
  } catch (const std::exception& e) {
    const QString lText = tr("\"%1\" cannot be replayed.").arg(QDir::toNativeSeparators(aFileName));
    PtErrorLogForm::LogError(lText + QLatin1Char(' ') + PtMessageBox::ExceptionText(e));
    PtMessageBox::ShowError(MessageParent(this), lText + QStringLiteral("\n\n") + PtMessageBox::ExceptionText(e));
    return false;
  }
  mOwnedSensor.reset(lPlayer->TakeSensor());
  mSensor = mOwnedSensor.get();
  mPlayer = std::move(lPlayer);
  InstallUi();
  mFileName = aFileName;
  mFrameCount = mPlayer->RecordSize();
  mStartTag = mFrameCount > 0 ? 1 : 0;
  mEndTag = mFrameCount;
  RememberFile(aFileName);

  QDateTime lDate;
  PtU32 lLast = 0;
  // The first frame loaded sets the state's start time, from which the state form counts the
  // elapsed time: it must be the record's first, or every frame before it would show a negative
  // (wrapped) time. Then the last for the duration, and back to the first, left on show.
  if (mFrameCount > 0 && Run([&] { return mPlayer->MoveTo(1); })) {
    mFirstTimestamp = mPlayer->RelativeTimestamp();
    lDate = mPlayer->FullTimestamp();
    if (Run([&] { return mPlayer->MoveTo(mFrameCount); })) {
      lLast = mPlayer->RelativeTimestamp();
      Run([&] { return mPlayer->MoveTo(1); });
    }
  }
  qCInfo(lcReplay).noquote() << "replaying" << aFileName << mFrameCount << "frames";

  // The name alone: a long folder would push the form wider than the screen.
  mFile->setText(QFileInfo(aFileName).fileName());
  mFile->setToolTip(QDir::toNativeSeparators(QFileInfo(aFileName).absoluteFilePath()));
  mDevice->setText(mSensor->Name());
  mSerialNumber->setText(mSensor->SerialNumber());
  mDate->setText(lDate.isValid() ? QLocale().toString(lDate.toLocalTime(), QLocale::LongFormat) : tr("Unknown"));
  mFrames->setText(mPlayer->IsCut()
                       ? tr("%1 (the recording was cut short; every complete frame replays)").arg(mFrameCount)
                       : QString::number(mFrameCount));
  mDuration->setText(DurationText(lLast - mFirstTimestamp));
  setWindowTitle(tr("Replay - %1").arg(QFileInfo(aFileName).fileName()));
  if (PxStaticUi::Singleton()) {
    PxStaticUi::SetConnectionStatus(tr("Replay: %1").arg(QFileInfo(aFileName).fileName()));
  }
  UpdateControls();
  ShowPosition();
  emit ReplayChanged();
  return true;
}

void PxRecordPlayerForm::CloseFile()
{
  if (!mPlayer) {
    return;
  }
  Pause();
  PxHost* lHost = PxStaticUi::Host();
  if (mUi && lHost && lHost->UseSavedLayout()) {
    mUi->SaveLayout();
  }
  std::unique_ptr<PxRecordPlayer> lPlayer = std::move(mPlayer);
  std::unique_ptr<PxDeviceUi> lUi = std::move(mUi);
  std::unique_ptr<PxSensor> lSensor = std::move(mOwnedSensor);
  mSensor = nullptr;
  // Whatever shows the sensor lets go of it here, before it goes.
  emit ReplayChanged();
  lPlayer.reset();
  // Its forms and menus, then the sensor it owns.
  lUi.reset();
  lSensor.reset();
  mFileName.clear();
  mFrameCount = 0;
  mStartTag = mEndTag = 0;
  mFile->setText(tr("No record file open."));
  for (QLabel* lLabel : {mDevice, mSerialNumber, mDate, mFrames, mDuration, mTimestamp}) {
    lLabel->clear();
  }
  setWindowTitle(tr("Replay"));
  if (PxStaticUi::Singleton()) {
    PxStaticUi::SetConnectionStatus(tr("Replay"));
  }
  UpdateControls();
  ShowPosition();
}

void PxRecordPlayerForm::InstallUi()
{
  // The device UI lives in the application's window: without one (a form on its own) the replay
  // runs without forms.
  PxHost* lHost = PxStaticUi::Host();
  if (!lHost) {
    return;
  }
  try {
    mUi.reset(mPlayer->CreateDeviceUi(mSensor));
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
  }
  if (!mUi) {
    qCInfo(lcReplay) << "the record's driver has no device UI; replaying without forms";
    return;
  }
  static_cast<void>(mOwnedSensor.release()); // the UI owns it now, as a connected device's UI does
  mUi->Setup();
  if (lHost->UseSavedLayout()) {
    mUi->RestoreLayout();
  }
  connect(mUi.get(), &PxDeviceUi::WindowAdded, this, &PxRecordPlayerForm::UiWindowAdded);
}

unsigned int PxRecordPlayerForm::ProductType() const
{
  if (!mSensor || mSensor->ProductType().Count() == 0) {
    return 0;
  }
  return static_cast<unsigned int>(mSensor->ProductType().Value(0));
}

void PxRecordPlayerForm::ReportError(const std::exception& aError)
{
  // The player stands in the frame that failed, or before it when its start was unreadable.
  const unsigned long lNow = mPlayer ? mPlayer->CurrentIndex() : 0;
  const unsigned long lFrame = lNow != mStepFrom ? lNow : mStepFrom + 1;
  const QString lText =
      tr("Frame %1 of \"%2\" cannot be replayed.").arg(lFrame).arg(QDir::toNativeSeparators(mFileName));
  PtErrorLogForm::LogError(lText + QLatin1Char(' ') + PtMessageBox::ExceptionText(aError));
  PtMessageBox::ShowError(MessageParent(this), lText + QStringLiteral("\n\n") + PtMessageBox::ExceptionText(aError));
}

template <typename Step>
bool PxRecordPlayerForm::Run(Step aStep)
{
  if (!mPlayer) {
    return false;
  }
  mStepFrom = mPlayer->CurrentIndex();
  try {
    return aStep();
  } catch (const std::exception& e) {
    // A damaged frame stops the playback where it is; the frames before it still replay.
    mFailed = true;
    Pause();
    ReportError(e);
    return false;
  }
}

void PxRecordPlayerForm::ShowPosition()
{
  mShowing = true;
  const unsigned long lIndex = mPlayer ? mPlayer->CurrentIndex() : 0;
  mPosition->setRange(mFrameCount > 0 ? 1 : 0, static_cast<int>(mFrameCount));
  mPosition->setValue(static_cast<int>(lIndex));
  mFrame->setRange(mFrameCount > 0 ? 1 : 0, static_cast<int>(mFrameCount));
  mFrame->setValue(static_cast<int>(lIndex));
  mOfFrames->setText(tr("of %1").arg(mFrameCount));
  if (mPlayer && lIndex > 0) {
    const PtU32 lRelative = mPlayer->RelativeTimestamp();
    const QDateTime lTime = mPlayer->FullTimestamp();
    mTimestamp->setText(tr("%1 (+%2)")
                            .arg(lTime.isValid()
                                     ? lTime.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz"))
                                     : tr("no time"))
                            .arg(DurationText(lRelative - mFirstTimestamp)));
  } else {
    mTimestamp->clear();
  }
  mTags->setText(mPlayer ? tr("Extract frames %1 to %2").arg(mStartTag).arg(mEndTag) : QString());
  mShowing = false;
  if (mPlayer) {
    emit FrameShown(lIndex);
  }
}

void PxRecordPlayerForm::UpdateControls()
{
  const bool lOpen = mPlayer != nullptr;
  const bool lFrames = lOpen && mFrameCount > 0;
  for (QWidget* lWidget : std::initializer_list<QWidget*>{mPosition, mFirst, mPrevious, mPlay, mNext, mLast, mFrame,
                                                          mStartTagButton, mEndTagButton}) {
    lWidget->setEnabled(lFrames);
  }
  mExtract->setEnabled(lFrames && !mExtractThread && mStartTag >= 1 && mStartTag <= mEndTag);
  const bool lPlaying = mPlaying;
  mPlay->setIcon(style()->standardIcon(lPlaying ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
  mPlay->setToolTip(lPlaying ? tr("Pause") : tr("Play"));
}

void PxRecordPlayerForm::Anchor()
{
  mClock.start();
  mAnchorTimestamp = mPlayer ? mPlayer->RelativeTimestamp() : 0;
  mLastTimestamp = mAnchorTimestamp;
  mLastInterval = 0;
}

void PxRecordPlayerForm::Play()
{
  if (!mPlayer || mFrameCount == 0 || mPlaying) {
    return;
  }
  if (mPlayer->CurrentIndex() >= mFrameCount) {
    // Play at the end starts again from the first frame.
    if (!Run([&] { return mPlayer->MoveTo(1); })) {
      return;
    }
    ShowPosition();
  }
  Anchor();
  mPlaying = true;
  mTimer.start(0);
  UpdateControls();
  emit PlayingChanged(true);
}

void PxRecordPlayerForm::Pause()
{
  if (!mPlaying) {
    return;
  }
  mPlaying = false;
  mTimer.stop();
  UpdateControls();
  emit PlayingChanged(false);
}

void PxRecordPlayerForm::TimerTimeout()
{
  const double lSpeed = Speed();
  QElapsedTimer lSlice;
  lSlice.start();
  do {
    mFailed = false;
    if (!Run([&] { return mPlayer->ReadNext(); })) {
      if (mFailed) {
        // A damaged frame: Run has paused and reported it.
        ShowPosition();
        return;
      }
      if (!mLoop->isChecked() || !Run([&] { return mPlayer->MoveTo(1); })) {
        ShowPosition();
        Pause();
        return;
      }
      Anchor();
    }
  } while (lSpeed == SPEED_AS_FAST_AS_POSSIBLE && lSlice.elapsed() < FAST_SLICE_MS);
  ShowPosition();
  if (lSpeed == SPEED_AS_FAST_AS_POSSIBLE) {
    mTimer.start(0);
    return;
  }
  // Real time from the recorded timestamps, anchored where playback started so that no error
  // builds up. The next frame's time is known only once it is read, so the wait before it is the
  // last recorded interval; a change of rate shows one frame late at most.
  const PtU32 lNow = mPlayer->RelativeTimestamp();
  PtU32 lInterval = lNow - mLastTimestamp;
  if (lInterval > MAX_INTERVAL_MS) {
    // A gap or a jump back: start counting again from here.
    Anchor();
    lInterval = mLastInterval;
  }
  mLastTimestamp = lNow;
  mLastInterval = lInterval;
  const double lDue = (mLastTimestamp - mAnchorTimestamp) / lSpeed;
  const double lNext = lDue + lInterval / lSpeed - static_cast<double>(mClock.elapsed());
  mTimer.start(static_cast<int>(std::clamp(lNext, 0.0, static_cast<double>(MAX_INTERVAL_MS))));
}

void PxRecordPlayerForm::PBPlayClicked()
{
  if (mPlaying) {
    Pause();
  } else {
    Play();
  }
}

bool PxRecordPlayerForm::Seek(unsigned long aIndex)
{
  if (!mPlayer || aIndex < 1 || aIndex > mFrameCount) {
    return false;
  }
  const bool lMoved = Run([&] { return mPlayer->MoveTo(aIndex); });
  if (lMoved && mPlaying) {
    Anchor();
  }
  ShowPosition();
  return lMoved;
}

void PxRecordPlayerForm::PBFirstClicked()
{
  Seek(1);
}

void PxRecordPlayerForm::PBLastClicked()
{
  Seek(mFrameCount);
}

void PxRecordPlayerForm::PBPreviousClicked()
{
  Pause();
  Run([&] { return mPlayer->ReadPrevious(); });
  ShowPosition();
}

void PxRecordPlayerForm::PBNextClicked()
{
  Pause();
  Run([&] { return mPlayer->ReadNext(); });
  ShowPosition();
}

void PxRecordPlayerForm::SLPositionValueChanged(int aValue)
{
  if (!mShowing && aValue >= 1) {
    Seek(static_cast<unsigned long>(aValue));
  }
}

void PxRecordPlayerForm::SBFrameEditingFinished()
{
  if (!mShowing && mPlayer && static_cast<unsigned long>(mFrame->value()) != mPlayer->CurrentIndex()) {
    Seek(static_cast<unsigned long>(mFrame->value()));
  }
}

void PxRecordPlayerForm::CBSpeedCurrentIndexChanged(int)
{
  if (mPlaying) {
    Anchor();
  }
}

void PxRecordPlayerForm::SetSpeed(double aFactor)
{
  const int lIndex = mSpeed->findData(aFactor);
  if (lIndex >= 0) {
    mSpeed->setCurrentIndex(lIndex);
  }
}

double PxRecordPlayerForm::Speed() const
{
  return mSpeed->currentData().toDouble();
}

void PxRecordPlayerForm::SetLoop(bool aLoop)
{
  mLoop->setChecked(aLoop);
}

void PxRecordPlayerForm::PBStartTagClicked()
{
  if (!mPlayer || mPlayer->CurrentIndex() == 0) {
    return;
  }
  mStartTag = mPlayer->CurrentIndex();
  mEndTag = std::max(mEndTag, mStartTag);
  UpdateControls();
  ShowPosition();
}

void PxRecordPlayerForm::PBEndTagClicked()
{
  if (!mPlayer || mPlayer->CurrentIndex() == 0) {
    return;
  }
  mEndTag = mPlayer->CurrentIndex();
  mStartTag = std::min(mStartTag, mEndTag);
  UpdateControls();
  ShowPosition();
}

void PxRecordPlayerForm::PBExtractClicked()
{
  if (!mPlayer || mExtractThread || mStartTag < 1 || mStartTag > mEndTag || mEndTag > mFrameCount) {
    return;
  }
  const QFileInfo lSource(mFileName);
  const QString lSuggested = lSource.absolutePath() + QLatin1Char('/') + lSource.completeBaseName() +
                             QStringLiteral("-%1-%2.ptl").arg(mStartTag).arg(mEndTag);
  QString lTarget =
      PtFileChooser::SaveFile(MessageParent(this), tr("Extract Frames"), lSuggested, tr("Record Files (*.ptl)"));
  if (lTarget.isEmpty()) {
    return;
  }
  if (QFileInfo(lTarget).suffix().isEmpty()) {
    lTarget += QStringLiteral(".ptl");
  }
  if (QFileInfo(lTarget).absoluteFilePath() == lSource.absoluteFilePath()) {
    PtMessageBox::ShowError(MessageParent(this), tr("The frames cannot be extracted into the file they come from."));
    return;
  }
  Pause();
  mExtractFile = lTarget;
  mExtractOk = false;
  mExtractError.clear();
  // The new file is about as large as the frames it takes from this one.
  mExtractExpected = std::max<qint64>(1, static_cast<qint64>(static_cast<double>(lSource.size()) *
                                                             (mEndTag - mStartTag + 1) / std::max(1ul, mFrameCount)));
  const QString lSourceFile = mFileName;
  const unsigned long lFirst = mStartTag;
  const unsigned long lLast = mEndTag;
  // A reader of its own in a worker: the window stays responsive while a long range is copied,
  // and the replay's reader is not shared between threads.
  mExtractThread = QThread::create([this, lSourceFile, lFirst, lLast, lTarget] {
    try {
      mExtractOk = PxRecordPlayer::Extract(lSourceFile, lFirst, lLast, lTarget);
    } catch (const std::exception& e) {
      mExtractError = PtMessageBox::ExceptionText(e);
      mExtractOk = false;
    }
  });
  connect(mExtractThread, &QThread::finished, this, &PxRecordPlayerForm::ExtractDone, Qt::QueuedConnection);
  mProgress = new QProgressDialog(tr("Extracting frames %1 to %2...").arg(lFirst).arg(lLast), QString(), 0, 1000,
                                  MessageParent(this));
  mProgress->setWindowTitle(tr("Extract Frames"));
  mProgress->setCancelButton(nullptr);
  mProgress->setMinimumDuration(300);
  mProgress->setWindowModality(Qt::WindowModal);
  mProgress->setValue(0);
  UpdateControls();
  mProgressTimer.start();
  mExtractThread->start();
}

void PxRecordPlayerForm::ExtractProgress()
{
  if (mProgress) {
    const qint64 lWritten = QFileInfo(mExtractFile).size();
    mProgress->setValue(static_cast<int>(std::min<qint64>(999, lWritten * 1000 / mExtractExpected)));
  }
}

void PxRecordPlayerForm::ExtractDone()
{
  mProgressTimer.stop();
  mExtractThread->wait();
  delete mExtractThread;
  mExtractThread = nullptr;
  delete mProgress;
  mProgress = nullptr;
  UpdateControls();
  if (!mExtractOk) {
    QString lText = tr("The frames could not be written to \"%1\".").arg(QDir::toNativeSeparators(mExtractFile));
    if (!mExtractError.isEmpty()) {
      lText += QStringLiteral("\n\n") + mExtractError;
    }
    PtErrorLogForm::LogError(lText);
    PtMessageBox::ShowError(MessageParent(this), lText);
  }
  emit ExtractFinished(mExtractOk);
}

void PxRecordPlayerForm::UiWindowAdded(PxDockWidget*)
{
  // A form opened on a replay that stands still shows the frame on screen at once, not from the
  // next one played. While playing, the next frame is a moment away.
  if (mPlaying || !mPlayer || mPlayer->CurrentIndex() == 0) {
    return;
  }
  const unsigned long lIndex = mPlayer->CurrentIndex();
  Run([&] { return mPlayer->MoveTo(0) && mPlayer->MoveTo(lIndex); });
  ShowPosition();
}
