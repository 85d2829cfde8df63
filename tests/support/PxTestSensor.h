#pragma once

#include "PxSensor.h"
#include "PxTextProperty.h"

#include <QStringList>

// A concrete sensor for the suites: the driver operations do nothing but note that they ran (and
// with which arguments), so a test can check what a flow asked of the driver and in what order.
class PxTestSensor : public PxSensor
{
  Q_OBJECT

public:
  static constexpr PtU16 TYPE = 0x7E58;
  static constexpr PtU32 RECORD_DOCUMENT = 0x52545850; // "PXTR"

  explicit PxTestSensor(PxConnection* aConnection = nullptr);
  static PxDevice* Make(PxConnection* aConnection) { return new PxTestSensor(aConnection); }

  QString Name() const override { return QStringLiteral("test sensor"); }
  PtU16 ExpectedSoftwareVersion(int) const override { return 0x0100; }
  PxCodeUpdateJob* CreateComponentUpdateJob(int) override { return nullptr; }
  PtU32 ConfigurationDocumentType(const QString&, const QString&) const override { return 0x43545850; }
  PtU32 CalibrationDocumentType(const QString&, const QString&) const override { return 0x4C545850; }
  void ReadIdentity() override { Note(QStringLiteral("ReadIdentity")); }
  void WriteConfiguration() override { Note(QStringLiteral("WriteConfiguration")); }
  void ApplyConfiguration() override { Note(QStringLiteral("ApplyConfiguration")); }
  void Reset() override { Note(QStringLiteral("Reset")); }
  PxCodeUpdateJob* CreateFileUpdateJob(const QString&, unsigned char, int) override { return nullptr; }
  void ReadConfiguration() override { Note(QStringLiteral("ReadConfiguration")); }
  void WriteCalibration() override { Note(QStringLiteral("WriteCalibration")); }
  void DebugCommand1(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) override;
  void DebugCommand2(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) override;
  PtU32 RecordDocumentType() const override { return RECORD_DOCUMENT; }

  void SetSerialNumber(const char* aText) { mSerialNumber.SetValue(aText, static_cast<size_t>(-1)); }

  // The driver operations run so far, in order.
  QStringList mCalls;
  // The state of the command while the driver ran it.
  PtU32 mCommandStateDuringRun = 0;

private:
  void Note(const QString& aCall) { mCalls << aCall; }
  PxTextProperty mSerialNumber{CAT_STATE | F_SAVE, PxTextProperty::TYPE_ASCII, ID_SERIAL_NUMBER, 0x0F00, 16};
};
