#include "ConfigWindow.h"

#include "PtErrorLogForm.h"
#include "PtPreferencesDialog.h"
#include "PxEntry.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>

namespace
{
const char* const SETTINGS_GROUP = "MainWindow";

// Lives as long as one device UI: shows since when the device is connected.
class DeviceContext : public QObject
{
public:
  explicit DeviceContext(QStatusBar* aStatusBar)
    : mStatusBar(aStatusBar)
    , mLabel(new QLabel(
        QCoreApplication::translate("ConfigWindow", "Connected since %1").arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")))))
  {
    mStatusBar->addPermanentWidget(mLabel);
  }
  ~DeviceContext() override
  {
    mStatusBar->removeWidget(mLabel);
    delete mLabel;
  }

private:
  QStatusBar* mStatusBar;
  QLabel* mLabel;
};
} // namespace

ConfigWindow::ConfigWindow(QWidget* aParent)
  : PxHost(aParent)
{
  setWindowTitle(tr("Parvex Configuration"));
  setWindowIcon(QIcon(QStringLiteral(":/icons/Connect.png")));
  setObjectName(QStringLiteral("ConfigWindow"));

  mFileMenu = menuBar()->addMenu(tr("&File"));
  mFileSeparator = mFileMenu->addSeparator();
  QAction* lQuit = mFileMenu->addAction(tr("&Quit"), this, &ConfigWindow::MIFileQuitTriggered);
  lQuit->setShortcut(QKeySequence::Quit);
  lQuit->setMenuRole(QAction::QuitRole);

  mSettingsMenu = menuBar()->addMenu(tr("&Settings"));
  mSettingsMenuAction = mSettingsMenu->menuAction();
  mSettingsMenu->addAction(tr("&Preferences..."), this, &ConfigWindow::MISettingsPreferencesTriggered)
    ->setShortcut(QKeySequence::Preferences);

  mHelpMenu = menuBar()->addMenu(tr("&Help"));
  mHelpMenu->addAction(tr("&Error log"), this, &ConfigWindow::MIHelpErrorLogTriggered);
  mHelpMenu->addSeparator();
  mHelpMenu->addAction(tr("&About parvex-config"), this, &ConfigWindow::MIHelpAboutTriggered)
    ->setMenuRole(QAction::AboutRole);

  mToolBar = addToolBar(tr("Main"));
  mToolBar->setObjectName(QStringLiteral("MainToolBar"));
  mToolBar->setIconSize(QSize(24, 24));

  // Until the device's forms are docked the window would be an empty grey field: say what is
  // connected, or what to do next.
  mCentre = new QStackedWidget(this);
  mHint = new QLabel(mCentre);
  mHint->setAlignment(Qt::AlignCenter);
  mHint->setEnabled(false);
  mCentre->addWidget(mHint);
  setCentralWidget(mCentre);
  SetDeviceTitle(QString());
  statusBar()->showMessage(tr("Ready"));

  connect(&mTickTimer, &QTimer::timeout, this, &PxHost::Tick);
  mTickTimer.start(TICK_MS);
}

ConfigWindow::~ConfigWindow() = default;

bool ConfigWindow::UseSavedLayout()
{
  return true;
}

void ConfigWindow::SetDeviceTitle(const QString& aTitle)
{
  setWindowTitle(aTitle.isEmpty() ? tr("Parvex Configuration") : tr("%1 - Parvex Configuration").arg(aTitle));
  mHint->setText(aTitle.isEmpty() ? tr("No sensor connected.\n\nConnect one from the Device menu or the tool bar.")
                                  : tr("%1 is connected.\n\nIts live status is shown in the status bar.").arg(aTitle));
}

void ConfigWindow::SetCentralView(QWidget* aView)
{
  while (mCentre->count() > 1) {
    QWidget* lOld = mCentre->widget(1);
    mCentre->removeWidget(lOld);
    lOld->setParent(nullptr);
  }
  if (aView) {
    mCentre->addWidget(aView);
    mCentre->setCurrentWidget(aView);
  } else {
    mCentre->setCurrentWidget(mHint);
  }
}

QWidget* ConfigWindow::CentralView() const
{
  return mCentre->currentWidget() == mHint ? nullptr : mCentre->currentWidget();
}

void ConfigWindow::AddToolBarAction(QAction* aAction)
{
  mToolBar->addAction(aAction);
}

QObject* ConfigWindow::CreateDeviceContext()
{
  return new DeviceContext(statusBar());
}

QMenu* ConfigWindow::AddMenu(const QString& aTitle)
{
  auto* lMenu = new QMenu(aTitle, this);
  menuBar()->insertMenu(mSettingsMenuAction, lMenu);
  return lMenu;
}

void ConfigWindow::AddFileAction(QAction* aAction)
{
  mFileMenu->insertAction(mFileSeparator, aAction);
}

void ConfigWindow::AddSettingsAction(QAction* aAction)
{
  mSettingsMenu->addAction(aAction);
}

void ConfigWindow::AddHelpAction(QAction* aAction)
{
  mHelpMenu->insertAction(mHelpMenu->actions().value(0), aAction);
}

void ConfigWindow::AddStatusWidget(QWidget* aWidget)
{
  statusBar()->addPermanentWidget(aWidget);
}

void ConfigWindow::ShowStatusMessage(const QString& aText, int aTimeoutMs)
{
  statusBar()->showMessage(aText, aTimeoutMs);
}

void ConfigWindow::RestoreWindowSettings()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  const QByteArray lGeometry = lSettings.value(QStringLiteral("Geometry")).toByteArray();
  if (lGeometry.isEmpty() || !restoreGeometry(lGeometry)) {
    resize(1024, 700);
  }
  restoreState(lSettings.value(QStringLiteral("State")).toByteArray());
}

void ConfigWindow::SaveWindowSettings()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  lSettings.setValue(QStringLiteral("Geometry"), saveGeometry());
  lSettings.setValue(QStringLiteral("State"), saveState());
}

void ConfigWindow::closeEvent(QCloseEvent* aEvent)
{
  bool lAccept = true;
  Q_EMIT QuitRequested(lAccept);
  if (!lAccept) {
    aEvent->ignore();
    return;
  }
  SaveWindowSettings();
  aEvent->accept();
}

void ConfigWindow::MIFileQuitTriggered()
{
  close();
}

void ConfigWindow::MISettingsPreferencesTriggered()
{
  // The library and the drivers add their pages when the dialog announces itself.
  PtPreferencesDialog lDialog(this);
  lDialog.exec();
}

void ConfigWindow::MIHelpErrorLogTriggered()
{
  PtErrorLogForm::Open(this);
}

void ConfigWindow::MIHelpAboutTriggered()
{
  QMessageBox::about(this, tr("About parvex-config"),
                     tr("<b>parvex-config</b><br>Configuration and monitoring of Parvex range-finding sensors.<br>"
                        "Framework library %1, Qt %2.")
                       .arg(QString::fromLatin1(PtGetVersion()), QString::fromLatin1(qVersion())));
}
