#include "PxBitEditor.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"

#include <QSignalBlocker>
#include <QSpinBox>

PxBitEditor::PxBitEditor(QWidget* aParent)
    : QCheckBox(aParent)
{
  setEnabled(false);
}

void PxBitEditor::SetProperty(PxBitFieldProperty* aProperty)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  PT_ASSERT(aProperty->Count() == 1);
  mProperty = aProperty;
  setText(aProperty->Name());
  PropertyValueChanged();
  PropertyEditableChanged(0);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxBitEditor::PropertyValueChanged);
  connect(this, &QCheckBox::toggled, this, &PxBitEditor::ThisToggled);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxBitEditor::PropertyEditableChanged);
}

void PxBitEditor::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxBitEditor::IndexerValueChanged);
}

void PxBitEditor::PropertyValueChanged()
{
  const QSignalBlocker lBlocker(this);
  setChecked((mProperty->Value(0) >> mBit) & 1u);
}

void PxBitEditor::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  setEnabled((mProperty->EditableWord(0) >> mBit) & 1u);
}

void PxBitEditor::ThisToggled()
{
  const PtU32 lValue = mProperty->Value(0);
  const PtU32 lBit = 1u << mBit;
  mProperty->SetValue(0, isChecked() ? lValue | lBit : lValue & ~lBit);
}

void PxBitEditor::IndexerValueChanged(int aValue)
{
  if (aValue < 1 || aValue > 32) {
    return;
  }
  mBit = aValue - 1;
  PropertyValueChanged();
  PropertyEditableChanged(0);
}
