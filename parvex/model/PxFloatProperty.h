#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

// Real numbers in the internal unit of the property's unit type. With a scale of 1 the values
// are 32-bit floats; with any other scale they are signed 32-bit integers (raw values) and the
// real value is raw divided by scale, which is how devices send fixed-point quantities.
class PX_EXPORT PxFloatProperty : public PxProperty
{
  Q_OBJECT

public:
  // aDecimals: digits after the point in texts; all-ones means not fixed.
  PxFloatProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize, float aScale, PtU32 aDecimals);

  double DoubleValue(size_t aIndex) const override;
  // The value in the unit the user chose, as typed into an editor.
  QString TextValue(size_t aIndex) const override;
  // The template with name, value (display unit) and unit name filled in.
  QString FormattedValue(size_t aIndex) const override;
  bool Signed() const override;
  void SetDoubleValue(size_t aIndex, double aValue) override;
  // aValue is in the display unit; a text that shows the same as the current value changes
  // nothing, an unparsable one is refused.
  void SetTextValue(size_t aIndex, const QString& aValue) override;
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;

  // The real value, internal unit.
  float Value(size_t aIndex) const;
  // The stored integer of a scaled property.
  Pt32 RawValue(size_t aIndex) const;
  // Refuses values outside the limits. On a scaled property, a change too small to show with the
  // property's decimals is not a change.
  void SetValue(size_t aIndex, float aValue);
  void SetRawValue(size_t aIndex, Pt32 aValue);
  void SetLimits(float aMin, float aMax);
  // The widest limits the storage allows, cut to the decimals shown.
  void SetMaxLimits();
  float MinValue() const { return mMinimum; }
  float MaxValue() const { return mMaximum; }
  float Scale() const { return mScale; }
  PtU32 Decimals() const { return mDecimals; }

Q_SIGNALS:
  void LimitsChanged();

private:
  // aValue in fixed notation with the property's decimals (103 digits when they are not fixed).
  QString FixedText(float aValue) const;

  float mMinimum = 0.0f;
  float mMaximum = 0.0f;
  float mScale = 1.0f;
  PtU32 mDecimals = 0;
};
