#include "PxSimSensor.h"

#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PxControlConnection.h"
#include "PxProtocolReader.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxSimFirmware.h"
#include "PxSimProtocol.h"
#include "PxSimUpdateJob.h"
#include "PxTransportError.h"
#include "PxUnits.h"

#include <QFile>
#include <QLoggingCategory>
#include <QStringList>

#include <algorithm>
#include <cstring>

using namespace PxSimProtocol;

namespace {
Q_LOGGING_CATEGORY(lcDriver, "parvex.driver")

static_assert(PxSimSensor::TYPE == DEVICE_TYPE, "the driver registers the type the device reports");

constexpr PtU32 CONSTANT = CAT_CONFIGURATION | F_SAVE;
constexpr PtU32 SETTING = CAT_CONFIGURATION | F_EDITABLE | F_SAVE;
constexpr PtU32 CALIBRATION = CAT_CALIBRATION | F_EDITABLE | F_SAVE;
constexpr PtU32 IDENTITY = CAT_STATE | F_SAVE;

// The board and light-source temperatures of the state group.
constexpr PtU32 TEMPERATURE_RESULT_ID = PxSimSensor::PropertyId(ID_TEMPERATURES);
// The state values every sensor's state form shows: the device state and the load.
constexpr PtU32 DEVICE_STATE_RESULT_ID = 6659;
constexpr PtU32 LOAD_RESULT_ID = 0x500100;
// Results of this category are diagnostic values, shown in the state form's "Debug" group.
constexpr int DIAGNOSTIC_CATEGORY = 3;

template <class T>
T ElementValue(PxProtocolReader& aReader)
{
  T lValue{};
  aReader.ReadElement(&lValue, 1, sizeof(T), sizeof(T));
  return lValue;
}

// A property that lives as long as the device, entered in its maps.
template <class T, class... A>
T* Own(PxDevice& aDevice, A... aArguments)
{
  auto* lProperty = new T(aArguments...);
  lProperty->setParent(&aDevice);
  aDevice.AddProperty(lProperty);
  return lProperty;
}

// Whether a failed exchange left the byte stream out of step: a protocol error of 1000 or more.
// The device's answer codes are below that, and transport failures drop the link themselves.
bool OutOfStep(const std::exception& aError)
{
  if (!dynamic_cast<const PxProtocolReader::Exception*>(&aError)) {
    return false;
  }
  unsigned int lCode = 0;
  PtExtractException(aError, &lCode, nullptr);
  return lCode > 999;
}
} // namespace

