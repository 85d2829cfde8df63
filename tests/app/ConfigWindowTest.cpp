#include "ConfigWindow.h"

#include "LiveStatus.h"
#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PxDataLogger.h"
#include "PxEntry.h"
#include "PxRecorder.h"
#include "PxResultState.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxSimDriver.h"
#include "PxSimSensor.h"
#include "PxStaticUi.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestUi.h"
#include "SensorView.h"
#include "StartupConnection.h"

#include <QAction>
#include <QDir>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolBar>

#include <gtest/gtest.h>

namespace {
TEST(ConfigWindow, LibraryMenusAndActionsLandWhereUsersLookForThem)
{
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  // The library's Device menu, and View with its serial-port viewer, go between File and Settings.
  EXPECT_EQ(PxTest::MenuTitles(lWindow), (QStringList{"&File", "Device", "View", "&Settings", "&Help"}));

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
  EXPECT_TRUE(PxTest::SaveToGallery(&lWindow, QStringLiteral("main-window")));

  // Settings starts with the preferences, whose dialog has the units page.
  PtModalScript lScript;
  bool lHadUnits = false;
  lScript.Queue([&](QDialog* aDialog) {
    auto* lDialog = qobject_cast<PtPreferencesDialog*>(aDialog);
    lHadUnits = lDialog && lDialog->Page(QStringLiteral("Units")) != nullptr;
  });
  lWindow.menuBar()->actions().at(3)->menu()->actions().value(0)->trigger();
  EXPECT_TRUE(lHadUnits);
  PxShutdown();
}

TEST(ConfigWindow, TicksClosingCanBeVetoedAndGeometryIsKeptBetweenRuns)
{
  QSettings().remove(QStringLiteral("MainWindow"));
  ConfigWindow lWindow;
  lWindow.RestoreWindowSettings();
  lWindow.show();
  lWindow.setGeometry(40, 50, 777, 555);
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
  ConfigWindow lAgain;
  lAgain.RestoreWindowSettings();
  EXPECT_EQ(lAgain.size(), QSize(777, 555));
}

// What a person does with parvex-config on the simulated sensor, from connecting at start to quitting.
TEST(ConfigWindow, StartsOnTheSimulatedSensorAndRunsItFromTheMenus)
{
  QTemporaryDir lState;
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  PxSimDriver::Register(&lWindow);
  PxSimConnectionTypes::SetSimulatorStateDir(lState.filePath(QStringLiteral("sim")));
  PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, lState.filePath(QStringLiteral("records")), 500, 60);
  PxDataLogger::SetParameters(lState.filePath(QStringLiteral("logs")));
  LiveStatus lStatus(lWindow);
  SensorView lView(lWindow);
  lWindow.resize(900, 560);
  lWindow.show();
  ASSERT_TRUE(ConnectAtStart(lWindow, QStringLiteral("sim")));
  auto* lUi = static_cast<PxSimDeviceUi*>(PxStaticUi::Ui());
  auto* lSensor = static_cast<PxSimSensor*>(lUi->Sensor());
  EXPECT_TRUE(lWindow.windowTitle().contains(lSensor->Name()));
  EXPECT_EQ(PxStaticUi::Singleton()->ConnectionStatus().trimmed(), lUi->Name());
  EXPECT_EQ(lWindow.CentralView(), lView.Graph());
  // The host's tick drives acquisition: frames arrive without anything else being done.
  QSignalSpy lFrames(lSensor->StateProvider(), &PxResultProvider::NewData);
  while (lFrames.count() < 20 && lFrames.wait(PxTest::WAIT_MS)) {
  }
  EXPECT_TRUE(lStatus.Text().contains(QStringLiteral("simulated sensor - "))) << lStatus.Text().toStdString();
  // Every frame counts, the ones before the spy too.
  const QRegularExpression lFrameCount(QStringLiteral(" - (\\d+) frames at "));
  EXPECT_GE(lFrameCount.match(lStatus.Text()).captured(1).toInt(), 20) << lStatus.Text().toStdString();
  EXPECT_TRUE(PxTest::SaveToGallery(&lWindow, QStringLiteral("main-window-connected")));

  const QList<QAction*> lMenus = lWindow.menuBar()->actions();
  for (const char* lText : {"State", "Raw Traces", "Filtered Traces", "Raw Detections", "Debug", "Settings"}) {
    QAction* lAction = PxTest::MenuAction(lMenus, QString::fromLatin1(lText));
    ASSERT_NE(lAction, nullptr) << lText;
    lAction->trigger();
    EXPECT_TRUE(lAction->isChecked()) << lText;
  }
  EXPECT_EQ(lUi->Windows().size(), 5); // one trace form for both kinds

  for (const char* lText : {"Start Recording", "Start Data Logging"}) {
    PxTest::MenuAction(lMenus, QString::fromLatin1(lText))->trigger();
  }
  lSensor->Acquire();
  lUi->RecordAction()->trigger();
  lUi->LogAction()->trigger();
  EXPECT_EQ(QDir(lState.filePath(QStringLiteral("records"))).entryList({"*.ptl"}).size(), 1);
  EXPECT_EQ(QDir(lState.filePath(QStringLiteral("logs"))).entryList({"*.txt"}).size(), 1);

  // Quitting disconnects through the library without a question, which stops the status line.
  PtModalScript lScript;
  bool lAccept = true;
  Q_EMIT lWindow.QuitRequested(lAccept);
  EXPECT_TRUE(lAccept);
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(lWindow.windowTitle(), QStringLiteral("Parvex Configuration"));
  EXPECT_EQ(lWindow.CentralView(), nullptr);
  EXPECT_TRUE(lStatus.Text().isEmpty());

  // A target that is not an address is refused with a message, not a crash (the only one of the
  // script: quitting asked nothing).
  EXPECT_FALSE(ConnectAtStart(lWindow, QStringLiteral("serial://COM1")));
  ASSERT_EQ(lScript.Interactions().size(), 1);
  EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_ERROR);
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  PxShutdown();
}
} // namespace
