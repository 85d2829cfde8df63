#include "PxCheckBox.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxWidgetSupport_p.h"

#include <QSignalBlocker>

PxCheckBox::PxCheckBox(QWidget* aParent)
    : QCheckBox(aParent)
{
  setEnabled(false);
}

PxCheckBox::PxCheckBox(const QString& aText, QWidget* aParent)
    : QCheckBox(aText, aParent)
{
  setEnabled(false);
}

PxProperty* PxCheckBox::Property() const
{
  return mBoolProperty ? static_cast<PxProperty*>(mBoolProperty) : mBitProperty;
}

void PxCheckBox::SetProperty(PxBoolProperty* aProperty, size_t aIndex, bool aInverted)
{
  // clang-format off
  PT_ASSERT(( mBoolProperty == nullptr ) && ( mBitProperty == nullptr ));
  // clang-format on
  PT_ASSERT(aProperty);
  mBoolProperty = aProperty;
  mIndex = aIndex;
  mInverted = aInverted;
  Connect(aProperty);
}

void PxCheckBox::SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtByte aBit)
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

void PxCheckBox::Connect(PxProperty* aProperty)
{
  if (mIndex >= aProperty->Count()) {
    return;
  }
  PropertyValueChanged();
  PropertyEditableChanged(mIndex);
  connect(this, &QCheckBox::stateChanged, this, &PxCheckBox::ThisStateChanged);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxCheckBox::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxCheckBox::PropertyEditableChanged);
}

bool PxCheckBox::Shown() const
{
  const bool lSet = mBoolProperty ? mBoolProperty->Value(mIndex) : (mBitProperty->Value(mIndex) >> mBit) & 1u;
  return lSet != mInverted;
}

void PxCheckBox::PropertyValueChanged()
{
  const QSignalBlocker lBlocker(this);
  setChecked(Shown());
}

void PxCheckBox::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  // A bit is editable when its own bit of the editable word is set.
  setEnabled(mBoolProperty ? mBoolProperty->Editable(mIndex) : (mBitProperty->EditableWord(mIndex) >> mBit) & 1u);
}

void PxCheckBox::ThisStateChanged(int aState)
{
  const bool lSet = (aState != Qt::Unchecked) != mInverted;
  try {
    if (mBoolProperty) {
      mBoolProperty->SetValue(mIndex, lSet);
    } else {
      const PtU32 lValue = mBitProperty->Value(mIndex);
      const PtU32 lBit = 1u << mBit;
      mBitProperty->SetValue(mIndex, lSet ? lValue | lBit : lValue & ~lBit);
    }
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged();
  }
}
