#include "PxSimFirmware.h"

#include "PxProtocolWriter.h"
#include "PxSimConfiguration.h"
#include "PxSimError.h"
#include "PxSimLog.h"
#include "PxSimNoise.h"
#include "PxSimProtocol.h"
#include "PxSimRequest.h"

#include <QFile>
#include <QSaveFile>

#include <array>

using namespace PxSimProtocol;

namespace {
constexpr PtU32 FACTORY_IMAGE_SIZE = 96 * 1024;
}

PxSimFirmware::PxSimFirmware(PxSimConfiguration& aConfiguration, const QString& aImagePath)
    : mConfiguration(aConfiguration)
    , mImagePath(aImagePath)
{
  QFile lFile(aImagePath);
  if (!aImagePath.isEmpty() && lFile.open(QIODevice::ReadOnly)) {
    const QByteArray lBytes = lFile.read(MAX_FIRMWARE_SIZE);
    mImage.assign(lBytes.begin(), lBytes.end());
  }
  if (mImage.empty()) {
    // The factory image: fixed bytes, so its checksum is the same on every machine.
    PxSimNoise lBytes(0xF1F1F1F1u);
    mImage.resize(FACTORY_IMAGE_SIZE);
    for (PtByte& lByte : mImage) {
      lByte = static_cast<PtByte>(lBytes.Uniform() * 256.0);
    }
  }
  mConfiguration.SetSoftwareCrc(Crc32(mImage.data(), mImage.size()));
}

PtU32 PxSimFirmware::Crc32(const PtByte* aData, size_t aSize)
{
  static const std::array<PtU32, 256> sTable = [] {
    std::array<PtU32, 256> lTable{};
    for (PtU32 i = 0; i < 256; ++i) {
      PtU32 lValue = i;
      for (int k = 0; k < 8; ++k) {
        lValue = (lValue & 1) ? 0xEDB88320u ^ (lValue >> 1) : lValue >> 1;
      }
      lTable[i] = lValue;
    }
    return lTable;
  }();
  PtU32 lCrc = 0xFFFFFFFFu;
  for (size_t i = 0; i < aSize; ++i) {
    lCrc = sTable[(lCrc ^ aData[i]) & 0xFF] ^ (lCrc >> 8);
  }
  return lCrc ^ 0xFFFFFFFFu;
}

void PxSimFirmware::Begin(const PxSimRequest& aRequest, PxProtocolWriter& aWriter)
{
  aRequest.CheckOnly({ID_FIRMWARE_COMPONENT, ID_FIRMWARE_SIZE, ID_FIRMWARE_CRC, ID_FIRMWARE_VERSION});
  const PtByte lComponent = aRequest.Scalar<PtByte>(ID_FIRMWARE_COMPONENT);
  const PtU32 lSize = aRequest.Scalar<PtU32>(ID_FIRMWARE_SIZE);
  const PtU32 lCrc = aRequest.Scalar<PtU32>(ID_FIRMWARE_CRC);
  const PtU16 lVersion = aRequest.Scalar<PtU16>(ID_FIRMWARE_VERSION);
  if (lComponent != COMPONENT_FPGA && lComponent != COMPONENT_SOFTWARE) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_FIRMWARE_COMPONENT};
  }
  if (lSize == 0 || lSize > MAX_FIRMWARE_SIZE) {
    throw PxSimError{ANSWER_SIZE, ID_FIRMWARE_SIZE};
  }
  // A new announcement replaces an update in progress: the tool may start over after a failure.
  mUpdating = true;
  mComponent = lComponent;
  mSize = lSize;
  mCrc = lCrc;
  mVersion = lVersion;
  mReceived.clear();
  mReceived.reserve(lSize);
  const PtU32 lMaxChunk = MAX_FIRMWARE_CHUNK;
  aWriter.AddElement(ID_FIRMWARE_MAX_CHUNK, 1, 4, &lMaxChunk, 4);
  qCInfo(lcSim) << "firmware update: component" << lComponent << "size" << lSize << "version" << Qt::hex << lVersion;
}

void PxSimFirmware::Chunk(const PxSimRequest& aRequest, PxProtocolWriter& aWriter)
{
  aRequest.CheckOnly({ID_FIRMWARE_OFFSET, ID_FIRMWARE_DATA});
  if (!mUpdating) {
    throw PxSimError{ANSWER_SEQUENCE, 0};
  }
  const PtU32 lOffset = aRequest.Scalar<PtU32>(ID_FIRMWARE_OFFSET);
  const PxSimRequest::Element* lData = aRequest.Find(ID_FIRMWARE_DATA);
  if (!lData) {
    throw PxSimError{ANSWER_MISSING_ELEMENT, ID_FIRMWARE_DATA};
  }
  if (lData->mSize != 1 || lData->mCount == 0 || lData->mCount > MAX_FIRMWARE_CHUNK) {
    throw PxSimError{ANSWER_BAD_ELEMENT, ID_FIRMWARE_DATA};
  }
  if (lOffset != mReceived.size()) {
    throw PxSimError{ANSWER_SEQUENCE, ID_FIRMWARE_OFFSET};
  }
  if (static_cast<PtU64>(lOffset) + lData->mCount > mSize) {
    throw PxSimError{ANSWER_SIZE, ID_FIRMWARE_DATA};
  }
  mReceived.insert(mReceived.end(), lData->mData.begin(), lData->mData.end());
  const PtU32 lReceived = static_cast<PtU32>(mReceived.size());
  const PtByte lPercent = static_cast<PtByte>(static_cast<PtU64>(lReceived) * 100 / mSize);
  aWriter.AddElement(ID_FIRMWARE_RECEIVED, 1, 4, &lReceived, 4);
  aWriter.AddElement(ID_FIRMWARE_PROGRESS, 1, 1, &lPercent, 1);
}

void PxSimFirmware::End(const PxSimRequest& aRequest)
{
  aRequest.CheckOnly({});
  if (!mUpdating) {
    throw PxSimError{ANSWER_SEQUENCE, 0};
  }
  // A failed check ends the update: the image must be sent again from its announcement.
  mUpdating = false;
  if (mReceived.size() != mSize) {
    throw PxSimError{ANSWER_SIZE, ID_FIRMWARE_SIZE};
  }
  const PtU32 lCrc = Crc32(mReceived.data(), mReceived.size());
  if (lCrc != mCrc) {
    qCWarning(lcSim) << "firmware update: checksum" << Qt::hex << lCrc << "expected" << mCrc;
    throw PxSimError{ANSWER_CHECKSUM, ID_FIRMWARE_CRC};
  }
  if (mComponent == COMPONENT_SOFTWARE) {
    if (!mImagePath.isEmpty()) {
      QSaveFile lFile(mImagePath);
      if (!lFile.open(QIODevice::WriteOnly) ||
          lFile.write(reinterpret_cast<const char*>(mReceived.data()), static_cast<qint64>(mReceived.size())) < 0 ||
          !lFile.commit()) {
        throw PxSimError{ANSWER_STORAGE, 0};
      }
    }
    mImage = std::move(mReceived);
  }
  mReceived = {};
  mConfiguration.InstallFirmware(mComponent, mVersion, lCrc);
  qCInfo(lcSim) << "firmware update: component" << mComponent << "installed, version" << Qt::hex << mVersion;
}
