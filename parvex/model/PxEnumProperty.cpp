#include "PxEnumProperty.h"

#include "PtException.h"
#include "PxProperty_p.h"

#include <algorithm>

namespace {
constexpr PtU32 NOT_FOUND = 0xFFFFFFFFu;
}

PxEnumProperty::PxEnumProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize)
    : PxProperty(aCategory, aId, aDeviceId, aUnitSize, sizeof(PtU32))
{
}

double PxEnumProperty::DoubleValue(size_t aIndex) const
{
  return Value(aIndex);
}

QString PxEnumProperty::FormattedValue(size_t aIndex) const
{
  const PtU32 lPosition = ValueIndex(aIndex);
  // Values set through SetValue are always in the list, but a document or a device may deliver
  // one that is not; it is shown as its number rather than read past the list.
  if (lPosition == NOT_FOUND) {
    return QString::number(Value(aIndex));
  }
  return mEnumValues[lPosition].mText;
}

void PxEnumProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  // Truncated toward zero and taken as a 32-bit word, as an integer conversion in C does for
  // numbers in range; anything not in the list is then refused by SetValue.
  SetValue(aIndex, static_cast<PtU32>(PxPropertyPrivate::TruncateToInt64(aValue)));
}

void PxEnumProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  // Choices are laid out by the forms themselves (combo boxes or radio groups).
  Q_UNUSED(aLayout);
  Q_UNUSED(aDisabler);
  Q_UNUSED(aBitNames);
}

void PxEnumProperty::SetWidgetEnable(bool aEnable)
{
  Q_UNUSED(aEnable);
}

void PxEnumProperty::AddEnumValue(PtU32 aValue, const QString& aText)
{
  mEnumValues.push_back(EnumValue{aValue, aText});
}

PtU32 PxEnumProperty::Value(size_t aIndex) const
{
  return ValueAt<PtU32>(aIndex);
}

void PxEnumProperty::SetValue(size_t aIndex, PtU32 aValue)
{
  if (Value(aIndex) == aValue) {
    return;
  }
  const bool lKnown = std::any_of(mEnumValues.begin(), mEnumValues.end(),
                                  [aValue](const EnumValue& aEntry) { return aEntry.mValue == aValue; });
  if (!lKnown) {
    PtInvalidArgument(QStringLiteral("aValue"), QString::number(aValue), 5);
  }
  StoreAt<PtU32>(aIndex, aValue);
  Q_EMIT ValueChanged(aIndex);
}

PtU32 PxEnumProperty::ValueIndex(size_t aIndex) const
{
  const PtU32 lValue = Value(aIndex);
  for (size_t i = 0; i < mEnumValues.size(); ++i) {
    if (mEnumValues[i].mValue == lValue) {
      return static_cast<PtU32>(i);
    }
  }
  return NOT_FOUND;
}

void PxEnumProperty::SetValueIndex(size_t aIndex, PtU32 aEnumIndex)
{
  PT_ASSERT(aEnumIndex < mEnumValues.size());
  SetValue(aIndex, mEnumValues[aEnumIndex].mValue);
}

PtU32 PxEnumProperty::GetIndexFromValue(const QString& aText)
{
  for (const EnumValue& lEntry : mEnumValues) {
    if (lEntry.mText == aText) {
      return lEntry.mValue;
    }
  }
  return NOT_FOUND;
}
