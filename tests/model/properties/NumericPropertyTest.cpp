#include "PropertyTestSupport.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxUnits.h"

#include <limits>

namespace {
constexpr PtU32 ALL_ONES = 0xFFFFFFFFu;

TEST(PropertyBase, EditableFlagsChangeOnlyAsTheEditableFlagAllows)
{
  struct Case
  {
    PtU32 mCategory;
    std::function<void(PxProperty&)> mThen; // after SetCount(2)
    int mSignals;
    std::vector<PtU32> mWords;
  } const lCases[] = {
      {F_EDITABLE, [](PxProperty&) {}, 1, {ALL_ONES, ALL_ONES}},
      {CAT_STATE, [](PxProperty& p) { p.SetEditable(true); }, 1, {0, 0}},
      {F_EDITABLE, [](PxProperty& p) { p.SetEditable(false); }, 2, {0, 0}},
      {F_EDITABLE, [](PxProperty& p) { p.SetEditable(1, 0x0Fu), p.SetEditable(1, 0x0Fu); }, 2, {ALL_ONES, 0x0Fu}},
      {CAT_CONFIGURATION, [](PxProperty& p) { p.SetEditable(0, ALL_ONES); }, 1, {0, 0}},
  };
  for (size_t lCase = 0; lCase < std::size(lCases); ++lCase) {
    SCOPED_TRACE(lCase);
    const Case& c = lCases[lCase];
    PxIntegerProperty lProperty(c.mCategory, 1, 1, 4); // the flags are the base class's alone
    QSignalSpy lEditable(&lProperty, &PxProperty::EditableChanged);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.SetCount(2);
    c.mThen(lProperty);
    EXPECT_EQ(lEditable.count(), c.mSignals);
    EXPECT_EQ(lValues.count(), 0) << "a new count is no new value";
    for (size_t i = 0; i < 2; ++i) {
      EXPECT_EQ(lProperty.EditableWord(i), c.mWords[i]) << i;
      EXPECT_EQ(lProperty.Editable(i), c.mWords[i] == ALL_ONES) << i;
    }
    EXPECT_FALSE(lProperty.Editable(2));
  }
}

// Unit conversions need the table; every test starts from metres.
class NumericProperty : public ::testing::Test
{
protected:
  void SetUp() override
  {
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
  }
  void TearDown() override { PxUnits::SetUnit(UT_DISTANCE, 1); }
};

TEST_F(NumericProperty, IntegerStartsWithTheWidestLimitsOfItsSize)
{
  // Two-byte values accept 65536 until the device sets real limits; devices rely on it.
  const std::pair<PtU32, Pt32> lCases[] = {{1, 255}, {2, 65536}, {4, 2147483647}};
  for (const auto& [lUnitSize, lMaximum] : lCases) {
    SCOPED_TRACE(lUnitSize);
    PxIntegerProperty lProperty(F_EDITABLE, 1, 1, lUnitSize);
    lProperty.SetCount(1);
    EXPECT_EQ(lProperty.MinValue(), 0);
    EXPECT_EQ(lProperty.MaxValue(), lMaximum);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.SetValue(0, lMaximum);
    lProperty.SetValue(0, lMaximum);
    if (lMaximum < std::numeric_limits<Pt32>::max()) {
      ExpectRefused([&] { lProperty.SetValue(0, lMaximum + 1); }, 10, QString::number(lMaximum + 1));
    }
    ExpectRefused([&] { lProperty.SetValue(0, -1); }, 10, QStringLiteral("-1"));
    EXPECT_EQ(lProperty.Value(0), lMaximum);
    EXPECT_EQ(lValues.count(), 1);
    // With limits not checked the "off" value outside the range is stored.
    lProperty.SetLimitsNotChecked(true);
    lProperty.SetValue(0, -1);
    EXPECT_EQ(lProperty.Value(0), -1);
  }
}

TEST_F(NumericProperty, IntegerSetLimitsClampsValuesAndAnnouncesTheLimits)
{
  struct Case
  {
    int mMin, mMax;
    bool mNotChecked;
    std::vector<Pt32> mAfter; // values before: 5, 50, 500
    std::vector<size_t> mChanged;
    int mLimitSignals;
  } const lCases[] = {
      {0, 65536, false, {5, 50, 500}, {}, 0},
      {0, 1000, false, {5, 50, 500}, {}, 1},
      {10, 100, false, {10, 50, 100}, {0, 2}, 1},
      {10, 100, true, {5, 50, 500}, {}, 1},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mMax);
    PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 2);
    Fill(lProperty, {5, 50, 500});
    lProperty.SetLimitsNotChecked(c.mNotChecked);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    QSignalSpy lLimits(&lProperty, &PxIntegerProperty::LimitsChanged);
    lProperty.SetLimits(c.mMin, c.mMax);
    EXPECT_EQ(Indexes(lValues), c.mChanged);
    EXPECT_EQ(lLimits.count(), c.mLimitSignals);
    for (size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(lProperty.Value(i), c.mAfter[i]) << i;
    }
  }
}

