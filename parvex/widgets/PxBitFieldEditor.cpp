#include "PxBitFieldEditor.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSignalMapper>

#include <algorithm>

PxBitFieldEditor::PxBitFieldEditor(const QString& aTitle, QWidget* aParent)
    : QWidget(aParent)
    , mLayout(new QHBoxLayout(this))
    , mGroupBox(new QGroupBox(aTitle, this))
    , mGrid(new QGridLayout(mGroupBox))
    , mMapper(new QSignalMapper(this))
{
  mLayout->setContentsMargins(0, 0, 0, 0);
  mLayout->addWidget(mGroupBox);
  connect(mMapper, &QSignalMapper::mappedInt, this, &PxBitFieldEditor::CheckBoxStateChanged);
}

void PxBitFieldEditor::SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, QMap<int, QString>* aBitNames)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty != nullptr);
  PT_ASSERT(aIndex < aProperty->Count());
  mProperty = aProperty;
  mIndex = aIndex;
  const int lRows = static_cast<int>(aProperty->UnitSize());
  // Values are 32-bit words in memory, whatever their size on the wire.
  mBitCount = std::min(lRows * 8, 32);
  for (int b = 0; b < mBitCount; ++b) {
    const QString lName = aBitNames && aBitNames->contains(b) ? aBitNames->value(b) : QString::number(b + 1);
    auto* lBox = new QCheckBox(lName, mGroupBox);
    mGrid->addWidget(lBox, b % lRows, b / lRows);
    mCheckBoxes.append(lBox);
    connect(lBox, &QCheckBox::stateChanged, mMapper, QOverload<>::of(&QSignalMapper::map));
    mMapper->setMapping(lBox, b);
  }
  PropertyValueChanged();
  PropertyEditableChanged(aIndex);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxBitFieldEditor::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxBitFieldEditor::PropertyEditableChanged);
}

void PxBitFieldEditor::SetDisabler(bool aDisabler)
{
  mGroupBox->setCheckable(aDisabler);
}

void PxBitFieldEditor::SetEnabled(bool aEnabled)
{
  setEnabled(aEnabled);
}

void PxBitFieldEditor::PropertyValueChanged()
{
  const PtU32 lValue = mProperty->Value(mIndex);
  // Showing the value is not an edit.
  const QSignalBlocker lBlocker(mMapper);
  for (int b = 0; b < mBitCount; ++b) {
    mCheckBoxes[b]->setChecked((lValue >> b) & 1u);
  }
}

void PxBitFieldEditor::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  // The editable word doubles as a mask of the bits the user may change.
  const PtU32 lEditable = mProperty->EditableWord(mIndex);
  for (int b = 0; b < mBitCount; ++b) {
    mCheckBoxes[b]->setEnabled((lEditable >> b) & 1u);
  }
}

void PxBitFieldEditor::CheckBoxStateChanged(int aBit)
{
  const PtU32 lValue = mProperty->Value(mIndex);
  const PtU32 lBit = 1u << aBit;
  mProperty->SetValue(mIndex, mCheckBoxes[aBit]->isChecked() ? lValue | lBit : lValue & ~lBit);
}
