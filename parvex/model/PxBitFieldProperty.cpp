#include "PxBitFieldProperty.h"

#include "PtException.h"
#include "PxProperty_p.h"

PxBitFieldProperty::PxBitFieldProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize)
    : PxProperty(aCategory, aId, aDeviceId, aUnitSize, sizeof(PtU32))
{
}

double PxBitFieldProperty::DoubleValue(size_t aIndex) const
{
  return Value(aIndex);
}

QString PxBitFieldProperty::FormattedValue(size_t aIndex) const
{
  return QString::number(Value(aIndex));
}

void PxBitFieldProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  // Truncated toward zero and taken as a 32-bit word, as an integer conversion in C does.
  SetValue(aIndex, static_cast<PtU32>(PxPropertyPrivate::TruncateToInt64(aValue)));
}

void PxBitFieldProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  // The bit-field editor is built with the property-bound widgets; until then the property adds
  // nothing to the layout and mEditor stays null.
  Q_UNUSED(aLayout);
  Q_UNUSED(aDisabler);
  Q_UNUSED(aBitNames);
}

void PxBitFieldProperty::SetWidgetEnable(bool aEnable)
{
  // Acts on mEditor, which only CreateWidget makes; without an editor there is nothing to do.
  Q_UNUSED(aEnable);
}

PtU32 PxBitFieldProperty::Value(size_t aIndex) const
{
  return ValueAt<PtU32>(aIndex);
}

void PxBitFieldProperty::SetValue(size_t aIndex, PtU32 aValue)
{
  if (Value(aIndex) == aValue) {
    return;
  }
  StoreAt<PtU32>(aIndex, aValue);
  Q_EMIT ValueChanged(aIndex);
}

PtU32 PxBitFieldProperty::MaskToBit(PtU32 aMask)
{
  if (aMask == 0 || (aMask & (aMask - 1)) != 0) {
    PtInvalidArgument(QStringLiteral("aMask"), QString::number(aMask, 16), 14);
  }
  PtU32 lBit = 0;
  while ((aMask >> lBit) != 1) {
    ++lBit;
  }
  return lBit;
}
