#pragma once

#include "ParvexExport.h"

#include <QAction>
#include <QIcon>
#include <QLabel>
#include <QObject>

class PxDeviceUi;
class PxDockWidget;
class PxHost;
class PxRecordPlayerForm;
class PxSerialPortForm;
class QMenu;

// The application-level user interface around the host window: the Device menu with "Connect..."
// and "Disconnect...", replay, the user guide, the View menu the device forms fill, the connection
// status in the status bar, and the UI of the one connected device. It runs the connect,
// disconnect and quit flows and checks a newly connected device's firmware.
class PX_EXPORT PxStaticUi : public QObject
{
  Q_OBJECT

public:
  // Builds the singleton around aHost; false (changing nothing) when it already exists.
  static bool Initialize(PxHost* aHost);
  static void Shutdown();

  static PxStaticUi* Singleton() { return sSingleton; }
  static PxHost* Host();
  static PxDeviceUi* Ui();
  // The UI of the sensor being replayed, owned by the replay form; null when no record is open.
  // It is never Ui(): replaying and connecting exclude each other.
  static PxDeviceUi* ReplayUi();

  static void AddDeviceMenu(QMenu* aMenu);
  static void AddDeviceAction(QAction* aAction);
  // Creates the View menu when it does not exist yet.
  static void AddViewAction(QAction* aAction);
  // Needs the View menu to exist (it always holds "Serial Port Viewer" after Initialize).
  static void AddViewMenu(QMenu* aMenu);
  // The View menu goes away at the next UpdateControls once it is empty.
  static void RemoveViewAction(QAction* aAction);
  static void SetConnectionStatus(const QString& aStatus);

  // Takes over the device UI of a connection that a widget made outside the connection dialog (a
  // host connecting at start) and runs the same checks and set-up as "Connect...". Nothing may be
  // connected yet.
  void InstallUi(PxDeviceUi* aUi);

  // For hosts and tests that look at what the user sees.
  QAction* ConnectAction() { return &mConnect; }
  QAction* ReplayAction() { return &mReplay; }
  QAction* UserGuideAction() { return &mUserGuide; }
  QAction* SerialPortAction() { return mSerialPort; }
  QMenu* DeviceMenu() { return mDeviceMenu; }
  QMenu* ViewMenu() { return mMIView; }
  QString ConnectionStatus() const { return mStatus.text(); }
  bool TeardownPending() const { return mPendingTeardown; }
  PxDockWidget* ReplayForm() const;
  PxRecordPlayerForm* RecordPlayerForm() const { return mReplayForm; }
  PxSerialPortForm* SerialPortForm() const { return mSerialPortForm; }

Q_SIGNALS:
  // The device UI was set up or torn down, or a replay's UI came or went; device-independent
  // views rebuild against Ui(), or ReplayUi() when they show a replayed sensor too.
  void UiChanged();

public Q_SLOTS:
  void MIConnectTriggered();
  void MIFileReplayTriggered();
  void MISerialPortViewerTriggered();
  void MIHelpUserGuideTriggered();
  void HostTick();
  void HostQuitRequested(bool& aAccept);

private Q_SLOTS:
  void UiDisconnected();
  void RPFormClosed(PxDockWidget* aForm);
  void SPFormClosed(PxDockWidget* aForm);

private:
  explicit PxStaticUi(PxHost* aHost);
  ~PxStaticUi() override;

  bool CanDisconnect(const QString& aAction);
  void Teardown();
  void UpdateControls();
  bool VerifyVersions();
  void VerifyLimitedMode();

  QIcon mConnectIcon;
  QIcon mDisconnectIcon;
  QMenu* mDeviceMenu = nullptr;
  QMenu* mMIView = nullptr;
  QAction mReplay;
  QAction mConnect;
  QAction mUserGuide;
  QAction* mSerialPort = nullptr;
  QLabel mStatus;
  PxHost* mHost = nullptr;
  bool mPendingTeardown = false;
  PxDeviceUi* mUi = nullptr;
  // Whether mUi passed the version check and was set up (its layout restored). One that was
  // refused has no windows; saving its layout would wipe the one the user keeps for the device.
  bool mUiSetUp = false;
  PxRecordPlayerForm* mReplayForm = nullptr;
  PxSerialPortForm* mSerialPortForm = nullptr;

  static PxStaticUi* sSingleton;
};