PxSimSensor::PxSimSensor(PxConnection* aConnection)
    : PxSensor(aConnection)
{
  mSerialNumber = Own<PxTextProperty>(*this, IDENTITY, PxTextProperty::TYPE_ASCII, ID_SERIAL_NUMBER,
                                      PxSimProtocol::ID_SERIAL_NUMBER, SERIAL_NUMBER_LENGTH);
  mSerialNumber->SetName(tr("Serial number:"));
  // Under the id every device reports its hardware part number by, as the serial number.
  mHardwarePart = Own<PxTextProperty>(*this, IDENTITY, PxTextProperty::TYPE_ASCII, PxDevice::ID_HARDWARE_PART_NUMBER,
                                      ID_HARDWARE_PART, HARDWARE_PART_LENGTH);
  mHardwarePart->SetName(tr("Hardware part number:"));
  mTemperatureScale =
      Own<PxIntegerProperty>(*this, CONSTANT, PropertyId(ID_TEMPERATURE_SCALE), ID_TEMPERATURE_SCALE, 4);
  mTemperatureScale->SetName(tr("Temperature scale:"));
  mTimebaseScale = Own<PxIntegerProperty>(*this, CONSTANT, PropertyId(ID_TIMEBASE_SCALE), ID_TIMEBASE_SCALE, 4);
  mTimebaseScale->SetName(tr("Timebase scale:"));

  // The framework's length and refresh rate come without limits; the device's range and rate
  // settle them.
  mLength.SetLimits(0.0f, 1000.0f);
  mLength.SetUnitType(UT_DISTANCE);
  mLength.SetFormat(QStringLiteral("%n %v %u"));
  mRefreshRate.SetLimits(1.0f, 1000.0f);

  mRefreshRateSetting = Own<PxFloatProperty>(*this, SETTING, PropertyId(PxSimProtocol::ID_REFRESH_RATE),
                                             PxSimProtocol::ID_REFRESH_RATE, 4, 1.0f, 1);
  mRefreshRateSetting->SetName(tr("Refresh rate:"));
  mRefreshRateSetting->SetFormat(QStringLiteral("%n %v Hz"));
  mRefreshRateSetting->SetLimits(1.0f, 1000.0f);

  // Accumulation and oversampling both trade measurement rate for noise.
  mAccumulation = Own<PxEnumProperty>(*this, SETTING, PropertyId(ID_ACCUMULATION), ID_ACCUMULATION, 2);
  mAccumulation->SetName(tr("Accumulation (pulses):"));
  for (PtU32 lPulses : {1u, 2u, 4u, 8u, 16u, 32u, 64u}) {
    mAccumulation->AddEnumValue(lPulses, QString::number(lPulses));
  }
  mOversampling = Own<PxEnumProperty>(*this, SETTING, PropertyId(ID_OVERSAMPLING), ID_OVERSAMPLING, 1);
  mOversampling->SetName(tr("Oversampling:"));
  for (PtU32 lFactor : {1u, 2u, 4u, 8u}) {
    mOversampling->AddEnumValue(lFactor, tr("x%1").arg(lFactor));
  }
  mBaudRate = Own<PxEnumProperty>(*this, SETTING, PropertyId(ID_BAUD_RATE), ID_BAUD_RATE, 4);
  mBaudRate->SetName(tr("Baud rate:"));
  for (PtU32 lBaud : {9600u, 19200u, 38400u, 57600u, 115200u}) {
    mBaudRate->AddEnumValue(lBaud, QString::number(lBaud));
  }

  mLightPower = Own<PxIntegerProperty>(*this, SETTING, PropertyId(ID_LIGHT_POWER), ID_LIGHT_POWER, 1);
  mLightPower->SetName(tr("Light source power (%):"));
  mLightPower->SetLimits(0, 100);
  mSmoothing = Own<PxIntegerProperty>(*this, SETTING, PropertyId(ID_SMOOTHING), ID_SMOOTHING, 1);
  mSmoothing->SetName(tr("Smoothing:"));
  mSmoothing->SetSigned(true);
  mSmoothing->SetLimits(-16, 16);
  mModbusAddress = Own<PxIntegerProperty>(*this, SETTING, PropertyId(ID_MODBUS_ADDRESS), ID_MODBUS_ADDRESS, 1);
  mModbusAddress->SetName(tr("Modbus address:"));
  mModbusAddress->SetLimits(1, 247);
  mDetectionThreshold =
      Own<PxFloatProperty>(*this, SETTING, PropertyId(ID_DETECTION_THRESHOLD), ID_DETECTION_THRESHOLD, 4, 1.0f, 1);
  mDetectionThreshold->SetName(tr("Detection threshold:"));
  mDetectionThreshold->SetLimits(0.0f, 1000.0f);

  // Per-segment offsets are what a calibration corrects, so calibration files carry them.
  mDistanceOffsets =
      Own<PxFloatProperty>(*this, CALIBRATION, PropertyId(ID_DISTANCE_OFFSETS), ID_DISTANCE_OFFSETS, 4, 65536.0f, 3);
  mDistanceOffsets->SetName(tr("Distance offset:"));
  mDistanceOffsets->SetUnitType(UT_DISTANCE);
  mDistanceOffsets->SetFormat(QStringLiteral("%n %v %u"));
  mDistanceOffsets->SetLimits(-5.0f, 5.0f);

  mTemperatureHigh =
      Own<PxFloatProperty>(*this, SETTING, PropertyId(ID_TEMPERATURE_HIGH), ID_TEMPERATURE_HIGH, 4, 1.0f, 1);
  mTemperatureHigh->SetName(tr("High temperature limit:"));
  mTemperatureLow =
      Own<PxFloatProperty>(*this, SETTING, PropertyId(ID_TEMPERATURE_LOW), ID_TEMPERATURE_LOW, 4, 1.0f, 1);
  mTemperatureLow->SetName(tr("Low temperature limit:"));
  for (PxFloatProperty* lLimit : {mTemperatureHigh, mTemperatureLow}) {
    lLimit->SetUnitType(UT_TEMPERATURE);
    lLimit->SetFormat(QStringLiteral("%n %v %u"));
    lLimit->SetLimits(-40.0f, 125.0f);
  }

  mNoiseRemoval = Own<PxBoolProperty>(*this, SETTING, PropertyId(ID_NOISE_REMOVAL), ID_NOISE_REMOVAL);
  mNoiseRemoval->SetName(tr("Noise removal"));
  mModbusEnabled = Own<PxBoolProperty>(*this, SETTING, PropertyId(ID_MODBUS_ENABLED), ID_MODBUS_ENABLED);
  mModbusEnabled->SetName(tr("Modbus enabled"));
  mSegmentMask = Own<PxBitFieldProperty>(*this, SETTING, PropertyId(ID_SEGMENT_MASK), ID_SEGMENT_MASK, 4);
  mSegmentMask->SetName(tr("Enabled segments:"));
  mTraceLength = Own<PxIntegerProperty>(*this, SETTING, PropertyId(ID_TRACE_LENGTH), ID_TRACE_LENGTH, 2);
  mTraceLength->SetName(tr("Trace length (samples):"));
  mTraceLength->SetLimits(16, static_cast<int>(MAX_TRACE_LENGTH));
  mLocation = Own<PxTextProperty>(*this, SETTING, PxTextProperty::TYPE_ASCII, PropertyId(ID_LOCATION), ID_LOCATION,
                                  LOCATION_LENGTH);
  mLocation->SetName(tr("Location:"));

  mTraces.SetTimebaseScale(mTimebaseScale);

  // The framework leaves these unnamed; forms that show them need a caption.
  mDeviceName.SetName(tr("Device name:"));
  mFieldOfView.SetName(tr("Field of view:"));
  mChannelCount.SetName(tr("Segments:"));
}

