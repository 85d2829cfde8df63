#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

#include <QPointer>

class PxBitFieldEditor;

// 32-bit words whose bits are edited one by one (options, masks of available choices).
class PX_EXPORT PxBitFieldProperty : public PxProperty
{
  Q_OBJECT

public:
  PxBitFieldProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize);

  double DoubleValue(size_t aIndex) const override;
  QString FormattedValue(size_t aIndex) const override;
  void SetDoubleValue(size_t aIndex, double aValue) override;
  // A box of check boxes, one per bit, named from aBitNames (bit position to name).
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;

  PtU32 Value(size_t aIndex) const;
  // Any word is accepted.
  void SetValue(size_t aIndex, PtU32 aValue);

  // The position (0 to 31) of the one bit set in aMask. Any other mask is refused
  // (PtInvalidArgument).
  static PtU32 MaskToBit(PtU32 aMask);

private:
  // Made by CreateWidget and owned by the form; the form may go before the property.
  QPointer<PxBitFieldEditor> mEditor;
};
