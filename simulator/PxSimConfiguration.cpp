#include "PxSimConfiguration.h"

#include "PtAssert.h"
#include "PxProtocolWriter.h"
#include "PxSimError.h"
#include "PxSimLog.h"
#include "PxSimProtocol.h"
#include "PxSimRequest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstring>

using namespace PxSimProtocol;

namespace {
constexpr char NVM_MAGIC[4] = {'P', 'X', 'N', 'V'};
constexpr PtU32 NVM_VERSION = 1;

template <class T>
void Append(QByteArray& aBytes, T aValue)
{
  aBytes.append(reinterpret_cast<const char*>(&aValue), sizeof(T));
}

template <class T>
T Load(const char* aAt)
{
  T lValue;
  std::memcpy(&lValue, aAt, sizeof(T));
  return lValue;
}

bool IsFirmwareId(PtU16 aId)
{
  return aId == ID_FPGA_VERSION || aId == ID_SOFTWARE_VERSION || aId == ID_SOFTWARE_CRC;
}
} // namespace

PxSimConfiguration::PxSimConfiguration(const QString& aNvmPath)
    : mNvmPath(aNvmPath)
{
  using S = PxSimSetting;
  mSettings = {
      // Identity.
      S::Unsigned(ID_DEVICE_TYPE, "Device type", 2, 0, 65535, DEVICE_TYPE).ReadOnly(),
      S::Unsigned(ID_PRODUCT_TYPE, "Product type", 2, 0, 65535, PRODUCT_TYPE).ReadOnly(),
      S::Unsigned(ID_FPGA_VERSION, "FPGA version", 2, 0, 65535, FACTORY_FPGA_VERSION).ReadOnly(),
      S::Unsigned(ID_SOFTWARE_VERSION, "Software version", 2, 0, 65535, FACTORY_SOFTWARE_VERSION).ReadOnly(),
      S::Unsigned(ID_SOFTWARE_CRC, "Software CRC", 4, 0, 4294967295.0, 0).ReadOnly(),
      S::Ascii(ID_SOFTWARE_PART, "Software part number", SOFTWARE_PART_LENGTH, QStringLiteral("54A0021-3")).ReadOnly(),
      S::Ascii(ID_HARDWARE_PART, "Hardware part number", HARDWARE_PART_LENGTH, QStringLiteral("74E0016-2")).ReadOnly(),
      S::Ascii(ID_SERIAL_NUMBER, "Serial number", SERIAL_NUMBER_LENGTH, QStringLiteral("PX16-SIM-000042")).ReadOnly(),
      S::Utf16(ID_DEVICE_NAME, "Device name", DEVICE_NAME_LENGTH, QStringLiteral("Simulated Parvex 16")),
      // Sensor constants.
      S::Unsigned(ID_CHANNEL_COUNT, "Channel count", 4, 1, 16, CHANNEL_COUNT).ReadOnly(),
      S::Signed(ID_ECHO_DISTANCE_SCALE, "Echo distance scale", 4, 1, 1e9, 1000).ReadOnly(),
      S::Signed(ID_TRACE_AMPLITUDE_SCALE, "Trace amplitude scale", 4, 1, 1e9, 64).ReadOnly(),
      S::Signed(ID_ECHO_AMPLITUDE_SCALE, "Echo amplitude scale", 4, 1, 1e9, 64).ReadOnly(),
      S::Scaled(ID_ECHO_DISTANCE_OFFSET, "Echo distance offset", 65536.0, 1, -100, 100, 0.5).ReadOnly(),
      S::Float(ID_POINT_STEP, "Point step", 0.001, 10, 0.05).ReadOnly(),
      S::Float(ID_FIELD_OF_VIEW, "Field of view", 0, 360, 48.0).ReadOnly(),
      S::Float(ID_RANGE, "Range", 0, 1000, 25.0).ReadOnly(),
      S::Signed(ID_TEMPERATURE_SCALE, "Temperature scale", 4, 1, 1e9, 16).ReadOnly(),
      S::Signed(ID_TIMEBASE_SCALE, "Timebase scale", 4, 1, 1e9, 1000).ReadOnly(),
      // Settings.
      S::Float(ID_REFRESH_RATE, "Refresh rate", 1, 1000, 50),
      S::Enum(ID_ACCUMULATION, "Accumulation", 2, {1, 2, 4, 8, 16, 32, 64}, 4),
      S::Enum(ID_OVERSAMPLING, "Oversampling", 1, {1, 2, 4, 8}, 2),
      S::Enum(ID_BAUD_RATE, "Baud rate", 4, {9600, 19200, 38400, 57600, 115200}, 115200),
      S::Unsigned(ID_LIGHT_POWER, "Light source power", 1, 0, 100, 100),
      S::Signed(ID_SMOOTHING, "Smoothing", 1, -16, 16, 0),
      S::Unsigned(ID_MODBUS_ADDRESS, "Modbus address", 1, 1, 247, 1),
      S::Float(ID_DETECTION_THRESHOLD, "Detection threshold", 0, 1000, 5.0),
      S::Scaled(ID_DISTANCE_OFFSETS, "Distance offsets", 65536.0, CHANNEL_COUNT, -5, 5, 0.0),
      S::Float(ID_TEMPERATURE_HIGH, "High temperature limit", -40, 125, 85),
      S::Float(ID_TEMPERATURE_LOW, "Low temperature limit", -40, 125, -20),
      S::Bool(ID_NOISE_REMOVAL, "Noise removal", false),
      S::Bool(ID_MODBUS_ENABLED, "Modbus enabled", true),
      S::Bits(ID_SEGMENT_MASK, "Segment enable mask", 0xFFFF, 0xFFFF),
      S::Unsigned(ID_TRACE_LENGTH, "Trace length", 2, 16, MAX_TRACE_LENGTH, 512),
      S::Ascii(ID_LOCATION, "Location", LOCATION_LENGTH, QStringLiteral("Test bench")),
  };
  mIdentity = {ID_DEVICE_TYPE,   ID_PRODUCT_TYPE,  ID_FPGA_VERSION,  ID_SOFTWARE_VERSION, ID_SOFTWARE_CRC,
               ID_SOFTWARE_PART, ID_HARDWARE_PART, ID_SERIAL_NUMBER, ID_DEVICE_NAME};
  LoadNvm();
  ApplyNvm();
}

