#include "PxRadioGroup.h"

#include "PtAssert.h"
#include "PtException.h"
#include "PxEnumProperty.h"
#include "PxWidgetSupport_p.h"

#include <QGridLayout>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <limits>

PxRadioGroup::PxRadioGroup(bool aHorizontal, QWidget* aParent)
    : QGroupBox(aParent)
    , mLayout(new QGridLayout(this))
    , mHorizontal(aHorizontal)
{
}

void PxRadioGroup::SetProperty(PxEnumProperty* aProperty, size_t aIndex)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  PT_ASSERT(aIndex < aProperty->Count());
  const auto& lEntries = aProperty->EnumValues();
  if (lEntries.size() > static_cast<size_t>(std::numeric_limits<int>::max())) {
    PtInvalidArgument(QStringLiteral("aProperty"), QString::number(lEntries.size()), 7);
  }
  mProperty = aProperty;
  mIndex = aIndex;
  setTitle(aProperty->Name());
  for (int k = 0; k < static_cast<int>(lEntries.size()); ++k) {
    auto* lButton = new QRadioButton(lEntries[static_cast<size_t>(k)].mText, this);
    mLayout->addWidget(lButton, mHorizontal ? 0 : k, mHorizontal ? k : 0);
    mButtons.append(lButton);
  }
  PropertyValueChanged();
  PropertyEditableChanged(aIndex);
  for (QRadioButton* lButton : qAsConst(mButtons)) {
    connect(lButton, &QRadioButton::toggled, this, &PxRadioGroup::RadioButtonToggled);
  }
  connect(aProperty, &PxProperty::ValueChanged, this, &PxRadioGroup::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxRadioGroup::PropertyEditableChanged);
}

void PxRadioGroup::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxRadioGroup::IndexerValueChanged);
}

void PxRadioGroup::PropertyValueChanged()
{
  if (mIndex >= mProperty->Count()) {
    return;
  }
  const PtU32 lChecked = mProperty->ValueIndex(mIndex);
  for (int k = 0; k < mButtons.size(); ++k) {
    QRadioButton* lButton = mButtons[k];
    const bool lOn = static_cast<PtU32>(k) == lChecked;
    if (lButton->isChecked() == lOn) {
      continue;
    }
    // Showing the value is not a choice of the user; a value not in the list checks nothing, which
    // exclusive buttons would not allow.
    const QSignalBlocker lBlocker(lButton);
    lButton->setAutoExclusive(false);
    lButton->setChecked(lOn);
    lButton->setAutoExclusive(true);
  }
}

void PxRadioGroup::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  const bool lEditable = mIndex < mProperty->Count() && mProperty->Editable(mIndex);
  for (QRadioButton* lButton : qAsConst(mButtons)) {
    lButton->setEnabled(lEditable);
  }
}

void PxRadioGroup::RadioButtonToggled()
{
  for (int k = 0; k < mButtons.size(); ++k) {
    if (mButtons[k]->isChecked()) {
      try {
        mProperty->SetValueIndex(mIndex, static_cast<PtU32>(k));
      } catch (const std::exception& e) {
        PxWidgetSupport::ReportRefusedEdit(this, e);
        PropertyValueChanged();
      }
      return;
    }
  }
}

void PxRadioGroup::IndexerValueChanged(int aValue)
{
  mIndex = static_cast<size_t>(aValue - 1);
  PropertyValueChanged();
  PropertyEditableChanged(mIndex);
}
