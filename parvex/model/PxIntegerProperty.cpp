#include "PxIntegerProperty.h"

#include "PtException.h"
#include "PxProperty_p.h"

#include <algorithm>
#include <limits>

namespace {
// The widest value of the wire size, until the device sets its real limits. Two-byte values get
// 65536, one more than fits: existing devices rely on being able to store it before their limits
// arrive.
Pt32 InitialMaximum(PtU32 aUnitSize)
{
  switch (aUnitSize) {
  case 1:
    return 255;
  case 2:
    return 65536;
  default:
    return 2147483647;
  }
}
} // namespace

PxIntegerProperty::PxIntegerProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize)
    : PxProperty(aCategory, aId, aDeviceId, aUnitSize, sizeof(Pt32))
    , mMaximum(InitialMaximum(aUnitSize))
{
  // Spelled as the assertion message has always read; kept out of formatting.
  // clang-format off
  PT_ASSERT(( aUnitSize == 1 ) || ( aUnitSize == 2 ) || ( aUnitSize == 4 ));
  // clang-format on
}

double PxIntegerProperty::DoubleValue(size_t aIndex) const
{
  return Value(aIndex);
}

QString PxIntegerProperty::FormattedValue(size_t aIndex) const
{
  return QString::number(Value(aIndex));
}

bool PxIntegerProperty::Signed() const
{
  return mSigned;
}

void PxIntegerProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  // Truncated toward zero; numbers beyond the 32-bit range saturate and then meet the limits.
  const Pt64 lValue = std::clamp<Pt64>(PxPropertyPrivate::TruncateToInt64(aValue), std::numeric_limits<Pt32>::min(),
                                       std::numeric_limits<Pt32>::max());
  SetValue(aIndex, static_cast<int>(lValue));
}

void PxIntegerProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  // Integer values are laid out by the forms themselves (spin boxes with their own labels).
  Q_UNUSED(aLayout);
  Q_UNUSED(aDisabler);
  Q_UNUSED(aBitNames);
}

void PxIntegerProperty::SetWidgetEnable(bool aEnable)
{
  Q_UNUSED(aEnable);
}

Pt32 PxIntegerProperty::Value(size_t aIndex) const
{
  return ValueAt<Pt32>(aIndex);
}

void PxIntegerProperty::SetValue(size_t aIndex, int aValue)
{
  if (Value(aIndex) == aValue) {
    return;
  }
  if (!mLimitsNotChecked && (aValue < mMinimum || aValue > mMaximum)) {
    PtInvalidArgument(QStringLiteral("aValue"), QString::number(aValue), 10);
  }
  StoreAt<Pt32>(aIndex, aValue);
  Q_EMIT ValueChanged(aIndex);
}

void PxIntegerProperty::SetLimits(int aMin, int aMax)
{
  if (aMin == mMinimum && aMax == mMaximum) {
    return;
  }
  mMinimum = aMin;
  mMaximum = aMax;
  if (!mLimitsNotChecked) {
    const size_t lCount = Count();
    for (size_t i = 0; i < lCount; ++i) {
      const Pt32 lValue = Value(i);
      if (lValue < mMinimum) {
        SetValue(i, mMinimum);
      } else if (lValue > mMaximum) {
        SetValue(i, mMaximum);
      }
    }
  }
  Q_EMIT LimitsChanged();
}