PxSimSensor::~PxSimSensor() = default;

std::vector<PxSimSensor::ConfigurationGroup> PxSimSensor::ConfigurationGroups()
{
  return {
      {tr("Measurement"),
       {mRefreshRateSetting, mAccumulation, mOversampling, mSmoothing, mTraceLength, mDetectionThreshold,
        mNoiseRemoval}},
      {tr("Light source and segments"), {mLightPower, mSegmentMask, mDistanceOffsets}},
      {tr("Temperature monitoring"), {mTemperatureHigh, mTemperatureLow}},
      {tr("Communication"), {mModbusEnabled, mModbusAddress, mBaudRate}},
      {tr("Identification"), {&mDeviceName, mLocation}},
      // Shown so that the user sees what the settings work against; never editable.
      {tr("Device constants"), {&mLength, &mFieldOfView, &mChannelCount, mTemperatureScale, mTimebaseScale}},
  };
}

QString PxSimSensor::Name() const
{
  return tr("Parvex 16");
}

PtU16 PxSimSensor::ExpectedSoftwareVersion(int aComponent) const
{
  return aComponent == 1 ? EXPECTED_SOFTWARE_VERSION : EXPECTED_FPGA_VERSION;
}

PxCodeUpdateJob* PxSimSensor::CreateComponentUpdateJob(int aComponent)
{
  // Component 1 is what the version check calls the software version, component 2 the build it
  // compares with the FPGA version. New software restarts the device, which must then be connected
  // again; a new FPGA image is running as soon as it is installed.
  const bool lSoftware = aComponent == 1;
  return new PxSimUpdateJob(*this, PxSimUpdateJob::BundledImage(lSoftware ? COMPONENT_SOFTWARE : COMPONENT_FPGA),
                            lSoftware);
}

PtU32 PxSimSensor::ConfigurationDocumentType(const QString&, const QString&) const
{
  return CONFIGURATION_DOCUMENT;
}

PtU32 PxSimSensor::CalibrationDocumentType(const QString&, const QString&) const
{
  return CALIBRATION_DOCUMENT;
}

PxCodeUpdateJob* PxSimSensor::CreateFileUpdateJob(const QString& aFile, unsigned char, int)
{
  // The file says which component it is for; a damaged or foreign one throws here, before the
  // device is touched.
  return new PxSimUpdateJob(*this, ReadFirmwareFile(aFile), false);
}

PtU32 PxSimSensor::RecordDocumentType() const
{
  return RECORD_DOCUMENT;
}

bool PxSimSensor::DeliversFilteredTraces() const
{
  return true;
}

