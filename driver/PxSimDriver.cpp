#include "PxSimDriver.h"

#include "PxSimSensor.h"

#include <QCoreApplication>

namespace {
// The registries keep duplicates and take the first match; registering once keeps them short.
bool sRegistered = false;
} // namespace

void PxSimDriver::Register()
{
  if (sRegistered) {
    return;
  }
  sRegistered = true;
  PxDevice::RegisterType(PxSimSensor::TYPE, QCoreApplication::translate("PxSimDriver", "Parvex 16"),
                         &PxSimSensor::Make);
}

bool PxSimDriver::Registered()
{
  return sRegistered;
}
