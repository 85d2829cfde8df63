#include "PxDoubleSpinBox.h"

#include "PtAssert.h"
#include "PxFloatProperty.h"
#include "PxUnits.h"
#include "PxWidgetSupport_p.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

#include <cmath>

namespace {
// Decimals that are not fixed still need a finite number of digits in an editor.
constexpr int FREE_DECIMALS = 6;
} // namespace

PxDoubleSpinBox::PxDoubleSpinBox(QWidget* aParent)
    : QDoubleSpinBox(aParent)
{
  setEnabled(false);
}

bool PxDoubleSpinBox::Bound() const
{
  return mProperty && mIndex < mProperty->Count();
}

void PxDoubleSpinBox::SetProperty(PxFloatProperty* aProperty, size_t aIndex)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  PT_ASSERT(aIndex < aProperty->Count());
  mProperty = aProperty;
  mIndex = aIndex;
  const PtU32 lDecimals = aProperty->Decimals();
  {
    const QSignalBlocker lBlocker(this);
    setDecimals(lDecimals == 0xFFFFFFFFu ? FREE_DECIMALS : static_cast<int>(lDecimals));
  }
  PropertyLimitsChanged();
  PropertyEditableChanged(aIndex);
  connect(this, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &PxDoubleSpinBox::ThisValueChanged);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxDoubleSpinBox::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxDoubleSpinBox::PropertyEditableChanged);
  connect(aProperty, &PxFloatProperty::LimitsChanged, this, &PxDoubleSpinBox::PropertyLimitsChanged);
  if (PxUnits* lUnits = PxUnits::Singleton()) {
    connect(lUnits, &PxUnits::Changed, this, &PxDoubleSpinBox::UnitsChanged);
  }
}

void PxDoubleSpinBox::SetLayout(QGridLayout& aLayout, int aRow, int aColumn)
{
  PT_ASSERT(mProperty);
  if (!mProperty->Name().isEmpty()) {
    mLabel = new QLabel(mProperty->Name());
    aLayout.addWidget(mLabel, aRow, aColumn - 1);
  }
  aLayout.addWidget(this, aRow, aColumn);
  PropertyEditableChanged(mIndex);
}

void PxDoubleSpinBox::SetIndexer(QSpinBox& aIndexer)
{
  connect(&aIndexer, QOverload<int>::of(&QSpinBox::valueChanged), this, &PxDoubleSpinBox::IndexerValueChanged);
}

void PxDoubleSpinBox::SetIndex(int aIndex)
{
  mIndex = static_cast<size_t>(aIndex);
  PropertyValueChanged();
  PropertyEditableChanged(mIndex);
}

void PxDoubleSpinBox::SetHideOnDisabled(bool aHide)
{
  mHideOnDisabled = aHide;
  PropertyEditableChanged(mIndex);
}

void PxDoubleSpinBox::setVisible(bool aVisible)
{
  QDoubleSpinBox::setVisible(aVisible);
  if (mLabel && (!aVisible || mLabel->parentWidget())) {
    mLabel->setVisible(aVisible);
  }
}

void PxDoubleSpinBox::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  const bool lEditable = Bound() && mProperty->Editable(mIndex);
  setEnabled(lEditable);
  if (mLabel) {
    mLabel->setEnabled(lEditable);
  }
  // Only a placed widget is hidden or shown: showing one without a parent would open a window.
  if (mHideOnDisabled && parentWidget()) {
    setVisible(lEditable);
  }
}

void PxDoubleSpinBox::PropertyValueChanged()
{
  if (!Bound()) {
    return;
  }
  // Showing the property is not an edit: the shown value is rounded to the decimals and must not
  // come back as a new value.
  const QSignalBlocker lBlocker(this);
  setValue(PxUnits::To(mProperty->UnitType(), static_cast<double>(mProperty->Value(mIndex))));
}

void PxDoubleSpinBox::PropertyLimitsChanged()
{
  if (!mProperty) {
    return;
  }
  const int lType = mProperty->UnitType();
  {
    const QSignalBlocker lBlocker(this);
    // Every display unit grows with the internal one, so the converted limits keep their order.
    setRange(PxUnits::To(lType, static_cast<double>(mProperty->MinValue())),
             PxUnits::To(lType, static_cast<double>(mProperty->MaxValue())));
    const QString lUnit = PxUnits::ShortName(lType);
    setSuffix(lUnit.isEmpty() ? QString() : QStringLiteral(" ") + lUnit);
  }
  PropertyValueChanged();
}

void PxDoubleSpinBox::UnitsChanged(int aUnitType)
{
  if (mProperty && aUnitType == mProperty->UnitType()) {
    PropertyLimitsChanged();
  }
}

void PxDoubleSpinBox::ThisValueChanged()
{
  if (!Bound() || !mProperty->Editable(mIndex)) {
    return;
  }
  float lValue = PxUnits::From(mProperty->UnitType(), static_cast<float>(value()));
  // A limit converted to the display unit and rounded to the decimals shown may lie just outside
  // the property's range once converted back; that is the limit the user meant. More than that is
  // a range the spin box should never have offered.
  const float lRounder = std::pow(0.1f, static_cast<float>(decimals()));
  if (lValue < mProperty->MinValue()) {
    PT_ASSERT(mProperty->MinValue() - lValue < lRounder);
    lValue = mProperty->MinValue();
  } else if (lValue > mProperty->MaxValue()) {
    PT_ASSERT(lValue - mProperty->MaxValue() < lRounder);
    lValue = mProperty->MaxValue();
  }
  try {
    mProperty->SetValue(mIndex, lValue);
  } catch (const std::exception& e) {
    PxWidgetSupport::ReportRefusedEdit(this, e);
    PropertyValueChanged();
  }
}

void PxDoubleSpinBox::IndexerValueChanged(int aValue)
{
  SetIndex(aValue - 1);
}
