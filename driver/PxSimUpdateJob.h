#pragma once

#include "ParvexSimDriverExport.h"
#include "PxCodeUpdateJob.h"
#include "PxSimSensor.h"

#include <QPointer>

// A firmware update of the Parvex 16: the image goes to the device in chunks, progress after each,
// and the device checks and installs it at the end. Cancelled or cut off before that end, the
// device keeps running its previous firmware.
class PXSIMDRIVER_EXPORT PxSimUpdateJob : public PxCodeUpdateJob
{
  Q_OBJECT

public:
  // With aCloseLinkAfter the link is closed once the image is installed: the device restarts on new
  // software and must be connected again.
  PxSimUpdateJob(PxSimSensor& aSensor, const PxSimSensor::FirmwareImage& aImage, bool aCloseLinkAfter);

  QString Description() const override;
  void Run() override;

  const PxSimSensor::FirmwareImage& Image() const { return mImage; }

  // The image this driver release installs for a component (PxSimProtocol's numbering), as a
  // manufacturer ships it with the configuration software.
  static PxSimSensor::FirmwareImage BundledImage(PtByte aComponent);
  // Writes aImage as a firmware file (*.ptb).
  static void WriteFirmwareFile(const QString& aFileName, const PxSimSensor::FirmwareImage& aImage);
  // Where the driver keeps the firmware files it offers; the bundled ones are written there when
  // missing.
  static QString FirmwareDirectory();
  static void SetFirmwareDirectory(const QString& aDirectory);
  // Text for a version word of a component: "2.12" for software, "1.3" for the FPGA.
  static QString VersionText(PtByte aComponent, PtU16 aVersion);

private:
  QPointer<PxSimSensor> mSensor;
  PxSimSensor::FirmwareImage mImage;
  bool mCloseLinkAfter = false;
};
