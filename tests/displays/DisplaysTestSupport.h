#pragma once

// A test sensor fed with real traces and echoes answers, for the display suites and benchmark.

#include "PxIntegerProperty.h"
#include "PxProtocolReader.h"
#include "PxResultEchoes.h"
#include "PxResultTrace.h"
#include "PxTestBytes.h"
#include "PxTestSensor.h"
#include "PxTestTransport.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace DisplaysTest {
// A test sensor that may deliver filtered (32-bit) traces besides the raw ones.
class TraceSensor : public PxTestSensor
{
public:
  explicit TraceSensor(int aSegments, bool aFiltered)
      : mFiltered(aFiltered)
  {
    mChannelCount.SetCount(1);
    mChannelCount.SetValue(0, aSegments);
    mPointStep.SetCount(1);
    mPointStep.SetLimits(0.0f, 100.0f);
    mPointStep.SetValue(0, 0.25f);
    mLength.SetLimits(0.0f, 1000.0f);
    // Raw units are display units until a test says otherwise.
    for (PxIntegerProperty* lScale : {&mEchoDistanceScale, &mEchoAmplitudeScale, &mTraceAmplitudeScale}) {
      lScale->SetCount(1);
      lScale->SetLimits(1, 1000000);
      lScale->SetValue(0, 1);
    }
  }
  bool DeliversFilteredTraces() const override { return mFiltered; }
  PxResultProvider* CreateProvider(PtU32 aId) override
  {
    if (aId == PxResultProvider::ID_TRACES_32 && mFiltered) {
      if (!mFilteredTraces) {
        mFilteredTraces = std::make_unique<PxResultTrace>(true, mChannelCount, mTraceAmplitudeScale, mPointStep);
        mFilteredTraces->ChannelCountValueChanged(0);
        mFilteredTraces->AmplitudeScaleValueChanged(0);
      }
      return mFilteredTraces.get();
    }
    return PxSensor::CreateProvider(aId);
  }

  // One traces answer for every segment: sample k of segment s is aSample(s, k).
  void FeedTraces(PxResultTrace& aTraces, PtU32 aLength, const std::function<PtU32(int, PtU32)>& aSample)
  {
    const PtU32 lSize = aTraces.ThirtyTwoBit() ? 4 : 2;
    const int lSegments = ChannelCount();
    PxTestBytes lBody;
    lBody.ElementHeader(PxResultTrace::LENGTH_ELEMENT, 1, 4).U32(aLength);
    lBody.ElementHeader(PxResultTrace::SAMPLES_ELEMENT, static_cast<std::uint16_t>(lSegments), aLength * lSize);
    for (int s = 0; s < lSegments; ++s) {
      for (PtU32 k = 0; k < aLength; ++k) {
        lSize == 4 ? lBody.U32(aSample(s, k)) : lBody.U16(static_cast<std::uint16_t>(aSample(s, k)));
      }
    }
    lBody.ElementHeader(PxResultTrace::TIMEBASE_DELAYS_ELEMENT, static_cast<std::uint16_t>(lSegments), 4);
    for (int s = 0; s < lSegments; ++s) {
      lBody.U32(0);
    }
    aTraces.ReadFromPtProtocol(mTransport.Answer(lBody));
  }

  // One echoes answer: distance and amplitude raw (the scales are 1), the third value is the
  // echo's base.
  struct Echo
  {
    Pt32 mDistance;
    PtU32 mAmplitude;
    PtU32 mBase;
    PtByte mSegment;
    PtByte mFlag;
  };
  void FeedEchoes(const std::vector<Echo>& aEchoes)
  {
    PxTestBytes lBody;
    const auto lElement = [&](std::uint16_t aId, std::uint32_t aSize, const std::function<void(const Echo&)>& aValue) {
      lBody.ElementHeader(aId, static_cast<std::uint16_t>(aEchoes.size()), aSize);
      for (const Echo& e : aEchoes) {
        aValue(e);
      }
    };
    lElement(4228, 4, [&](const Echo& e) { lBody.U32(static_cast<PtU32>(e.mDistance)); });
    lElement(4227, 4, [&](const Echo& e) { lBody.U32(e.mAmplitude); });
    lElement(4229, 4, [&](const Echo& e) { lBody.U32(e.mBase); });
    lElement(4231, 1, [&](const Echo& e) { lBody.U8(e.mSegment); });
    lElement(4232, 1, [&](const Echo& e) { lBody.U8(e.mFlag); });
    EchoesProvider().ReadFromPtProtocol(mTransport.Answer(lBody));
  }

  PxTestTransport mTransport;

private:
  bool mFiltered;
  std::unique_ptr<PxResultTrace> mFilteredTraces;
};
} // namespace DisplaysTest
