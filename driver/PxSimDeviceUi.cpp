#include "PxSimDeviceUi.h"

#include "PtErrorLogForm.h"
#include "PxHost.h"
#include "PxSimConfigForm.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxSimUpdateJob.h"
#include "PxStaticUi.h"

#include <QDir>
#include <QFileInfo>

using namespace PxSimProtocol;

PxSimDeviceUi::PxSimDeviceUi(PxSimSensor* aSensor)
    : PxSensorUi(aSensor)
    , mSettings(tr("Settings"))
{
  mSettings.setCheckable(true);
  AddConfigurationAction(&mSettings);
  connect(&mSettings, &QAction::triggered, this, &PxSimDeviceUi::MIConfigurationSettingsTriggered);
}

void PxSimDeviceUi::MIConfigurationSettingsTriggered()
{
  if (CloseWindow(static_cast<int>(mSettingsId))) {
    return;
  }
  auto* lForm = new PxSimConfigForm(*static_cast<PxSimSensor*>(Sensor()), PxStaticUi::Host());
  mSettingsId = lForm->Id();
  lForm->SetLinkedActions(&mSettings);
  AddFloatingWindow(lForm, 0);
}

void PxSimDeviceUi::UpdateControls()
{
  PxSensorUi::UpdateControls();
  mSettings.setEnabled(Sensor()->IsLive());
}

QString PxSimDeviceUi::Name() const
{
  return Device()->Name();
}

PxDockWidget* PxSimDeviceUi::RequestWindow(unsigned int aId, unsigned int aFlags)
{
  if (aId != PxSimConfigForm::PERMANENT_ID) {
    return PxSensorUi::RequestWindow(aId, aFlags);
  }
  // A layout saved while connected opens no editor on a replayed sensor: its settings are the
  // record's, not the user's to change.
  if (!Sensor()->IsLive()) {
    return nullptr;
  }
  if (!FindWindow(static_cast<int>(mSettingsId))) {
    MIConfigurationSettingsTriggered();
  }
  return FindWindow(static_cast<int>(mSettingsId));
}

QList<PxUpdateSelectDialog::FirmwareFile> PxSimDeviceUi::FirmwareFiles() const
{
  const QDir lDir(PxSimUpdateJob::FirmwareDirectory());
  QDir().mkpath(lDir.path());
  for (PtByte lComponent : {COMPONENT_SOFTWARE, COMPONENT_FPGA}) {
    const PxSimSensor::FirmwareImage lImage = PxSimUpdateJob::BundledImage(lComponent);
    const QString lName = QStringLiteral("parvex16-%1-%2.ptb")
                              .arg(lComponent == COMPONENT_FPGA ? QStringLiteral("fpga") : QStringLiteral("software"),
                                   PxSimUpdateJob::VersionText(lComponent, lImage.mVersion));
    if (!lDir.exists(lName)) {
      try {
        PxSimUpdateJob::WriteFirmwareFile(lDir.filePath(lName), lImage);
      } catch (const std::exception& e) {
        PtErrorLogForm::LogError(e); // a read-only folder still lists what it holds
      }
    }
  }
  QList<PxUpdateSelectDialog::FirmwareFile> lFiles;
  const QFileInfoList lEntries =
      lDir.entryInfoList({QStringLiteral("*.ptb")}, QDir::Files, QDir::Name | QDir::Reversed);
  for (const QFileInfo& lEntry : lEntries) {
    PxUpdateSelectDialog::FirmwareFile lFile;
    lFile.mFile = lEntry.absoluteFilePath();
    try {
      const PxSimSensor::FirmwareImage lImage = PxSimSensor::ReadFirmwareFile(lFile.mFile);
      lFile.mKind = lImage.mComponent;
      lFile.mDescription = (lImage.mComponent == COMPONENT_FPGA ? tr("FPGA %1  (%2)") : tr("Software %1  (%2)"))
                               .arg(PxSimUpdateJob::VersionText(lImage.mComponent, lImage.mVersion), lEntry.fileName());
    } catch (const std::exception&) {
      lFile.mDescription = tr("%1  (damaged, cannot be installed)").arg(lEntry.fileName());
    }
    lFiles << lFile;
  }
  return lFiles;
}
