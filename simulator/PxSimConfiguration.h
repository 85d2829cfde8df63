#pragma once

#include "PxSimSetting.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <vector>

class PxProtocolWriter;
class PxSimRequest;

// Identity and configuration: every value the device exposes by device id, the requests that read
// and write them, and the non-volatile memory they are saved to. The non-volatile memory is a file
// when a path is given (so a restarted simulator comes back with what was saved), else it lives
// only as long as the object.
class PxSimConfiguration
{
public:
  explicit PxSimConfiguration(const QString& aNvmPath = QString());

  const PxSimSetting& Get(PtU16 aId) const;
  double Number(PtU16 aId, size_t aIndex = 0) const { return Get(aId).Number(aIndex); }
  const std::vector<PxSimSetting>& Settings() const { return mSettings; }

  // REQ_IDENTITY answer elements.
  void WriteIdentity(PxProtocolWriter& aWriter) const;
  // REQ_READ_CONFIG answer elements: all, or those listed in the request's ID_SELECT.
  void WriteConfiguration(const PxSimRequest& aRequest, PxProtocolWriter& aWriter) const;
  // REQ_WRITE_CONFIG: checks every element first, then applies all of them; throws PxSimError.
  void Apply(const PxSimRequest& aRequest);
  // REQ_SAVE_CONFIG: the writable values into non-volatile memory; throws PxSimError on failure.
  void Save();
  // A restart: every writable value from non-volatile memory, or from the defaults where nothing
  // is saved. A factory restart also erases the saved configuration (installed firmware stays).
  void Restart(bool aFactory);
  // A firmware component installed: its version (and for the software, the checksum) is kept in
  // non-volatile memory at once.
  void InstallFirmware(PtByte aComponent, PtU16 aVersion, PtU32 aCrc);
  // Starts the device on the firmware of the release before the current one (software and FPGA one
  // version back), so that a configuration tool finds it out of date and offers the update. A
  // component that an update has installed since keeps the installed version.
  void RunOlderFirmware();
  // The checksum of the factory image, for a device that has never been updated; not saved.
  void SetSoftwareCrc(PtU32 aCrc);

  // The non-volatile memory as stored: magic, version, then elements like a PtCom payload.
  QByteArray NvmImage() const;
  const QString& NvmPath() const { return mNvmPath; }

private:
  PxSimSetting& Mutable(PtU16 aId);
  void LoadNvm();
  bool StoreNvm() const;
  void ApplyNvm();

  QString mNvmPath;
  std::vector<PxSimSetting> mSettings;
  std::vector<PtU16> mIdentity;
  // Saved values by device id; written through to the file on every change.
  std::map<PtU16, std::vector<PtByte>> mNvm;
};
