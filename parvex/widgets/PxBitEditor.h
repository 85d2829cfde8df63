#pragma once

#include "ParvexExport.h"

#include <QCheckBox>

class PxBitFieldProperty;
class QSpinBox;

// One bit of a single-valued bit field as a check box captioned with the property's name. An
// indexer chooses which bit is shown.
class PX_EXPORT PxBitEditor : public QCheckBox
{
  Q_OBJECT

public:
  explicit PxBitEditor(QWidget* aParent = nullptr);

  void SetProperty(PxBitFieldProperty* aProperty);
  // Here the indexer's 1-based value chooses the bit, not the value.
  void SetIndexer(QSpinBox& aIndexer);

  int Bit() const { return mBit; }

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void ThisToggled();
  void IndexerValueChanged(int aValue);

private:
  PxBitFieldProperty* mProperty = nullptr;
  int mBit = 0;
};
