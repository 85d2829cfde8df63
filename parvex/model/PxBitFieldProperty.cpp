#include "PxBitFieldProperty.h"

#include "PtException.h"
#include "PxBitFieldEditor.h"
#include "PxProperty_p.h"

#include <QGridLayout>

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
  if (Count() == 0) {
    return;
  }
  auto* lEditor = new PxBitFieldEditor(Name());
  lEditor->SetProperty(this, 0, aBitNames);
  lEditor->SetDisabler(aDisabler);
  // The box of bits is as wide as a label, its field and the field's extra all together.
  aLayout.addWidget(lEditor, aLayout.rowCount(), 0, 1, 3);
  mEditor = lEditor;
}

void PxBitFieldProperty::SetWidgetEnable(bool aEnable)
{
  if (mEditor) {
    mEditor->SetEnabled(aEnable);
  }
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
