#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"
#include "PxDockWidget.h"

#include <QElapsedTimer>
#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

class PxDeviceUi;
class PxRecordPlayer;
class PxSensor;
class QCheckBox;
class QComboBox;
class QLabel;
class QMenu;
class QProgressDialog;
class QPushButton;
class QSlider;
class QSpinBox;
class QThread;
class QToolButton;

// Replays a record file: the user chooses the file (recent files are kept), the form creates the
// player that the file's driver registered, takes its sensor and moves through the frames. The
// driver's device UI for that sensor brings the forms a connected sensor of the same type has
// (View menu, saved layout), views only; every frame reaches the sensor's providers, so they show
// it as they show a live one. Closing the form, or the record, ends the replay and that UI.
//
// Frames are numbered from 1 here as in parvex-cli.
class PX_EXPORT PxRecordPlayerForm : public PxDockWidget
{
  Q_OBJECT

public:
  static constexpr unsigned int PERMANENT_ID = 900;
  static constexpr int MAX_RECENT_FILES = 8;
  // Speed factors the speed box offers; 0 is "as fast as possible".
  static constexpr double SPEED_AS_FAST_AS_POSSIBLE = 0;

  explicit PxRecordPlayerForm(QWidget* aParent);
  ~PxRecordPlayerForm() override;

  unsigned int PermanentId() const override { return PERMANENT_ID; }

  // Opens aFileName for replay, ending the replay of any other file, and shows its first frame.
  // A file that cannot be replayed is reported to the user; false then, and no replay runs.
  bool OpenFile(const QString& aFileName);
  // Ends the replay: the sensor's UI (its layout saved first), the player and the sensor go, the
  // form stays.
  void CloseFile();

  // The product type of the record being replayed (that of the replayed sensor); 0 when none.
  unsigned int ProductType() const;
  PxRecordPlayer* Player() const { return mPlayer.get(); }
  PxSensor* Sensor() const { return mSensor; }
  // The replayed sensor's UI, owner of the sensor; null with no record open, without an
  // application UI, or when the record's driver has no UI.
  PxDeviceUi* Ui() const { return mUi.get(); }
  const QString& FileName() const { return mFileName; }
  bool IsPlaying() const { return mPlaying; }
  unsigned long StartTag() const { return mStartTag; }
  unsigned long EndTag() const { return mEndTag; }
  // Speed factor of playback: 0.25 to 8 against the recorded timestamps, or 0 for as fast as
  // possible.
  void SetSpeed(double aFactor);
  double Speed() const;
  void SetLoop(bool aLoop);
  // Replays frame aIndex (1 to the frame count) as the position slider or frame box would.
  bool Seek(unsigned long aIndex);

  static QStringList RecentFiles();

Q_SIGNALS:
  // A record was opened or the replay ended; the sensor to show is Sensor() and its UI Ui() (null
  // after the end).
  void ReplayChanged();
  // A frame was replayed (one signal per frame shown, not per frame read while playing fast).
  void FrameShown(unsigned long aIndex);
  void PlayingChanged(bool aPlaying);
  // The worker copying the tagged range has finished; aOk false when it failed.
  void ExtractFinished(bool aOk);

public Q_SLOTS:
  void PBOpenClicked();
  void PBPlayClicked();
  void PBFirstClicked();
  void PBPreviousClicked();
  void PBNextClicked();
  void PBLastClicked();
  void PBStartTagClicked();
  void PBEndTagClicked();
  void PBExtractClicked();

private Q_SLOTS:
  void CBSpeedCurrentIndexChanged(int aIndex);
  void SLPositionValueChanged(int aValue);
  void SBFrameEditingFinished();
  void MIRecentFileTriggered(QAction* aAction);
  void TimerTimeout();
  void ExtractProgress();
  void ExtractDone();
  void UiWindowAdded(PxDockWidget* aWindow);

protected:
  void closeEvent(QCloseEvent* aEvent) override;

private:
  void BuildUi();
  // Asks the record's driver for the UI of the replayed sensor and sets it up with its layout.
  void InstallUi();
  void UpdateControls();
  void ShowPosition();
  void FillRecentMenu();
  void RememberFile(const QString& aFileName);
  void Pause();
  void Play();
  // Runs a step of the player, reporting a damaged frame; false when the step did not happen.
  template <typename Step>
  bool Run(Step aStep);
  // Resets the real-time anchor to the frame shown now.
  void Anchor();
  void ReportError(const std::exception& aError);

  std::unique_ptr<PxRecordPlayer> mPlayer;
  // Taken from the player, which keeps a pointer to it: deleted after the player. The UI owns it
  // when there is one, this form otherwise.
  PxSensor* mSensor = nullptr;
  std::unique_ptr<PxSensor> mOwnedSensor;
  std::unique_ptr<PxDeviceUi> mUi;
  QString mFileName;
  unsigned long mFrameCount = 0;
  PtU32 mFirstTimestamp = 0;
  unsigned long mStartTag = 0;
  unsigned long mEndTag = 0;

  // Playback: the wall clock and the recorded timestamp at which it was anchored, and the
  // recorded interval between the last two frames.
  QTimer mTimer;
  // Playing, whether or not the single-shot timer is armed at this moment.
  bool mPlaying = false;
  QElapsedTimer mClock;
  PtU32 mAnchorTimestamp = 0;
  PtU32 mLastTimestamp = 0;
  PtU32 mLastInterval = 0;
  // Set while the form moves its own slider and frame box, which must not seek again.
  bool mShowing = false;
  // Set by Run when a step failed on a damaged frame.
  bool mFailed = false;
  unsigned long mStepFrom = 0;

  // Extraction in progress.
  QThread* mExtractThread = nullptr;
  QProgressDialog* mProgress = nullptr;
  QTimer mProgressTimer;
  QString mExtractFile;
  qint64 mExtractExpected = 0;
  bool mExtractOk = false;
  QString mExtractError;

  QToolButton* mOpen = nullptr;
  QMenu* mRecentMenu = nullptr;
  QLabel* mFile = nullptr;
  QLabel* mDevice = nullptr;
  QLabel* mSerialNumber = nullptr;
  QLabel* mDate = nullptr;
  QLabel* mFrames = nullptr;
  QLabel* mDuration = nullptr;
  QSlider* mPosition = nullptr;
  QPushButton* mFirst = nullptr;
  QPushButton* mPrevious = nullptr;
  QPushButton* mPlay = nullptr;
  QPushButton* mNext = nullptr;
  QPushButton* mLast = nullptr;
  QSpinBox* mFrame = nullptr;
  QLabel* mOfFrames = nullptr;
  QLabel* mTimestamp = nullptr;
  QComboBox* mSpeed = nullptr;
  QCheckBox* mLoop = nullptr;
  QPushButton* mStartTagButton = nullptr;
  QPushButton* mEndTagButton = nullptr;
  QLabel* mTags = nullptr;
  QPushButton* mExtract = nullptr;
};
