#pragma once

#include "ParvexExport.h"

#include <QComboBox>

class PxBitFieldProperty;
class PxEnumProperty;
class QGridLayout;
class QLabel;
class QSpinBox;

// Chooses one value of an enum property among its entries, in the entries' order. A bit field
// beside it can narrow the choice: entry k is listed only while bit k of the bit field's value at
// the same index is set (the device's mask of what it offers). Unlike the other bound widgets, a
// combo box can be unbound and bound again.
class PX_EXPORT PxComboBox : public QComboBox
{
  Q_OBJECT

public:
  explicit PxComboBox(QWidget* aParent = nullptr);

  void SetProperty(PxEnumProperty* aProperty, size_t aIndex, PxBitFieldProperty* aMask = nullptr);
  // Forgets the property and clears the list.
  void UnSetProperty();
  // The name's label at (aRow, aColumn - 1) with aIndent, the combo box at (aRow, aColumn).
  void SetLayout(QGridLayout& aLayout, int aRow, int aColumn, int aIndent);
  void SetIndexer(QSpinBox& aIndexer);

  PxEnumProperty* Property() const { return mProperty; }
  size_t Index() const { return mIndex; }
  QLabel* Label() const { return mLabel; }

  void setVisible(bool aVisible) override;

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  // The mask changed: the list is made again.
  void MaskValueChanged();
  void ThisCurrentIndexChanged(int aItem);
  void IndexerValueChanged(int aValue);

private:
  bool Bound() const;
  void FillItems();

  QLabel* mLabel = nullptr;
  PxEnumProperty* mProperty = nullptr;
  PxBitFieldProperty* mMask = nullptr;
  size_t mIndex = 0;
};
