#include "PxResultTrace.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxProtocolReader.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QPointF>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {
Q_LOGGING_CATEGORY(lcResults, "parvex.results")

// Element 3 carries one item per trace and counts are 16-bit on the wire: more traces than that
// can never arrive, so a channel count beyond it is not taken.
constexpr Pt32 MAX_TRACES = 0xFFFF;
// Record files hold what answers carried, so a trace never needs more bytes than an answer may.
constexpr PtU64 MAX_TRACE_BYTES = PxProtocolReader::DEFAULT_MAX_PAYLOAD;
// Format error of a recorded trace that could not have been received.
constexpr int E_FILE_TRACE_LENGTH = 10;

// A destination for elements of zero items when there is no buffer yet: the reader then still
// checks the element against what is expected, instead of taking it as data to drop.
PtByte sNothing[8];

template <class T>
PtByte* Bytes(std::vector<T>& aVector)
{
  return aVector.empty() ? sNothing : reinterpret_cast<PtByte*>(aVector.data());
}

[[noreturn]] void FailPulled()
{
  PtThrow<PxProtocolReader::Exception>(PxProtocolReader::E_PULLED_ELEMENT,
                                       QCoreApplication::translate("PxProtocolReader", "Protocol error"));
}

float InverseScale(const PxIntegerProperty& aProperty)
{
  return aProperty.Count() > 0 ? 1.0f / static_cast<float>(aProperty.Value(0)) : 1.0f;
}
} // namespace

// ---------------------------------------------------------------------------------------------
// PxTrace

size_t PxTrace::Length() const
{
  CheckParent();
  return mParent->mTraceLength;
}

float PxTrace::TimebaseDelay() const
{
  CheckParent();
  return static_cast<float>(*mTimebaseDelay) * mParent->mTimebaseScale;
}

float PxTrace::SignalBase() const
{
  CheckParent();
  return static_cast<float>(mSignalBase) * mParent->mSignalBaseScale;
}

Pt32 PxTrace::RawTimebaseDelay() const
{
  CheckParent();
  return *mTimebaseDelay;
}

PtU32 PxTrace::RawSignalBase() const
{
  CheckParent();
  return mSignalBase;
}

PtU32 PxTrace::RawSample(size_t aIndex) const
{
  CheckParent();
  PT_ASSERT(aIndex < mParent->mTraceLength);
  if (mParent->mSampleSize == 4) {
    PtU32 lValue = 0;
    std::memcpy(&lValue, mSamples + aIndex * 4, 4);
    return lValue;
  }
  PtU16 lValue = 0;
  std::memcpy(&lValue, mSamples + aIndex * 2, 2);
  return lValue;
}

Pt32 PxTrace::IndexFromDistance(float aDistance, bool aClamp, bool aRound) const
{
  CheckParent();
  const Pt32 lLength = static_cast<Pt32>(mParent->mTraceLength);
  const float lPosition = (aDistance - TimebaseDelay()) / mParent->PointStep() + (aRound ? 0.5f : 0.0f);
  // Truncated toward zero, so a distance just short of the first sample still gives sample 0.
  const double lIndex = std::trunc(static_cast<double>(lPosition));
  if (lIndex >= 0.0 && lIndex < lLength) {
    return static_cast<Pt32>(lIndex);
  }
  if (!aClamp) {
    return -1;
  }
  return lIndex < 0.0 ? 0 : lLength - 1;
}

void PxTrace::ComputeXLimits(float& aMin, float& aMax) const
{
  CheckParent();
  aMin = TimebaseDelay();
  aMax = mParent->PointStep() * static_cast<float>(mParent->mTraceLength) + aMin;
}

void PxTrace::ComputeYLimits(float& aMin, float& aMax) const
{
  CheckParent();
  const size_t lLength = mParent->mTraceLength;
  const float lScale = mParent->mAmplitudeScale;
  if (lLength == 0) {
    aMin = aMax = 0.0f;
    return;
  }
  PtU32 lMin = RawSample(0);
  PtU32 lMax = lMin;
  for (size_t i = 1; i < lLength; ++i) {
    const PtU32 lValue = RawSample(i);
    lMin = std::min(lMin, lValue);
    lMax = std::max(lMax, lValue);
  }
  aMin = static_cast<float>(lMin) * lScale;
  aMax = static_cast<float>(lMax) * lScale;
}

void PxTrace::FillPoints(QPointF* aPoints) const
{
  CheckParent();
  const size_t lLength = mParent->mTraceLength;
  const float lScale = mParent->mAmplitudeScale;
  const float lStep = mParent->PointStep();
  // Accumulated in single precision, as the graphs have always drawn it: the x of the last point
  // carries the rounding of every step, and recorded screenshots line up with today's.
  float lX = TimebaseDelay();
  if (mParent->mSampleSize == 4) {
    for (size_t k = 0; k < lLength; ++k) {
      PtU32 lRaw;
      std::memcpy(&lRaw, mSamples + k * 4, 4);
      aPoints[k] = QPointF(lX, static_cast<float>(lRaw) * lScale);
      lX += lStep;
    }
  } else {
    for (size_t k = 0; k < lLength; ++k) {
      PtU16 lRaw;
      std::memcpy(&lRaw, mSamples + k * 2, 2);
      aPoints[k] = QPointF(lX, static_cast<float>(lRaw) * lScale);
      lX += lStep;
    }
  }
}

