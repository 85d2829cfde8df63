#include "PxSimScene.h"

#include <algorithm>
#include <cmath>

namespace {
struct Target
{
  int mFirst;
  int mLast;
  double mDistance;
  double mReflectivity;
};
// Two static objects: a pole on the left, a parked car on the right.
constexpr Target STATIC_TARGETS[] = {{2, 4, 6.0, 0.5}, {10, 12, 11.0, 0.9}};
constexpr int MOVING_FIRST = 7;
constexpr int MOVING_LAST = 8;
constexpr double MOVING_REFLECTIVITY = 0.6;
constexpr double WALL_REFLECTIVITY = 0.8;
constexpr double PI = 3.14159265358979323846;
} // namespace

double PxSimScene::MovingDistance(double aTimeMs) const
{
  if (mFrozen) {
    return MOVING_NEAR;
  }
  const double lPhase = 2.0 * PI * std::fmod(aTimeMs, MOVING_PERIOD_MS) / MOVING_PERIOD_MS;
  return MOVING_NEAR + (MOVING_FAR - MOVING_NEAR) * 0.5 * (1.0 - std::cos(lPhase));
}

std::vector<PxSimScene::Return> PxSimScene::Returns(int aSegment, int aSegments, double aFieldOfView,
                                                    double aTimeMs) const
{
  std::vector<Return> lReturns;
  for (const Target& lTarget : STATIC_TARGETS) {
    if (aSegment >= lTarget.mFirst && aSegment <= lTarget.mLast) {
      lReturns.push_back({lTarget.mDistance, lTarget.mReflectivity});
    }
  }
  if (aSegment >= MOVING_FIRST && aSegment <= MOVING_LAST) {
    lReturns.push_back({MovingDistance(aTimeMs), MOVING_REFLECTIVITY});
  }
  // The wall is flat and square to the sensor: the outer segments meet it further away.
  const double lAngle = ((aSegment + 0.5) / aSegments - 0.5) * aFieldOfView * PI / 180.0;
  lReturns.push_back({WALL_DISTANCE / std::cos(lAngle), WALL_REFLECTIVITY});
  std::sort(lReturns.begin(), lReturns.end(),
            [](const Return& a, const Return& b) { return a.mDistance < b.mDistance; });
  return lReturns;
}
