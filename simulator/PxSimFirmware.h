#pragma once

#include "PtTypes.h"

#include <QString>

#include <vector>

class PxProtocolWriter;
class PxSimConfiguration;
class PxSimRequest;

// Firmware update in chunks: an announced image (component, size, CRC-32, version) arrives chunk by
// chunk in order; at the end its size and checksum are verified and the component is installed,
// after which the device restarts on the new version. The software image is kept in a file beside
// the non-volatile memory when there is one, so the firmware memory area survives a restart.
class PxSimFirmware
{
public:
  PxSimFirmware(PxSimConfiguration& aConfiguration, const QString& aImagePath = QString());

  // Each throws PxSimError. End returns once the component is installed; the caller restarts.
  void Begin(const PxSimRequest& aRequest, PxProtocolWriter& aWriter);
  void Chunk(const PxSimRequest& aRequest, PxProtocolWriter& aWriter);
  void End(const PxSimRequest& aRequest);
  // A restart abandons an update in progress.
  void Abort() { mUpdating = false; }

  bool Updating() const { return mUpdating; }
  const std::vector<PtByte>& Image() const { return mImage; }

  // CRC-32 as in IEEE 802.3 (zlib's crc32), which every firmware tool computes.
  static PtU32 Crc32(const PtByte* aData, size_t aSize);

private:
  PxSimConfiguration& mConfiguration;
  QString mImagePath;
  std::vector<PtByte> mImage; // the running software image
  bool mUpdating = false;
  PtByte mComponent = 0;
  PtU32 mSize = 0;
  PtU32 mCrc = 0;
  PtU16 mVersion = 0;
  std::vector<PtByte> mReceived;
};
