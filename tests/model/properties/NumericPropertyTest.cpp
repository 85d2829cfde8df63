#include "PropertyTestSupport.h"
#include "PxBoolProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxUnits.h"

#include <limits>

namespace {
// Unit conversions need the table; every test starts from metres so display equals internal.
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
  struct Case
  {
    PtU32 mUnitSize;
    Pt32 mMaximum;
  };
  // Two-byte values accept 65536 until the device sets real limits; devices rely on it.
  const Case lCases[] = {{1, 255}, {2, 65536}, {4, 2147483647}};
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mUnitSize);
    PxIntegerProperty lProperty(F_EDITABLE, 1, 1, c.mUnitSize);
    lProperty.SetCount(1);
    EXPECT_EQ(lProperty.MinValue(), 0);
    EXPECT_EQ(lProperty.MaxValue(), c.mMaximum);
    lProperty.SetValue(0, c.mMaximum);
    EXPECT_EQ(lProperty.Value(0), c.mMaximum);
    if (c.mMaximum < std::numeric_limits<Pt32>::max()) {
      ExpectRefused([&] { lProperty.SetValue(0, c.mMaximum + 1); }, 10, QString::number(c.mMaximum + 1));
    }
    ExpectRefused([&] { lProperty.SetValue(0, -1); }, 10, QStringLiteral("-1"));
    EXPECT_EQ(lProperty.Value(0), c.mMaximum);
  }
}

TEST_F(NumericProperty, IntegerSetValueReportsOnlyRealChanges)
{
  PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 2);
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetValue(1, 7);
  lProperty.SetValue(1, 7);
  lProperty.SetValue(0, 0);
  EXPECT_EQ(Indexes(lValues), std::vector<size_t>{1});
  // A refused value emits nothing either.
  ExpectRefused([&] { lProperty.SetValue(0, 70000); }, 10, QStringLiteral("70000"));
  EXPECT_EQ(lValues.count(), 1);
  // With limits not checked the "off" value below the range is stored.
  lProperty.SetLimitsNotChecked(true);
  lProperty.SetValue(0, -1);
  EXPECT_EQ(lProperty.Value(0), -1);
}

TEST_F(NumericProperty, IntegerSetLimitsClampsValuesAndAnnouncesTheLimits)
{
  struct Case
  {
    const char* mName;
    int mMin, mMax;
    bool mNotChecked;
    std::vector<Pt32> mAfter;
    std::vector<size_t> mChanged;
    int mLimitSignals;
  };
  // Values before: 5, 50, 500.
  const Case lCases[] = {
      {"same limits", 0, 65536, false, {5, 50, 500}, {}, 0},
      {"nothing to clamp", 0, 1000, false, {5, 50, 500}, {}, 1},
      {"two clamped", 10, 100, false, {10, 50, 100}, {0, 2}, 1},
      {"not checked, not clamped", 10, 100, true, {5, 50, 500}, {}, 1},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 2);
    lProperty.SetCount(3);
    lProperty.SetValue(0, 5);
    lProperty.SetValue(1, 50);
    lProperty.SetValue(2, 500);
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

TEST_F(NumericProperty, IntegerGenericAccessTruncatesAndFormatsBareNumbers)
{
  PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 4);
  lProperty.SetCount(1);
  lProperty.SetLimits(-100, 100);
  lProperty.SetName(QStringLiteral("Gain"));
  lProperty.SetFormat(QStringLiteral("%n %v dB"));
  const std::pair<double, Pt32> lCases[] = {{2.9, 2}, {-2.9, -2}, {-0.5, 0}, {100.99, 100}};
  for (const auto& c : lCases) {
    lProperty.SetDoubleValue(0, c.first);
    EXPECT_EQ(lProperty.Value(0), c.second) << c.first;
    EXPECT_EQ(lProperty.DoubleValue(0), c.second);
  }
  lProperty.SetValue(0, -42);
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("-42"));
  // Numbers far outside the 32-bit range meet the limits instead of wrapping into them.
  ExpectRefused([&] { lProperty.SetDoubleValue(0, 4294967296.0 + 5); }, 10, QStringLiteral("2147483647"));
  EXPECT_EQ(lProperty.Value(0), -42);
}

