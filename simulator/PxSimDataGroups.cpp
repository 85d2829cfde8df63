#include "PxSimDataGroups.h"

#include "PxProtocolWriter.h"
#include "PxSimConfiguration.h"
#include "PxSimProtocol.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace PxSimProtocol;

namespace {
// Amplitude units at 1 m of a white target at full power: falls with the square of the distance.
constexpr double AMPLITUDE_AT_ONE_METRE = 4000.0;
constexpr double DISTANCE_NOISE = 0.08; // metres, one pulse, no oversampling
constexpr double AMPLITUDE_NOISE = 1.0; // amplitude units
constexpr double TRACE_NOISE = 40.0;    // raw trace units
constexpr double PULSE_WIDTH = 2.5;     // samples (standard deviation)
constexpr double FILTER_GAIN = 16.0;    // filtered traces carry four more bits
constexpr int FILTER_HALF_WIDTH = 2;
constexpr int MAX_ECHOES_PER_SEGMENT = 6;

template <class T>
void Put(std::vector<PtByte>& aBytes, size_t aAt, T aValue)
{
  std::memcpy(aBytes.data() + aAt, &aValue, sizeof(T));
}
} // namespace

PxSimDataGroups::PxSimDataGroups(const PxSimConfiguration& aConfiguration)
    : mConfiguration(aConfiguration)
{
}

void PxSimDataGroups::Restart()
{
  mFrame = 0;
  mTimeMs = 0.0;
  mDelivered = 0;
  mReturnsValid = false;
  mRawValid = false;
}

void PxSimDataGroups::SetScene(PtU64 aSeed, PtU32 aFlags)
{
  if (aSeed != 0) {
    mNoise.Seed(aSeed);
  }
  mScene.SetFrozen(aFlags & SCENE_FREEZE_MOTION);
  mNoNoise = aFlags & SCENE_NO_NOISE;
  mReturnsValid = false;
  mRawValid = false;
}

PtU32 PxSimDataGroups::Timestamp() const
{
  return static_cast<PtU32>(std::llround(mTimeMs));
}

double PxSimDataGroups::EffectiveRate() const
{
  const double lPulses = mConfiguration.Number(ID_ACCUMULATION) * mConfiguration.Number(ID_OVERSAMPLING);
  return std::min(mConfiguration.Number(ID_REFRESH_RATE), PULSE_BUDGET / lPulses);
}

void PxSimDataGroups::Touch(int aGroup)
{
  if (mDelivered & aGroup) {
    ++mFrame;
    mTimeMs += 1000.0 / EffectiveRate();
    mDelivered = 0;
    mReturnsValid = false;
    mRawValid = false;
  }
  mDelivered |= aGroup;
}

void PxSimDataGroups::NextFrame()
{
  mDelivered |= STATE;
  Touch(STATE);
}

double PxSimDataGroups::NoiseFactor() const
{
  if (mNoNoise) {
    return 0.0;
  }
  // Averaging N pulses divides the noise by the square root of N.
  const double lPulses = mConfiguration.Number(ID_ACCUMULATION) * mConfiguration.Number(ID_OVERSAMPLING);
  return (mConfiguration.Number(ID_NOISE_REMOVAL) != 0 ? 0.5 : 1.0) / std::sqrt(lPulses);
}

double PxSimDataGroups::Load() const
{
  const double lUse =
      EffectiveRate() * mConfiguration.Number(ID_ACCUMULATION) * mConfiguration.Number(ID_OVERSAMPLING) / PULSE_BUDGET;
  return std::min(100.0, 12.0 + 60.0 * lUse + (mNoNoise ? 0.0 : 3.0 * std::sin(mTimeMs / 7000.0)));
}

double PxSimDataGroups::BoardTemperature() const
{
  return 36.0 + 0.08 * Load() + 1.5 * std::sin(mTimeMs / 60000.0);
}

double PxSimDataGroups::LightTemperature() const
{
  return BoardTemperature() + 18.0 * mConfiguration.Number(ID_LIGHT_POWER) / 100.0;
}

PtU16 PxSimDataGroups::AcquisitionState() const
{
  if (mUpdating) {
    return ACQUISITION_UPDATING;
  }
  return mFrame < STARTING_FRAMES ? ACQUISITION_STARTING : ACQUISITION_RUNNING;
}

