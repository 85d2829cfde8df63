#include "PxSimDriver.h"

#include "PtDocumentReader.h"
#include "PxConnection.h"
#include "PxHost.h"
#include "PxRecordPlayer.h"
#include "PxSerialPortListener.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxSimModbusListener.h"
#include "PxSimModbusMap.h"
#include "PxSimSensor.h"

#include <QCoreApplication>
#include <QPointer>

namespace {
bool sRegistered = false;

// Replays a Parvex 16 record with the UI a connected Parvex 16 gets.
class PxSimRecordPlayer : public PxRecordPlayer
{
public:
  using PxRecordPlayer::PxRecordPlayer;
  PxDeviceUi* CreateDeviceUi(PxSensor* aSensor) override
  {
    return new PxSimDeviceUi(static_cast<PxSimSensor*>(aSensor));
  }
};

// Guarded: a sensor made after the window closed simply has no tick.
QPointer<PxHost> sHost;
} // namespace

void PxSimDriver::Register(PxHost* aHost)
{
  sHost = aHost;
  if (sRegistered) {
    return;
  }
  sRegistered = true;
  PxDevice::RegisterType(PxSimSensor::TYPE, QCoreApplication::translate("PxSimDriver", "Parvex 16"),
                         &PxSimDriver::CreateSensor);
  PxRecordPlayer::RegisterType(PtDocumentReader::FORMAT_SIGNATURE, PxSimSensor::RECORD_DOCUMENT,
                               &PxSimDriver::CreatePlayer);
  PxSimConnectionTypes::Register();
  PxConnection::RegisterSerialListener(PxSimModbusMap::LISTENER_TYPE, &PxSimModbusListener::Create);
  PxSerialPortListener::RegisterTypeName(PxSimModbusMap::LISTENER_TYPE,
                                         QCoreApplication::translate("PxSimDriver", "Parvex 16 service port"));
}

PxRecordPlayer* PxSimDriver::CreatePlayer(const QString& aFileName)
{
  // A replayed sensor has no link: it is fed by the player, never by the device.
  return new PxSimRecordPlayer(aFileName, new PxSimSensor(nullptr));
}

PxDevice* PxSimDriver::CreateSensor(PxConnection* aConnection)
{
  auto* lSensor = new PxSimSensor(aConnection);
  if (sHost) {
    QObject::connect(sHost.data(), &PxHost::Tick, lSensor, &PxSimSensor::Acquire);
  }
  return lSensor;
}
