#pragma once

#include "PtTypes.h"

// A small, fast, seedable noise source: the simulator draws tens of thousands of samples per frame
// and must stay far below the cost of moving them, and tests need the same noise for the same seed.
class PxSimNoise
{
public:
  explicit PxSimNoise(PtU64 aSeed = 0x9E3779B97F4A7C15ull) { Seed(aSeed); }

  void Seed(PtU64 aSeed) { mState = aSeed ? aSeed : 0x9E3779B97F4A7C15ull; }

  // Uniform in [0, 1).
  double Uniform()
  {
    // xorshift64*
    mState ^= mState >> 12;
    mState ^= mState << 25;
    mState ^= mState >> 27;
    return static_cast<double>((mState * 0x2545F4914F6CDD1Dull) >> 11) * (1.0 / 9007199254740992.0);
  }

  // Roughly normal with mean 0 and standard deviation 1 (sum of four uniforms): bounded tails are
  // what a sensor's baseline looks like anyway.
  double Gaussian() { return (Uniform() + Uniform() + Uniform() + Uniform() - 2.0) * 1.7320508075688772; }

private:
  PtU64 mState = 0;
};