void PxSimDataGroups::WriteState(PxProtocolWriter& aWriter)
{
  Touch(STATE);
  const PtU32 lTimestamp = Timestamp();
  const double lScale = mConfiguration.Number(ID_TEMPERATURE_SCALE);
  const std::int16_t lTemperatures[2] = {static_cast<std::int16_t>(std::lround(BoardTemperature() * lScale)),
                                         static_cast<std::int16_t>(std::lround(LightTemperature() * lScale))};
  const PtU16 lLoad = static_cast<PtU16>(std::lround(Load() * 10.0));
  const PtU16 lState = AcquisitionState();
  aWriter.AddElement(ID_TIMESTAMP, 1, 4, &lTimestamp, 4);
  aWriter.AddElement(ID_TEMPERATURES, 2, 2, lTemperatures, 2);
  aWriter.AddElement(ID_CPU_LOAD, 1, 2, &lLoad, 2);
  aWriter.AddElement(ID_ACQUISITION_STATE, 1, 2, &lState, 2);
  aWriter.AddElement(ID_FRAME_COUNTER, 1, 4, &mFrame, 4);
}

void PxSimDataGroups::ComputeReturns()
{
  if (mReturnsValid) {
    return;
  }
  mReturnsValid = true;
  mReturns.clear();
  const int lSegments = static_cast<int>(mConfiguration.Number(ID_CHANNEL_COUNT));
  const PtU32 lMask = static_cast<PtU32>(mConfiguration.Number(ID_SEGMENT_MASK));
  const double lPower = mConfiguration.Number(ID_LIGHT_POWER) / 100.0;
  const double lThreshold = mConfiguration.Number(ID_DETECTION_THRESHOLD);
  const double lStep = mConfiguration.Number(ID_POINT_STEP);
  const double lStart = -mConfiguration.Number(ID_ECHO_DISTANCE_OFFSET);
  const double lRange = mConfiguration.Number(ID_RANGE);
  const double lNoise = NoiseFactor();
  const double lSaturation = (65535.0 - TRACE_BASELINE) / mConfiguration.Number(ID_TRACE_AMPLITUDE_SCALE);
  for (int lSegment = 0; lSegment < lSegments; ++lSegment) {
    if (!(lMask & (1u << lSegment))) {
      continue; // a disabled segment fires no light and sees nothing
    }
    int lIndex = 0;
    for (const PxSimScene::Return& lReturn :
         mScene.Returns(lSegment, lSegments, mConfiguration.Number(ID_FIELD_OF_VIEW), mTimeMs)) {
      if (lReturn.mDistance > lRange || lIndex == MAX_ECHOES_PER_SEGMENT) {
        break;
      }
      Echo lEcho;
      lEcho.mSegment = lSegment;
      const double lTrue =
          AMPLITUDE_AT_ONE_METRE * lReturn.mReflectivity * lPower / (lReturn.mDistance * lReturn.mDistance);
      lEcho.mAmplitude = std::max(0.0, lTrue * (1.0 + 0.03 * lNoise * mNoise.Gaussian()) +
                                           AMPLITUDE_NOISE * lNoise * mNoise.Gaussian());
      const double lMeasured = lReturn.mDistance + DISTANCE_NOISE * lNoise * mNoise.Gaussian();
      // The trace starts at the optical offset before zero, and a trace holds the light's whole way
      // back, offset included: the peak sits one offset further out than the distance reported.
      lEcho.mPeak = (lMeasured + mConfiguration.Number(ID_ECHO_DISTANCE_OFFSET) - lStart) / lStep;
      lEcho.mDistance = lMeasured + mConfiguration.Number(ID_DISTANCE_OFFSETS, static_cast<size_t>(lSegment));
      lEcho.mSaturated = lEcho.mAmplitude >= lSaturation;
      lEcho.mDetected = lEcho.mAmplitude >= lThreshold && lEcho.mAmplitude > 0.0;
      lEcho.mIndex = lEcho.mDetected ? lIndex++ : -1;
      mReturns.push_back(lEcho);
    }
  }
}