const PxSimSetting& PxSimConfiguration::Get(PtU16 aId) const
{
  for (const PxSimSetting& lSetting : mSettings) {
    if (lSetting.Id() == aId) {
      return lSetting;
    }
  }
  PT_ASSERT(!"known setting id");
  return mSettings.front();
}

PxSimSetting& PxSimConfiguration::Mutable(PtU16 aId)
{
  return const_cast<PxSimSetting&>(Get(aId));
}

void PxSimConfiguration::SetSoftwareCrc(PtU32 aCrc)
{
  if (mNvm.count(ID_SOFTWARE_CRC)) {
    return; // an installed update names its own image
  }
  Mutable(ID_SOFTWARE_CRC).SetNumber(0, aCrc);
}

void PxSimConfiguration::RunOlderFirmware()
{
  // What an update installed since stays: the option says what the device left the factory with.
  if (!mNvm.count(ID_FPGA_VERSION)) {
    Mutable(ID_FPGA_VERSION).SetNumber(0, OLDER_FPGA_VERSION);
  }
  if (!mNvm.count(ID_SOFTWARE_VERSION)) {
    Mutable(ID_SOFTWARE_VERSION).SetNumber(0, OLDER_SOFTWARE_VERSION);
  }
}

void PxSimConfiguration::WriteIdentity(PxProtocolWriter& aWriter) const
{
  for (PtU16 lId : mIdentity) {
    const PxSimSetting& lSetting = Get(lId);
    aWriter.AddElement(lId, lSetting.Count(), lSetting.Size(), lSetting.Bytes().data(), lSetting.Size());
  }
}

