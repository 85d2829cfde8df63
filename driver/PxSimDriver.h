#pragma once

#include "ParvexSimDriverExport.h"

// The entry point of the Parvex 16 driver: what the application calls once, after the framework
// is initialised and before the first connection, so that a connected Parvex 16 becomes a
// PxSimSensor.
class PXSIMDRIVER_EXPORT PxSimDriver
{
public:
  // Registers the sensor's device type. Later calls do nothing, so a test or a tool may call it
  // whenever it needs the driver.
  static void Register();
  static bool Registered();
};
