#include "ConfigWindow.h"
#include "LiveStatus.h"
#include "PxDeviceUi.h"
#include "PxSimConnectionTypes.h"
#include "PxStaticUi.h"
#include "StartupConnection.h"
#include "PxResultState.h"
#include "PxSensor.h"
#include "PxSimDriver.h"
#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PxEntry.h"
#include "PxTest.h"

#include <QAction>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStatusBar>
#include <QToolBar>
#include <gtest/gtest.h>

namespace
{
QStringList MenuTitles(QMainWindow& aWindow)
{
  QStringList lTitles;
  for (QAction* a : aWindow.menuBar()->actions()) {
    lTitles << a->text();
  }
  return lTitles;
}

TEST(ConfigWindow, LibraryMenusAndActionsLandWhereUsersLookForThem)
{
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  // The library's Device menu, and View with its serial-port viewer, go between File and Settings.
  EXPECT_EQ(MenuTitles(lWindow), (QStringList{"&File", "Device", "View", "&Settings", "&Help"}));

  auto* lSave = new QAction(QStringLiteral("Save configuration..."), &lWindow);
  lWindow.AddFileAction(lSave);
  const QList<QAction*> lFile = lWindow.menuBar()->actions().first()->menu()->actions();
  EXPECT_EQ(lFile.first()->text(), QStringLiteral("Replay..."));
  EXPECT_EQ(lFile.at(1), lSave) << "library file actions go in the order they come";
  EXPECT_EQ(lFile.last()->text(), QStringLiteral("&Quit")) << "Quit stays last";

  auto* lApply = new QAction(QIcon(QStringLiteral(":/icons/Apply.png")), QStringLiteral("Apply"), &lWindow);
  lWindow.AddToolBarAction(lApply);
  EXPECT_TRUE(lWindow.findChild<QToolBar*>()->actions().contains(lApply));

  delete lWindow.CreateDeviceContext(); // the device UI deletes it at disconnect; the status bar must survive that
  lWindow.resize(800, 500);
  lWindow.show();
  QDir().mkpath(QStringLiteral(PX_GALLERY_DIR));
  EXPECT_TRUE(lWindow.grab().save(QStringLiteral(PX_GALLERY_DIR "/main-window.png")));

  lWindow.SetDeviceTitle(QStringLiteral("PX-16 #1234"));
  EXPECT_TRUE(lWindow.windowTitle().startsWith(QStringLiteral("PX-16 #1234")));
  lWindow.SetDeviceTitle(QString());
  EXPECT_EQ(lWindow.windowTitle(), QStringLiteral("Parvex Configuration"));
  PxShutdown();
}

TEST(ConfigWindow, TicksSteadilyAndClosingCanBeVetoed)
{
  ConfigWindow lWindow;
  lWindow.show();
  QSignalSpy lTicks(&lWindow, &PxHost::Tick);
  ASSERT_TRUE(lTicks.wait(PxTest::WAIT_MS));

  bool lVeto = true;
  int lAsked = 0;
  QObject::connect(&lWindow, &PxHost::QuitRequested, [&](bool& aAccept) {
    ++lAsked;
    if (lVeto) {
      aAccept = false;
    }
  });
  EXPECT_FALSE(lWindow.close());
  EXPECT_TRUE(lWindow.isVisible());
  lVeto = false;
  EXPECT_TRUE(lWindow.close());
  EXPECT_EQ(lAsked, 2);
}

TEST(ConfigWindow, GeometryIsKeptBetweenRuns)
{
  QSettings().remove(QStringLiteral("MainWindow"));
  {
    ConfigWindow lWindow;
    lWindow.RestoreWindowSettings();
    lWindow.show();
    lWindow.setGeometry(40, 50, 777, 555);
    ASSERT_TRUE(lWindow.close());
  }
  ConfigWindow lAgain;
  lAgain.RestoreWindowSettings();
  EXPECT_EQ(lAgain.size(), QSize(777, 555));
}

TEST(ConfigWindow, PreferencesMenuOpensTheDialogWithTheUnitsPage)
{
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  QAction* lPreferences = nullptr;
  for (QAction* a : lWindow.menuBar()->actions()) {
    if (a->text() == QStringLiteral("&Settings")) {
      lPreferences = a->menu()->actions().value(0);
    }
  }
  ASSERT_NE(lPreferences, nullptr);

  PtModalScript lScript;
  bool lHadUnits = false;
  lScript.Queue([&](QDialog* aDialog) {
    auto* lDialog = qobject_cast<PtPreferencesDialog*>(aDialog);
    lHadUnits = lDialog && lDialog->Page(QStringLiteral("Units")) != nullptr;
  });
  lPreferences->trigger();
  EXPECT_TRUE(lHadUnits);
  PxShutdown();
}

TEST(ConfigWindow, StartsOnTheBuiltInSimulatedSensor)
{
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  PxSimDriver::Register(&lWindow);
  PxSimConnectionTypes::SetSimulatorStateDir(PxTest::ScratchDir() + QStringLiteral("/sim-state"));
  LiveStatus lStatus(lWindow);
  lWindow.resize(900, 560);
  lWindow.show();
  ASSERT_TRUE(ConnectAtStart(lWindow, QStringLiteral("sim")));
  PxSensor* lSensor = qobject_cast<PxSensor*>(PxStaticUi::Ui()->Device());
  ASSERT_NE(lSensor, nullptr);
  EXPECT_TRUE(lWindow.windowTitle().contains(lSensor->Name()));
  EXPECT_EQ(PxStaticUi::Singleton()->ConnectionStatus().trimmed(), PxStaticUi::Ui()->Name());
  // The host's tick drives acquisition: frames arrive without anything else being done.
  QSignalSpy lFrames(lSensor->StateProvider(), &PxResultProvider::NewData);
  while (lFrames.count() < 20 && lFrames.wait(PxTest::WAIT_MS)) {
  }
  EXPECT_TRUE(lStatus.Text().contains(QStringLiteral("simulated sensor - "))) << lStatus.Text().toStdString();
  EXPECT_TRUE(lStatus.Text().contains(QStringLiteral("frames at"))) << lStatus.Text().toStdString();
  QDir().mkpath(QStringLiteral(PX_GALLERY_DIR));
  EXPECT_TRUE(lWindow.grab().save(QStringLiteral(PX_GALLERY_DIR "/main-window-connected.png")));

  // Quitting disconnects through the library, which stops the status line.
  bool lAccept = true;
  Q_EMIT lWindow.QuitRequested(lAccept);
  EXPECT_TRUE(lAccept);
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_TRUE(lStatus.Text().isEmpty());

  // A target that is not an address is refused with a message, not a crash.
  PtModalScript lScript;
  EXPECT_FALSE(ConnectAtStart(lWindow, QStringLiteral("serial://COM1")));
  ASSERT_EQ(lScript.Interactions().size(), 1);
  EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_ERROR);
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  PxShutdown();
}

} // namespace