void PxSimConfiguration::WriteConfiguration(const PxSimRequest& aRequest, PxProtocolWriter& aWriter) const
{
  aRequest.CheckOnly({ID_SELECT});
  const PxSimRequest::Element* lSelect = aRequest.Find(ID_SELECT);
  if (!lSelect) {
    for (const PxSimSetting& lSetting : mSettings) {
      aWriter.AddElement(lSetting.Id(), lSetting.Count(), lSetting.Size(), lSetting.Bytes().data(), lSetting.Size());
    }
    return;
  }
  if (lSelect->mSize != 2) {
    throw PxSimError{ANSWER_BAD_ELEMENT, ID_SELECT};
  }
  // Check the whole list before answering anything: an unknown id fails the request as a whole.
  std::vector<const PxSimSetting*> lWanted;
  for (PtU16 i = 0; i < lSelect->mCount; ++i) {
    PtU16 lId;
    std::memcpy(&lId, lSelect->mData.data() + 2u * i, 2);
    const PxSimSetting* lFound = nullptr;
    for (const PxSimSetting& lSetting : mSettings) {
      lFound = lSetting.Id() == lId ? &lSetting : lFound;
    }
    if (!lFound) {
      throw PxSimError{ANSWER_BAD_ELEMENT, lId};
    }
    lWanted.push_back(lFound);
  }
  for (const PxSimSetting* lSetting : lWanted) {
    aWriter.AddElement(lSetting->Id(), lSetting->Count(), lSetting->Size(), lSetting->Bytes().data(), lSetting->Size());
  }
}

void PxSimConfiguration::Apply(const PxSimRequest& aRequest)
{
  std::vector<std::pair<PxSimSetting*, const std::vector<PtByte>*>> lChanges;
  for (const PxSimRequest::Element& lElement : aRequest.Elements()) {
    PxSimSetting* lSetting = nullptr;
    for (PxSimSetting& lCandidate : mSettings) {
      lSetting = lCandidate.Id() == lElement.mId ? &lCandidate : lSetting;
    }
    if (!lSetting) {
      throw PxSimError{ANSWER_BAD_ELEMENT, lElement.mId};
    }
    if (!lSetting->Writable()) {
      throw PxSimError{ANSWER_READ_ONLY, lElement.mId};
    }
    const PtU16 lCode = lSetting->Check(lElement.mCount, lElement.mSize, lElement.mData);
    if (lCode != ANSWER_OK) {
      throw PxSimError{lCode, lElement.mId};
    }
    lChanges.emplace_back(lSetting, &lElement.mData);
  }
  for (auto& lChange : lChanges) {
    lChange.first->Assign(*lChange.second);
  }
}

void PxSimConfiguration::Save()
{
  std::map<PtU16, std::vector<PtByte>> lBefore = mNvm;
  for (const PxSimSetting& lSetting : mSettings) {
    if (lSetting.Writable()) {
      mNvm[lSetting.Id()] = lSetting.Bytes();
    }
  }
  if (!StoreNvm()) {
    mNvm = std::move(lBefore);
    throw PxSimError{ANSWER_STORAGE, 0};
  }
}

void PxSimConfiguration::Restart(bool aFactory)
{
  if (aFactory) {
    for (auto lIt = mNvm.begin(); lIt != mNvm.end();) {
      lIt = IsFirmwareId(lIt->first) ? std::next(lIt) : mNvm.erase(lIt);
    }
    StoreNvm();
  }
  for (PxSimSetting& lSetting : mSettings) {
    if (lSetting.Writable()) {
      lSetting.RestoreDefault();
    }
  }
  ApplyNvm();
}

void PxSimConfiguration::InstallFirmware(PtByte aComponent, PtU16 aVersion, PtU32 aCrc)
{
  if (aComponent == COMPONENT_FPGA) {
    Mutable(ID_FPGA_VERSION).SetNumber(0, aVersion);
    mNvm[ID_FPGA_VERSION] = Get(ID_FPGA_VERSION).Bytes();
  } else {
    Mutable(ID_SOFTWARE_VERSION).SetNumber(0, aVersion);
    Mutable(ID_SOFTWARE_CRC).SetNumber(0, aCrc);
    mNvm[ID_SOFTWARE_VERSION] = Get(ID_SOFTWARE_VERSION).Bytes();
    mNvm[ID_SOFTWARE_CRC] = Get(ID_SOFTWARE_CRC).Bytes();
  }
  if (!StoreNvm()) {
    throw PxSimError{ANSWER_STORAGE, 0};
  }
}

