#include "PxSimDriver.h"

#include "PxHost.h"
#include "PxSimSensor.h"

#include <QCoreApplication>
#include <QPointer>

namespace {
bool sRegistered = false;
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
}

PxDevice* PxSimDriver::CreateSensor(PxConnection* aConnection)
{
  auto* lSensor = new PxSimSensor(aConnection);
  if (sHost) {
    QObject::connect(sHost.data(), &PxHost::Tick, lSensor, &PxSimSensor::Acquire);
  }
  return lSensor;
}