TEST_F(NumericProperty, FloatLimitsFollowTheRawRangeAndTheDecimalsShown)
{
  struct Case
  {
    const char* mName;
    PtU32 mUnitSize;
    float mScale;
    PtU32 mDecimals;
    float mMin, mMax;
  };
  const float lLowest = std::numeric_limits<float>::lowest();
  const float lHighest = std::numeric_limits<float>::max();
  const Case lCases[] = {
      {"2 bytes, scale 100", 2, 100.0f, 2, -327.68f, 327.67f},
      {"1 byte, scale 10", 1, 10.0f, 1, -12.8f, 12.7f},
      {"cut toward zero", 2, 10.0f, 0, -3276.0f, 3276.0f},
      {"4 bytes reach 2^31", 4, 1000.0f, 3, -2147483.648f, 2147483.648f},
      {"decimals not fixed cut at 6", 1, 3.0f, 0xFFFFFFFFu, -42.666666f, 42.333333f},
      {"plain float", 4, 1.0f, 2, lLowest, lHighest},
      {"plain float, decimals not fixed", 4, 1.0f, 0xFFFFFFFFu, lLowest, lHighest},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxFloatProperty lProperty(F_EDITABLE, 1, 1, c.mUnitSize, c.mScale, c.mDecimals);
    EXPECT_FLOAT_EQ(lProperty.MinValue(), c.mMin);
    EXPECT_FLOAT_EQ(lProperty.MaxValue(), c.mMax);
    EXPECT_EQ(lProperty.Signed(), c.mScale != 1.0f);
  }
}

TEST_F(NumericProperty, ScaledFloatStoresRoundedRawValuesAndIgnoresInvisibleChanges)
{
  struct Case
  {
    const char* mName;
    float mScale;
    PtU32 mDecimals;
    float mBefore, mSet;
    Pt32 mRaw;
    bool mChanged;
  };
  const Case lCases[] = {
      {"too small to show", 10.0f, 1, 1.0f, 1.04f, 10, false},
      {"half away from zero, negative", 10.0f, 1, 0.0f, -1.25f, -13, true},
      {"half away from zero, positive", 10.0f, 1, 0.0f, 1.25f, 13, true},
      {"hundredths", 100.0f, 2, 0.0f, 3.14159f, 314, true},
      {"shows differently, same raw", 10.0f, 2, 1.0f, 1.04f, 10, false},
      {"zero", 10.0f, 1, 2.0f, 0.0f, 0, true},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxFloatProperty lProperty(F_EDITABLE, 1, 1, 2, c.mScale, c.mDecimals);
    lProperty.SetCount(1);
    lProperty.SetValue(0, c.mBefore);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.SetValue(0, c.mSet);
    EXPECT_EQ(lProperty.RawValue(0), c.mRaw);
    EXPECT_EQ(lValues.count(), c.mChanged ? 1 : 0);
    EXPECT_FLOAT_EQ(lProperty.Value(0), c.mRaw / c.mScale);
  }
}

TEST_F(NumericProperty, FloatRefusesValuesOutsideItsLimits)
{
  PxFloatProperty lScaled(F_EDITABLE, 1, 1, 2, 100.0f, 2);
  lScaled.SetCount(1);
  lScaled.SetValue(0, 1.5f);
  QSignalSpy lValues(&lScaled, &PxProperty::ValueChanged);
  ExpectRefused([&] { lScaled.SetValue(0, 327.68f); }, 15, QStringLiteral("327.68"));
  ExpectRefused([&] { lScaled.SetValue(0, -400.0f); }, 15, QStringLiteral("-400.00"));
  ExpectRefused([&] { lScaled.SetValue(0, std::numeric_limits<float>::quiet_NaN()); }, 15, QStringLiteral("nan"));
  EXPECT_FLOAT_EQ(lScaled.Value(0), 1.5f);
  EXPECT_EQ(lValues.count(), 0);

  PxFloatProperty lPlain(F_EDITABLE, 2, 1, 4, 1.0f, 1);
  lPlain.SetCount(1);
  lPlain.SetLimits(0.0f, 10.0f);
  ExpectRefused([&] { lPlain.SetDoubleValue(0, 10.5); }, 15, QStringLiteral("10.5"));
  lPlain.SetValue(0, 2.25f);
  lPlain.SetValue(0, 2.25f);
  EXPECT_FLOAT_EQ(lPlain.DoubleValue(0), 2.25);
}

TEST_F(NumericProperty, FloatSetLimitsClampsRealValues)
{
  PxFloatProperty lProperty(F_EDITABLE, 1, 1, 2, 10.0f, 1);
  lProperty.SetCount(3);
  lProperty.SetValue(0, -5.0f);
  lProperty.SetValue(1, 1.5f);
  lProperty.SetValue(2, 9.9f);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  QSignalSpy lLimits(&lProperty, &PxFloatProperty::LimitsChanged);
  lProperty.SetLimits(-1.0f, 5.0f);
  lProperty.SetLimits(-1.0f, 5.0f);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{0, 2}));
  EXPECT_EQ(lLimits.count(), 1);
  EXPECT_EQ(lProperty.RawValue(0), -10);
  EXPECT_EQ(lProperty.RawValue(2), 50);
}