void PxTrace::Save(PtDocumentWriter& aWriter) const
{
  CheckParent();
  const PtU32 lSize = mParent->mSampleSize;
  aWriter.AddElement(PxResultTrace::FILE_SIGNAL_BASE, &mSignalBase, 4, 1, 4);
  aWriter.AddElement(PxResultTrace::FILE_TIMEBASE_DELAY, mTimebaseDelay, 4, 1, 4);
  aWriter.AddElement(PxResultTrace::FILE_SAMPLES, mSamples, lSize, static_cast<PtU32>(mParent->mTraceLength), lSize);
}

void PxTrace::Load(PtDocumentReader& aReader)
{
  CheckParent();
  switch (aReader.Id()) {
  case PxResultTrace::FILE_SIGNAL_BASE:
    aReader.GetElement(&mSignalBase, 4, 1, 4);
    break;
  case PxResultTrace::FILE_TIMEBASE_DELAY:
    aReader.GetElement(mTimebaseDelay, 4, 1, 4);
    break;
  case PxResultTrace::FILE_SAMPLES: {
    const PtU32 lSize = mParent->mSampleSize;
    const auto lLength = static_cast<PtU32>(mParent->mTraceLength);
    if (lLength > 0) {
      aReader.GetElement(mSamples, lSize, lLength, lSize);
    }
    break;
  }
  default:
    break;
  }
}

// ---------------------------------------------------------------------------------------------
// PxResultTrace

PxResultTrace::PxResultTrace(bool aThirtyTwoBit, PxIntegerProperty& aChannelCount, PxIntegerProperty& aAmplitudeScale,
                             PxFloatProperty& aPointStep)
    : PxResultProvider(aThirtyTwoBit ? ID_TRACES_32 : ID_TRACES)
    , mSampleSize(aThirtyTwoBit ? 4 : 2)
    , mThirtyTwoBit(aThirtyTwoBit)
    , mChannelCountProperty(aChannelCount)
    , mAmplitudeScaleProperty(aAmplitudeScale)
    , mPointStepProperty(aPointStep)
{
  connect(&aChannelCount, &PxProperty::ValueChanged, this, &PxResultTrace::ChannelCountValueChanged);
  connect(&aAmplitudeScale, &PxProperty::ValueChanged, this, &PxResultTrace::AmplitudeScaleValueChanged);
}

void PxResultTrace::ChannelCountValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  CheckChannelCount();
  const Pt32 lCount = mChannelCountProperty.Count() > 0 ? mChannelCountProperty.Value(0) : 0;
  if (lCount <= 0) {
    return; // not known yet
  }
  if (lCount > MAX_TRACES) {
    qCWarning(lcResults) << "channel count" << lCount << "not taken: an answer carries at most" << MAX_TRACES;
    return;
  }
  mTraces.resize(static_cast<size_t>(lCount));
  mTimebaseDelays.assign(static_cast<size_t>(lCount), 0);
  mSamples.assign(mTraces.size() * mSampleSize * mTraceLength, 0);
  BindTraces();
}

void PxResultTrace::AmplitudeScaleValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  mAmplitudeScale = InverseScale(mAmplitudeScaleProperty);
}

void PxResultTrace::SetTimebaseScale(PxIntegerProperty* aProperty)
{
  CheckTimebaseScale(aProperty);
  mTimebaseScaleProperty = aProperty;
  connect(aProperty, &PxProperty::ValueChanged, this, &PxResultTrace::TimebaseScaleValueChanged);
}

void PxResultTrace::TimebaseScaleValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  if (mTimebaseScaleProperty) {
    mTimebaseScale = InverseScale(*mTimebaseScaleProperty);
  }
}

float PxResultTrace::PointStep() const
{
  if (mPointStepProperty.Count() == 0) {
    return 0.0f;
  }
  if (mPointStepProperty.Scale() != 1.0f) {
    return static_cast<float>(mPointStepProperty.RawValue(0)) / mPointStepProperty.Scale();
  }
  return mPointStepProperty.Value(0);
}

void PxResultTrace::BindTraces()
{
  const size_t lTraceBytes = static_cast<size_t>(mSampleSize) * mTraceLength;
  for (size_t i = 0; i < mTraces.size(); ++i) {
    mTraces[i].mParent = this;
    mTraces[i].mSamples = mSamples.data() + i * lTraceBytes;
    mTraces[i].mTimebaseDelay = &mTimebaseDelays[i];
  }
}

void PxResultTrace::SetTraceLength(size_t aLength)
{
  CheckTraceLengthUpdating();
  if (aLength == mTraceLength) {
    return;
  }
  mTraceLength = aLength;
  // Shrinking keeps the capacity, so a device that switches between lengths costs no
  // allocation per frame once the longest has been seen.
  mSamples.resize(mTraces.size() * mSampleSize * mTraceLength);
  BindTraces();
}

