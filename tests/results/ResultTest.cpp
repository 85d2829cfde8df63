#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PxColorCondition.h"
#include "PxResult.h"
#include "PxResultProvider.h"
#include "PxTest.h"
#include "PxUnits.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>


namespace {
// The smallest real provider: two results of its own, decoded by the base class's lookups.
class TwoResults : public PxResultProvider
{
public:
  explicit TwoResults(PtU32 aId = 64)
      : PxResultProvider(aId)
  {
  }
  void SetMaps(Map* aResults, Map* aDeviceResults) override
  {
    PxResultProvider::SetMaps(aResults, aDeviceResults);
    EnterResult(&mCounter);
    EnterResult(&mLevel);
  }
  void Load(PtDocumentReader& aReader) override
  {
    StartUpdate();
    while (aReader.Advance()) {
      ReadElementFromFile(aReader);
    }
    EndUpdate();
  }
  void Read(PxProtocolReader& aReader)
  {
    aReader.ReadPayload();
    StartUpdate();
    while (aReader.Advance()) {
      ReadElementFromPtProtocol(aReader);
    }
    EndUpdate();
  }
  PxResult mCounter{700, 70, DT_UNSIGNED_32, 5, 4, 4, 0};
  PxResult mLevel{701, 71, DT_SIGNED_16, 6, 2, 2, 1};
};

// A result of one float item.
struct FloatResult : PxResult
{
  explicit FloatResult(float aValue)
      : PxResult(1, 1, DT_FLOAT, 0, 4, 4, 2)
  {
    SetCount(1);
    SetRawValue<float>(0, aValue);
  }
};
} // namespace

TEST(Result, ValueReadsTheDataTypeAndDividesByTheScale)
{
  struct Case
  {
    int mDataType;
    std::uint32_t mRawBits;
    float mScale;
    double mExpected;
  } const lCases[] = {
      {DT_UNSIGNED_32, 1500, 1000.0f, 1.5},
      {DT_SIGNED_32, static_cast<std::uint32_t>(-250), 100.0f, -2.5},
      {DT_INTEGER_16, 0xFFFF, 1.0f, 65535.0},
      {DT_SIGNED_16, 0xFFFE, 2.0f, -1.0},
      {DT_FLOAT, 0x40490FDB /* 3.14159274f */, 1.0f, 3.1415927410125732},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mDataType);
    const PtU32 lSize = c.mDataType == DT_INTEGER_16 || c.mDataType == DT_SIGNED_16 ? 2 : 4;
    PxResult lResult(1, 1, c.mDataType, 0, lSize, lSize, 2);
    lResult.SetCount(3);
    lSize == 2 ? lResult.SetRawValue<std::uint16_t>(1, static_cast<std::uint16_t>(c.mRawBits))
               : lResult.SetRawValue<std::uint32_t>(1, c.mRawBits);
    lResult.SetScale(c.mScale);
    EXPECT_DOUBLE_EQ(lResult.Value(1), c.mExpected);
    // Items are addressed by the type's own size; one that does not exist reads 0.
    EXPECT_EQ(lResult.Value(0), 0.0);
    EXPECT_EQ(lResult.Value(3), 0.0);
    if (c.mDataType == DT_UNSIGNED_32) {
      EXPECT_EQ(lResult.IntValue(1), c.mRawBits); // raw: the scale does not apply
    } else {
      EXPECT_EQ(PxTest::ErrorCode([&] { lResult.IntValue(1); }), 65535u);
    }
  }
}

TEST(Result, FormattedValueFillsNameThenValueThenUnit)
{
  PxUnits::Initialize();
  PxUnits::SetUnit(UT_DISTANCE, 2); // feet
  struct Case
  {
    QString mFormat;
    QString mName;
    int mDecimals;
    int mUnitType;
    float mValue;
    QString mExpected;
  } const lCases[] = {
      {"%n %v", "Rate", -1, UT_NONE, 12.5f, "Rate 12.5"},
      {"%v", "", -1, UT_NONE, 1234567.0f, "1.23457e+06"},
      {"%n", "at %v%u", 1, UT_DISTANCE, 1.0f, "at 3.3ft"}, // a name holding %v is filled in too
      {"%N %V %v", "x", 0, UT_NONE, 7.0f, "%N %V 7"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mExpected.toStdString());
    FloatResult lResult(c.mValue);
    lResult.SetFormat(c.mFormat);
    lResult.SetName(c.mName);
    lResult.SetDecimals(c.mDecimals);
    lResult.SetUnitType(c.mUnitType);
    EXPECT_EQ(lResult.FormattedValue(0), c.mExpected);
  }
  PxUnits::SetUnit(UT_DISTANCE, 1);
}

