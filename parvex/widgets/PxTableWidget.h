#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QTableWidget>

#include <vector>

class PxBitFieldProperty;
class PxFloatProperty;
class PxProperty;
class QSignalMapper;
class QSpinBox;

// Several counted properties side by side, one per column and one value per row (one value per
// channel, say). Float columns show text cells; bit-field columns show one bit per row as check
// boxes. A property holding several tables of the same height one after another shows the one its
// indexer chooses.
class PX_EXPORT PxTableWidget : public QTableWidget
{
  Q_OBJECT

public:
  explicit PxTableWidget(QWidget* aParent = nullptr);

  // The number of rows; before any property is added.
  void SetSecondDimension(size_t aDim);
  // Adds a column for aProperty and returns its number.
  PtU32 BaseAddProperty(PxProperty* aProperty);
  void AddProperty(PxFloatProperty* aProperty);
  void AddProperty(PxBitFieldProperty* aProperty);
  // The indexer's 1-based value chooses the table shown.
  void SetIndexer(QSpinBox& aIndexer);

public Q_SLOTS:
  void PropertyValueChanged(int aColumn);
  void PropertyEditableChanged(int aColumn);
  void ThisCellChanged(int aRow, int aColumn);
  void IndexerValueChanged(int aValue);
  // Float cells show the unit the user chose.
  void UnitsChanged();

private:
  // The value a float cell shows, or none beyond the property's count.
  bool FloatValueIndex(int aRow, size_t* aValue) const;
  void SizeToContents(int aColumn);

  QSignalMapper* mEditableMapper = nullptr;
  QSignalMapper* mValueMapper = nullptr;
  size_t mDim = 0;
  int mIndex = 0;
  std::vector<PxProperty*> mProperties;
};