PxResultProvider* PxSimSensor::CreateProvider(PtU32 aId)
{
  if (aId == PxResultProvider::ID_TRACES_32 && DeliversFilteredTraces()) {
    if (!mFilteredTraces) {
      mFilteredTraces = std::make_unique<PxResultTrace>(true, mChannelCount, mTraceAmplitudeScale, mPointStep);
      mFilteredTraces->SetTimebaseScale(mTimebaseScale);
      // Made after the constants were read: take them now, not at their next change.
      mFilteredTraces->ChannelCountValueChanged(0);
      mFilteredTraces->AmplitudeScaleValueChanged(0);
      mFilteredTraces->TimebaseScaleValueChanged(0);
    }
    return mFilteredTraces.get();
  }
  PxResultProvider* lProvider = PxSensor::CreateProvider(aId);
  if (aId == PxResultProvider::ID_STATE && lProvider) {
    auto* lState = static_cast<PxResultState*>(lProvider);
    auto* lTemperatures = new PxResult(TEMPERATURE_RESULT_ID, ID_TEMPERATURES, DT_SIGNED_16, 1, 2, 2, 1);
    lTemperatures->SetName(tr("Temperature:"));
    lTemperatures->SetUnitType(UT_TEMPERATURE);
    lTemperatures->SetFormat(QStringLiteral("%n %v %u"));
    lState->SetTemperatureResult(lTemperatures);
    lState->SetTemperatureScale(mTemperatureScale);
    lState->TemperatureScaleValueChanged(0);

    mStateResults.clear();
    auto lLoad = std::make_unique<PxResult>(LOAD_RESULT_ID, ID_CPU_LOAD, DT_INTEGER_16, 1, 2, 2, 1);
    lLoad->SetName(tr("Processor Load:"));
    lLoad->SetFormat(QStringLiteral("%n %v %"));
    lLoad->SetScale(10.0f); // tenths of a percent
    auto lAcquisition =
        std::make_unique<PxResult>(DEVICE_STATE_RESULT_ID, ID_ACQUISITION_STATE, DT_INTEGER_16, 1, 2, 2, 0);
    lAcquisition->SetName(tr("Acquisition State:"));
    lAcquisition->SetFormat(QStringLiteral("%n %v"));
    auto lFrames = std::make_unique<PxResult>(PropertyId(ID_FRAME_COUNTER), ID_FRAME_COUNTER, DT_UNSIGNED_32,
                                              DIAGNOSTIC_CATEGORY, 4, 4, 0);
    lFrames->SetName(tr("Frame Counter:"));
    lFrames->SetFormat(QStringLiteral("%n %v"));
    mStateResults.push_back(std::move(lLoad));
    mStateResults.push_back(std::move(lAcquisition));
    mStateResults.push_back(std::move(lFrames));
    for (const auto& lResult : mStateResults) {
      // One value from the start, so that the state form lays out a label for each.
      lResult->SetCount(1);
      mResults[lResult->Id()] = lResult.get();
      mDeviceResults[lResult->DeviceId()] = lResult.get();
    }
  }
  return lProvider;
}

// ---- Exchanges ---------------------------------------------------------------------------------

PxControlConnection& PxSimSensor::Link() const
{
  auto* lLink = qobject_cast<PxControlConnection*>(Connection());
  if (!lLink || !lLink->Connected()) {
    // Sending on a link that is down is a programming error for the connection; here it is only
    // a device that went away, which the user hears about as such.
    PxConnection::PtCommunicationError(PxTransportError::REASON_NOT_CONNECTED, 0);
  }
  return *lLink;
}

template <class F>
void PxSimSensor::Guarded(F aExchange)
{
  try {
    aExchange();
  } catch (const std::exception& e) {
    // Answer codes of the device leave the stream in step; a message that could not be decoded
    // does not, and nothing that follows on the link can be trusted.
    if (OutOfStep(e)) {
      if (auto* lLink = qobject_cast<PxControlConnection*>(Connection()); lLink && lLink->Connected()) {
        lLink->Disconnect();
      }
    }
    throw;
  }
}

template <class F>
PxProtocolReader& PxSimSensor::Exchange(PtU16 aRequest, F aAddElements)
{
  PxControlConnection& lLink = Link();
  lLink.StartRequest(aRequest);
  aAddElements(lLink.Writer());
  lLink.SendRequest();
  return *lLink.ReadAnswer();
}

PxProtocolReader& PxSimSensor::Exchange(PtU16 aRequest)
{
  return Exchange(aRequest, [](PxProtocolWriter&) {});
}

PxProtocolReader& PxSimSensor::RequestGroup(PtU16 aRequest)
{
  PxControlConnection& lLink = Link();
  lLink.StartRequest(aRequest);
  lLink.SendRequest();
  PxProtocolReader& lReader = lLink.Reader();
  lReader.ReadAnswerHeader(aRequest);
  if (lReader.AnswerCode() != 0) {
    // Takes the error answer's payload off the link, then throws its code.
    lReader.ReadPayload();
  }
  return lReader;
}

// ---- Identity and configuration ----------------------------------------------------------------

