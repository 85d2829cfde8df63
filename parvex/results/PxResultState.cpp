#include "PxResultState.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtTime.h"
#include "PxIntegerProperty.h"
#include "PxProtocolReader.h"

PxResultState::PxResultState()
    : PxResultProvider(ID_STATE)
{
  mTimestamp.SetCount(1);
  mRate.SetCount(1);
  mRate.SetName(tr("Measurement Rate: "));
  mRate.SetFormat(QStringLiteral("%n %v Hz"));
  mRate.AddColorCondition(&mRateCondition);
}

PxResultState::~PxResultState()
{
  delete mTemperature;
}

void PxResultState::SetRefreshRate(PxProperty* aProperty)
{
  CheckRefreshRate(aProperty);
  mRateCondition.SetProperty(aProperty);
}

void PxResultState::SetTemperatureScale(PxIntegerProperty* aProperty)
{
  CheckTemperatureScale(aProperty);
  mTemperatureScaleProperty = aProperty;
  connect(aProperty, &PxProperty::ValueChanged, this, &PxResultState::TemperatureScaleValueChanged);
}

void PxResultState::SetTemperatureResult(PxResult* aResult)
{
  if (aResult == mTemperature) {
    return;
  }
  if (mTemperature && Results()) {
    // The maps must not keep pointing at the result deleted below.
    Results()->erase(mTemperature->Id());
    DeviceResults()->erase(mTemperature->DeviceId());
  }
  delete mTemperature;
  mTemperature = aResult;
  if (mTemperature && Results()) {
    EnterResult(mTemperature);
  }
}

void PxResultState::TemperatureScaleValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  if (mTemperature && mTemperatureScaleProperty && mTemperatureScaleProperty->Count() > 0) {
    mTemperature->SetScale(static_cast<float>(mTemperatureScaleProperty->Value(0)));
  }
}

bool PxResultState::StartTimeSet() const
{
  return mStartTime.isValid() && mStartTime.toMSecsSinceEpoch() != 0;
}

void PxResultState::SetTimestamp(PtU32 aTimestamp)
{
  CheckUpdating();
  // An answer or a file may have emptied either result; the next frame fills it again.
  if (mTimestamp.Count() == 0) {
    mTimestamp.SetCount(1);
  }
  if (mRate.Count() == 0) {
    mRate.SetCount(1);
  }
  mTimestamp.SetRawValue<PtU32>(0, aTimestamp);

  mRing[mRingIndex] = aTimestamp;
  mRingIndex = (mRingIndex + 1) % RING_SIZE;
  // Newest minus the one 15 frames older spans 15 frame intervals. Until the ring is full the
  // older entry is 0, and equal timestamps give an infinite rate; the display shows both as they
  // come rather than inventing a value.
  const PtU32 lSpan = mRing[(mRingIndex + RING_SIZE - 1) % RING_SIZE] - mRing[mRingIndex];
  const float lRate = 15.0f / static_cast<float>(lSpan) * 1000.0f;
  mRate.SetRawValue<float>(0, lRate);

  if (!StartTimeSet()) {
    // UTC: adding milliseconds to it below is plain arithmetic, where local time would consult
    // the time-zone database on every frame.
    mStartTime = QDateTime::currentDateTimeUtc();
    mFirstTimestamp = aTimestamp;
  }
  mFrameTime = mStartTime.addMSecs(static_cast<qint64>(static_cast<PtU32>(aTimestamp - mFirstTimestamp)));
}

void PxResultState::ReadFromPtProtocol(PxProtocolReader& aReader)
{
  aReader.ReadPayload();
  UpdateGuard lUpdate(*this);
  while (aReader.Advance()) {
    ReadElementFromPtProtocol(aReader);
  }
  lUpdate.Finish();
}

void PxResultState::ReadElementFromPtProtocol(PxProtocolReader& aReader)
{
  if (aReader.Id() == TIMESTAMP_DEVICE_ID) {
    PtU32 lTimestamp = 0;
    aReader.ReadElement(&lTimestamp, 1, 4, 4);
    SetTimestamp(lTimestamp);
  } else {
    PxResultProvider::ReadElementFromPtProtocol(aReader);
  }
}

void PxResultState::SetMaps(Map* aResults, Map* aDeviceResults)
{
  PxResultProvider::SetMaps(aResults, aDeviceResults);
  EnterResult(&mTimestamp);
  if (mTemperature) {
    EnterResult(mTemperature);
  }
  EnterResult(&mRate);
}

void PxResultState::WriteElementsToFile(PtDocumentWriter& aWriter)
{
  const Pt64 lFrameTime = PtToPersistence(mFrameTime);
  aWriter.AddElement(TIMESTAMP_ID, &lFrameTime, 8, 1, 8);
  PxResultProvider::WriteElementsToFile(aWriter);
}

void PxResultState::Save(PtDocumentWriter& aWriter)
{
  aWriter.StartSection(SECTION_ID, 1);
  WriteElementsToFile(aWriter);
  aWriter.EndSection();
}

void PxResultState::ReadElementFromFile(PtDocumentReader& aReader)
{
  switch (aReader.Id()) {
  case FILETIME_ELEMENT_ID: {
    PtU64 lFiletime = 0;
    aReader.GetElement(&lFiletime, 8, 1, 8);
    mFrameTime = PtFromFiletime(lFiletime);
    break;
  }
  case TIMESTAMP_ID: {
    Pt64 lPersistent = 0;
    aReader.GetElement(&lPersistent, 8, 1, 8);
    mFrameTime = PtFromPersistence(lPersistent);
    break;
  }
  default:
    PxResultProvider::ReadElementFromFile(aReader);
  }
}

void PxResultState::Load(PtDocumentReader& aReader)
{
  UpdateGuard lUpdate(*this);
  while (aReader.Advance()) {
    ReadElementFromFile(aReader);
  }
  if (!StartTimeSet()) {
    mStartTime = mFrameTime;
  }
  // On replay the timestamp is the time since the first replayed frame.
  if (mTimestamp.Count() == 0) {
    mTimestamp.SetCount(1);
  }
  mTimestamp.SetRawValue<PtU32>(0, static_cast<PtU32>(mStartTime.msecsTo(mFrameTime)));
  lUpdate.Finish();
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxResultState::CheckTemperatureScale(PxIntegerProperty* aProperty) const
{
#line 230
  PT_ASSERT(aProperty != nullptr);
  PT_ASSERT(mTemperatureScaleProperty == nullptr);
}

void PxResultState::CheckRefreshRate(PxProperty* aProperty) const
{
#line 253
  PT_ASSERT(aProperty != nullptr);
}

void PxResultState::CheckUpdating() const
{
#line 275
  PT_ASSERT(Updating());
}
