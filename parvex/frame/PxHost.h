#pragma once

#include "ParvexExport.h"

#include <QMainWindow>

class QAction;
class QMenu;

// The host application's main window. The library never creates menus, tool bars or status
// widgets of its own in the host window: it hands them to these operations, so a host decides
// where each one goes and how it looks.
class PX_EXPORT PxHost : public QMainWindow
{
  Q_OBJECT

public:
  explicit PxHost(QWidget* aParent = nullptr);

  // Whether a newly connected device restores the dock layout saved for its type.
  virtual bool UseSavedLayout() = 0;
  // Shows the connected device's name in the window title; an empty name means none connected.
  virtual void SetDeviceTitle(const QString& aTitle) = 0;
  virtual void AddToolBarAction(QAction* aAction) = 0;
  // A new object that lives as long as one connected device's UI: the device UI asks for it once
  // and deletes it at disconnect. The host uses it for whatever it shows per connection.
  virtual QObject* CreateDeviceContext() = 0;
  // Creates a top-level menu titled aTitle and returns it; the host owns it.
  virtual QMenu* AddMenu(const QString& aTitle) = 0;
  virtual void AddFileAction(QAction* aAction) = 0;
  virtual void AddSettingsAction(QAction* aAction) = 0;
  virtual void AddHelpAction(QAction* aAction) = 0;
  // Places aWidget in the status bar; the host takes ownership.
  virtual void AddStatusWidget(QWidget* aWidget) = 0;
  // A transient message in the status bar (aTimeoutMs 0 = until replaced). For drivers; the
  // library itself reports through dialogs and status widgets.
  virtual void ShowStatusMessage(const QString& aText, int aTimeoutMs) = 0;

Q_SIGNALS:
  // The user asked to close the application. Emit with aAccept true and close only if it is still
  // true afterwards: the library sets it to false to veto (for example when the user does not want
  // to disconnect the device).
  void QuitRequested(bool& aAccept);
  // The heartbeat for the library's deferred work; emit it steadily, a few times a second or more.
  void Tick();
};
