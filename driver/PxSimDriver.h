#pragma once

#include "ParvexSimDriverExport.h"

#include <QString>

class PxConnection;
class PxDevice;
class PxHost;
class PxRecordPlayer;

// The entry point of the Parvex 16 driver. The application calls Register once, after PxInit and
// before the first connection, so that a connected Parvex 16 becomes a PxSimSensor that acquires
// on the host's Tick.
class PXSIMDRIVER_EXPORT PxSimDriver
{
public:
  // Registers the sensor's device type (the first call only: the registry keeps duplicates) and
  // remembers aHost, whose Tick drives the acquisition of every sensor made afterwards. Without a
  // host (tests, tools) the caller runs PxSimSensor::Acquire itself.
  static void Register(PxHost* aHost = nullptr);

private:
  // The factory of the device-type registry.
  static PxDevice* CreateSensor(PxConnection* aConnection);
  // Opens a record file of this sensor type for replay.
  static PxRecordPlayer* CreatePlayer(const QString& aFileName);
};
