#pragma once

#include "PxHost.h"

#include <QTimer>

class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;

// The main window of parvex-config: the host in which the library places its menus, tool-bar
// actions and status widgets.
class ConfigWindow : public PxHost
{
  Q_OBJECT

public:
  // How often Tick is emitted. 50 ms keeps deferred work (teardown after a lost link, status
  // labels) prompt without measurable load.
  static constexpr int TICK_MS = 50;

  explicit ConfigWindow(QWidget* aParent = nullptr);
  ~ConfigWindow() override;

  bool UseSavedLayout() override;
  void SetDeviceTitle(const QString& aTitle) override;
  void AddToolBarAction(QAction* aAction) override;
  QObject* CreateDeviceContext() override;
  QMenu* AddMenu(const QString& aTitle) override;
  void AddFileAction(QAction* aAction) override;
  void AddSettingsAction(QAction* aAction) override;
  void AddHelpAction(QAction* aAction) override;
  void AddStatusWidget(QWidget* aWidget) override;
  void ShowStatusMessage(const QString& aText, int aTimeoutMs) override;

  // Shows aView in the centre of the window (the window takes it over), or the hint of what to do
  // when aView is null. A view shown before is handed back, not deleted.
  void SetCentralView(QWidget* aView);
  QWidget* CentralView() const;
  // Restores the window geometry and state saved by the last run.
  void RestoreWindowSettings();

protected:
  void closeEvent(QCloseEvent* aEvent) override;

private Q_SLOTS:
  void MIFileQuitTriggered();
  void MISettingsPreferencesTriggered();
  void MIHelpErrorLogTriggered();
  void MIHelpAboutTriggered();

private:
  void SaveWindowSettings();

  QMenu* mFileMenu = nullptr;
  QMenu* mSettingsMenu = nullptr;
  QMenu* mHelpMenu = nullptr;
  QToolBar* mToolBar = nullptr;
  QLabel* mHint = nullptr;
  QStackedWidget* mCentre = nullptr;
  // Library and driver menus go before Settings and Help, in the order they are added.
  QAction* mSettingsMenuAction = nullptr;
  // File > Quit stays last whatever the library adds to the file menu.
  QAction* mFileSeparator = nullptr;
  QTimer mTickTimer;
};
