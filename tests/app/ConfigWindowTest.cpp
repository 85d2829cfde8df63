#include "ConfigWindow.h"
#include "DeviceSession.h"
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
  QMenu* lDevice = lWindow.AddMenu(QStringLiteral("&Device"));
  ASSERT_NE(lDevice, nullptr);
  EXPECT_EQ(MenuTitles(lWindow), (QStringList{"&File", "&Device", "&Settings", "&Help"}));

  auto* lSave = new QAction(QStringLiteral("Save configuration..."), &lWindow);
  lWindow.AddFileAction(lSave);
  const QList<QAction*> lFile = lWindow.menuBar()->actions().first()->menu()->actions();
  EXPECT_EQ(lFile.first(), lSave);
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
  lWindow.resize(800, 500);
  lWindow.show();
  DeviceSession lSession(lWindow);
  ASSERT_TRUE(lSession.Open(QStringLiteral("sim"), PxTest::ScratchDir() + QStringLiteral("/sim-state")));
  EXPECT_TRUE(lWindow.windowTitle().contains(lSession.Sensor()->Name()));
  // The host's tick drives acquisition: frames arrive without anything else being done.
  QSignalSpy lFrames(lSession.Sensor()->StateProvider(), &PxResultProvider::NewData);
  ASSERT_TRUE(lFrames.wait(PxTest::WAIT_MS));
  while (lFrames.count() < 20 && lFrames.wait(PxTest::WAIT_MS)) {
  }
  EXPECT_TRUE(lSession.StatusText().contains(QStringLiteral("frames"))) << lSession.StatusText().toStdString();
  QDir().mkpath(QStringLiteral(PX_GALLERY_DIR));
  EXPECT_TRUE(lWindow.grab().save(QStringLiteral(PX_GALLERY_DIR "/main-window-connected.png")));

  // A target that is not an address is refused with a message, not a crash.
  PtModalScript lScript;
  EXPECT_FALSE(lSession.Open(QStringLiteral("serial://COM1"), QString()));
  ASSERT_EQ(lScript.Interactions().size(), 1);
  EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_ERROR);
  EXPECT_FALSE(lSession.IsOpen());
  PxShutdown();
}

} // namespace
