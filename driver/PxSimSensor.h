#pragma once

#include "ParvexSimDriverExport.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxSensor.h"
#include "PxTextProperty.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class PxControlConnection;
class PxProtocolReader;

// The Parvex 16, as the simulated sensor (or a real one speaking the same protocol) presents it:
// every setting and constant of the device as a property, the two apply steps, reset, calibration,
// the debug commands and the periodic acquisition of the groups the views have subscribed to.
//
// Each exchange is one request and its answer on the device's control connection. Device answer
// codes leave the link up and reach the caller as exceptions; an answer that cannot be decoded
// drops the link, since the byte stream is out of step after it.
class PXSIMDRIVER_EXPORT PxSimSensor : public PxSensor
{
  Q_OBJECT

public:
  // The device type the sensor reports in its identity; the driver registers it under this code.
  static constexpr PtU16 TYPE = 0x0A16;
  // Document types: "P16C", "P16K", "P16R" read as little-endian words.
  static constexpr PtU32 CONFIGURATION_DOCUMENT = 0x43363150;
  static constexpr PtU32 CALIBRATION_DOCUMENT = 0x4B363150;
  static constexpr PtU32 RECORD_DOCUMENT = 0x52363150;
  // The versions this build was made for: the software version without its two flag bits
  // (component 1) and the FPGA version (component 2), as the version check on connection reads
  // them. Devices with these connect without a question.
  static constexpr PtU16 EXPECTED_SOFTWARE_VERSION = 212;
  static constexpr PtU16 EXPECTED_FPGA_VERSION = 0x0103;

  // The driver's own properties are identified in files by their device id under this prefix, so
  // that they cannot meet the framework's ids; the serial number keeps the id every device uses.
  static constexpr PtU32 PROPERTY_ID_BASE = 0x00A10000;
  static constexpr PtU32 PropertyId(PtU16 aDeviceId) { return PROPERTY_ID_BASE | aDeviceId; }

  // Codes of the errors a firmware file raises before anything is sent to the device.
  enum : unsigned int {
    FIRMWARE_ERROR_NOT_FIRMWARE = 40, // no signature, unknown layout or a header cut short
    FIRMWARE_ERROR_OTHER_DEVICE = 41, // made for another device type
    FIRMWARE_ERROR_SIZE = 42,         // the image is not as long as its header says, or too large
    FIRMWARE_ERROR_CHECKSUM = 43,     // the image does not match its checksum: the file is damaged
  };

  // A firmware file ("*.ptb", layout in docs/driver-protocol.md), checked against its own header.
  struct FirmwareImage
  {
    PtByte mComponent = 0; // 1 FPGA, 2 software
    PtU16 mVersion = 0;    // the version word the device reports once it runs the image
    PtU32 mCrc = 0;
    QByteArray mData;
  };
  // Reads and checks a firmware file; throws (codes above, or the file's error) when it cannot be
  // sent as it is.
  static FirmwareImage ReadFirmwareFile(const QString& aFileName);

  explicit PxSimSensor(PxConnection* aConnection);
  ~PxSimSensor() override;

  QString Name() const override;
  PtU16 ExpectedSoftwareVersion(int aComponent) const override;
  PxCodeUpdateJob* CreateComponentUpdateJob(int aComponent) override;
  PtU32 ConfigurationDocumentType(const QString& aFileName, const QString& aComment) const override;
  PtU32 CalibrationDocumentType(const QString& aFileName, const QString& aComment) const override;
  void ReadIdentity() override;
  // Sends every editable value that differs from what the device was last read to hold: the
  // user's edits, and whatever a configuration file brought in.
  void WriteConfiguration() override;
  // Saves what WriteConfiguration sent to the device's non-volatile memory, then reads the whole
  // configuration back, so that the model shows what the device really runs.
  void ApplyConfiguration() override;
  // Restarts the device on its saved configuration and reads it again.
  void Reset() override;
  PxCodeUpdateJob* CreateFileUpdateJob(const QString& aFile, unsigned char aKind, int aOption) override;
  void ReadConfiguration() override;
  // Sends the calibration values (the per-segment distance offsets) that differ from the device's.
  void WriteCalibration() override;

