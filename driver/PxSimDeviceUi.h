#pragma once

#include "ParvexSimDriverExport.h"
#include "PxSensorUi.h"

#include <QAction>

class PxSimSensor;

// The UI of a connected Parvex 16: the library's sensor UI (forms, recording, logging,
// configuration flows), the firmware files this driver offers, and the sensor's configuration
// form, opened from the Configuration menu and kept in the saved layout like the other forms.
class PXSIMDRIVER_EXPORT PxSimDeviceUi : public PxSensorUi
{
  Q_OBJECT

public:
  // Takes the sensor, and through it the sensor's connection (a child of the sensor).
  explicit PxSimDeviceUi(PxSimSensor* aSensor);

  QString Name() const override;
  // The configuration form (its own permanent id) besides the library's forms.
  PxDockWidget* RequestWindow(unsigned int aId, unsigned int aFlags) override;
  void UpdateControls() override;
  // The bundled releases (written to the firmware folder when missing) and every other firmware
  // file found there; a file that does not read as firmware is listed as damaged, so the user
  // learns why it cannot be installed.
  QList<PxUpdateSelectDialog::FirmwareFile> FirmwareFiles() const override;

  QAction* SettingsAction() { return &mSettings; }

public Q_SLOTS:
  void MIConfigurationSettingsTriggered();

private:
  QAction mSettings;
  unsigned int mSettingsId = 0;
};
