#include "PtGrafObject.h"

#include <cmath>

PtGrafObject::~PtGrafObject() = default;

void PtGrafObject::UpdateSelection(PtGrafSelection&)
{
}

void PtGrafObject::Move(PtGrafSelection&)
{
}

bool PtGrafObject::GetToolTip(QString&, int&, int&)
{
  return false;
}

bool AngleInRange(double aAngle, double aFrom, double aTo)
{
  constexpr double TURN = 2.0 * M_PI;
  double lSpan = aTo - aFrom;
  if (lSpan >= TURN) {
    return true;
  }
  if (lSpan < 0.0) {
    lSpan = std::fmod(lSpan, TURN) + TURN;
  }
  double lOffset = std::fmod(aAngle - aFrom, TURN);
  if (lOffset < 0.0) {
    lOffset += TURN;
  }
  // An angle a rounding error short of a full turn past aFrom is aFrom itself.
  constexpr double EPSILON = 1e-9;
  return lOffset <= lSpan + EPSILON || lOffset >= TURN - EPSILON;
}
