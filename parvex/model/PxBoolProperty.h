#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

// Switches: one byte per value, 0 = false.
class PX_EXPORT PxBoolProperty : public PxProperty
{
  Q_OBJECT

public:
  PxBoolProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId);

  double DoubleValue(size_t aIndex) const override;
  QString FormattedValue(size_t aIndex) const override;
  // Any number but 0 is true.
  void SetDoubleValue(size_t aIndex, double aValue) override;
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;

  bool Value(size_t aIndex) const;
  void SetValue(size_t aIndex, bool aValue);
};
