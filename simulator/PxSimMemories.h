#pragma once

#include "PtTypes.h"

#include <vector>

class PxProtocolWriter;
class PxSimConfiguration;
class PxSimDataGroups;
class PxSimFirmware;
class PxSimRequest;

// The device memories the debug form reads and writes: scratch RAM, live registers, the saved
// configuration and the running software image. Only RAM can be written.
class PxSimMemories
{
public:
  PxSimMemories(const PxSimConfiguration& aConfiguration, const PxSimDataGroups& aGroups,
                const PxSimFirmware& aFirmware);

  // REQ_READ_MEMORY and REQ_WRITE_MEMORY; both throw PxSimError.
  void Read(const PxSimRequest& aRequest, PxProtocolWriter& aWriter) const;
  void Write(const PxSimRequest& aRequest);
  // RAM does not survive a restart.
  void Restart();

private:
  std::vector<PtByte> Area(PtByte aArea) const;

  const PxSimConfiguration& mConfiguration;
  const PxSimDataGroups& mGroups;
  const PxSimFirmware& mFirmware;
  std::vector<PtByte> mRam;
};
