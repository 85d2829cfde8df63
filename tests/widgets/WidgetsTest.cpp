// The property-bound widgets against real properties: what the user types reaches the property
// once, what the property holds is shown at once, and nothing is written back that was not typed.

#include "PtModalScript.h"
#include "PxBitFieldEditor.h"
#include "PxBitFieldProperty.h"
#include "PxCheckBox.h"
#include "PxComboBox.h"
#include "PxCommand.h"
#include "PxDoubleSpinBox.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxLineEdit.h"
#include "PxPushButton.h"
#include "PxRadioButton.h"
#include "PxRadioGroup.h"
#include "PxSpinBox.h"
#include "PxTableWidget.h"
#include "PxTest.h"
#include "PxTestDevice.h"
#include "PxTestGallery.h"
#include "PxTextProperty.h"
#include "PxUnits.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTest>

#include <functional>

namespace {
constexpr PtU32 SETTING = CAT_CONFIGURATION | F_EDITABLE | F_SAVE;

// A new widget of kind W bound by SetProperty(aArguments...).
template <class W, class... A>
QWidget* Bound(A... aArguments)
{
  auto* lWidget = new W;
  lWidget->SetProperty(aArguments...);
  return lWidget;
}

std::unique_ptr<PxEnumProperty> Choices()
{
  auto lEnum = std::make_unique<PxEnumProperty>(SETTING, 1u, PtU16(1), 4u);
  lEnum->SetCount(2);
  for (PtU32 v : {10u, 20u, 30u}) {
    lEnum->AddEnumValue(v, QString::number(v));
  }
  lEnum->SetValue(0, 10);
  lEnum->SetValue(1, 10);
  return lEnum;
}

class Widgets : public ::testing::Test
{
protected:
  void SetUp() override
  {
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
  }
  void TearDown() override { PxUnits::SetUnit(UT_DISTANCE, 1); }
};
} // namespace