TEST_F(NumericProperty, FloatTextsAreInTheUnitTheUserChose)
{
  PxUnits::SetUnit(UT_DISTANCE, 2); // feet
  struct Case
  {
    const char* mName;
    PtU32 mDecimals;
    int mUnitType;
    const char* mFormat;
    const char* mText;
    const char* mFormatted;
  };
  const Case lCases[] = {
      {"feet", 2, UT_DISTANCE, "%n %v %u", "3.28", "Range 3.28 ft"},
      {"no unit", 3, UT_NONE, "%n: %v%u", "1.000", "Range: 1.000"},
      {"only the first of each is replaced", 1, UT_DISTANCE, "%v %v %N %u%u", "3.3", "3.3 %v %N ft%u"},
      {"decimals not fixed", 0xFFFFFFFFu, UT_NONE, "%v", nullptr, "1"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxFloatProperty lProperty(F_EDITABLE, 1, 1, 4, 1.0f, c.mDecimals);
    lProperty.SetCount(1);
    lProperty.SetName(QStringLiteral("Range"));
    lProperty.SetUnitType(c.mUnitType);
    lProperty.SetFormat(QString::fromLatin1(c.mFormat));
    lProperty.SetValue(0, 1.0f);
    if (c.mText) {
      EXPECT_EQ(lProperty.TextValue(0), QString::fromLatin1(c.mText));
    }
    EXPECT_EQ(lProperty.FormattedValue(0), QString::fromLatin1(c.mFormatted));
  }
}

TEST_F(NumericProperty, FloatWithoutFixedDecimalsWritesEveryDigit)
{
  PxFloatProperty lProperty(F_EDITABLE, 1, 1, 4, 1.0f, 0xFFFFFFFFu);
  lProperty.SetCount(1);
  lProperty.SetName(QStringLiteral("Step"));
  lProperty.SetValue(0, 0.1f);
  const QString lText = lProperty.TextValue(0);
  EXPECT_EQ(lText.length(), 2 + 103);
  EXPECT_TRUE(lText.startsWith(QStringLiteral("0.100000001490116119384765625000"))) << lText.toStdString();
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("Step 0.1"));
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
  lProperty.SetTextValue(0, QStringLiteral("10.000"));
  lProperty.SetTextValue(0, QStringLiteral("1e1"));
  EXPECT_EQ(lValues.count(), 1);
  ExpectRefused([&] { lProperty.SetTextValue(0, QStringLiteral("ten")); }, 16, QStringLiteral("ten"));
  ExpectRefused([&] { lProperty.SetTextValue(0, QString()); }, 16, QString());
  EXPECT_EQ(lProperty.RawValue(0), 3048);

  // Typing the shown value again must not move a plain float by the round trip through feet.
  PxFloatProperty lPlain(F_EDITABLE, 2, 1, 4, 1.0f, 2);
  lPlain.SetUnitType(UT_DISTANCE);
  lPlain.SetCount(1);
  lPlain.SetValue(0, 3.0f);
  ASSERT_EQ(lPlain.TextValue(0), QStringLiteral("9.84"));
  lPlain.SetTextValue(0, QStringLiteral("9.840"));
  EXPECT_EQ(lPlain.Value(0), 3.0f);
}

TEST_F(NumericProperty, BoolTreatsAnyNonZeroAsTrue)
{
  PxBoolProperty lProperty(F_EDITABLE, 1, 1);
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetDoubleValue(0, 0.5);
  EXPECT_TRUE(lProperty.Value(0));
  EXPECT_EQ(lProperty.DoubleValue(0), 1.0);
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("true"));
  EXPECT_EQ(lProperty.FormattedValue(1), QStringLiteral("false"));
  // A device that sends 2 for true has sent true.
  lProperty.Values()[1] = 2;
  lProperty.SetValue(1, true);
  lProperty.SetDoubleValue(0, -3.0);
  EXPECT_EQ(Indexes(lValues), std::vector<size_t>{0});
  lProperty.SetValue(1, false);
  EXPECT_EQ(lProperty.DoubleValue(1), 0.0);
  EXPECT_EQ(lValues.count(), 2);
}
} // namespace