TEST_F(NumericProperty, ScaledFloatStoresRoundedRawValuesAndIgnoresInvisibleChanges)
{
  struct Case
  {
    float mScale;
    PtU32 mDecimals;
    float mBefore, mSet;
    Pt32 mRaw;
    bool mChanged;
  } const lCases[] = {
      {10.0f, 1, 1.0f, 1.04f, 10, false}, // both show 1.0
      {10.0f, 1, 0.0f, -1.25f, -13, true},
      {10.0f, 2, 1.0f, 1.04f, 10, false}, // shows differently, same raw value
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mSet);
    PxFloatProperty lProperty(F_EDITABLE, 1, 1, 2, c.mScale, c.mDecimals);
    Fill(lProperty, {c.mBefore});
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.SetValue(0, c.mSet);
    EXPECT_EQ(lProperty.RawValue(0), c.mRaw);
    EXPECT_EQ(lValues.count(), c.mChanged ? 1 : 0);
    EXPECT_FLOAT_EQ(lProperty.Value(0), c.mRaw / c.mScale);
  }
}

TEST_F(NumericProperty, FloatRefusesValuesOutsideItsLimitsAndClampsToNewOnes)
{
  PxFloatProperty lProperty(F_EDITABLE, 1, 1, 2, 10.0f, 1);
  Fill(lProperty, {-5.0f, 1.5f, 9.9f});
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  QSignalSpy lLimits(&lProperty, &PxFloatProperty::LimitsChanged);
  ExpectRefused([&] { lProperty.SetValue(0, 3276.8f); }, 15, QStringLiteral("3276.8"));
  ExpectRefused([&] { lProperty.SetValue(0, std::numeric_limits<float>::quiet_NaN()); }, 15, QStringLiteral("nan"));
  lProperty.SetLimits(-1.0f, 5.0f);
  lProperty.SetLimits(-1.0f, 5.0f);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{0, 2}));
  EXPECT_EQ(lLimits.count(), 1);
  EXPECT_EQ(lProperty.RawValue(0), -10);
  EXPECT_EQ(lProperty.RawValue(2), 50);

  PxFloatProperty lPlain(F_EDITABLE, 2, 1, 4, 1.0f, 1);
  lPlain.SetCount(1);
  lPlain.SetLimits(0.0f, 10.0f);
  ExpectRefused([&] { lPlain.SetDoubleValue(0, 10.5); }, 15, QStringLiteral("10.5"));
  lPlain.SetDoubleValue(0, 2.25);
  EXPECT_EQ(lPlain.DoubleValue(0), 2.25);
}

TEST_F(NumericProperty, FloatTextInputIsReadInTheDisplayUnit)
{
  PxUnits::SetUnit(UT_DISTANCE, 2);
  PxFloatProperty lProperty(F_EDITABLE, 1, 1, 4, 1000.0f, 3);
  lProperty.SetUnitType(UT_DISTANCE);
  lProperty.SetCount(1);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetTextValue(0, QStringLiteral("10"));
  EXPECT_EQ(lProperty.RawValue(0), 3048);
  EXPECT_EQ(lProperty.TextValue(0), QStringLiteral("10.000"));
  // The same number written differently is not a change.
  lProperty.SetTextValue(0, QStringLiteral("1e1"));
  EXPECT_EQ(lValues.count(), 1);
  ExpectRefused([&] { lProperty.SetTextValue(0, QStringLiteral("ten")); }, 16, QStringLiteral("ten"));
  EXPECT_EQ(lProperty.RawValue(0), 3048);

  // Typing the shown value again must not move a plain float by the round trip through feet.
  PxFloatProperty lPlain(F_EDITABLE, 2, 1, 4, 1.0f, 2);
  lPlain.SetUnitType(UT_DISTANCE);
  Fill(lPlain, {3.0f});
  ASSERT_EQ(lPlain.TextValue(0), QStringLiteral("9.84"));
  lPlain.SetTextValue(0, QStringLiteral("9.840"));
  EXPECT_EQ(lPlain.Value(0), 3.0f);
}

} // namespace