// Each kind edited from the widget and from the property, with a second widget on the same value:
// one user edit is one ValueChanged, and both widgets show it.
TEST_F(Widgets, TwoWidgetsOnOneValueStayInStepWithoutWritingBack)
{
  PxIntegerProperty lInteger(SETTING, 1, 1, 2);
  lInteger.SetLimits(0, 100);
  PxFloatProperty lFloat(SETTING, 1, 1, 4, 1000.0f, 3);
  lFloat.SetUnitType(UT_DISTANCE);
  lFloat.SetLimits(-5.0f, 50.0f);
  PxUnits::SetUnit(UT_DISTANCE, 2);
  const auto lEnum = Choices();
  PxBitFieldProperty lBits(SETTING, 1, 1, 4);
  PxTextProperty lText(SETTING, PxTextProperty::TYPE_ASCII, 1, 1, 16);
  for (PxProperty* lProperty : std::initializer_list<PxProperty*>{&lInteger, &lFloat, &lBits, &lText}) {
    lProperty->SetCount(1);
  }
  lBits.SetValue(0, 0x3);
  lText.SetTextValue(0, QStringLiteral("A"));
  struct Case
  {
    const char* mWhat;
    PxProperty* mProperty;
    std::function<QWidget*()> mBind; // one widget on the property
    std::function<void(QWidget*)> mUserEdit;
    std::function<void()> mModelEdit;
    std::function<QString(QWidget*)> mShown;
    QString mAfterUser;
    QString mAfterModel;
  };
  const Case lCases[] = {
      {"spin box", &lInteger, [&] { return Bound<PxSpinBox>(&lInteger, size_t(0)); },
       [](QWidget* w) { static_cast<PxSpinBox*>(w)->setValue(42); }, [&] { lInteger.SetValue(0, 7); },
       [](QWidget* w) { return QString::number(static_cast<PxSpinBox*>(w)->value()); }, "42", "7"},
      {"double spin box in feet", &lFloat, [&] { return Bound<PxDoubleSpinBox>(&lFloat, size_t(0)); },
       [](QWidget* w) { static_cast<PxDoubleSpinBox*>(w)->setValue(10.0); }, [&] { lFloat.SetValue(0, 1.0f); },
       [](QWidget* w) { return static_cast<PxDoubleSpinBox*>(w)->text(); }, "10.000 ft", "3.281 ft"},
      {"combo box", lEnum.get(), [&] { return Bound<PxComboBox>(lEnum.get(), size_t(1)); },
       [](QWidget* w) { static_cast<PxComboBox*>(w)->setCurrentIndex(2); }, [&] { lEnum->SetValue(1, 20); },
       [](QWidget* w) { return static_cast<PxComboBox*>(w)->currentText(); }, "30", "20"},
      {"check box on a bit", &lBits, [&] { return Bound<PxCheckBox>(&lBits, size_t(0), PtByte(4)); },
       [](QWidget* w) { static_cast<PxCheckBox*>(w)->click(); }, [&] { lBits.SetValue(0, 0x1); },
       [](QWidget* w) { return QString::number(static_cast<PxCheckBox*>(w)->isChecked()); }, "1", "0"},
      {"line edit", &lText, [&] { return Bound<PxLineEdit>(&lText); },
       [](QWidget* w) { QTest::keyClicks(w, QStringLiteral("B")); },
       [&] { lText.SetTextValue(0, QStringLiteral("Dock 4")); },
       [](QWidget* w) { return static_cast<PxLineEdit*>(w)->text(); }, "AB", "Dock 4"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    std::unique_ptr<QWidget> lFirst(c.mBind()), lSecond(c.mBind());
    EXPECT_TRUE(lFirst->isEnabled());
    QSignalSpy lChanges(c.mProperty, &PxProperty::ValueChanged);
    lFirst->setFocus();
    c.mUserEdit(lFirst.get());
    EXPECT_EQ(lChanges.count(), 1) << "one edit, one change";
    EXPECT_EQ(c.mShown(lFirst.get()), c.mAfterUser);
    EXPECT_EQ(c.mShown(lSecond.get()), c.mAfterUser);
    c.mModelEdit();
    EXPECT_EQ(lChanges.count(), 2) << "showing a value writes nothing back";
    EXPECT_EQ(c.mShown(lFirst.get()), c.mAfterModel);
    EXPECT_EQ(c.mShown(lSecond.get()), c.mAfterModel);
    c.mProperty->SetEditable(false);
    EXPECT_FALSE(lFirst->isEnabled());
  }
}

TEST_F(Widgets, FloatValuesFollowTheUnitAndClampToTheShownLimits)
{
  PxFloatProperty lProperty(SETTING, 1, 1, 4, 1.0f, 3);
  lProperty.SetCount(1);
  lProperty.SetUnitType(UT_DISTANCE);
  lProperty.SetLimits(0.5f, 100.0f);
  lProperty.SetValue(0, 2.0f);
  PxDoubleSpinBox lBox;
  lBox.SetProperty(&lProperty, 0);
  EXPECT_EQ(lBox.text(), QStringLiteral("2.000 m"));

  PxUnits::SetUnit(UT_DISTANCE, 2);
  EXPECT_EQ(lBox.text(), QStringLiteral("6.562 ft")) << "a unit change shows at once";
  EXPECT_NEAR(lBox.maximum(), 328.084, 0.001);
  EXPECT_NEAR(lBox.minimum(), 1.640, 0.001);
  EXPECT_FLOAT_EQ(lProperty.Value(0), 2.0f) << "changing the unit is not an edit";

  lBox.setValue(10.0);
  EXPECT_NEAR(lProperty.Value(0), 3.048, 0.0005);
  // 1.640 ft is 0.49987 m: below the minimum by less than the last shown digit, so the minimum.
  lBox.setValue(lBox.minimum());
  EXPECT_FLOAT_EQ(lProperty.Value(0), 0.5f);
}

TEST_F(Widgets, DisablerSwitchesAnUncheckedValueOffAndOnAgainAtZero)
{
  PxIntegerProperty lProperty(SETTING, 1, 1, 2);
  lProperty.SetCount(2);
  lProperty.SetLimitsNotChecked(true);
  lProperty.SetLimits(5, 50);
  lProperty.SetValue(1, 4);
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  auto* lBox = new PxSpinBox;
  lBox->SetProperty(&lProperty, 1);
  lBox->SetLayout(*lGrid, 0, 1, 0);
  ASSERT_TRUE(lBox->Disabler());
  EXPECT_TRUE(lBox->Disabler()->isChecked()) << "minimum - 1 is off";
  EXPECT_FALSE(lBox->isEnabled());
  EXPECT_EQ(lBox->minimum(), 4);

  lBox->Disabler()->click();
  EXPECT_EQ(lProperty.Value(1), 0) << "switching on writes 0, not the minimum";
  lProperty.SetValue(1, 20);
  EXPECT_FALSE(lBox->Disabler()->isChecked());
  EXPECT_TRUE(lBox->isEnabled());
  lBox->Disabler()->click();
  EXPECT_EQ(lProperty.Value(1), 4);
  EXPECT_FALSE(lBox->isEnabled());

  PxSpinBox lBeyond;
  lBeyond.SetProperty(&lProperty, 2);
  EXPECT_FALSE(lBeyond.isEnabled());
  lProperty.SetValue(0, 9);
  EXPECT_EQ(lBeyond.value(), 0) << "an index beyond the count shows nothing";
  // An index box counts the values from 1, as the user reads them.
  QSpinBox lIndexer;
  lBeyond.SetIndexer(lIndexer);
  lIndexer.setValue(1);
  EXPECT_EQ(lBeyond.value(), 9);
}

TEST_F(Widgets, ChoicesFollowMasksAndBitsTheirPositions)
{
  auto lEnum = Choices();
  PxBitFieldProperty lMask(SETTING, 2, 2, 4);
  lMask.SetCount(2);
  lMask.SetValue(1, 0x5);
  PxComboBox lCombo;
  lCombo.SetProperty(lEnum.get(), 1, &lMask);
  ASSERT_EQ(lCombo.count(), 2);
  EXPECT_EQ(lCombo.itemText(1), QStringLiteral("30"));
  lCombo.setCurrentIndex(1);
  EXPECT_EQ(lEnum->Value(1), 30u) << "the item's entry, not its row";
  lMask.SetValue(1, 0x7);
  EXPECT_EQ(lCombo.count(), 3);
  EXPECT_EQ(lCombo.currentText(), QStringLiteral("30"));

  PxBitFieldProperty lWord(SETTING, 3, 3, 2);
  lWord.SetCount(1);
  lWord.SetValue(0, 3);
  PxRadioButton lRadio;
  lRadio.SetProperty(&lWord, 0, 6, 4);
  EXPECT_FALSE(lRadio.isChecked());
  lRadio.click();
  EXPECT_EQ(lWord.Value(0), 5u);

  lWord.SetValue(0, 0);
  PxBitFieldEditor lEditor(QStringLiteral("Bits"));
  lEditor.SetProperty(&lWord, 0, nullptr);
  ASSERT_EQ(lEditor.CheckBoxes().size(), 16);
  EXPECT_EQ(lEditor.CheckBoxes()[9]->text(), QStringLiteral("10"));
  lEditor.CheckBoxes()[3]->click();
  EXPECT_EQ(lWord.Value(0), 8u);
  lEditor.CheckBoxes()[3]->click();
  EXPECT_EQ(lWord.Value(0), 0u);
  lWord.SetEditable(0, 0x00F0);
  EXPECT_FALSE(lEditor.CheckBoxes()[3]->isEnabled());
  EXPECT_TRUE(lEditor.CheckBoxes()[4]->isEnabled());

  PxRadioGroup lGroup(true);
  lGroup.SetProperty(lEnum.get(), 0);
  lEnum->SetValue(0, 20);
  EXPECT_TRUE(lGroup.Buttons()[1]->isChecked());
  lGroup.Buttons()[2]->click();
  EXPECT_EQ(lEnum->Value(0), 30u);
  EXPECT_FALSE(lGroup.Buttons()[1]->isChecked());
}

TEST_F(Widgets, TableShowsTheIndexedTableAndWritesCells)
{
  PxFloatProperty lGains(SETTING, 1, 1, 4, 100.0f, 2);
  lGains.SetName(QStringLiteral("Gain"));
  lGains.SetCount(16);
  for (size_t i = 0; i < 16; ++i) {
    lGains.SetValue(i, static_cast<float>(i));
  }
  PxBitFieldProperty lActive(SETTING, 2, 2, 4);
  lActive.SetName(QStringLiteral("Active"));
  lActive.SetCount(2);
  PxTableWidget lTable;
  lTable.SetSecondDimension(8);
  lTable.AddProperty(&lGains);
  lTable.AddProperty(&lActive);
  QSpinBox lIndexer;
  lIndexer.setRange(1, 2);
  lTable.SetIndexer(lIndexer);
  lIndexer.setValue(2);
  EXPECT_EQ(lTable.item(0, 0)->text(), QStringLiteral("8.00"));
  EXPECT_EQ(lTable.item(7, 0)->text(), QStringLiteral("15.00"));

  lGains.SetUnitType(UT_DISTANCE);
  PxUnits::SetUnit(UT_DISTANCE, 2);
  EXPECT_EQ(lTable.item(0, 0)->text(), QStringLiteral("26.25")) << "8 m shown in feet at once";
  PxUnits::SetUnit(UT_DISTANCE, 1);
  lTable.item(2, 0)->setText(QStringLiteral("1.5"));
  EXPECT_FLOAT_EQ(lGains.Value(10), 1.5f);
  EXPECT_EQ(lTable.item(2, 0)->text(), QStringLiteral("1.50"));
  lTable.item(3, 1)->setCheckState(Qt::Checked);
  EXPECT_EQ(lActive.Value(1), 8u);
  EXPECT_EQ(lActive.Value(0), 0u);
  lGains.SetEditable(11, 0);
  EXPECT_FALSE(lTable.item(3, 0)->flags() & Qt::ItemIsEditable);
  // For a person to look at: an edited cell, a locked cell and bits of which only some are editable.
  lActive.SetEditable(1, 0x0F);
  lTable.resize(260, 300);
  EXPECT_TRUE(PxTest::SaveToGallery(&lTable, QStringLiteral("widgets_table_second_of_two")));
}

TEST_F(Widgets, TextIsCutToWhatThePropertyHoldsAndForcedToCapitals)
{
  PxTextProperty lName(SETTING, PxTextProperty::TYPE_UTF16, 1, 1, 8);
  lName.SetCount(1);
  PxTextProperty lSerial(SETTING, PxTextProperty::TYPE_ASCII, 2, 2, 8);
  lSerial.SetCount(1);
  lSerial.SetForceUpperCase(true);
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  lName.CreateWidget(*lGrid, false, nullptr);
  lSerial.CreateWidget(*lGrid, true, nullptr);
  auto lEdits = lForm.findChildren<PxLineEdit*>();
  ASSERT_EQ(lEdits.size(), 2);
  QTest::keyClicks(lEdits[0], QStringLiteral("abcdef"));
  EXPECT_EQ(lName.TextValue(0), QStringLiteral("abcd")) << "four UTF-16 characters fill 8 bytes";
  QTest::keyClicks(lEdits[1], QStringLiteral("px-7"));
  EXPECT_EQ(lSerial.TextValue(0), QStringLiteral("PX-7"));
  EXPECT_EQ(lEdits[1]->text(), QStringLiteral("PX-7"));
  auto* lDisabler = qobject_cast<QCheckBox*>(lGrid->itemAtPosition(lGrid->rowCount() - 1, 2)->widget());
  ASSERT_TRUE(lDisabler);
  lDisabler->click();
  EXPECT_FALSE(lEdits[1]->isEnabled());
}

TEST_F(Widgets, CommandButtonAsksFirstAndReportsFailures)
{
  PxTestDevice lDevice;
  PxCommand lCommand(77, 0);
  lCommand.SetName(QStringLiteral("Reset"));
  lCommand.SetConfirmation(QStringLiteral("Reset the device?"));
  lDevice.AddCommand(&lCommand);
  PxPushButton lButton;
  EXPECT_THROW(lButton.SetCommand(&lDevice, 78), std::out_of_range);
  lButton.SetCommand(&lDevice, 77);
  EXPECT_EQ(lButton.text(), QStringLiteral("Reset"));
  PtModalScript lScript;
  lScript.Queue(QMessageBox::No);
  lButton.click();
  EXPECT_EQ(lCommand.State(), PxCommand::STATE_DECLINED);
  EXPECT_EQ(lScript.Interactions().size(), 1);
  // The test device runs no command: the error it raises reaches the user.
  lScript.Queue(QMessageBox::Yes);
  Q_EMIT lCommand.Triggered();
  ASSERT_EQ(lScript.Interactions().size(), 3);
  EXPECT_EQ(lScript.Interactions()[2].mKind, PtModalScript::K_ERROR);
  lCommand.SetEnabled(false);
  EXPECT_FALSE(lButton.isEnabled());
}
