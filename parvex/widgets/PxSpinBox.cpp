#include "PxSpinBox.h"

#include "PtAssert.h"
#include "PxIntegerProperty.h"
#include "PxWidgetSupport_p.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

PxSpinBox::PxSpinBox(QWidget* aParent)
    : QSpinBox(aParent)
{
  setEnabled(false);
}

bool PxSpinBox::Bound() const
{
  return mProperty && mIndex < mProperty->Count();
}

bool PxSpinBox::IsOff() const
{
  const int lValue = mProperty->Value(mIndex);
  return lValue < mProperty->MinValue() || lValue > mProperty->MaxValue();
}

void PxSpinBox::SetProperty(PxIntegerProperty* aProperty, size_t aIndex)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  mProperty = aProperty;
  mIndex = aIndex;
  if (aIndex >= aProperty->Count()) {
    return;
  }
  PropertyLimitsChanged();
  PropertyValueChanged();
  PropertyEditableChanged(aIndex);
  connect(this, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxSpinBox::ThisValueChanged);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxSpinBox::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxSpinBox::PropertyEditableChanged);
  connect(aProperty, &PxIntegerProperty::LimitsChanged, this, &PxSpinBox::PropertyLimitsChanged);
}

void PxSpinBox::SetLayout(QGridLayout& aLayout, int aRow, int aColumn, int aIndent)
{
  PT_ASSERT(mProperty);
  const bool lValid = mIndex < mProperty->Count();
  if (!mProperty->Name().isEmpty()) {
    mLabel = new QLabel(mProperty->Name());
    mLabel->setIndent(aIndent);
    mLabel->setEnabled(lValid && mProperty->Editable(mIndex));
    aLayout.addWidget(mLabel, aRow, aColumn - 1);
  }
  aLayout.addWidget(this, aRow, aColumn);
  if (mProperty->LimitsNotChecked() && lValid) {
    mDisabler = new QCheckBox(mDisabledLabel.isEmpty() ? tr("Disabled") : mDisabledLabel);
    aLayout.addWidget(mDisabler, aRow, aColumn + 1);
    PropertyValueChanged();
    PropertyEditableChanged(mIndex);
    connect(mDisabler, &QCheckBox::toggled, this, &PxSpinBox::DisablerToggled);
  }
}

void PxSpinBox::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxSpinBox::IndexerValueChanged);
}

void PxSpinBox::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  if (!Bound()) {
    return;
  }
  const bool lEditable = mProperty->Editable(mIndex);
  // A value switched off stays out of reach until the user switches it on again.
  setEnabled(lEditable && !(mDisabler && mDisabler->isChecked()));
  if (mDisabler) {
    mDisabler->setEnabled(lEditable);
  }
  // A greyed-out field under a black name reads as a fault; the name greys with it.
  if (mLabel) {
    mLabel->setEnabled(lEditable);
  }
}

void PxSpinBox::PropertyValueChanged()
{
  if (!Bound()) {
    return;
  }
  // Showing the property is not an edit: nothing of it may be written back.
  const QSignalBlocker lBlocker(this);
  setValue(mProperty->Value(mIndex));
  if (mDisabler) {
    const QSignalBlocker lDisablerBlocker(mDisabler);
    mDisabler->setChecked(IsOff());
    PropertyEditableChanged(mIndex);
  }
}

void PxSpinBox::PropertyLimitsChanged()
{
  if (!mProperty) {
    return;
  }
  // With limits not checked the value below the range stands for "off" and must be showable.
  const int lMinimum = mProperty->LimitsNotChecked() ? mProperty->MinValue() - 1 : mProperty->MinValue();
  {
    const QSignalBlocker lBlocker(this);
    setRange(lMinimum, mProperty->MaxValue());
  }
  // The new range may have clamped what is shown; the property has clamped its own value already.
  PropertyValueChanged();
}

void PxSpinBox::DisablerToggled()
{
  if (!Bound()) {
    return;
  }
  try {
    if (mDisabler->isChecked()) {
      setEnabled(false);
      mProperty->SetValue(mIndex, mProperty->MinValue() - 1);
    } else {
      setEnabled(mProperty->Editable(mIndex));
      // Switching on starts from 0, not from the minimum: devices have always read it so.
      mProperty->SetValue(mIndex, 0);
    }
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged();
  }
}

void PxSpinBox::ThisValueChanged()
{
  if (!Bound()) {
    return;
  }
  try {
    mProperty->SetValue(mIndex, value());
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged();
  }
}

void PxSpinBox::IndexerValueChanged(int aValue)
{
  mIndex = static_cast<size_t>(aValue - 1);
  PropertyValueChanged();
}
