#include "PxRadioButton.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"

#include <QSignalBlocker>

PxRadioButton::PxRadioButton(QWidget* aParent)
    : QRadioButton(aParent)
{
  setEnabled(false);
}

PxRadioButton::PxRadioButton(const QString& aText, QWidget* aParent)
    : QRadioButton(aText, aParent)
{
  setEnabled(false);
}

void PxRadioButton::SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtU32 aMask, PtU32 aValue)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  PT_ASSERT(aMask != 0);
  // clang-format off
  PT_ASSERT(( ~aMask & aValue ) == 0);
  // clang-format on
  mProperty = aProperty;
  mIndex = aIndex;
  mMask = aMask;
  mValue = aValue;
  if (aIndex >= aProperty->Count()) {
    return;
  }
  PropertyValueChanged();
  PropertyEditableChanged(aIndex);
  connect(this, &QRadioButton::toggled, this, &PxRadioButton::ThisToggled);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxRadioButton::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxRadioButton::PropertyEditableChanged);
}

void PxRadioButton::PropertyValueChanged()
{
  const bool lChecked = (mProperty->Value(mIndex) & mMask) == mValue;
  if (lChecked == isChecked()) {
    return;
  }
  const QSignalBlocker lBlocker(this);
  // An exclusive radio button cannot be unchecked on its own; the value decides here, not the
  // group.
  const bool lExclusive = autoExclusive();
  setAutoExclusive(false);
  setChecked(lChecked);
  setAutoExclusive(lExclusive);
}

void PxRadioButton::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  setEnabled((mProperty->EditableWord(mIndex) & mMask) == mMask);
}

void PxRadioButton::ThisToggled(bool aChecked)
{
  if (aChecked) {
    mProperty->SetValue(mIndex, (mProperty->Value(mIndex) & ~mMask) | mValue);
  }
}