TEST(Result, ColorStyleIsTheFirstConditionThatHolds)
{
  PxColorConditionOutBoundPourcentage lOutOfBound(Qt::red, 10.0, 0.1);
  PxColorConditionLessThan lBelow(Qt::blue, 5.0);
  PxColorConditionGreaterThan lAbove(Qt::green, 100.0);
  PxColorConditionGreaterThan lNeutral(Qt::black, 0.0); // holds, but black is "no colour"
  struct Case
  {
    std::vector<PxColorCondition*> mConditions;
    double mValue;
    Qt::GlobalColor mExpected;
  } const lCases[] = {
      {{}, 50.0, Qt::black},
      {{&lOutOfBound}, 11.5, Qt::red},
      {{&lOutOfBound}, 11.0, Qt::black}, // the bound is strict
      {{&lBelow}, 4.99, Qt::blue},
      {{&lAbove}, 100.5, Qt::green},
      {{&lNeutral, &lAbove}, 200.0, Qt::green},
      {{&lOutOfBound, &lBelow, &lAbove}, std::numeric_limits<double>::quiet_NaN(), Qt::black},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mValue);
    FloatResult lResult(static_cast<float>(c.mValue));
    for (PxColorCondition* lCondition : c.mConditions) {
      lResult.AddColorCondition(lCondition);
    }
    EXPECT_EQ(lResult.FormattedColorStyle(0), c.mExpected);
  }
}

TEST(Result, ReadsAnswerElementsWideningNarrowItems)
{
  PxTestTransport lTransport;
  PxResult lResult(700, 70, DT_UNSIGNED_32, 0, 4, 4, 0);
  auto lRead = [&](const PxTestBytes& aElement) {
    PxProtocolReader& lReader = lTransport.Answer(aElement);
    lReader.ReadPayload();
    lReader.Advance();
    lResult.ReadFromPtProtocol(lReader);
  };
  lRead(PxTestBytes().ElementHeader(70, 2, 4).U32(0xAABBCCDD).U32(7));
  EXPECT_EQ(lResult.Count(), 2u);
  EXPECT_EQ(lResult.IntValue(0), 0xAABBCCDDu);
  // 2-byte items into 4-byte slots: high halves zero, not what the last frame left.
  lRead(PxTestBytes().ElementHeader(70, 3, 2).U16(0x1234).U16(0xFFFF).U16(1));
  ASSERT_EQ(lResult.Count(), 3u);
  EXPECT_EQ(lResult.IntValue(0), 0x1234u);
  EXPECT_EQ(lResult.IntValue(1), 0xFFFFu);
  // 8-byte items do not fit: 1002, and the result keeps its frame.
  EXPECT_EQ(PxTest::ErrorCode([&] { lRead(PxTestBytes().ElementHeader(70, 1, 8).U64(5)); }), 1002u);
  EXPECT_EQ(lResult.Count(), 3u);
  EXPECT_EQ(lResult.IntValue(0), 0x1234u);
}

TEST(ResultProvider, SharedMapsRouteAnswersAndDocumentsAndOneNewDataPerFrame)
{
  PxResultProvider::Map lResults, lDeviceResults;
  TwoResults lProvider;
  lProvider.SetMaps(&lResults, &lDeviceResults);
  EXPECT_EQ(lResults.at(700), &lProvider.mCounter);
  EXPECT_EQ(lDeviceResults.at(71), &lProvider.mLevel);

  QSignalSpy lNewData(&lProvider, &PxResultProvider::NewData);
  PxTestTransport lTransport;
  lProvider.Read(lTransport.Answer(PxTestBytes()
                                        .ElementHeader(71, 1, 2)
                                        .U16(0xFFF6)
                                        .ElementHeader(999, 1, 4) // nobody's: skipped
                                        .U32(1)
                                        .ElementHeader(70, 2, 4)
                                        .U32(42)
                                        .U32(0xFFFFFFFFu)));
  EXPECT_EQ(lNewData.count(), 1);
  EXPECT_FALSE(lProvider.Updating());
  EXPECT_DOUBLE_EQ(lProvider.mLevel.Value(0), -10.0);

  // Every result of the shared map is written, except the state timestamp; empty ones write nothing.
  PxResult lTimestamp(6673, 4176, DT_UNSIGNED_32, 1, 4, 4, 0);
  lTimestamp.SetCount(1);
  lResults[6673] = &lTimestamp;
  lProvider.mLevel.SetCount(0);
  const QString lFile = PxTest::ScratchDir() + QStringLiteral("/results.ptl");
  {
    PtDocumentWriter lWriter(lFile, 77);
    lWriter.StartSection(1, 1);
    lProvider.WriteElementsToFile(lWriter);
    lWriter.EndLastSection();
  }
  PxResultProvider::Map lOtherResults, lOtherDeviceResults;
  TwoResults lReplay;
  lReplay.SetMaps(&lOtherResults, &lOtherDeviceResults);
  PtDocumentReader lReader(lFile);
  lReader.Advance();
  lReplay.Load(lReader);
  ASSERT_EQ(lReplay.mCounter.Count(), 2u);
  EXPECT_EQ(lReplay.mCounter.IntValue(1), 0xFFFFFFFFu);
}
