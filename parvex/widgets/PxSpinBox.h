#pragma once

#include "ParvexExport.h"

#include <QSpinBox>

class PxIntegerProperty;
class QCheckBox;
class QGridLayout;
class QLabel;

// Shows and edits one value of an integer property. Edits go into the property at once; every
// change of the property (a read, an undo, another widget on the same value) comes back at once.
// The widget never owns the property, which outlives it.
//
// A property whose limits are not checked may carry minimum - 1 as its "off" value: SetLayout then
// adds a disabler check box beside the spin box that switches between off and a value.
class PX_EXPORT PxSpinBox : public QSpinBox
{
  Q_OBJECT

public:
  explicit PxSpinBox(QWidget* aParent = nullptr);

  // Binds the widget to value aIndex, once. An index beyond the property's count leaves the widget
  // disabled and deaf to the property.
  void SetProperty(PxIntegerProperty* aProperty, size_t aIndex);
  // The name's label at (aRow, aColumn - 1), the spin box at (aRow, aColumn), the disabler at
  // (aRow, aColumn + 1).
  void SetLayout(QGridLayout& aLayout, int aRow, int aColumn, int aIndent);
  // A spin box that chooses, 1-based, which value of a counted property is shown.
  void SetIndexer(QSpinBox& aIndexer);
  // The disabler's caption; empty means "Disabled".
  void SetDisabledLabel(const QString& aLabel) { mDisabledLabel = aLabel; }

  PxIntegerProperty* Property() const { return mProperty; }
  size_t Index() const { return mIndex; }
  QLabel* Label() const { return mLabel; }
  QCheckBox* Disabler() const { return mDisabler; }

public Q_SLOTS:
  void PropertyEditableChanged(size_t aIndex);
  void PropertyValueChanged();
  void PropertyLimitsChanged();
  void DisablerToggled();
  void ThisValueChanged();
  void IndexerValueChanged(int aValue);

private:
  bool Bound() const;
  bool IsOff() const;

  QLabel* mLabel = nullptr;
  QCheckBox* mDisabler = nullptr;
  PxIntegerProperty* mProperty = nullptr;
  size_t mIndex = 0;
  QString mDisabledLabel;
};
