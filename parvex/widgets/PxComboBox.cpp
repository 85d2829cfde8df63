#include "PxComboBox.h"

#include "PtAssert.h"
#include "PxBitFieldProperty.h"
#include "PxEnumProperty.h"
#include "PxWidgetSupport_p.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

PxComboBox::PxComboBox(QWidget* aParent)
    : QComboBox(aParent)
{
  setEnabled(false);
}

bool PxComboBox::Bound() const
{
  return mProperty && mIndex < mProperty->Count();
}

void PxComboBox::SetProperty(PxEnumProperty* aProperty, size_t aIndex, PxBitFieldProperty* aMask)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  mProperty = aProperty;
  mMask = aMask;
  mIndex = aIndex;
  FillItems();
  PropertyEditableChanged(aIndex);
  connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &PxComboBox::ThisCurrentIndexChanged);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxComboBox::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxComboBox::PropertyEditableChanged);
  if (aMask) {
    connect(aMask, &PxProperty::ValueChanged, this, &PxComboBox::MaskValueChanged);
  }
}

void PxComboBox::UnSetProperty()
{
  disconnect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &PxComboBox::ThisCurrentIndexChanged);
  if (mProperty) {
    disconnect(mProperty, nullptr, this, nullptr);
  }
  if (mMask) {
    disconnect(mMask, nullptr, this, nullptr);
  }
  mProperty = nullptr;
  mMask = nullptr;
  mIndex = 0;
  const QSignalBlocker lBlocker(this);
  clear();
  setEnabled(false);
}

void PxComboBox::FillItems()
{
  const QSignalBlocker lBlocker(this);
  clear();
  if (!mProperty) {
    return;
  }
  // Without a mask every entry is offered.
  const PtU32 lMask = mMask && mIndex < mMask->Count() ? mMask->Value(mIndex) : 0xFFFFFFFFu;
  const auto& lEntries = mProperty->EnumValues();
  for (size_t k = 0; k < lEntries.size(); ++k) {
    if (k < 32 && (lMask & (1u << k)) != 0) {
      // The entry's position travels with the item, since a mask leaves gaps in the list.
      addItem(lEntries[k].mText, static_cast<int>(k));
    }
  }
  PropertyValueChanged();
}

void PxComboBox::SetLayout(QGridLayout& aLayout, int aRow, int aColumn, int aIndent)
{
  PT_ASSERT(mProperty);
  if (!mProperty->Name().isEmpty()) {
    mLabel = new QLabel(mProperty->Name());
    mLabel->setIndent(aIndent);
    mLabel->setEnabled(isEnabled());
    aLayout.addWidget(mLabel, aRow, aColumn - 1);
  }
  aLayout.addWidget(this, aRow, aColumn);
}

void PxComboBox::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxComboBox::IndexerValueChanged);
}

void PxComboBox::setVisible(bool aVisible)
{
  QComboBox::setVisible(aVisible);
  if (mLabel && (!aVisible || mLabel->parentWidget())) {
    mLabel->setVisible(aVisible);
  }
}

void PxComboBox::PropertyValueChanged()
{
  if (!Bound()) {
    return;
  }
  const QSignalBlocker lBlocker(this);
  // A value that is not offered (not in the list, or masked out) shows no choice.
  setCurrentIndex(findData(static_cast<int>(mProperty->ValueIndex(mIndex))));
}

void PxComboBox::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  const bool lEditable = Bound() && mProperty->Editable(mIndex);
  setEnabled(lEditable);
  if (mLabel) {
    mLabel->setEnabled(lEditable);
  }
}

void PxComboBox::MaskValueChanged()
{
  FillItems();
}

void PxComboBox::ThisCurrentIndexChanged(int aItem)
{
  if (!Bound() || aItem < 0) {
    return;
  }
  try {
    mProperty->SetValueIndex(mIndex, static_cast<PtU32>(itemData(aItem).toInt()));
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged();
  }
}

void PxComboBox::IndexerValueChanged(int aValue)
{
  mIndex = static_cast<size_t>(aValue - 1);
  FillItems();
  PropertyEditableChanged(mIndex);
}
