// Pictures of every bound widget in its states, for a person to look at:
// <build>/gallery/widgets_*.png (the table and the configuration form are pictured by their suites).

#include "PxBitEditor.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxCheckBox.h"
#include "PxComboBox.h"
#include "PxCommand.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxGroupBox.h"
#include "PxIntegerProperty.h"
#include "PxLabel.h"
#include "PxPushButton.h"
#include "PxRadioButton.h"
#include "PxRadioGroup.h"
#include "PxSpinBox.h"
#include "PxTestDevice.h"
#include "PxTestGallery.h"
#include "PxTextProperty.h"
#include "PxUnits.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QSpinBox>

#include <gtest/gtest.h>

namespace {
constexpr PtU32 SETTING = CAT_CONFIGURATION | F_EDITABLE | F_SAVE;

// One of each kind, bound to its own properties, laid out as a driver's form would.
struct Kinds
{
  Kinds()
  {
    for (PxProperty* p : std::initializer_list<PxProperty*>{&mInteger, &mFloat, &mEnum, &mBool, &mText, &mBits}) {
      p->SetCount(1);
    }
    mInteger.SetName(QStringLiteral("Pulse width (ns):"));
    mInteger.SetLimitsNotChecked(true);
    mInteger.SetLimits(1, 200);
    mInteger.SetValue(0, 40);
    mFloat.SetName(QStringLiteral("Mounting height:"));
    mFloat.SetUnitType(UT_DISTANCE);
    mFloat.SetLimits(0.0f, 20.0f);
    mFloat.SetValue(0, 2.5f);
    mEnum.SetName(QStringLiteral("Mode:"));
    for (PtU32 v : {0u, 1u, 2u}) {
      mEnum.AddEnumValue(
          v, QStringList{QStringLiteral("Standard"), QStringLiteral("Fast"), QStringLiteral("Precise")}[int(v)]);
    }
    mBool.SetName(QStringLiteral("Heater on"));
    mText.SetName(QStringLiteral("Location:"));
    mText.SetTextValue(0, QStringLiteral("Gate 3"));
    mBits.SetName(QStringLiteral("Outputs"));
    mBits.SetValue(0, 0x25);
    for (PxProperty* p : std::initializer_list<PxProperty*>{&mInteger, &mFloat, &mEnum, &mBool, &mText, &mBits}) {
      p->PostRead();
    }

    auto* lGrid = new QGridLayout(&mForm);
    mSpinBox = new PxSpinBox;
    mSpinBox->SetProperty(&mInteger, 0);
    mSpinBox->SetLayout(*lGrid, 0, 1, 0);
    mFloat.CreateWidget(*lGrid, false, nullptr);
    auto* lCombo = new PxComboBox;
    lCombo->SetProperty(&mEnum, 0);
    lCombo->SetLayout(*lGrid, 2, 1, 0);
    auto* lCheck = new PxCheckBox(mBool.Name());
    lCheck->SetProperty(&mBool, 0, false);
    lGrid->addWidget(lCheck, 3, 1);
    mText.CreateWidget(*lGrid, false, nullptr);
    auto* lRadio = new PxRadioGroup(true);
    lRadio->SetProperty(&mEnum, 0);
    lGrid->addWidget(lRadio, 5, 0, 1, 3);
    QMap<int, QString> lNames{{0, QStringLiteral("Alarm")}, {1, QStringLiteral("Warn")}};
    mBits.CreateWidget(*lGrid, true, &lNames);

    // The same values once more through the other kinds: a read-only label, a switched group, one
    // bit with its indexer, two choices of a two-bit field, and a command.
    mFloat.SetFormat(QStringLiteral("%n %v %u"));
    auto* lLabel = new PxLabel;
    lLabel->SetProperty(&mFloat);
    lGrid->addWidget(lLabel, 7, 0, 1, 3);
    auto* lGroup = new PxGroupBox(QStringLiteral("Heater"));
    lGroup->SetProperty(&mBool, 0);
    auto* lGroupLayout = new QHBoxLayout(lGroup);
    auto* lBitEditor = new PxBitEditor;
    lBitEditor->SetProperty(&mBits);
    auto* lBitIndexer = new QSpinBox;
    lBitIndexer->setRange(1, 8);
    lBitEditor->SetIndexer(*lBitIndexer);
    lBitIndexer->setValue(3);
    lGroupLayout->addWidget(lBitEditor);
    lGroupLayout->addWidget(lBitIndexer);
    for (PtU32 lValue : {0x10u, 0x20u}) {
      auto* lRadio = new PxRadioButton(lValue == 0x10u ? QStringLiteral("Pulse") : QStringLiteral("Level"));
      lRadio->SetProperty(&mBits, 0, 0x30, lValue);
      lGroupLayout->addWidget(lRadio);
    }
    lGrid->addWidget(lGroup, 8, 0, 1, 3);
    mReset.SetName(QStringLiteral("Reset outputs"));
    mDevice.AddCommand(&mReset);
    auto* lButton = new PxPushButton;
    lButton->SetCommand(&mDevice, mReset.Id());
    lGrid->addWidget(lButton, 9, 1);
    mForm.resize(mForm.sizeHint().expandedTo(QSize(420, 0)));
  }

  PxIntegerProperty mInteger{SETTING, 1, 1, 2};
  PxFloatProperty mFloat{SETTING, 2, 2, 4, 1000.0f, 3};
  PxEnumProperty mEnum{SETTING, 3, 3, 4};
  PxBoolProperty mBool{SETTING, 4, 4};
  PxTextProperty mText{SETTING, PxTextProperty::TYPE_ASCII, 5, 5, 16};
  PxBitFieldProperty mBits{SETTING, 6, 6, 1};
  PxTestDevice mDevice;
  PxCommand mReset{90, 0};
  QWidget mForm;
  PxSpinBox* mSpinBox = nullptr;
};
} // namespace

TEST(WidgetsGallery, EveryKindInItsStates)
{
  PxUnits::Initialize();
  PxUnits::SetUnit(UT_DISTANCE, 1);
  struct State
  {
    const char* mName;
    std::function<void(Kinds&)> mSet;
  } const lStates[] = {
      {"widgets_enabled", [](Kinds&) {}},
      {"widgets_disabled",
       [](Kinds& k) {
         for (PxProperty* p :
              std::initializer_list<PxProperty*>{&k.mInteger, &k.mFloat, &k.mEnum, &k.mBool, &k.mText, &k.mBits}) {
           p->SetEditable(false);
         }
         k.mReset.SetEnabled(false);
       }},
      {"widgets_disabler_checked", [](Kinds& k) { k.mSpinBox->Disabler()->click(); }},
      {"widgets_modified_in_feet",
       [](Kinds& k) {
         PxUnits::SetUnit(UT_DISTANCE, 2);
         k.mInteger.SetValue(0, 120);
         k.mFloat.SetValue(0, 3.048f);
         k.mEnum.SetValue(0, 2);
         k.mBool.SetValue(0, true);
         k.mText.SetTextValue(0, QStringLiteral("Gate 3 north"));
         k.mBits.SetValue(0, 0x5A);
       }},
  };
  for (const State& s : lStates) {
    Kinds lKinds;
    s.mSet(lKinds);
    EXPECT_TRUE(PxTest::SaveToGallery(&lKinds.mForm, QString::fromLatin1(s.mName)));
    PxUnits::SetUnit(UT_DISTANCE, 1);
  }
}
