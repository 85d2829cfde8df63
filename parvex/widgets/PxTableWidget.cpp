#include "PxTableWidget.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"
#include "PxFloatProperty.h"
#include "PxUnits.h"
#include "PxWidgetSupport_p.h"

#include <QHeaderView>
#include <QSignalBlocker>
#include <QSignalMapper>
#include <QSpinBox>

namespace {
constexpr Qt::ItemFlags FLOAT_EDITABLE = Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsEnabled;
constexpr Qt::ItemFlags BIT_EDITABLE = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
} // namespace

PxTableWidget::PxTableWidget(QWidget* aParent)
    : QTableWidget(aParent)
    , mEditableMapper(new QSignalMapper(this))
    , mValueMapper(new QSignalMapper(this))
{
  connect(mValueMapper, &QSignalMapper::mappedInt, this, &PxTableWidget::PropertyValueChanged);
  connect(mEditableMapper, &QSignalMapper::mappedInt, this, &PxTableWidget::PropertyEditableChanged);
  connect(this, &QTableWidget::cellChanged, this, &PxTableWidget::ThisCellChanged);
  if (PxUnits* lUnits = PxUnits::Singleton()) {
    connect(lUnits, &PxUnits::Changed, this, &PxTableWidget::UnitsChanged);
  }
}

void PxTableWidget::UnitsChanged()
{
  for (int c = 0; c < columnCount(); ++c) {
    if (qobject_cast<PxFloatProperty*>(mProperties[static_cast<size_t>(c)])) {
      PropertyValueChanged(c);
    }
  }
}

void PxTableWidget::SetSecondDimension(size_t aDim)
{
  mDim = aDim;
  setRowCount(static_cast<int>(aDim));
}

PtU32 PxTableWidget::BaseAddProperty(PxProperty* aProperty)
{
  PT_ASSERT(mDim != 0);
  PT_ASSERT(aProperty != nullptr);
  const int lColumn = columnCount();
  setColumnCount(lColumn + 1);
  setHorizontalHeaderItem(lColumn, new QTableWidgetItem(aProperty->Name()));
  mProperties.push_back(aProperty);
  connect(aProperty, &PxProperty::ValueChanged, mValueMapper, QOverload<>::of(&QSignalMapper::map));
  mValueMapper->setMapping(aProperty, lColumn);
  connect(aProperty, &PxProperty::EditableChanged, mEditableMapper, QOverload<>::of(&QSignalMapper::map));
  mEditableMapper->setMapping(aProperty, lColumn);
  return static_cast<PtU32>(lColumn);
}

bool PxTableWidget::FloatValueIndex(int aRow, size_t* aValue) const
{
  *aValue = static_cast<size_t>(aRow) + mDim * static_cast<size_t>(mIndex);
  return mIndex >= 0;
}

void PxTableWidget::SizeToContents(int aColumn)
{
  resizeColumnToContents(aColumn);
  resizeRowsToContents();
}

void PxTableWidget::AddProperty(PxFloatProperty* aProperty)
{
  const int lColumn = static_cast<int>(BaseAddProperty(aProperty));
  const QSignalBlocker lBlocker(this);
  for (int r = 0; r < rowCount(); ++r) {
    auto* lItem = new QTableWidgetItem;
    setItem(r, lColumn, lItem);
  }
  PropertyValueChanged(lColumn);
  PropertyEditableChanged(lColumn);
  SizeToContents(lColumn);
}

void PxTableWidget::AddProperty(PxBitFieldProperty* aProperty)
{
  const int lColumn = static_cast<int>(BaseAddProperty(aProperty));
  const QSignalBlocker lBlocker(this);
  for (int r = 0; r < rowCount(); ++r) {
    auto* lItem = new QTableWidgetItem;
    lItem->setFlags(Qt::ItemIsUserCheckable);
    lItem->setCheckState(Qt::Unchecked);
    setItem(r, lColumn, lItem);
  }
  PropertyValueChanged(lColumn);
  PropertyEditableChanged(lColumn);
  SizeToContents(lColumn);
}

void PxTableWidget::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxTableWidget::IndexerValueChanged);
}

