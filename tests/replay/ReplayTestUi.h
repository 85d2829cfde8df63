#pragma once

#include "../recording/RecordingTestSupport.h"
#include "PxSensorUi.h"
#include "PxTestHost.h"

// The test sensor's records replayed as a driver replays its own: with the UI a connected test
// sensor would get, in a window that places menus, tool bar and status widgets as a host does.
namespace ReplayTest {
// The window the replayed sensor's forms live in (the benchmark uses it by this name).
using ReplayHost = PxTest::Host;

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

// Registered ahead of the plain test player, so that the test sensor's records replay with a UI
// (once per process; the first registered match wins).
inline void RegisterUiPlayer()
{
  static const bool sRegistered = [] {
    PxRecordPlayer::RegisterType(
        RecordingTest::DOCUMENT_SIGNATURE, PxTestSensor::RECORD_DOCUMENT,
        [](const QString& aFileName) -> PxRecordPlayer* { return new UiPlayer(aFileName, new PxTestSensor()); });
    return true;
  }();
  (void)sRegistered;
  RecordingTest::RegisterTestPlayer();
}
} // namespace ReplayTest