void PxSimSensor::ReadProperties(PxProtocolReader& aReader)
{
  std::vector<PxProperty*> lRead;
  while (aReader.Advance()) {
    const PtU16 lId = aReader.Id();
    switch (lId) {
    case ID_DEVICE_TYPE:
      if (const auto lType = ElementValue<PtU16>(aReader); lType != TYPE) {
        qCWarning(lcDriver) << "the device reports type" << lType << "instead of" << TYPE;
      }
      continue;
    // The versions share one device id in the model: they are set one by one.
    case PxSimProtocol::ID_PRODUCT_TYPE:
      SetProductType(ElementValue<PtU16>(aReader));
      lRead.push_back(&mProductType);
      continue;
    case PxSimProtocol::ID_FPGA_VERSION:
      SetFpgaVersion(ElementValue<PtU16>(aReader));
      lRead.push_back(&mFpgaVersion);
      continue;
    case PxSimProtocol::ID_SOFTWARE_VERSION:
      SetSoftwareVersion(ElementValue<PtU16>(aReader));
      lRead.push_back(&mSoftwareVersion);
      continue;
    case PxSimProtocol::ID_SOFTWARE_CRC:
      SetSoftwareCRC(ElementValue<PtU32>(aReader));
      lRead.push_back(&mSoftwareCrc);
      continue;
    case ID_SOFTWARE_PART: {
      char lText[SOFTWARE_PART_LENGTH] = {};
      aReader.ReadElement(lText, 1, SOFTWARE_PART_LENGTH, SOFTWARE_PART_LENGTH);
      SetSoftwarePartNumber(lText, strnlen(lText, SOFTWARE_PART_LENGTH));
      lRead.push_back(&mSoftwarePartNumber);
      continue;
    }
    // The sensor-wide properties these feed are not exchanged by device id.
    case PxSimProtocol::ID_FIELD_OF_VIEW:
      SetFieldOfView(ElementValue<float>(aReader));
      lRead.push_back(&mFieldOfView);
      continue;
    case ID_RANGE:
      mLength.SetCount(1);
      mLength.SetValue(0, ElementValue<float>(aReader));
      lRead.push_back(&mLength);
      continue;
    default:
      break;
    }
    // Device id 0 marks properties that are never exchanged and 1 the versions set above; a newer
    // firmware's unknown values are skipped.
    PxProperty* lProperty = lId <= 1 ? nullptr : FindPropertyByDeviceId(lId);
    if (lProperty) {
      lProperty->ReadFromPtProtocol(aReader);
      mOnDevice[lProperty] = lProperty->Values();
    }
  }
  for (PxProperty* lProperty : lRead) {
    lProperty->PostRead();
  }
  if (mRefreshRateSetting->Count() > 0) {
    // The shared refresh rate is what the state display measures the rate against.
    mRefreshRate.SetCount(1);
    mRefreshRate.SetValue(0, mRefreshRateSetting->Value(0));
    mRefreshRate.PostRead();
  }
}

void PxSimSensor::ReadIdentity()
{
  Guarded([this] { ReadProperties(Exchange(REQ_IDENTITY)); });
  qCDebug(lcDriver).noquote() << "connected to" << SerialNumber() << "software" << mSoftwareVersion.Value(0);
}

void PxSimSensor::ReadConfiguration()
{
  // A sensor without a link (replaying a record file, or opened offline to edit a file) keeps the
  // values it has: there is no device to read them from.
  if (IsLive()) {
    Guarded([this] { ReadProperties(Exchange(REQ_READ_CONFIG)); });
  }
  UpdateEditables();
}

void PxSimSensor::WriteChanged(bool aCalibrationOnly)
{
  if (!IsLive()) {
    return;
  }
  std::vector<PxProperty*> lChanged;
  for (PxProperty* lProperty : Properties()) {
    if (!(lProperty->Flags() & F_EDITABLE) || lProperty->DeviceId() == 0 || lProperty->Count() == 0) {
      continue;
    }
    const PtU32 lCategory = lProperty->Category();
    if (aCalibrationOnly && lCategory != CAT_CALIBRATION && lCategory != CAT_USER_CALIBRATION) {
      continue;
    }
    auto lOnDevice = mOnDevice.find(lProperty);
    if (lOnDevice == mOnDevice.end() || lOnDevice->second != lProperty->Values()) {
      lChanged.push_back(lProperty);
    }
  }
  if (lChanged.empty()) {
    return;
  }
  // One request: the device checks every value before it takes any, so a refused value leaves
  // the device as it was.
  Guarded([&] {
    Exchange(REQ_WRITE_CONFIG, [&](PxProtocolWriter&) {
      for (PxProperty* lProperty : lChanged) {
        lProperty->WriteToPtProtocol(Link());
      }
    });
  });
  mUnsaved = true;
  qCDebug(lcDriver) << "wrote" << lChanged.size() << "values";
}

