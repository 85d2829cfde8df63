#include "PxBoolProperty.h"

PxBoolProperty::PxBoolProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId)
    : PxProperty(aCategory, aId, aDeviceId, 1, 1)
{
}

double PxBoolProperty::DoubleValue(size_t aIndex) const
{
  return Value(aIndex) ? 1.0 : 0.0;
}

QString PxBoolProperty::FormattedValue(size_t aIndex) const
{
  return Value(aIndex) ? tr("true") : tr("false");
}

void PxBoolProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  SetValue(aIndex, aValue != 0);
}

void PxBoolProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  // Switches are laid out by the forms themselves (check boxes with their own captions).
  Q_UNUSED(aLayout);
  Q_UNUSED(aDisabler);
  Q_UNUSED(aBitNames);
}

void PxBoolProperty::SetWidgetEnable(bool aEnable)
{
  Q_UNUSED(aEnable);
}

bool PxBoolProperty::Value(size_t aIndex) const
{
  return ValueAt<PtByte>(aIndex) != 0;
}

void PxBoolProperty::SetValue(size_t aIndex, bool aValue)
{
  // Devices may send any non-zero byte for true; that is already the value true.
  if (Value(aIndex) == aValue) {
    return;
  }
  StoreAt<PtByte>(aIndex, aValue ? 1 : 0);
  Q_EMIT ValueChanged(aIndex);
}
