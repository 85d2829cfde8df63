#include "PxSimConfigForm.h"

#include "PxBoolProperty.h"
#include "PxCheckBox.h"
#include "PxComboBox.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxSimSensor.h"
#include "PxSpinBox.h"
#include "PxUnits.h"

#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

namespace {
// Grid columns of a property's row: name, editor, its extra (indexer, disabler), the mark.
constexpr int COLUMN_EDITOR = 1;
constexpr int COLUMN_MARKER = 3;
constexpr PtU32 DECIMALS_NOT_FIXED = 0xFFFFFFFFu;

// A property that Apply would send: editable, exchanged with the device, and not as last read.
bool Modified(const PxProperty& aProperty)
{
  return (aProperty.Flags() & PxProperty::F_EDITABLE) && aProperty.DeviceId() != 0 &&
         aProperty.Values() != aProperty.Backup();
}

QString FloatText(const PxFloatProperty& aProperty, float aValue)
{
  const float lShown = PxUnits::To(aProperty.UnitType(), aValue);
  const PtU32 lDecimals = aProperty.Decimals();
  return lDecimals == DECIMALS_NOT_FIXED ? QString::number(lShown, 'g', 6)
                                         : QString::number(lShown, 'f', static_cast<int>(lDecimals));
}
} // namespace

PxSimConfigForm::PxSimConfigForm(PxSimSensor& aSensor, QWidget* aParent)
    : PxDockWidget(aParent)
{
  setObjectName(QStringLiteral("PxSimConfigForm"));
  setWindowTitle(tr("Configuration"));
  auto* lContents = new QWidget;
  auto* lLayout = new QVBoxLayout(lContents);
  QList<QGridLayout*> lGrids;
  for (const PxSimSensor::ConfigurationGroup& lGroup : aSensor.ConfigurationGroups()) {
    auto* lBox = new QGroupBox(lGroup.mTitle, lContents);
    auto* lGrid = new QGridLayout(lBox);
    lGrid->setColumnStretch(COLUMN_EDITOR, 1);
    for (PxProperty* lProperty : lGroup.mProperties) {
      AddProperty(*lGrid, lProperty);
    }
    lLayout->addWidget(lBox);
    lGrids.append(lGrid);
  }
  lLayout->addStretch(1);
  // One column of names and one of fields through every group, as if they were one table; the
  // mark's room is kept free so that marking a value does not shift the form.
  int lNameWidth = 0;
  int lMarkerWidth = 0;
  for (const auto& lEntry : mRows) {
    if (lEntry.second.mName) {
      QFont lBold = lEntry.second.mName->font();
      lBold.setBold(true);
      lNameWidth = std::max(lNameWidth, QFontMetrics(lBold).horizontalAdvance(lEntry.second.mName->text()));
    }
    QFont lMarkerFont = lEntry.second.mMarker->font();
    lMarkerFont.setBold(true);
    lMarkerWidth = QFontMetrics(lMarkerFont).horizontalAdvance(tr("Modified"));
  }
  for (QGridLayout* lGrid : lGrids) {
    lGrid->setColumnMinimumWidth(0, lNameWidth);
    lGrid->setColumnMinimumWidth(COLUMN_MARKER, lMarkerWidth);
  }
  auto* lScroll = new QScrollArea(this);
  lScroll->setWidgetResizable(true);
  lScroll->setWidget(lContents);
  setWidget(lScroll);
  if (PxUnits* lUnits = PxUnits::Singleton()) {
    connect(lUnits, &PxUnits::Changed, this, &PxSimConfigForm::UnitsChanged);
  }
}

unsigned int PxSimConfigForm::PermanentId() const
{
  return PERMANENT_ID;
}

