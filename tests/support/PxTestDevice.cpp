#include "PxTestDevice.h"

PxTestDevice::PxTestDevice(PxConnection* aConnection, bool aSerialNumber)
    : PxDevice(aConnection)
{
  if (aSerialNumber) {
    AddProperty(&mSerialNumber);
  }
}

PtU16 PxTestDevice::ExpectedSoftwareVersion(int aComponent) const
{
  return aComponent == 1 ? 0x0102 : 0x0203;
}

PxCodeUpdateJob* PxTestDevice::CreateComponentUpdateJob(int aComponent)
{
  mCalls << QStringLiteral("CreateComponentUpdateJob %1").arg(aComponent);
  return nullptr;
}

PtU32 PxTestDevice::ConfigurationDocumentType(const QString&, const QString&) const
{
  return mConfigurationDocument;
}

PtU32 PxTestDevice::CalibrationDocumentType(const QString&, const QString&) const
{
  return mCalibrationDocument;
}

PxCodeUpdateJob* PxTestDevice::CreateFileUpdateJob(const QString& aFile, unsigned char aKind, int aOption)
{
  mCalls << QStringLiteral("CreateFileUpdateJob %1 %2 %3").arg(aFile).arg(aKind).arg(aOption);
  return nullptr;
}

void PxTestDevice::UpdateEditables()
{
  mCalls << QStringLiteral("UpdateEditables");
  PxDevice::UpdateEditables();
}
