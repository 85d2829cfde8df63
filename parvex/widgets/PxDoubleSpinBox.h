#pragma once

#include "ParvexExport.h"

#include <QDoubleSpinBox>

class PxFloatProperty;
class QGridLayout;
class QLabel;

// Shows and edits one value of a float property in the unit the user chose (feet, Fahrenheit, ...):
// value, limits and suffix are converted for display and follow a change of units at once. Typed
// values go back into the property in its internal unit. The widget never owns the property.
class PX_EXPORT PxDoubleSpinBox : public QDoubleSpinBox
{
  Q_OBJECT

public:
  explicit PxDoubleSpinBox(QWidget* aParent = nullptr);

  // Binds the widget to value aIndex, once; the value must exist.
  void SetProperty(PxFloatProperty* aProperty, size_t aIndex);
  // The name's label at (aRow, aColumn - 1), the spin box at (aRow, aColumn).
  void SetLayout(QGridLayout& aLayout, int aRow, int aColumn);
  // A spin box that chooses, 1-based, which value of a counted property is shown.
  void SetIndexer(QSpinBox& aIndexer);
  // Shows value aIndex instead.
  void SetIndex(int aIndex);
  // Hides, instead of only disabling, a value the user may not edit (settings that do not apply to
  // the connected model).
  void SetHideOnDisabled(bool aHide);

  PxFloatProperty* Property() const { return mProperty; }
  size_t Index() const { return mIndex; }
  QLabel* Label() const { return mLabel; }

  // The label goes and comes with the spin box.
  void setVisible(bool aVisible) override;

public Q_SLOTS:
  void PropertyEditableChanged(size_t aIndex);
  void PropertyValueChanged();
  void PropertyLimitsChanged();
  void ThisValueChanged();
  void IndexerValueChanged(int aValue);
  void UnitsChanged(int aUnitType);

private:
  bool Bound() const;

  QLabel* mLabel = nullptr;
  PxFloatProperty* mProperty = nullptr;
  size_t mIndex = 0;
  bool mHideOnDisabled = false;
};
