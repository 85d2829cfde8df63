#pragma once

#include "PtTypes.h"

#include <QString>

#include <cmath>
#include <limits>

// Helpers shared by the property kinds; not part of the installed interface.
namespace PxPropertyPrivate {
// A double truncated toward zero to a 64-bit integer, saturating at its ends. Callers take the
// range they need from it, so no out-of-range conversion (undefined in C++) is ever made; a NaN,
// which has no integer part, gives 0.
inline Pt64 TruncateToInt64(double aValue)
{
  if (std::isnan(aValue)) {
    return 0;
  }
  // 2^63 is exact as a double; every double below it converts.
  constexpr double lLimit = 9223372036854775808.0;
  if (aValue >= lLimit) {
    return std::numeric_limits<Pt64>::max();
  }
  if (aValue < -lLimit) {
    return std::numeric_limits<Pt64>::min();
  }
  return static_cast<Pt64>(aValue);
}

// Replaces the first occurrence of aPlaceholder (case-sensitive) in aText.
inline void ReplaceFirst(QString& aText, const QString& aPlaceholder, const QString& aValue)
{
  const int lPosition = aText.indexOf(aPlaceholder);
  if (lPosition >= 0) {
    aText.replace(lPosition, aPlaceholder.size(), aValue);
  }
}
} // namespace PxPropertyPrivate