void PxSimDataGroups::WriteEchoes(PxProtocolWriter& aWriter)
{
  Touch(ECHOES);
  ComputeReturns();
  const double lDistanceScale = mConfiguration.Number(ID_ECHO_DISTANCE_SCALE);
  const double lAmplitudeScale = mConfiguration.Number(ID_ECHO_AMPLITUDE_SCALE);
  std::vector<Pt32> lDistances;
  std::vector<PtU32> lAmplitudes, lBases, lTimestamps, lFrames;
  // The trace level the echo stands on, in echo amplitude units: the displays draw an echo's tick
  // at base + amplitude so that it meets the top of its peak.
  const PtU32 lBase = static_cast<PtU32>(
      std::lround(TRACE_BASELINE / mConfiguration.Number(ID_TRACE_AMPLITUDE_SCALE) * lAmplitudeScale));
  std::vector<PtU16> lIndexes;
  std::vector<PtByte> lSegments, lFlags;
  for (const Echo& lEcho : mReturns) {
    if (!lEcho.mDetected || lDistances.size() == MAX_ECHOES) {
      continue;
    }
    lDistances.push_back(static_cast<Pt32>(std::lround(lEcho.mDistance * lDistanceScale)));
    lAmplitudes.push_back(static_cast<PtU32>(std::lround(lEcho.mAmplitude * lAmplitudeScale)));
    lBases.push_back(lBase);
    lIndexes.push_back(static_cast<PtU16>(lEcho.mIndex));
    lSegments.push_back(static_cast<PtByte>(lEcho.mSegment));
    lFlags.push_back(static_cast<PtByte>(ECHO_VALID | (lEcho.mSaturated ? ECHO_SATURATED : 0)));
    lTimestamps.push_back(Timestamp());
    lFrames.push_back(mFrame);
  }
  const PtU16 lCount = static_cast<PtU16>(lDistances.size());
  aWriter.AddElement(ID_ECHO_DISTANCE, lCount, 4, lDistances.data(), 4);
  aWriter.AddElement(ID_ECHO_AMPLITUDE, lCount, 4, lAmplitudes.data(), 4);
  aWriter.AddElement(ID_ECHO_BASE, lCount, 4, lBases.data(), 4);
  aWriter.AddElement(ID_ECHO_INDEX, lCount, 2, lIndexes.data(), 2);
  aWriter.AddElement(ID_ECHO_SEGMENT, lCount, 1, lSegments.data(), 1);
  aWriter.AddElement(ID_ECHO_FLAG, lCount, 1, lFlags.data(), 1);
  aWriter.AddElement(ID_ECHO_TIMESTAMP, lCount, 4, lTimestamps.data(), 4);
  aWriter.AddElement(ID_ECHO_FRAME, lCount, 4, lFrames.data(), 4);
}

