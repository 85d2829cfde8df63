#include "PxGroupBox.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"

#include <QSignalBlocker>

PxGroupBox::PxGroupBox(QWidget* aParent)
    : QGroupBox(aParent)
{
  setCheckable(true);
}

PxGroupBox::PxGroupBox(const QString& aTitle, QWidget* aParent)
    : QGroupBox(aTitle, aParent)
{
  setCheckable(true);
}

void PxGroupBox::SetProperty(PxBoolProperty* aProperty, size_t aIndex)
{
  // clang-format off
  PT_ASSERT(( mBoolProperty == nullptr ) && ( mBitProperty == nullptr ));
  // clang-format on
  PT_ASSERT(aProperty);
  mBoolProperty = aProperty;
  mIndex = aIndex;
  Connect(aProperty);
}

void PxGroupBox::SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtByte aBit)
{
  // clang-format off
  PT_ASSERT(( mBoolProperty == nullptr ) && ( mBitProperty == nullptr ));
  // clang-format on
  PT_ASSERT(aProperty);
  PT_ASSERT(aBit < 32);
  mBitProperty = aProperty;
  mIndex = aIndex;
  mBit = aBit;
  Connect(aProperty);
}

void PxGroupBox::Connect(PxProperty* aProperty)
{
  if (mIndex >= aProperty->Count()) {
    setEnabled(false);
    return;
  }
  PropertyValueChanged();
  PropertyEditableChanged(mIndex);
  connect(this, &QGroupBox::toggled, this, &PxGroupBox::ThisToggled);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxGroupBox::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxGroupBox::PropertyEditableChanged);
}

void PxGroupBox::PropertyValueChanged()
{
  const bool lSet = mBoolProperty ? mBoolProperty->Value(mIndex) : (mBitProperty->Value(mIndex) >> mBit) & 1u;
  const QSignalBlocker lBlocker(this);
  setChecked(lSet);
}

void PxGroupBox::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  setEnabled(mBoolProperty ? mBoolProperty->Editable(mIndex) : (mBitProperty->EditableWord(mIndex) >> mBit) & 1u);
}

void PxGroupBox::ThisToggled(bool aChecked)
{
  if (mBoolProperty) {
    mBoolProperty->SetValue(mIndex, aChecked);
    return;
  }
  const PtU32 lValue = mBitProperty->Value(mIndex);
  const PtU32 lBit = 1u << mBit;
  mBitProperty->SetValue(mIndex, aChecked ? lValue | lBit : lValue & ~lBit);
}
