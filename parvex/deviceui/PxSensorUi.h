#pragma once

#include "PxDeviceUi.h"

#include <QPointer>

class PxSensor;
class PxSystemStateForm;
class QCheckBox;
class QLabel;
class QLineEdit;
class QSpinBox;

// The user interface of one connected sensor: the device UI's configuration flows, plus the
// sensor's forms (state, traces, raw detections, debug), the calibration editor, recording and
// data logging with their running time in the status bar, and the "Recorder" and "Data Logger"
// preference pages. It reopens its forms from a saved layout through RequestWindow.
class PX_EXPORT PxSensorUi : public PxDeviceUi
{
  Q_OBJECT

public:
  // Permanent ids of the forms this UI opens; a saved layout names them.
  enum : unsigned int { WINDOW_STATE = 1, WINDOW_DEBUG = 2, WINDOW_TRACES = 3, WINDOW_ECHOES = 4 };
  // Bits of the trace form's flags: which kinds of trace it shows.
  enum : unsigned int { TRACES_RAW = 1, TRACES_FILTERED = 2 };

  explicit PxSensorUi(PxSensor* aSensor);
  ~PxSensorUi() override;

  PxSensor* Sensor() const;

  void UpdateControls() override;
  void PreferencesDialogOpen(PtPreferencesDialog* aDialog) override;
  void PreferencesDialogClosed(bool aCancel) override;
  // 1 state, 2 debug, 3 traces (aFlags: 1 raw, 2 filtered), 4 raw detections; an open form is
  // found, not toggled away. Any other id gives null.
  PxDockWidget* RequestWindow(unsigned int aId, unsigned int aFlags) override;
  // Start recording or logging; a sensor type may make its own. Both close the debug form first:
  // memory accesses would stall the data being written.
  virtual void CreateRecorder();
  virtual void CreateDataLogger();
  virtual PxSystemStateForm* CreateStateWindow();

  QAction* RecordAction() { return &mRecord; }
  QAction* LogAction() { return &mLog; }
  QAction* StateAction() { return &mViewState; }
  QAction* RawTracesAction() { return &mViewRawTraces; }
  QAction* FilteredTracesAction() { return &mViewFilteredTraces; }
  QAction* EchoesAction() { return &mViewEchoes; }
  QAction* DebugAction() { return &mDebug; }
  QAction* CalibrationAction() { return &mCalibration; }
  QString RecordStatus() const;
  QString LogStatus() const;

public Q_SLOTS:
  void MIFileRecordTriggered();
  void MIFileLogTriggered();
  void MIDeviceDebugTriggered();
  void MIDeviceCalibTriggered();
  void MIViewStateTriggered();
  void MIViewRawTracesTriggered();
  void MIViewFilteredTracesTriggered();
  void MIViewEchoesTriggered();
  void HostTick();
  void PBBrowseRClicked();
  void PBBrowseLClicked();

protected:
  // Milliseconds the running recording and logging have lasted; the status line and the time
  // limit read them here.
  virtual unsigned int RecordElapsedTime() const;
  virtual unsigned int LogElapsedTime() const;

private:
  // Opens the trace form for kind 0 (raw) or 1 (filtered), adds the kind to an open one, or takes
  // it away again, closing the form with its last kind.
  void ManageTraceWindow(int aKind);
  QAction* TraceAction(int aKind) { return aKind == 0 ? &mViewRawTraces : &mViewFilteredTraces; }
  void StopRecording();
  void StopLogging();
  void ForgetPages();

  unsigned int mStateId = 0;
  unsigned int mTraceId = 0;
  unsigned int mEchoId = 0;
  unsigned int mDebugId = 0;
  QAction mRecord;
  QAction mLog;
  QAction mViewState;
  QAction mViewRawTraces;
  QAction mViewFilteredTraces;
  QAction mViewEchoes;
  QAction mDebug;
  QAction mCalibration;
  // The host's status bar owns them once given; guarded in case it goes first.
  QPointer<QLabel> mRecordStatus;
  QPointer<QLabel> mLogStatus;
  // Whether the status line shows a recording or logging, so that one ended elsewhere (a write
  // error stops the recorder by itself) is cleared at the next tick.
  bool mRecordShown = false;
  bool mLogShown = false;

  QPointer<QLineEdit> mRecordDirectory;
  QPointer<QSpinBox> mMaxFileSize;
  QPointer<QSpinBox> mMaxTime;
  QPointer<QCheckBox> mRawTraces;
  QPointer<QCheckBox> mFilteredTraces;
  QPointer<QLineEdit> mLogDirectory;
};