void PxTableWidget::IndexerValueChanged(int aValue)
{
  mIndex = aValue - 1;
  for (int c = 0; c < columnCount(); ++c) {
    PropertyValueChanged(c);
    PropertyEditableChanged(c);
  }
}

void PxTableWidget::PropertyValueChanged(int aColumn)
{
  PxProperty* lProperty = mProperties[static_cast<size_t>(aColumn)];
  // A refresh is not an edit: the cells it rewrites must not be written back.
  const QSignalBlocker lBlocker(this);
  if (auto* lFloat = qobject_cast<PxFloatProperty*>(lProperty)) {
    for (int r = 0; r < rowCount(); ++r) {
      size_t lValue = 0;
      const bool lExists = FloatValueIndex(r, &lValue) && lValue < lFloat->Count();
      item(r, aColumn)->setText(lExists ? lFloat->TextValue(lValue) : QString());
    }
  } else if (auto* lBits = qobject_cast<PxBitFieldProperty*>(lProperty)) {
    const size_t lValue = static_cast<size_t>(mIndex);
    const PtU32 lWord = lValue < lBits->Count() ? lBits->Value(lValue) : 0;
    for (int r = 0; r < rowCount(); ++r) {
      const bool lSet = r < 32 && ((lWord >> r) & 1u);
      item(r, aColumn)->setCheckState(lSet ? Qt::Checked : Qt::Unchecked);
    }
  }
}

void PxTableWidget::PropertyEditableChanged(int aColumn)
{
  PxProperty* lProperty = mProperties[static_cast<size_t>(aColumn)];
  const QSignalBlocker lBlocker(this);
  if (qobject_cast<PxFloatProperty*>(lProperty)) {
    for (int r = 0; r < rowCount(); ++r) {
      size_t lValue = 0;
      const bool lEditable = FloatValueIndex(r, &lValue) && lProperty->Editable(lValue);
      item(r, aColumn)->setFlags(lEditable ? FLOAT_EDITABLE : Qt::NoItemFlags);
    }
  } else if (qobject_cast<PxBitFieldProperty*>(lProperty)) {
    const PtU32 lEditable = lProperty->EditableWord(static_cast<size_t>(mIndex));
    for (int r = 0; r < rowCount(); ++r) {
      QTableWidgetItem* lItem = item(r, aColumn);
      const bool lOn = r < 32 && ((lEditable >> r) & 1u);
      // The box stays checkable so that it still shows its state, greyed out.
      lItem->setFlags(lOn ? lItem->flags() | BIT_EDITABLE : lItem->flags() & ~BIT_EDITABLE);
    }
  } else {
    for (int r = 0; r < rowCount(); ++r) {
      if (QTableWidgetItem* lItem = item(r, aColumn)) {
        lItem->setFlags(lItem->flags() & ~BIT_EDITABLE);
      }
    }
  }
}

void PxTableWidget::ThisCellChanged(int aRow, int aColumn)
{
  if (aColumn < 0 || static_cast<size_t>(aColumn) >= mProperties.size()) {
    return;
  }
  PxProperty* lProperty = mProperties[static_cast<size_t>(aColumn)];
  QTableWidgetItem* lItem = item(aRow, aColumn);
  try {
    if (auto* lFloat = qobject_cast<PxFloatProperty*>(lProperty)) {
      size_t lValue = 0;
      if (FloatValueIndex(aRow, &lValue) && lValue < lFloat->Count() && lItem->text() != lFloat->TextValue(lValue)) {
        lFloat->SetTextValue(lValue, lItem->text());
      }
      // "1.5" typed into a cell that shows two decimals is the same value: show it as "1.50".
      PropertyValueChanged(aColumn);
    } else if (auto* lBits = qobject_cast<PxBitFieldProperty*>(lProperty)) {
      const size_t lValue = static_cast<size_t>(mIndex);
      const PtU32 lWord = lBits->Value(lValue);
      const PtU32 lBit = 1u << aRow;
      lBits->SetValue(lValue, lItem->checkState() == Qt::Checked ? lWord | lBit : lWord & ~lBit);
    }
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged(aColumn);
  }
}
