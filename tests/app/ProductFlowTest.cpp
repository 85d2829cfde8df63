#include "ConfigWindow.h"
#include "PtModalScript.h"
#include "PxDataLogger.h"
#include "PxEntry.h"
#include "PxFloatProperty.h"
#include "PxRecorder.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxSimDriver.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxStaticUi.h"
#include "SensorView.h"
#include "StartupConnection.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
// The action with aText anywhere in the menu bar (submenus included), as a user finds it.
QAction* MenuAction(const QList<QAction*>& aActions, const QString& aText)
{
  for (QAction* lAction : aActions) {
    QAction* lFound = lAction->text().remove(QLatin1Char('&')) == aText ? lAction
                      : lAction->menu()                                 ? MenuAction(lAction->menu()->actions(), aText)
                                                                        : nullptr;
    if (lFound) {
      return lFound;
    }
  }
  return nullptr;
}

// What a person does with parvex-config on the simulated sensor, from connecting to quitting.
TEST(ProductFlow, ConnectOpenEveryFormApplyRecordLogDisconnectQuit)
{
  QTemporaryDir lState;
  ConfigWindow lWindow;
  ASSERT_TRUE(PxInit(&lWindow));
  PxSimDriver::Register(&lWindow);
  PxSimConnectionTypes::SetSimulatorStateDir(lState.filePath(QStringLiteral("sim")));
  PxRecorder::SetParameters(PxRecorder::DEFAULT_FLAGS, lState.filePath(QStringLiteral("records")), 500, 60);
  PxDataLogger::SetParameters(lState.filePath(QStringLiteral("logs")));
  SensorView lView(lWindow);
  lWindow.show();
  ASSERT_TRUE(ConnectAtStart(lWindow, QStringLiteral("sim")));
  auto* lUi = static_cast<PxSimDeviceUi*>(PxStaticUi::Ui());
  auto* lSensor = static_cast<PxSimSensor*>(lUi->Sensor());
  EXPECT_EQ(lWindow.CentralView(), lView.Graph());
  const QList<QAction*> lMenus = lWindow.menuBar()->actions();
  for (const char* lText : {"State", "Raw Traces", "Filtered Traces", "Raw Detections", "Debug", "Settings"}) {
    QAction* lAction = MenuAction(lMenus, QString::fromLatin1(lText));
    ASSERT_NE(lAction, nullptr) << lText;
    lAction->trigger();
    EXPECT_TRUE(lAction->isChecked()) << lText;
  }
  EXPECT_EQ(lUi->Windows().size(), 5); // one trace form for both kinds

  // A new refresh rate, applied: the measured rate follows.
  auto& lRate =
      static_cast<PxFloatProperty&>(lSensor->Property(PxSimSensor::PropertyId(PxSimProtocol::ID_REFRESH_RATE)));
  lRate.SetDoubleValue(0, 25.0);
  lUi->ApplyAction()->trigger();
  for (int i = 0; i < 20; ++i) {
    lSensor->Acquire();
  }
  EXPECT_NEAR(lSensor->FindResult(PxResultState::RATE_ID)->Value(0), 25.0, 0.01);

  for (const char* lText : {"Start Recording", "Start Data Logging"}) {
    MenuAction(lMenus, QString::fromLatin1(lText))->trigger();
  }
  lSensor->Acquire();
  lUi->RecordAction()->trigger();
  lUi->LogAction()->trigger();
  EXPECT_EQ(QDir(lState.filePath(QStringLiteral("records"))).entryList({"*.ptl"}).size(), 1);
  EXPECT_EQ(QDir(lState.filePath(QStringLiteral("logs"))).entryList({"*.txt"}).size(), 1);

  // Disconnect, then quit without a question.
  PtModalScript lScript;
  PxStaticUi::Singleton()->ConnectAction()->trigger();
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(lWindow.CentralView(), nullptr);
  EXPECT_TRUE(lWindow.close());
  EXPECT_TRUE(lScript.Interactions().isEmpty());
  PxShutdown();
}
} // namespace
