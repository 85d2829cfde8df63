#pragma once

#include "PxDevice.h"

#include <QStringList>

// A concrete device for the suites: its hardware operations do nothing but note that they ran, so
// a test can check which steps a flow took and in what order. It adds the serial-number property
// every real device has.
class PxTestDevice : public PxDevice
{
  Q_OBJECT

public:
  static constexpr PtU16 TYPE = 0x7E57;
  static constexpr PtU32 CONFIGURATION_DOCUMENT = 0x43545850; // "PXTC"
  static constexpr PtU32 CALIBRATION_DOCUMENT = 0x4C545850;   // "PXTL"

  // Without aSerialNumber the device lacks the serial-number property, as a faulty driver would.
  explicit PxTestDevice(PxConnection* aConnection = nullptr, bool aSerialNumber = true);

  // A factory for the type registry.
  static PxDevice* Make(PxConnection* aConnection) { return new PxTestDevice(aConnection); }

  QString Name() const override { return QStringLiteral("test device"); }
  PtU16 ExpectedSoftwareVersion(int aComponent) const override;
  PxCodeUpdateJob* CreateComponentUpdateJob(int aComponent) override;
  PtU32 ConfigurationDocumentType(const QString& aFileName, const QString& aComment) const override;
  PtU32 CalibrationDocumentType(const QString& aFileName, const QString& aComment) const override;
  void ReadIdentity() override { mCalls << QStringLiteral("ReadIdentity"); }
  void WriteConfiguration() override { mCalls << QStringLiteral("WriteConfiguration"); }
  void ApplyConfiguration() override { mCalls << QStringLiteral("ApplyConfiguration"); }
  void Reset() override { mCalls << QStringLiteral("Reset"); }
  PxCodeUpdateJob* CreateFileUpdateJob(const QString& aFile, unsigned char aKind, int aOption) override;
  void ReadConfiguration() override { mCalls << QStringLiteral("ReadConfiguration"); }
  void WriteCalibration() override { mCalls << QStringLiteral("WriteCalibration"); }
  void UpdateEditables() override;

  // Sets the serial number as the device would report it: 8-bit text, NUL-padded.
  void SetSerialNumber(const char* aText) { mSerialNumber.SetValue(aText, static_cast<size_t>(-1)); }
  PxTextProperty& SerialNumberProperty() { return mSerialNumber; }

  // The hardware operations run so far, by name, in order; UpdateEditables is noted too.
  QStringList mCalls;
  // The document types the device claims; a test changes them to play another device type.
  PtU32 mConfigurationDocument = CONFIGURATION_DOCUMENT;
  PtU32 mCalibrationDocument = CALIBRATION_DOCUMENT;

private:
  PxTextProperty mSerialNumber{CAT_STATE | F_SAVE, PxTextProperty::TYPE_ASCII, ID_SERIAL_NUMBER, 0x0F00, 16};
};
