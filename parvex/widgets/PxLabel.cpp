#include "PxLabel.h"

#include "PtAssert.h"
#include "PxProperty.h"
#include "PxResult.h"
#include "PxResultProvider.h"
#include "PxUnits.h"

#include <QPalette>

PxLabel::PxLabel(QWidget* aParent)
    : QLabel(aParent)
{
}

void PxLabel::SetProperty(PxProperty* aProperty)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  mProperty = aProperty;
  PropertyValueChanged();
  connect(aProperty, &PxProperty::ValueChanged, this, &PxLabel::PropertyValueChanged);
  // A value with a unit is shown in the unit the user chose.
  if (PxUnits* lUnits = PxUnits::Singleton(); lUnits && aProperty->UnitType() != UT_NONE) {
    connect(lUnits, &PxUnits::Changed, this, &PxLabel::PropertyValueChanged);
  }
}

void PxLabel::SetResult(PxResult* aResult, PxResultProvider* aProvider)
{
  PT_ASSERT(mResult == nullptr);
  PT_ASSERT(aResult);
  PT_ASSERT(aProvider);
  mResult = aResult;
  connect(aProvider, &PxResultProvider::NewData, this, &PxLabel::NewData);
}

void PxLabel::PropertyValueChanged()
{
  // Before the first read there is nothing to show.
  setText(mProperty->Count() > 0 ? mProperty->FormattedValue(0) : QString());
}

void PxLabel::NewData()
{
  if (mResult->Count() == 0) {
    return;
  }
  setText(mResult->FormattedValue(0));
  if (!mResult->ColorConditions().empty()) {
    QPalette lPalette = palette();
    lPalette.setColor(QPalette::WindowText, QColor(mResult->FormattedColorStyle(0)));
    setPalette(lPalette);
  }
}
