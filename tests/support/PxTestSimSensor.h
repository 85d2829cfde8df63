#pragma once

#include "PxInProcessConnection.h"
#include "PxSimDriver.h"
#include "PxSimSensor.h"

#include <memory>

namespace PxTest {
// The simulated sensor on an in-process link, read whole as the connection dialog leaves it, for
// forms that show a real device. Its simulated device keeps its state in aStateDir (none: a fresh
// device each time). mSensor stays null when the link does not come up.
struct SimSensor
{
  explicit SimSensor(const QString& aStateDir = QString())
      : mLink(aStateDir)
  {
    PxSimDriver::Register(); // the sensor type, without a host to tick it
    if (mLink.Connect()) {
      mSensor.reset(static_cast<PxSimSensor*>(PxDevice::Create(PxSimSensor::TYPE, &mLink)));
      mSensor->Initialize();
    }
  }
  PxInProcessConnection mLink;
  std::unique_ptr<PxSimSensor> mSensor;
};
} // namespace PxTest