void PxSimSensor::WriteConfiguration()
{
  WriteChanged(false);
}

void PxSimSensor::WriteCalibration()
{
  WriteChanged(true);
}

void PxSimSensor::ApplyConfiguration()
{
  if (mUnsaved && IsLive()) {
    Guarded([this] { Exchange(REQ_SAVE_CONFIG); });
    mUnsaved = false;
  }
  // Read back: the device may have rounded what it took, and a loaded file may have brought
  // constants of another device into the model.
  ReadConfiguration();
}

void PxSimSensor::Reset()
{
  Guarded([this] { Exchange(REQ_RESET); });
  // The restart dropped whatever was not saved.
  mUnsaved = false;
  ReadConfiguration();
}

// ---- Firmware ----------------------------------------------------------------------------------

namespace {
// The header of a firmware file: signature "PXFW", layout, device type, component, reserved,
// version, image size, image CRC-32; all little-endian.
constexpr PtU32 FIRMWARE_SIGNATURE = 0x57465850;
constexpr PtU16 FIRMWARE_LAYOUT = 1;
constexpr int FIRMWARE_HEADER_SIZE = 20;

template <class T>
T LittleEndianAt(const QByteArray& aBytes, int aOffset)
{
  T lValue = 0;
  for (int i = static_cast<int>(sizeof(T)) - 1; i >= 0; --i) {
    lValue = static_cast<T>((lValue << 8) | static_cast<PtByte>(aBytes[aOffset + i]));
  }
  return lValue;
}
} // namespace

PxSimSensor::FirmwareImage PxSimSensor::ReadFirmwareFile(const QString& aFileName)
{
  QFile lFile(aFileName);
  if (!lFile.open(QIODevice::ReadOnly)) {
    PtThrow<std::runtime_error>(static_cast<unsigned int>(lFile.error()), lFile.errorString());
  }
  const QByteArray lHeader = lFile.read(FIRMWARE_HEADER_SIZE);
  if (lHeader.size() < FIRMWARE_HEADER_SIZE || LittleEndianAt<PtU32>(lHeader, 0) != FIRMWARE_SIGNATURE ||
      LittleEndianAt<PtU16>(lHeader, 4) != FIRMWARE_LAYOUT) {
    PtThrow<std::runtime_error>(FIRMWARE_ERROR_NOT_FIRMWARE, tr("%1 is not a firmware file.").arg(aFileName));
  }
  if (const PtU16 lType = LittleEndianAt<PtU16>(lHeader, 6); lType != TYPE) {
    PtThrow<std::runtime_error>(FIRMWARE_ERROR_OTHER_DEVICE,
                                tr("%1 is firmware for device type 0x%2, not for a Parvex 16.")
                                    .arg(aFileName)
                                    .arg(lType, 4, 16, QLatin1Char('0')));
  }
  FirmwareImage lImage;
  lImage.mComponent = static_cast<PtByte>(lHeader[8]);
  lImage.mVersion = LittleEndianAt<PtU16>(lHeader, 10);
  const PtU32 lSize = LittleEndianAt<PtU32>(lHeader, 12);
  lImage.mCrc = LittleEndianAt<PtU32>(lHeader, 16);
  if (lSize == 0 || lSize > MAX_FIRMWARE_SIZE) {
    PtThrow<std::runtime_error>(FIRMWARE_ERROR_SIZE,
                                tr("%1 announces an image of %2 bytes.").arg(aFileName).arg(lSize));
  }
  // One byte more than announced tells a file with something after its image.
  lImage.mData = lFile.read(static_cast<qint64>(lSize) + 1);
  if (static_cast<PtU32>(lImage.mData.size()) != lSize) {
    PtThrow<std::runtime_error>(FIRMWARE_ERROR_SIZE, tr("%1 holds %2 image bytes instead of %3.")
                                                         .arg(aFileName)
                                                         .arg(lImage.mData.size() + lFile.bytesAvailable())
                                                         .arg(lSize));
  }
  if (PxSimFirmware::Crc32(reinterpret_cast<const PtByte*>(lImage.mData.constData()),
                           static_cast<size_t>(lImage.mData.size())) != lImage.mCrc) {
    PtThrow<std::runtime_error>(FIRMWARE_ERROR_CHECKSUM,
                                tr("%1 is damaged: its checksum does not match.").arg(aFileName));
  }
  return lImage;
}

