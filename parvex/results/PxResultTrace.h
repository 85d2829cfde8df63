#pragma once

#include "ParvexExport.h"
#include "PxResultProvider.h"

#include <vector>

class PxFloatProperty;
class PxIntegerProperty;
class PxResultTrace;
class QPointF;

// One channel of a trace frame: a view into its provider's sample buffer, which the trace widget
// and form turn into points. Samples are raw (unsigned 16- or 32-bit); amplitudes and distances
// come from the provider's scales.
class PX_EXPORT PxTrace
{
public:
  size_t Length() const;
  // Distance of the first sample.
  float TimebaseDelay() const;
  float SignalBase() const;

  // The sample at aDistance (truncated, or rounded with aRound). Outside the trace: -1, or the
  // nearest end with aClamp.
  Pt32 IndexFromDistance(float aDistance, bool aClamp, bool aRound) const;
  // Distances of the first sample and one step behind the last.
  void ComputeXLimits(float& aMin, float& aMax) const;
  // Smallest and largest amplitude.
  void ComputeYLimits(float& aMin, float& aMax) const;
  // Length() points (distance, amplitude); aPoints must have room for them.
  void FillPoints(QPointF* aPoints) const;

  // The signal base, timebase delay and samples of one recorded trace (inside its 5888 section).
  void Save(PtDocumentWriter& aWriter) const;
  void Load(PtDocumentReader& aReader);

  // Raw sample aIndex (< Length()).
  PtU32 RawSample(size_t aIndex) const;
  Pt32 RawTimebaseDelay() const;
  PtU32 RawSignalBase() const;
  PxResultTrace* Parent() const { return mParent; }

private:
  friend class PxResultTrace;
  void CheckParent() const;

  PxResultTrace* mParent = nullptr;
  PtByte* mSamples = nullptr;
  Pt32* mTimebaseDelay = nullptr;
  PtU32 mSignalBase = 0;
};

// The traces group of a sensor: one trace per channel, all held in one sample buffer that the
// traces answer is streamed into without an intermediate copy. The 16-bit kind (provider 4) is
// every sensor's; the 32-bit kind (provider 8) is made by drivers that offer it.
class PX_EXPORT PxResultTrace : public PxResultProvider
{
  Q_OBJECT

public:
  enum : PtU32 {
    // PtCom elements of the traces answer
    LENGTH_ELEMENT = 419,
    RECEIVED_1_ELEMENT = 420,
    RECEIVED_2_ELEMENT = 421,
    SAMPLES_ELEMENT = 3,
    TIMEBASE_DELAYS_ELEMENT = 4116,
    // record-file sections and elements
    SECTION_16 = 6016,
    SECTION_32 = 6032,
    TRACE_SECTION = 5888,
    FILE_CHANNEL = 5889,
    FILE_SIGNAL_BASE = 5891,
    FILE_TIMEBASE_DELAY = 5892,
    FILE_SAMPLES = 5893,
    FILE_LENGTH = 5894,
    FILE_RECEIVED_1 = 5895,
    FILE_RECEIVED_2 = 5896
  };

  // The properties (not owned) must outlive the provider: the channel count (taken once, on its
  // first change), the amplitude scale (raw units per amplitude unit) and the point step.
  PxResultTrace(bool aThirtyTwoBit, PxIntegerProperty& aChannelCount, PxIntegerProperty& aAmplitudeScale,
                PxFloatProperty& aPointStep);

  // The timebase scale (raw units per distance unit) follows aProperty. May be set once.
  void SetTimebaseScale(PxIntegerProperty* aProperty);

  // Distance between two samples.
  float PointStep() const;
  // Reshapes the sample buffer when the length changes; inside an update only.
  void SetTraceLength(size_t aLength);
  size_t TraceLength() const { return mTraceLength; }
  // Inside an update only.
  PxTrace* GetTrace(size_t aIndex);
  // Every trace, for views that read after NewData().
  const std::vector<PxTrace>& Traces() const { return mTraces; }

  // The answer header has been read: streams the payload straight into the sample buffer.
  void ReadFromPtProtocol(PxProtocolReader& aReader);
  // One recorded frame: section 6016 (or 6032) with one 5888 section per trace.
  void Save(PtDocumentWriter& aWriter);
  void Load(PtDocumentReader& aReader) override;

  float AmplitudeScale() const { return mAmplitudeScale; }
  float SignalBaseScale() const { return mSignalBaseScale; }
  float TimebaseScale() const { return mTimebaseScale; }
  unsigned int SampleSize() const { return mSampleSize; }
  bool ThirtyTwoBit() const { return mThirtyTwoBit; }
  PtU32 FirstReceivedValue() const { return mReceived[0]; }
  PtU32 SecondReceivedValue() const { return mReceived[1]; }
  const std::vector<PtByte>& SampleBuffer() const { return mSamples; }

public Q_SLOTS:
  void ChannelCountValueChanged(size_t aIndex);
  void AmplitudeScaleValueChanged(size_t aIndex);
  void TimebaseScaleValueChanged(size_t aIndex);

private:
  friend class PxTrace;
  void BindTraces();
  PtU32 SectionId() const { return mThirtyTwoBit ? SECTION_32 : SECTION_16; }
  void CheckChannelCount() const;
  void CheckTraceLengthUpdating() const;
  void CheckTimebaseScale(PxIntegerProperty* aProperty) const;
  void CheckGetTraceUpdating() const;

  std::vector<PxTrace> mTraces;
  std::vector<PtByte> mSamples;
  std::vector<Pt32> mTimebaseDelays;
  size_t mTraceLength = 0;
  float mAmplitudeScale = 1.0f;
  float mSignalBaseScale = 1.0f;
  float mTimebaseScale = 1.0f;
  unsigned int mSampleSize = 2;
  PtU32 mReceived[2] = {0, 0};
  bool mThirtyTwoBit = false;
  PxIntegerProperty& mChannelCountProperty;
  PxIntegerProperty& mAmplitudeScaleProperty;
  PxFloatProperty& mPointStepProperty;
  PxIntegerProperty* mTimebaseScaleProperty = nullptr;
};
