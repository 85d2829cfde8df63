#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

// An unsigned value that must be one of a list of known values, each with its text. The list's
// order is the order in which combo boxes and radio groups present the choices.
class PX_EXPORT PxEnumProperty : public PxProperty
{
  Q_OBJECT

public:
  struct EnumValue
  {
    PtU32 mValue = 0;
    QString mText;
  };

  PxEnumProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize);

  double DoubleValue(size_t aIndex) const override;
  // The text of the value's entry.
  QString FormattedValue(size_t aIndex) const override;
  void SetDoubleValue(size_t aIndex, double aValue) override;
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;

  // Appends a choice; the creating device fills the list.
  void AddEnumValue(PtU32 aValue, const QString& aText);
  const std::vector<EnumValue>& EnumValues() const { return mEnumValues; }

  PtU32 Value(size_t aIndex) const;
  // Refuses a value that is not in the list (PtInvalidArgument).
  void SetValue(size_t aIndex, PtU32 aValue);
  // The position in the list of the value's entry (the first match); all-ones when none.
  PtU32 ValueIndex(size_t aIndex) const;
  // Sets the value of the entry at position aEnumIndex.
  void SetValueIndex(size_t aIndex, PtU32 aEnumIndex);
  // The value (not the position, whatever the name says) of the first entry with the text aText;
  // all-ones when none has it.
  PtU32 GetIndexFromValue(const QString& aText);

private:
  std::vector<EnumValue> mEnumValues;
};
