#pragma once

#include "PxSimNoise.h"
#include "PxSimScene.h"

#include <vector>

class PxProtocolWriter;
class PxSimConfiguration;

// The measurement side: the frame clock and the state, echo and trace groups of each frame.
//
// The device runs on its own time: each frame is one period of the effective measurement rate
// later than the previous one, whatever the wall clock says. A frame lasts until the client asks
// again for a group it already has, so a client that polls state, echoes and traces in a loop gets
// one consistent frame per round, and a test of 200 frames takes as long as the exchange and not
// 200 periods.
class PxSimDataGroups
{
public:
  explicit PxSimDataGroups(const PxSimConfiguration& aConfiguration);

  void WriteState(PxProtocolWriter& aWriter);
  void WriteEchoes(PxProtocolWriter& aWriter);
  void WriteTraces(PxProtocolWriter& aWriter, bool aFiltered);

  // Back to frame 0 at time 0, as after power-up.
  void Restart();
  void SetUpdating(bool aUpdating) { mUpdating = aUpdating; }
  // Starts the next frame without a client asking: the device running on its own, as it does
  // behind its Modbus service port.
  void NextFrame();
  // Scene control of the second debug command: a seed of 0 keeps the current noise.
  void SetScene(PtU64 aSeed, PtU32 aFlags);

  PtU32 FrameCounter() const { return mFrame; }
  PtU32 Timestamp() const;
  // Frames per second: the configured refresh rate, unless accumulation and oversampling ask for
  // more light pulses per frame than the light source can fire.
  double EffectiveRate() const;
  // The live registers of the register memory area (layout in the protocol documentation).
  std::vector<PtByte> Registers() const;

  // Light pulses the source fires per second at most.
  static constexpr double PULSE_BUDGET = 6400.0;
  static constexpr double TRACE_BASELINE = 1000.0;

private:
  struct Echo
  {
    double mDistance = 0.0;  // measured, offset applied, metres
    double mAmplitude = 0.0; // measured, amplitude units
    double mPeak = 0.0;      // sample of the peak in the trace
    int mSegment = 0;
    int mIndex = 0;
    bool mDetected = false;
    bool mSaturated = false;
  };

  enum Group { STATE = 1, ECHOES = 2, RAW = 4, FILTERED = 8 };
  void Touch(int aGroup);
  void ComputeReturns();
  void ComputeRawTraces();
  double NoiseFactor() const;
  double BoardTemperature() const;
  double LightTemperature() const;
  double Load() const;
  PtU16 AcquisitionState() const;

  const PxSimConfiguration& mConfiguration;
  PxSimScene mScene;
  PxSimNoise mNoise;
  bool mNoNoise = false;
  bool mUpdating = false;
  PtU32 mFrame = 0;
  double mTimeMs = 0.0;
  int mDelivered = 0;
  // What the current frame saw, computed once so that echoes and traces of a frame agree.
  bool mReturnsValid = false;
  std::vector<Echo> mReturns;
  bool mRawValid = false;
  size_t mTraceLength = 0;
  std::vector<PtU16> mRaw;
  std::vector<PtU32> mFiltered;
  std::vector<Pt32> mDelays;
};