void PxSimSensor::UpdateFirmware(const FirmwareImage& aImage,
                                 const std::function<void(PtU32 aReceived, PtU32 aTotal)>& aProgress)
{
  const auto lTotal = static_cast<PtU32>(aImage.mData.size());
  PtU32 lMaxChunk = MAX_FIRMWARE_CHUNK;
  Guarded([&] {
    PxProtocolReader& lAnswer = Exchange(REQ_FIRMWARE_BEGIN, [&](PxProtocolWriter& aWriter) {
      aWriter.AddElement(ID_FIRMWARE_COMPONENT, 1, 1, &aImage.mComponent, 1);
      aWriter.AddElement(ID_FIRMWARE_SIZE, 1, 4, &lTotal, 4);
      aWriter.AddElement(ID_FIRMWARE_CRC, 1, 4, &aImage.mCrc, 4);
      aWriter.AddElement(ID_FIRMWARE_VERSION, 1, 2, &aImage.mVersion, 2);
    });
    while (lAnswer.Advance()) {
      if (lAnswer.Id() == ID_FIRMWARE_MAX_CHUNK) {
        lMaxChunk = std::clamp<PtU32>(ElementValue<PtU32>(lAnswer), 1, MAX_FIRMWARE_CHUNK);
      }
    }
  });
  PtU32 lSent = 0;
  while (lSent < lTotal) {
    const PtU32 lChunk = std::min(lMaxChunk, lTotal - lSent);
    PtU32 lReceived = lSent + lChunk;
    Guarded([&] {
      PxProtocolReader& lAnswer = Exchange(REQ_FIRMWARE_CHUNK, [&](PxProtocolWriter& aWriter) {
        aWriter.AddElement(ID_FIRMWARE_OFFSET, 1, 4, &lSent, 4);
        aWriter.AddElement(ID_FIRMWARE_DATA, static_cast<unsigned short>(lChunk), 1, aImage.mData.constData() + lSent,
                           1);
      });
      while (lAnswer.Advance()) {
        if (lAnswer.Id() == ID_FIRMWARE_RECEIVED) {
          lReceived = ElementValue<PtU32>(lAnswer);
        }
      }
    });
    lSent += lChunk;
    if (aProgress) {
      aProgress(std::min(lReceived, lTotal), lTotal);
    }
  }
  Guarded([this] { Exchange(REQ_FIRMWARE_END); });
  // The device restarted on the new image: what it now reports, and its saved configuration.
  mUnsaved = false;
  ReadIdentity();
  ReadConfiguration();
  qCInfo(lcDriver) << "firmware component" << aImage.mComponent << "installed, version" << Qt::hex << aImage.mVersion;
}

// ---- Debug commands ----------------------------------------------------------------------------

void PxSimSensor::RunDebugCommand(PtU16 aRequest, PtU64 aP1, PtU32 aP2, PtByte aP3, PtU64 aP4)
{
  Guarded([&] {
    PxProtocolReader& lAnswer = Exchange(aRequest, [&](PxProtocolWriter& aWriter) {
      aWriter.AddElement(ID_DEBUG_P1, 1, 8, &aP1, 8);
      aWriter.AddElement(ID_DEBUG_P2, 1, 4, &aP2, 4);
      aWriter.AddElement(ID_DEBUG_P3, 1, 1, &aP3, 1);
      aWriter.AddElement(ID_DEBUG_P4, 1, 8, &aP4, 8);
    });
    while (lAnswer.Advance()) {
      if (lAnswer.Id() == ID_DEBUG_RESULT) {
        mLastDebugResult = ElementValue<PtU64>(lAnswer);
      }
    }
  });
  qCInfo(lcDriver) << "debug request" << aRequest << "answered" << mLastDebugResult;
}

// ---- Memories ----------------------------------------------------------------------------------

QStringList PxSimSensor::MemoryNames() const
{
  // In the order of the device's memory numbers.
  return {tr("RAM"), tr("Registers"), tr("Saved configuration"), tr("Firmware")};
}

PtU32 PxSimSensor::GetDebugDefaultMemoryLength()
{
  return 256;
}

