#pragma once

#include "PtTypes.h"

#include <vector>

// The world in front of the simulated sensor, seen through its 16 segments: a back wall, two static
// targets and one target that comes and goes along the middle segments. It knows geometry and
// reflectivity only; light power, noise and detection belong to the acquisition.
class PxSimScene
{
public:
  struct Return
  {
    double mDistance = 0.0;     // metres along the segment's axis
    double mReflectivity = 0.0; // 0 to 1
  };

  // What segment aSegment (0 to aSegments - 1 across a fan of aFieldOfView degrees) sees at
  // aTimeMs of device time, nearest first.
  std::vector<Return> Returns(int aSegment, int aSegments, double aFieldOfView, double aTimeMs) const;

  // The moving target's distance at aTimeMs (it stands still at its start when motion is frozen).
  double MovingDistance(double aTimeMs) const;
  void SetFrozen(bool aFrozen) { mFrozen = aFrozen; }

  static constexpr double WALL_DISTANCE = 20.0;
  static constexpr double MOVING_NEAR = 3.0;
  static constexpr double MOVING_FAR = 15.0;
  static constexpr double MOVING_PERIOD_MS = 8000.0;

private:
  bool mFrozen = false;
};