  // First debug command: arms (or clears) one of the device's failure modes. Second: the scene's
  // noise seed and motion. The device's answer is kept as LastDebugResult().
  void DebugCommand1(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) override;
  void DebugCommand2(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) override;
  // RAM, registers, the saved configuration and the firmware image; only RAM can be written.
  QStringList MemoryNames() const override;
  // Transfers of any length, in as many exchanges as the device's transfer limit needs.
  QByteArray ReadMemory(int aMemory, PtU64 aAddress, PtU32 aLength) override;
  void WriteMemory(int aMemory, PtU64 aAddress, const QByteArray& aData) override;
  void RefreshProperty(PtU32 aId) override;
  PtU32 GetDebugDefaultMemoryLength() override;
  PtU32 RecordDocumentType() const override;
  bool DeliversFilteredTraces() const override;
  PxResultProvider* CreateProvider(PtU32 aId) override;

  // Sends the image in chunks as large as the device takes, then has the device check and install
  // it; the device restarts on it, and the identity and configuration are read again. aProgress
  // hears the bytes the device has acknowledged after each chunk. A refused chunk or check throws
  // the device's answer code and leaves the device on its old firmware.
  void UpdateFirmware(const FirmwareImage& aImage,
                      const std::function<void(PtU32 aReceived, PtU32 aTotal)>& aProgress = {});

  // The settings the user configures, by area, in the order a configuration form shows them.
  struct ConfigurationGroup
  {
    QString mTitle;
    std::vector<PxProperty*> mProperties;
  };
  std::vector<ConfigurationGroup> ConfigurationGroups();

  PtU64 LastDebugResult() const { return mLastDebugResult; }
  const PxTextProperty& HardwarePartNumber() const { return *mHardwarePart; }

public Q_SLOTS:
  // One acquisition cycle, run on the host's Tick: fetches exactly the groups of the data mask,
  // the state last (a recorder takes a frame as complete when its state arrives). Failures are
  // logged, not thrown: a lost link reports itself through the connection's Disconnected.
  void Acquire();

private:
  // The control connection, which must be up.
  PxControlConnection& Link() const;
  // Sends a request without elements, or with the elements of aAddElements, and reads the whole
  // answer.
  PxProtocolReader& Exchange(PtU16 aRequest);
  template <class F>
  PxProtocolReader& Exchange(PtU16 aRequest, F aAddElements);
  // Sends a request and reads only the answer header, for a provider that decodes the rest. An
  // error answer is read whole and thrown.
  PxProtocolReader& RequestGroup(PtU16 aRequest);
  // Runs one exchange; a decoding failure drops the link before it leaves.
  template <class F>
  void Guarded(F aExchange);

  // Decodes a configuration or identity answer into the properties.
  void ReadProperties(PxProtocolReader& aReader);
  // Writes the editable values of the given categories that differ from the device's.
  void WriteChanged(bool aCalibrationOnly);
  void RunDebugCommand(PtU16 aRequest, PtU64 aP1, PtU32 aP2, PtByte aP3, PtU64 aP4);
  void FetchAll();

  // The properties are QObject children of the sensor, so they outlive whatever the sensor base
  // does with its property maps while it is torn down.
  // Identity and constants the user cannot change.
  PxTextProperty* mSerialNumber = nullptr;
  PxTextProperty* mHardwarePart = nullptr;
  PxIntegerProperty* mTemperatureScale = nullptr;
  PxIntegerProperty* mTimebaseScale = nullptr;
  // Settings.
  PxFloatProperty* mRefreshRateSetting = nullptr;
  PxEnumProperty* mAccumulation = nullptr;
  PxEnumProperty* mOversampling = nullptr;
  PxEnumProperty* mBaudRate = nullptr;
  PxIntegerProperty* mLightPower = nullptr;
  PxIntegerProperty* mSmoothing = nullptr;
  PxIntegerProperty* mModbusAddress = nullptr;
  PxFloatProperty* mDetectionThreshold = nullptr;
  PxFloatProperty* mDistanceOffsets = nullptr;
  PxFloatProperty* mTemperatureHigh = nullptr;
  PxFloatProperty* mTemperatureLow = nullptr;
  PxBoolProperty* mNoiseRemoval = nullptr;
  PxBoolProperty* mModbusEnabled = nullptr;
  PxBitFieldProperty* mSegmentMask = nullptr;
  PxIntegerProperty* mTraceLength = nullptr;
  PxTextProperty* mLocation = nullptr;

  std::unique_ptr<PxResultTrace> mFilteredTraces;
  // The state values besides the temperatures: load, acquisition state and, for diagnosis, the
  // frame counter. Entered in the maps with the state provider.
  std::vector<std::unique_ptr<PxResult>> mStateResults;
  // The values each property had on the device when it was last read: what WriteConfiguration
  // compares with.
  std::unordered_map<const PxProperty*, std::vector<PtByte>> mOnDevice;
  // Something was written since the last save.
  bool mUnsaved = false;
  bool mAcquiring = false;
  PtU64 mLastDebugResult = 0;
};