PxTrace* PxResultTrace::GetTrace(size_t aIndex)
{
  CheckGetTraceUpdating();
  PT_ASSERT(aIndex < mTraces.size());
  return &mTraces[aIndex];
}

void PxResultTrace::ReadFromPtProtocol(PxProtocolReader& aReader)
{
  // The answer header leaves the consumed length as the previous payload left it.
  aReader.ResetConsumedLength();
  UpdateGuard lUpdate(*this);
  const auto lTraces = static_cast<unsigned int>(mTraces.size());
  while (aReader.PullHeader()) {
    switch (aReader.Id()) {
    case LENGTH_ELEMENT: {
      PtU32 lLength = 0;
      aReader.PullElement(&lLength, 4, 1);
      // A length whose samples could never fit in an answer is a corrupt stream, not a reason
      // to allocate gigabytes.
      if (static_cast<PtU64>(lLength) * mSampleSize * std::max(1u, lTraces) > aReader.MaxPayload()) {
        FailPulled();
      }
      SetTraceLength(lLength);
      break;
    }
    case RECEIVED_1_ELEMENT:
      aReader.PullElement(&mReceived[0], 4, 1);
      break;
    case RECEIVED_2_ELEMENT:
      aReader.PullElement(&mReceived[1], 4, 1);
      break;
    case SAMPLES_ELEMENT:
      aReader.PullElement(Bytes(mSamples), static_cast<unsigned int>(mSampleSize * mTraceLength), lTraces);
      break;
    case TIMEBASE_DELAYS_ELEMENT:
      aReader.PullElement(Bytes(mTimebaseDelays), 4, lTraces);
      break;
    default:
      // Devices send only the elements above in this answer; anything else is left in the stream.
      break;
    }
  }
  lUpdate.Finish();
}

void PxResultTrace::Save(PtDocumentWriter& aWriter)
{
  aWriter.StartSection(SectionId(), 1);
  const auto lLength = static_cast<PtU32>(mTraceLength);
  for (size_t i = 0; i < mTraces.size(); ++i) {
    const auto lChannel = static_cast<PtU32>(i);
    aWriter.StartSection(TRACE_SECTION, 1);
    aWriter.AddElement(FILE_CHANNEL, &lChannel, 4, 1, 4);
    aWriter.AddElement(FILE_LENGTH, &lLength, 4, 1, 4);
    aWriter.AddElement(FILE_RECEIVED_1, &mReceived[0], 4, 1, 4);
    aWriter.AddElement(FILE_RECEIVED_2, &mReceived[1], 4, 1, 4);
    mTraces[i].Save(aWriter);
    aWriter.EndSection();
  }
  aWriter.EndSection();
}

void PxResultTrace::Load(PtDocumentReader& aReader)
{
  UpdateGuard lUpdate(*this);
  while (aReader.Advance()) {
    if (!aReader.IsSection() || aReader.Id() != TRACE_SECTION) {
      aReader.SkipCurrentSection();
      continue;
    }
    PtU32 lChannel = 0;
    while (aReader.Advance()) {
      if (aReader.IsSection()) {
        aReader.SkipCurrentSection();
        continue;
      }
      switch (aReader.Id()) {
      case FILE_CHANNEL:
        aReader.GetElement(&lChannel, 4, 1, 4);
        break;
      case FILE_LENGTH: {
        PtU32 lLength = 0;
        aReader.GetElement(&lLength, 4, 1, 4);
        if (static_cast<PtU64>(lLength) * mSampleSize > MAX_TRACE_BYTES) {
          PtFileFormatError(E_FILE_TRACE_LENGTH);
        }
        SetTraceLength(lLength);
        break;
      }
      case FILE_RECEIVED_1:
        aReader.GetElement(&mReceived[0], 4, 1, 4);
        break;
      case FILE_RECEIVED_2:
        aReader.GetElement(&mReceived[1], 4, 1, 4);
        break;
      default:
        // A record of a sensor with more channels than this one is configured for: the traces
        // this provider does not have are skipped rather than written past its buffer.
        if (lChannel < mTraces.size()) {
          mTraces[lChannel].Load(aReader);
        } else {
          qCDebug(lcResults) << "recorded trace of channel" << lChannel << "skipped:" << mTraces.size() << "channels";
        }
      }
    }
  }
  lUpdate.Finish();
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxTrace::CheckParent() const
{
  PT_ASSERT(mParent);
}

void PxResultTrace::CheckChannelCount() const
{
#line 96
  PT_ASSERT(mTraces.size() == 0);
}

void PxResultTrace::CheckTraceLengthUpdating() const
{
#line 180
  PT_ASSERT(Updating());
}

void PxResultTrace::CheckTimebaseScale(PxIntegerProperty* aProperty) const
{
#line 213
  PT_ASSERT(aProperty != nullptr);
  PT_ASSERT(mTimebaseScaleProperty == nullptr);
}

void PxResultTrace::CheckGetTraceUpdating() const
{
#line 241
  PT_ASSERT(Updating());
}