void PxSimConfigForm::AddProperty(QGridLayout& aGrid, PxProperty* aProperty)
{
  const int lFirstRow = aGrid.rowCount();
  // Float, text and bit-field properties know their editor; the other kinds are given theirs here.
  if (auto* lInteger = qobject_cast<PxIntegerProperty*>(aProperty)) {
    auto* lSpinBox = new PxSpinBox;
    lSpinBox->SetProperty(lInteger, 0);
    lSpinBox->SetLayout(aGrid, lFirstRow, COLUMN_EDITOR, 0);
  } else if (auto* lEnum = qobject_cast<PxEnumProperty*>(aProperty)) {
    auto* lComboBox = new PxComboBox;
    lComboBox->SetProperty(lEnum, 0);
    lComboBox->SetLayout(aGrid, lFirstRow, COLUMN_EDITOR, 0);
  } else if (auto* lBool = qobject_cast<PxBoolProperty*>(aProperty)) {
    auto* lCheckBox = new PxCheckBox(aProperty->Name());
    lCheckBox->SetProperty(lBool, 0, false);
    aGrid.addWidget(lCheckBox, lFirstRow, COLUMN_EDITOR);
  } else {
    aProperty->CreateWidget(aGrid, false, nullptr);
  }
  const int lEndRow = aGrid.rowCount();
  if (lEndRow == lFirstRow) {
    // Nothing read yet: the value has no widget.
    return;
  }

  Row& lRow = mRows[aProperty];
  for (int r = lFirstRow; r < lEndRow; ++r) {
    for (int c = 0; c < COLUMN_MARKER; ++c) {
      QLayoutItem* lItem = aGrid.itemAtPosition(r, c);
      QWidget* lWidget = lItem ? lItem->widget() : nullptr;
      if (lWidget && !lRow.mWidgets.contains(lWidget)) {
        lRow.mWidgets.append(lWidget);
        if (c == 0 && !lRow.mName) {
          lRow.mName = qobject_cast<QLabel*>(lWidget);
        }
      }
    }
  }
  lRow.mMarker = new QLabel;
  lRow.mMarker->setStyleSheet(QStringLiteral("QLabel { color: #c05000; font-weight: bold; }"));
  aGrid.addWidget(lRow.mMarker, lFirstRow, COLUMN_MARKER, Qt::AlignTop);
  lRow.mWidgets.append(lRow.mMarker);

  UpdateMarker(aProperty);
  UpdateToolTip(aProperty);
  connect(aProperty, &PxProperty::ValueChanged, this, [this, aProperty] { UpdateMarker(aProperty); });
  if (auto* lFloat = qobject_cast<PxFloatProperty*>(aProperty)) {
    connect(lFloat, &PxFloatProperty::LimitsChanged, this, [this, aProperty] { UpdateToolTip(aProperty); });
  } else if (auto* lInteger = qobject_cast<PxIntegerProperty*>(aProperty)) {
    connect(lInteger, &PxIntegerProperty::LimitsChanged, this, [this, aProperty] { UpdateToolTip(aProperty); });
  }
}

void PxSimConfigForm::UpdateMarker(const PxProperty* aProperty)
{
  const Row& lRow = mRows.at(aProperty);
  const bool lModified = Modified(*aProperty);
  lRow.mMarker->setText(lModified ? tr("Modified") : QString());
  if (lRow.mName) {
    QFont lFont = lRow.mName->font();
    lFont.setBold(lModified);
    lRow.mName->setFont(lFont);
  }
}

void PxSimConfigForm::UpdateToolTip(const PxProperty* aProperty)
{
  QStringList lLines;
  lLines
      << tr("Identifier: 0x%1 (device id %2)").arg(aProperty->Id(), 8, 16, QLatin1Char('0')).arg(aProperty->DeviceId());
  const QString lUnit = PxUnits::ShortName(aProperty->UnitType());
  lLines << tr("Unit: %1").arg(lUnit.isEmpty() ? tr("none") : lUnit);
  if (auto* lFloat = qobject_cast<const PxFloatProperty*>(aProperty)) {
    lLines << tr("Limits: %1 to %2 %3")
                  .arg(FloatText(*lFloat, lFloat->MinValue()), FloatText(*lFloat, lFloat->MaxValue()), lUnit)
                  .trimmed();
  } else if (auto* lInteger = qobject_cast<const PxIntegerProperty*>(aProperty)) {
    lLines << tr("Limits: %1 to %2").arg(lInteger->MinValue()).arg(lInteger->MaxValue());
  } else if (auto* lEnum = qobject_cast<const PxEnumProperty*>(aProperty)) {
    QStringList lChoices;
    for (const PxEnumProperty::EnumValue& lEntry : lEnum->EnumValues()) {
      lChoices << lEntry.mText;
    }
    lLines << tr("Limits: one of %1").arg(lChoices.join(QStringLiteral(", ")));
  } else if (qobject_cast<const PxBoolProperty*>(aProperty)) {
    lLines << tr("Limits: on or off");
  } else if (auto* lText = qobject_cast<const PxTextProperty*>(aProperty)) {
    const PtU32 lLength = lText->Type() == PxTextProperty::TYPE_UTF16 ? lText->MaxLength() / 2 : lText->MaxLength();
    lLines << tr("Limits: up to %1 characters").arg(lLength);
  } else {
    lLines << tr("Limits: any combination of %1 bits").arg(aProperty->UnitSize() * 8);
  }
  if (aProperty->Count() > 1) {
    lLines << tr("%1 values, chosen with the number beside the field").arg(aProperty->Count());
  }
  const QString lToolTip = lLines.join(QLatin1Char('\n'));
  for (QWidget* lWidget : mRows.at(aProperty).mWidgets) {
    lWidget->setToolTip(lToolTip);
  }
}

void PxSimConfigForm::UnitsChanged()
{
  for (const auto& lEntry : mRows) {
    UpdateToolTip(lEntry.first);
  }
}

bool PxSimConfigForm::ShownModified(const PxProperty* aProperty) const
{
  const auto lRow = mRows.find(aProperty);
  return lRow != mRows.end() && !lRow->second.mMarker->text().isEmpty();
}

QList<QWidget*> PxSimConfigForm::PropertyWidgets(const PxProperty* aProperty) const
{
  const auto lRow = mRows.find(aProperty);
  return lRow == mRows.end() ? QList<QWidget*>() : lRow->second.mWidgets;
}