void PxSimDataGroups::ComputeRawTraces()
{
  if (mRawValid) {
    return;
  }
  ComputeReturns();
  mRawValid = true;
  const size_t lChannels = static_cast<size_t>(mConfiguration.Number(ID_CHANNEL_COUNT));
  mTraceLength = static_cast<size_t>(mConfiguration.Number(ID_TRACE_LENGTH));
  const double lSmoothing = mConfiguration.Number(ID_SMOOTHING) / 32.0;
  const double lNoise = TRACE_NOISE * NoiseFactor() * (1.0 - lSmoothing);
  const double lWidth = PULSE_WIDTH * (1.0 + lSmoothing);
  const double lScale = mConfiguration.Number(ID_TRACE_AMPLITUDE_SCALE);
  std::vector<double> lTrace(mTraceLength);
  mRaw.resize(lChannels * mTraceLength);
  for (size_t lChannel = 0; lChannel < lChannels; ++lChannel) {
    for (double& lSample : lTrace) {
      lSample = TRACE_BASELINE + lNoise * mNoise.Gaussian();
    }
    for (const Echo& lEcho : mReturns) {
      if (static_cast<size_t>(lEcho.mSegment) != lChannel) {
        continue;
      }
      // Every return shows in the trace, detected or not: the threshold only decides what is an echo.
      const double lHeight = lEcho.mAmplitude * lScale;
      const long lFirst = std::max(0L, static_cast<long>(std::floor(lEcho.mPeak - 4.0 * lWidth)));
      const long lLast = std::min(static_cast<long>(mTraceLength) - 1, static_cast<long>(lEcho.mPeak + 4.0 * lWidth));
      for (long k = lFirst; k <= lLast; ++k) {
        const double lX = (k - lEcho.mPeak) / lWidth;
        lTrace[static_cast<size_t>(k)] += lHeight * std::exp(-0.5 * lX * lX);
      }
    }
    PtU16* lOut = mRaw.data() + lChannel * mTraceLength;
    for (size_t k = 0; k < mTraceLength; ++k) {
      lOut[k] = static_cast<PtU16>(std::clamp(std::lround(lTrace[k]), 0L, 65535L));
    }
  }
  const double lTimebase = mConfiguration.Number(ID_TIMEBASE_SCALE);
  mDelays.assign(lChannels,
                 static_cast<Pt32>(std::lround(-mConfiguration.Number(ID_ECHO_DISTANCE_OFFSET) * lTimebase)));

  // The filtered traces: baseline removed, a short moving average, four more bits of resolution.
  mFiltered.resize(mRaw.size());
  for (size_t lChannel = 0; lChannel < lChannels; ++lChannel) {
    const PtU16* lIn = mRaw.data() + lChannel * mTraceLength;
    PtU32* lOut = mFiltered.data() + lChannel * mTraceLength;
    for (size_t k = 0; k < mTraceLength; ++k) {
      double lSum = 0.0;
      int lCount = 0;
      for (long j = static_cast<long>(k) - FILTER_HALF_WIDTH; j <= static_cast<long>(k) + FILTER_HALF_WIDTH; ++j) {
        if (j >= 0 && j < static_cast<long>(mTraceLength)) {
          lSum += lIn[j];
          ++lCount;
        }
      }
      lOut[k] = static_cast<PtU32>(std::max(0.0, lSum / lCount - TRACE_BASELINE) * FILTER_GAIN);
    }
  }
}

void PxSimDataGroups::WriteTraces(PxProtocolWriter& aWriter, bool aFiltered)
{
  Touch(aFiltered ? FILTERED : RAW);
  ComputeRawTraces();
  const PtU16 lChannels = static_cast<PtU16>(mDelays.size());
  const PtU32 lLength = static_cast<PtU32>(mTraceLength);
  const PtU32 lMask = static_cast<PtU32>(mConfiguration.Number(ID_SEGMENT_MASK));
  // The length comes first: the application reshapes its buffer before the samples arrive.
  aWriter.AddElement(ID_TRACE_LENGTH_ELEMENT, 1, 4, &lLength, 4);
  aWriter.AddElement(ID_TRACE_FRAME, 1, 4, &mFrame, 4);
  aWriter.AddElement(ID_TRACE_ACTIVE, 1, 4, &lMask, 4);
  if (aFiltered) {
    aWriter.AddElement(ID_TRACE_SAMPLES, lChannels, lLength * 4, mFiltered.data(), lLength * 4);
  } else {
    aWriter.AddElement(ID_TRACE_SAMPLES, lChannels, lLength * 2, mRaw.data(), lLength * 2);
  }
  aWriter.AddElement(ID_TRACE_DELAYS, lChannels, 4, mDelays.data(), 4);
}

std::vector<PtByte> PxSimDataGroups::Registers() const
{
  std::vector<PtByte> lRegisters(REGISTER_SIZE, 0);
  const double lScale = mConfiguration.Number(ID_TEMPERATURE_SCALE);
  Put<PtU32>(lRegisters, 0, mFrame);
  Put<PtU32>(lRegisters, 4, Timestamp());
  Put<std::int16_t>(lRegisters, 8, static_cast<std::int16_t>(std::lround(BoardTemperature() * lScale)));
  Put<std::int16_t>(lRegisters, 10, static_cast<std::int16_t>(std::lround(LightTemperature() * lScale)));
  Put<PtU16>(lRegisters, 12, static_cast<PtU16>(std::lround(Load() * 10.0)));
  Put<PtU16>(lRegisters, 14, AcquisitionState());
  Put<PtU32>(lRegisters, 16, static_cast<PtU32>(mConfiguration.Number(ID_SEGMENT_MASK)));
  Put<PtU32>(lRegisters, 20, static_cast<PtU32>(std::lround(EffectiveRate() * 100.0)));
  return lRegisters;
}
