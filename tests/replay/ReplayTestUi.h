#pragma once

#include "../recording/RecordingTestSupport.h"
#include "PxHost.h"
#include "PxSensorUi.h"

#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

// The test sensor's records replayed as a driver replays its own: with the UI a connected test
// sensor would get, in a window that places menus, tool bar and status widgets as a host does.
namespace ReplayTest {
class ReplayHost : public PxHost
{
public:
  explicit ReplayHost(bool aUseSavedLayout = false)
      : mUseSavedLayout(aUseSavedLayout)
  {
    mFile = menuBar()->addMenu(QStringLiteral("File"));
    mToolBar = addToolBar(QStringLiteral("Main"));
    mToolBar->setObjectName(QStringLiteral("Main"));
    resize(800, 500);
  }
  bool UseSavedLayout() override { return mUseSavedLayout; }
  void SetDeviceTitle(const QString&) override {}
  void AddToolBarAction(QAction* aAction) override { mToolBar->addAction(aAction); }
  QObject* CreateDeviceContext() override
  {
    ++mDeviceContexts;
    return new QObject;
  }
  QMenu* AddMenu(const QString& aTitle) override { return menuBar()->addMenu(aTitle); }
  void AddFileAction(QAction* aAction) override { mFile->addAction(aAction); }
  void AddSettingsAction(QAction*) override {}
  void AddHelpAction(QAction*) override {}
  void AddStatusWidget(QWidget* aWidget) override { statusBar()->addPermanentWidget(aWidget); }
  void ShowStatusMessage(const QString&, int) override {}

  bool mUseSavedLayout;
  int mDeviceContexts = 0;
  QMenu* mFile = nullptr;
  QToolBar* mToolBar = nullptr;
};

class TestSensorUi : public PxSensorUi
{
public:
  using PxSensorUi::PxSensorUi;
  QString Name() const override { return QStringLiteral("test sensor"); }
  QList<PxUpdateSelectDialog::FirmwareFile> FirmwareFiles() const override { return {}; }
};

class UiPlayer : public PxRecordPlayer
{
public:
  using PxRecordPlayer::PxRecordPlayer;
  PxDeviceUi* CreateDeviceUi(PxSensor* aSensor) override { return new TestSensorUi(aSensor); }
};

inline PxRecordPlayer* MakeUiPlayer(const QString& aFileName)
{
  return new UiPlayer(aFileName, new PxTestSensor());
}

// Registered ahead of the plain test player, so that the test sensor's records replay with a UI
// (once per process; the first registered match wins).
inline void RegisterUiPlayer()
{
  static const bool sRegistered = [] {
    PxRecordPlayer::RegisterType(RecordingTest::DOCUMENT_SIGNATURE, PxTestSensor::RECORD_DOCUMENT, &MakeUiPlayer);
    return true;
  }();
  (void)sRegistered;
  RecordingTest::RegisterTestPlayer();
}
} // namespace ReplayTest