QByteArray PxSimSensor::ReadMemory(int aMemory, PtU64 aAddress, PtU32 aLength)
{
  QByteArray lData;
  lData.reserve(static_cast<int>(aLength));
  while (static_cast<PtU32>(lData.size()) < aLength) {
    const PtByte lArea = static_cast<PtByte>(aMemory);
    const PtU32 lAddress = static_cast<PtU32>(aAddress + static_cast<PtU64>(lData.size()));
    const PtU32 lLength = std::min<PtU32>(aLength - static_cast<PtU32>(lData.size()), MAX_MEMORY_TRANSFER);
    Guarded([&] {
      PxProtocolReader& lAnswer = Exchange(REQ_READ_MEMORY, [&](PxProtocolWriter& aWriter) {
        aWriter.AddElement(ID_MEMORY_AREA, 1, 1, &lArea, 1);
        aWriter.AddElement(ID_MEMORY_ADDRESS, 1, 4, &lAddress, 4);
        aWriter.AddElement(ID_MEMORY_LENGTH, 1, 4, &lLength, 4);
      });
      while (lAnswer.Advance()) {
        if (lAnswer.Id() == ID_MEMORY_DATA) {
          QByteArray lChunk(lAnswer.Count(), '\0');
          lAnswer.ReadElement(lChunk.data(), lAnswer.Count(), 1, 1);
          lData += lChunk;
        }
      }
    });
    if (lLength > 0 && static_cast<PtU32>(lData.size()) < lAddress - aAddress + lLength) {
      // An answer without the bytes asked for would loop for ever.
      PtThrow<PxProtocolReader::Exception>(1002, tr("The device answered a memory read without its data."));
    }
  }
  return lData;
}

void PxSimSensor::WriteMemory(int aMemory, PtU64 aAddress, const QByteArray& aData)
{
  for (int lDone = 0; lDone < aData.size();) {
    const PtByte lArea = static_cast<PtByte>(aMemory);
    const PtU32 lAddress = static_cast<PtU32>(aAddress + static_cast<PtU64>(lDone));
    const int lLength = std::min(aData.size() - lDone, static_cast<int>(MAX_MEMORY_TRANSFER));
    Guarded([&] {
      Exchange(REQ_WRITE_MEMORY, [&](PxProtocolWriter& aWriter) {
        aWriter.AddElement(ID_MEMORY_AREA, 1, 1, &lArea, 1);
        aWriter.AddElement(ID_MEMORY_ADDRESS, 1, 4, &lAddress, 4);
        aWriter.AddElement(ID_MEMORY_DATA, static_cast<PtU16>(lLength), 1, aData.constData() + lDone, 1);
      });
    });
    lDone += lLength;
  }
}

void PxSimSensor::RefreshProperty(PtU32 aId)
{
  PxProperty* lProperty = FindProperty(aId);
  if (!lProperty || lProperty->DeviceId() == 0 || !IsLive()) {
    return;
  }
  const PtU16 lDeviceId = lProperty->DeviceId();
  Guarded([&] {
    ReadProperties(Exchange(REQ_READ_CONFIG,
                            [&](PxProtocolWriter& aWriter) { aWriter.AddElement(ID_SELECT, 1, 2, &lDeviceId, 2); }));
  });
}

void PxSimSensor::DebugCommand1(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue)
{
  RunDebugCommand(REQ_DEBUG_FAULT, aAddress, aLength, aMode, aValue);
}

void PxSimSensor::DebugCommand2(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue)
{
  RunDebugCommand(REQ_DEBUG_SCENE, aAddress, aLength, aMode, aValue);
}

// ---- Acquisition -------------------------------------------------------------------------------

void PxSimSensor::Acquire()
{
  if (mAcquiring || mDataMask == 0 || !IsLive()) {
    return;
  }
  mAcquiring = true;
  try {
    Guarded([this] { FetchAll(); });
  } catch (const std::exception& e) {
    qCWarning(lcDriver) << "acquisition stopped:" << e.what();
    PtErrorLogForm::LogError(e);
  }
  mAcquiring = false;
}

void PxSimSensor::FetchAll()
{
  const PtU32 lMask = mDataMask;
  if (lMask & PxResultProvider::ID_TRACES) {
    mTraces.ReadFromPtProtocol(RequestGroup(REQ_RAW_TRACES));
  }
  if (lMask & PxResultProvider::ID_TRACES_32) {
    if (auto* lFiltered = static_cast<PxResultTrace*>(GetProvider(PxResultProvider::ID_TRACES_32))) {
      lFiltered->ReadFromPtProtocol(RequestGroup(REQ_FILTERED_TRACES));
    }
  }
  if (lMask & PxResultProvider::ID_ECHOES) {
    mEchoes.ReadFromPtProtocol(RequestGroup(REQ_ECHOES));
  }
  if (lMask & PxResultProvider::ID_STATE) {
    if (auto* lState = static_cast<PxResultState*>(GetProvider(PxResultProvider::ID_STATE))) {
      lState->ReadFromPtProtocol(RequestGroup(REQ_STATE));
    }
  }
}
