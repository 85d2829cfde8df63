#include "ConfigWindow.h"
#include "PtModalScript.h"
#include "PxCalibrationEditor.h"
#include "PxDataLogger.h"
#include "PxEchoesGraph.h"
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
#include "PxTest.h"
#include "PxTestGallery.h"
#include "SensorView.h"
#include "StartupConnection.h"

#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
// The action a user finds under aMenu > aText in the window's menu bar (one level of submenus).
QAction* MenuAction(QMainWindow& aWindow, const QString& aMenu, const QString& aText)
{
  for (QAction* lTop : aWindow.menuBar()->actions()) {
    if (lTop->text().remove(QLatin1Char('&')) != aMenu || !lTop->menu()) {
      continue;
    }
    for (QAction* lAction : lTop->menu()->actions()) {
      if (lAction->text() == aText) {
        return lAction;
      }
      if (lAction->menu()) {
        for (QAction* lSub : lAction->menu()->actions()) {
          if (lSub->text() == aText) {
            return lSub;
          }
        }
      }
    }
  }
  ADD_FAILURE() << "no " << aMenu.toStdString() << " > " << aText.toStdString();
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
  lWindow.resize(1280, 800);
  lWindow.show();
  ASSERT_TRUE(ConnectAtStart(lWindow, QStringLiteral("sim")));
  auto* lUi = static_cast<PxSimDeviceUi*>(PxStaticUi::Ui());
  auto* lSensor = static_cast<PxSimSensor*>(lUi->Sensor());
  ASSERT_EQ(lWindow.CentralView(), lView.Graph());

  for (const auto& [lMenu, lText] :
       {std::pair{"View", "State"}, std::pair{"View", "Raw Traces"}, std::pair{"View", "Filtered Traces"},
        std::pair{"View", "Raw Detections"}, std::pair{"Device", "Debug"}, std::pair{"Device", "Settings"}}) {
    QAction* lAction = MenuAction(lWindow, QString::fromLatin1(lMenu), QString::fromLatin1(lText));
    ASSERT_NE(lAction, nullptr);
    lAction->trigger();
    EXPECT_TRUE(lAction->isChecked()) << lText;
  }
  EXPECT_EQ(lUi->Windows().size(), 5); // one trace form for both kinds
  {
    PtModalScript lScript;
    QString lShown;
    lScript.Queue([&](QDialog* aDialog) { lShown = aDialog->metaObject()->className(); });
    MenuAction(lWindow, QStringLiteral("Device"), QStringLiteral("Calibration..."))->trigger();
    EXPECT_EQ(lShown, QStringLiteral("PxCalibrationEditor"));
  }

  // A new refresh rate, applied: the measured rate follows.
  auto& lRate =
      static_cast<PxFloatProperty&>(lSensor->Property(PxSimSensor::PropertyId(PxSimProtocol::ID_REFRESH_RATE)));
  const double lNewRate = lRate.DoubleValue(0) == 25.0 ? 40.0 : 25.0;
  lRate.SetDoubleValue(0, lNewRate);
  lUi->ApplyAction()->trigger();
  ASSERT_FALSE(lSensor->PropertyModified());
  for (int i = 0; i < 20; ++i) {
    lSensor->Acquire();
  }
  EXPECT_NEAR(lSensor->FindResult(PxResultState::RATE_ID)->Value(0), lNewRate, 0.01);

  // Record and log for a few frames, from the File menu.
  for (const QString& lStart : {QStringLiteral("Start Recording"), QStringLiteral("Start Data Logging")}) {
    QAction* lAction = MenuAction(lWindow, QStringLiteral("File"), lStart);
    ASSERT_NE(lAction, nullptr);
    lAction->trigger();
    for (int i = 0; i < 5; ++i) {
      lSensor->Acquire();
    }
    Q_EMIT lWindow.Tick();
  }
  EXPECT_FALSE(lUi->RecordStatus().isEmpty());
  EXPECT_FALSE(lUi->LogStatus().isEmpty());
  PxTest::SaveToGallery(&lWindow, QStringLiteral("parvex-config-window"));
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
