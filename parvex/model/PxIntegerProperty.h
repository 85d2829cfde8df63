#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

// Integers of 1, 2 or 4 bytes on the wire, held as 32-bit integers in memory, with limits. The
// creating device sets the real limits and the signed flag after construction.
class PX_EXPORT PxIntegerProperty : public PxProperty
{
  Q_OBJECT

public:
  PxIntegerProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize);

  double DoubleValue(size_t aIndex) const override;
  QString FormattedValue(size_t aIndex) const override;
  bool Signed() const override;
  void SetDoubleValue(size_t aIndex, double aValue) override;
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;

  Pt32 Value(size_t aIndex) const;
  // Emits ValueChanged only when the stored value changes. A value outside the limits is refused
  // (PtInvalidArgument) unless limits are not checked.
  void SetValue(size_t aIndex, int aValue);
  // Clamps the values into the new limits (unless limits are not checked), then emits
  // LimitsChanged.
  void SetLimits(int aMin, int aMax);
  Pt32 MinValue() const { return mMinimum; }
  Pt32 MaxValue() const { return mMaximum; }

  // Narrower wire values are sign-extended on read.
  void SetSigned(bool aSigned) { mSigned = aSigned; }
  // For values with an "off" state outside their range: neither SetValue nor SetLimits checks or
  // clamps.
  bool LimitsNotChecked() const { return mLimitsNotChecked; }
  void SetLimitsNotChecked(bool aNotChecked) { mLimitsNotChecked = aNotChecked; }

Q_SIGNALS:
  void LimitsChanged();

private:
  Pt32 mMinimum = 0;
  Pt32 mMaximum = 0;
  bool mSigned = false;
  bool mLimitsNotChecked = false;
};
