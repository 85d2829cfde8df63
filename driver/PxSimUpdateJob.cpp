#include "PxSimUpdateJob.h"

#include "PtException.h"
#include "PxConnection.h"
#include "PxSimFirmware.h"
#include "PxSimNoise.h"
#include "PxSimProtocol.h"

#include <QDir>
#include <QSaveFile>
#include <QStandardPaths>
#include <QtEndian>

#include <stdexcept>

using namespace PxSimProtocol;

namespace {
QString sFirmwareDirectory;

constexpr quint32 FIRMWARE_SIGNATURE = 0x57465850; // "PXFW"
constexpr quint16 FIRMWARE_LAYOUT = 1;
} // namespace

PxSimUpdateJob::PxSimUpdateJob(PxSimSensor& aSensor, const PxSimSensor::FirmwareImage& aImage, bool aCloseLinkAfter)
    : mSensor(&aSensor)
    , mImage(aImage)
    , mCloseLinkAfter(aCloseLinkAfter)
{
}

QString PxSimUpdateJob::VersionText(PtByte aComponent, PtU16 aVersion)
{
  if (aComponent == COMPONENT_FPGA) {
    return QStringLiteral("%1.%2").arg(aVersion >> 8).arg(aVersion & 0xFF);
  }
  const int lBuild = aVersion & 0x3FFF;
  return QStringLiteral("%1.%2").arg(lBuild / 100).arg(lBuild % 100, 2, 10, QLatin1Char('0'));
}

QString PxSimUpdateJob::Description() const
{
  return mImage.mComponent == COMPONENT_FPGA
             ? tr("Installing FPGA version %1 on the Parvex 16.").arg(VersionText(mImage.mComponent, mImage.mVersion))
             : tr("Installing software version %1 on the Parvex 16.")
                   .arg(VersionText(mImage.mComponent, mImage.mVersion));
}

void PxSimUpdateJob::Run()
{
  if (!mSensor || !mSensor->IsLive()) {
    PtThrow<std::runtime_error>(0, tr("The device is not connected."));
  }
  Report(0, mImage.mData.size());
  mSensor->UpdateFirmware(mImage, [this](PtU32 aReceived, PtU32 aTotal) { Report(aReceived, aTotal); });
  if (mCloseLinkAfter && mSensor) {
    mSensor->Disconnect();
  }
}

PxSimSensor::FirmwareImage PxSimUpdateJob::BundledImage(PtByte aComponent)
{
  PxSimSensor::FirmwareImage lImage;
  lImage.mComponent = aComponent;
  // Released software carries the upgrade flag; the version check reads past it.
  lImage.mVersion = aComponent == COMPONENT_FPGA ? PxSimSensor::EXPECTED_FPGA_VERSION
                                                 : static_cast<PtU16>(0x8000 | PxSimSensor::EXPECTED_SOFTWARE_VERSION);
  // Fixed bytes, so the same release has the same checksum everywhere.
  PxSimNoise lBytes(aComponent == COMPONENT_FPGA ? 0xF9A0103u : 0x50F7212u);
  lImage.mData.resize(aComponent == COMPONENT_FPGA ? 48 * 1024 : 160 * 1024);
  for (char& lByte : lImage.mData) {
    lByte = static_cast<char>(lBytes.Uniform() * 256.0);
  }
  lImage.mCrc = PxSimFirmware::Crc32(reinterpret_cast<const PtByte*>(lImage.mData.constData()),
                                     static_cast<size_t>(lImage.mData.size()));
  return lImage;
}

void PxSimUpdateJob::WriteFirmwareFile(const QString& aFileName, const PxSimSensor::FirmwareImage& aImage)
{
  QByteArray lHeader(20, '\0');
  auto* lBytes = reinterpret_cast<uchar*>(lHeader.data());
  qToLittleEndian<quint32>(FIRMWARE_SIGNATURE, lBytes);
  qToLittleEndian<quint16>(FIRMWARE_LAYOUT, lBytes + 4);
  qToLittleEndian<quint16>(PxSimSensor::TYPE, lBytes + 6);
  lBytes[8] = aImage.mComponent;
  qToLittleEndian<quint16>(aImage.mVersion, lBytes + 10);
  qToLittleEndian<quint32>(static_cast<quint32>(aImage.mData.size()), lBytes + 12);
  qToLittleEndian<quint32>(aImage.mCrc, lBytes + 16);
  QSaveFile lFile(aFileName);
  if (!lFile.open(QIODevice::WriteOnly) || lFile.write(lHeader) != lHeader.size() ||
      lFile.write(aImage.mData) != aImage.mData.size() || !lFile.commit()) {
    PtThrow<std::runtime_error>(static_cast<unsigned int>(lFile.error()), lFile.errorString());
  }
}

QString PxSimUpdateJob::FirmwareDirectory()
{
  if (sFirmwareDirectory.isEmpty()) {
    sFirmwareDirectory =
        QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/firmware");
  }
  return sFirmwareDirectory;
}

void PxSimUpdateJob::SetFirmwareDirectory(const QString& aDirectory)
{
  sFirmwareDirectory = aDirectory;
}