QByteArray PxSimConfiguration::NvmImage() const
{
  QByteArray lBytes(NVM_MAGIC, sizeof NVM_MAGIC);
  Append<PtU32>(lBytes, NVM_VERSION);
  for (const auto& lEntry : mNvm) {
    const PxSimSetting& lSetting = Get(lEntry.first);
    Append<PtU16>(lBytes, lEntry.first);
    Append<PtU16>(lBytes, lSetting.Count());
    Append<PtU32>(lBytes, lSetting.Size());
    lBytes.append(reinterpret_cast<const char*>(lEntry.second.data()), static_cast<int>(lEntry.second.size()));
  }
  return lBytes;
}

bool PxSimConfiguration::StoreNvm() const
{
  if (mNvmPath.isEmpty()) {
    return true;
  }
  QDir().mkpath(QFileInfo(mNvmPath).absolutePath());
  // Written aside and renamed: a simulator killed while saving keeps the previous configuration.
  QSaveFile lFile(mNvmPath);
  if (!lFile.open(QIODevice::WriteOnly) || lFile.write(NvmImage()) < 0 || !lFile.commit()) {
    qCWarning(lcSim) << "cannot write the non-volatile memory" << mNvmPath << lFile.errorString();
    return false;
  }
  return true;
}

void PxSimConfiguration::LoadNvm()
{
  mNvm.clear();
  if (mNvmPath.isEmpty() || !QFile::exists(mNvmPath)) {
    return;
  }
  QFile lFile(mNvmPath);
  if (!lFile.open(QIODevice::ReadOnly)) {
    qCWarning(lcSim) << "cannot read the non-volatile memory" << mNvmPath << lFile.errorString();
    return;
  }
  const QByteArray lBytes = lFile.read(1 << 20);
  if (lBytes.size() < 8 || std::memcmp(lBytes.constData(), NVM_MAGIC, 4) != 0 ||
      Load<PtU32>(lBytes.constData() + 4) != NVM_VERSION) {
    qCWarning(lcSim) << "non-volatile memory" << mNvmPath << "is not ours; starting from factory defaults";
    return;
  }
  // A damaged entry is dropped on its own; the entries before it still count.
  int lAt = 8;
  while (lAt + 8 <= lBytes.size()) {
    const PtU16 lId = Load<PtU16>(lBytes.constData() + lAt);
    const PtU16 lCount = Load<PtU16>(lBytes.constData() + lAt + 2);
    const PtU32 lSize = Load<PtU32>(lBytes.constData() + lAt + 4);
    const PtU64 lLength = static_cast<PtU64>(lCount) * lSize;
    if (lLength > static_cast<PtU64>(lBytes.size() - lAt - 8)) {
      qCWarning(lcSim) << "non-volatile memory" << mNvmPath << "is cut short at byte" << lAt;
      break;
    }
    const PtByte* lData = reinterpret_cast<const PtByte*>(lBytes.constData()) + lAt + 8;
    std::vector<PtByte> lValue(lData, lData + lLength);
    lAt += 8 + static_cast<int>(lLength);
    const PxSimSetting* lSetting = nullptr;
    for (const PxSimSetting& lCandidate : mSettings) {
      lSetting = lCandidate.Id() == lId ? &lCandidate : lSetting;
    }
    if (!lSetting || !(lSetting->Writable() || IsFirmwareId(lId)) ||
        lSetting->Check(lCount, lSize, lValue) != ANSWER_OK) {
      qCWarning(lcSim) << "non-volatile memory: entry" << lId << "ignored";
      continue;
    }
    mNvm[lId] = std::move(lValue);
  }
}

void PxSimConfiguration::ApplyNvm()
{
  for (const auto& lEntry : mNvm) {
    Mutable(lEntry.first).Assign(lEntry.second);
  }
}
