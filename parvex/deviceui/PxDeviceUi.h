#pragma once

#include "ParvexExport.h"
#include "PxUpdateSelectDialog.h"

#include <QAction>
#include <QHash>
#include <QMenu>
#include <QObject>

class PtPreferencesDialog;
class PxDevice;
class PxDockWidget;

// The user interface of one connected device: its configuration files, apply, undo, reset and
// firmware update, its "Configuration" and "Action" menus, and the dock windows it has open,
// whose layout it keeps per device UI name. It owns the device. A connection widget creates it;
// the application UI owns it from then on and deletes it at disconnect.
//
// A device that is not live (one replayed from a record) gets the same UI from the replay form:
// its views work as for a live one, while everything that would talk to a device (apply, undo,
// loading a configuration, reset, firmware update) stays disabled.
class PX_EXPORT PxDeviceUi : public QObject
{
  Q_OBJECT

public:
  explicit PxDeviceUi(PxDevice* aDevice);
  ~PxDeviceUi() override;

  // The name the application shows for this device UI and under which its layout is stored.
  virtual QString Name() const = 0;
  // Runs once the application has accepted the connection (versions checked).
  virtual void Setup();
  // Opens, or finds, the window of kind aId with flags aFlags; null for a kind this UI lacks.
  virtual PxDockWidget* RequestWindow(unsigned int aId, unsigned int aFlags) = 0;
  virtual void UpdateControls();
  // Runs the firmware update dialog for the job the device makes for the file, kind and option.
  virtual void Update(const QString& aFile, unsigned char aKind, int aOption);
  // The firmware files the device offers for update, newest first.
  virtual QList<PxUpdateSelectDialog::FirmwareFile> FirmwareFiles() const = 0;

  PxDevice* Device() const { return mDevice; }

  void AddConfigurationAction(QAction* aAction);
  void AddConfigurationMenu(QMenu* aMenu);
  // Appends aAction to the Action menu, or with aSorted inserts it in order of text.
  void AddActionAction(QAction* aAction, bool aSorted);
  // Shows aWindow floating and keeps it in the table of open windows until it closes; its linked
  // action aAction (0 or 1), when set, is checked.
  void AddFloatingWindow(PxDockWidget* aWindow, int aAction);
  PxDockWidget* FindWindow(int aId) const;
  bool CloseWindow(int aId);
  const QHash<int, PxDockWidget*>& Windows() const { return mWindows; }

  bool Question(const QString& aText);
  void ShowInfo(const QString& aText);
  static QString GenerateFileFilter();

  void SaveLayout();
  void RestoreLayout();

  QAction* LoadAction() { return &mLoad; }
  QAction* SaveAction() { return &mSave; }
  QAction* ApplyAction() { return &mApply; }
  QAction* UndoAction() { return &mUndo; }
  QAction* ResetAction() { return &mReset; }
  QAction* UpdateAction() { return &mUpdate; }
  QMenu* ConfigurationMenu() { return &mConfigurationMenu; }
  QMenu* ActionMenu() { return &mActionMenu; }

Q_SIGNALS:
  void Disconnected();
  // AddFloatingWindow has shown aWindow. A replay that stands still feeds it the frame on show.
  void WindowAdded(PxDockWidget* aWindow);

public Q_SLOTS:
  void ApplyTriggered();
  void UndoTriggered();
  void MIFileLoadConfigTriggered();
  void MIFileSaveConfigTriggered();
  void MIDeviceActionUpdateTriggered();
  virtual void MIDeviceActionResetTriggered();
  void DockWidgetClosed(PxDockWidget* aWindow);
  // A preferences dialog announced itself: the sensor UI adds its pages there.
  virtual void PreferencesDialogOpen(PtPreferencesDialog* aDialog);
  virtual void PreferencesDialogClosed(bool aCancel);

private Q_SLOTS:
  void ConnectionDisconnected();

protected:
  // Logs and shows a failure of a device operation; the UI stays as it was.
  void ReportError(const std::exception& aError);

private:
  QAction mLoad;
  QAction mSave;
  QMenu mConfigurationMenu;
  QMenu mActionMenu;
  QAction mApply;
  QAction mUndo;
  QAction mReset;
  QAction mUpdate;
  QObject* mHostObject = nullptr;
  PxDevice* mDevice = nullptr;
  QHash<int, PxDockWidget*> mWindows;
};
