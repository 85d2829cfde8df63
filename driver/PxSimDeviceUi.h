#pragma once

#include "ParvexSimDriverExport.h"
#include "PxDeviceUi.h"

class PxSimSensor;

// The device UI of a connected Parvex 16: the library's configuration, apply, reset and update
// flows, with the firmware files this driver offers. Its forms come with the sensor UI.
class PXSIMDRIVER_EXPORT PxSimDeviceUi : public PxDeviceUi
{
  Q_OBJECT

public:
  // Takes the sensor, and through it the sensor's connection (a child of the sensor).
  explicit PxSimDeviceUi(PxSimSensor* aSensor);

  QString Name() const override;
  PxDockWidget* RequestWindow(unsigned int aId, unsigned int aFlags) override;
  // The bundled releases (written to the firmware folder when missing) and every other firmware
  // file found there; a file that does not read as firmware is listed as damaged, so the user
  // learns why it cannot be installed.
  QList<PxUpdateSelectDialog::FirmwareFile> FirmwareFiles() const override;
};
