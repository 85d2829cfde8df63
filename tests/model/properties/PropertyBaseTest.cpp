#include "PropertyTestSupport.h"
#include "PxBoolProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxTextProperty.h"

namespace {
// A kind with no typed view of its own: what every property shares, at any unit size and stride.
class RawProperty : public PxProperty
{
public:
  RawProperty(PtU32 aCategory, PtU32 aId, PtU32 aUnitSize, size_t aStride, bool aSigned = false)
      : PxProperty(aCategory, aId, 1, aUnitSize, aStride)
      , mSigned(aSigned)
  {
  }
  QString FormattedValue(size_t) const override { return QString(); }
  bool Signed() const override { return mSigned; }
  void CreateWidget(QGridLayout&, bool, QMap<int, QString>*) override {}
  void SetWidgetEnable(bool) override {}

  bool mSigned;
};

constexpr PtU32 ALL_ONES = 0xFFFFFFFFu;

TEST(PropertyBase, ProgrammingErrorsStopWithTheCheckThatFailed)
{
  struct Case
  {
    const char* mName;
    std::function<void()> mCall;
    const char* mExpression;
    const char* mFile;
  };
  const Case lCases[] = {
      {"id 0", [] { RawProperty(0, 0, 4, 4); }, "aId && aUnitSize && aStride", "PxProperty"},
      {"unit size 0", [] { RawProperty(0, 1, 0, 4); }, "aId && aUnitSize && aStride", "PxProperty"},
      {"stride 0", [] { RawProperty(0, 1, 1, 0); }, "aId && aUnitSize && aStride", "PxProperty"},
      {"stride below unit size", [] { RawProperty(0, 1, 4, 2); }, "aStride >= aUnitSize", "PxProperty"},
      {"integer of 3 bytes", [] { PxIntegerProperty(0, 1, 1, 3); },
       "( aUnitSize == 1 ) || ( aUnitSize == 2 ) || ( aUnitSize == 4 )", "PxIntegerProperty"},
      {"raw value of a plain float",
       [] {
         PxFloatProperty lFloat(0, 1, 1, 4, 1.0f, 2);
         lFloat.SetCount(1);
         lFloat.SetRawValue(0, 5);
       },
       "mScale != 1", "PxFloatProperty"},
      {"text of unknown type", [] { PxTextProperty(0, static_cast<PxTextProperty::eType>(3), 1, 1, 8); },
       "( aType == TYPE_ASCII ) || ( aType == TYPE_UTF16 )", "PxTextProperty"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    EXPECT_DEATH(c.mCall(), AssertionMessage(c.mExpression, c.mFile));
  }
}

TEST(PropertyBase, UnsupportedTypedAccessRaisesItsLogicError)
{
  RawProperty lRaw(0, 1, 4, 4);
  lRaw.SetCount(1);
  PxBoolProperty lBool(F_EDITABLE, 2, 1);
  lBool.SetCount(1);
  ExpectLogicError([&] { lRaw.DoubleValue(0); }, 7);
  ExpectLogicError([&] { lRaw.TextValue(0); }, 8);
  ExpectLogicError([&] { lRaw.SetDoubleValue(0, 1.0); }, 9);
  ExpectLogicError([&] { lRaw.SetTextValue(0, QStringLiteral("1")); }, 10);
  ExpectLogicError([&] { lBool.TextValue(0); }, 8);
  ExpectLogicError([&] { lBool.SetTextValue(0, QStringLiteral("true")); }, 10);
}

TEST(PropertyBase, EditableFlagsChangeOnlyAsTheEditableFlagAllows)
{
  struct Case
  {
    const char* mName;
    PtU32 mCategory;
    std::function<void(PxProperty&)> mAct;
    int mSignals;
    std::vector<PtU32> mWords;
  };
  const Case lCases[] = {
      {"new count, editable", F_EDITABLE, [](PxProperty& p) { p.SetCount(3); }, 1, {ALL_ONES, ALL_ONES, ALL_ONES}},
      {"new count, read-only", CAT_STATE, [](PxProperty& p) { p.SetCount(2); }, 1, {0, 0}},
      {"read-only never becomes editable",
       CAT_STATE,
       [](PxProperty& p) {
         p.SetCount(2);
         p.SetEditable(true);
       },
       1,
       {0, 0}},
      {"read-only again emits nothing more",
       CAT_STATE,
       [](PxProperty& p) {
         p.SetCount(2);
         p.SetEditable(false);
       },
       1,
       {0, 0}},
      {"editable made read-only",
       F_EDITABLE,
       [](PxProperty& p) {
         p.SetCount(2);
         p.SetEditable(false);
       },
       2,
       {0, 0}},
      {"one value",
       F_EDITABLE,
       [](PxProperty& p) {
         p.SetCount(2);
         p.SetEditable(1, 0x0Fu);
         p.SetEditable(1, 0x0Fu);
       },
       2,
       {ALL_ONES, 0x0Fu}},
      {"one value without the flag",
       CAT_CONFIGURATION,
       [](PxProperty& p) {
         p.SetCount(1);
         p.SetEditable(0, ALL_ONES);
       },
       1,
       {0}},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    RawProperty lProperty(c.mCategory, 1, 4, 4);
    QSignalSpy lEditable(&lProperty, &PxProperty::EditableChanged);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    c.mAct(lProperty);
    EXPECT_EQ(lEditable.count(), c.mSignals);
    EXPECT_EQ(lValues.count(), 0);
    for (size_t i = 0; i < c.mWords.size(); ++i) {
      EXPECT_EQ(lProperty.EditableWord(i), c.mWords[i]) << i;
      EXPECT_EQ(lProperty.Editable(i), c.mWords[i] == ALL_ONES) << i;
    }
    EXPECT_FALSE(lProperty.Editable(c.mWords.size()));
  }
}

TEST(PropertyBase, SetCountKeepsLeadingValuesAndSizesTheBackup)
{
  PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 4);
  lProperty.SetCount(2);
  lProperty.SetValue(0, 11);
  lProperty.SetValue(1, 22);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetCount(3);
  EXPECT_EQ(lProperty.Count(), 3u);
  EXPECT_EQ(lProperty.Backup().size(), lProperty.Values().size());
  EXPECT_EQ(lProperty.Value(1), 22);
  EXPECT_EQ(lProperty.Value(2), 0);
  lProperty.SetCount(1);
  EXPECT_EQ(lProperty.Value(0), 11);
  EXPECT_EQ(lValues.count(), 0);
}

// What a read leaves in the slots: narrow signed values are widened in place, reading value i at
// i times the unit size, so only a single value is sure to come out right.
TEST(PropertyBase, PostReadWidensSignedNarrowValues)
{
  struct Case
  {
    const char* mName;
    PtU32 mUnitSize;
    bool mSigned;
    std::vector<PtByte> mArrived; // one 4-byte slot per value
    std::vector<Pt32> mValues;
  };
  const Case lCases[] = {
      {"1 byte", 1, true, {0xFB, 0, 0, 0}, {-5}},
      {"1 byte, positive", 1, true, {0x7F, 0, 0, 0}, {127}},
      {"2 bytes", 2, true, {0x00, 0x80, 0, 0}, {-32768}},
      {"unsigned stays zero-extended", 2, false, {0xFF, 0xFF, 0, 0}, {65535}},
      {"4 bytes need nothing", 4, true, {0xFE, 0xFF, 0xFF, 0xFF}, {-2}},
      {"second value reads byte 1", 1, true, {0x05, 0x00, 0x00, 0x00, 0x07, 0, 0, 0}, {5, 0}},
      {"second value reads what the first wrote", 1, true, {0xFF, 0x00, 0x00, 0x00, 0x07, 0, 0, 0}, {-1, -1}},
      {"2 bytes, second value", 2, true, {0x01, 0x00, 0x00, 0x00, 0x02, 0, 0, 0}, {1, 0}},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxIntegerProperty lProperty(F_EDITABLE, 1, 1, c.mUnitSize);
    lProperty.SetSigned(c.mSigned);
    lProperty.SetCount(c.mValues.size());
    lProperty.Values() = c.mArrived;
    lProperty.PostRead();
    for (size_t i = 0; i < c.mValues.size(); ++i) {
      EXPECT_EQ(lProperty.Value(i), c.mValues[i]) << i;
    }
    EXPECT_EQ(lProperty.Backup(), lProperty.Values());
  }
}

TEST(PropertyBase, PostReadReportsOnlyValuesThatDifferFromTheLastRead)
{
  PxIntegerProperty lProperty(F_EDITABLE, 1, 1, 4);
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.Values()[4] = 9;
  lProperty.PostRead();
  lProperty.PostRead();
  ASSERT_EQ(lValues.count(), 1);
  EXPECT_EQ(Indexes(lValues).front(), PT_ALL);
  // A new count sizes the backup as well, so it alone is no change; a read of another length is.
  lProperty.SetCount(3);
  lProperty.PostRead();
  EXPECT_EQ(lValues.count(), 1);
  lProperty.Values().resize(4);
  lProperty.PostRead();
  EXPECT_EQ(lValues.count(), 2);
}

TEST(PropertyBase, WideningNeedsFourByteSlots)
{
  RawProperty lProperty(F_EDITABLE, 1, 2, 8, true);
  lProperty.SetCount(1);
  ExpectLogicError([&] { lProperty.PostRead(); }, 6);
}

TEST(PropertyBase, RestoreUndoesEditsOnlyOfEditableDeviceValues)
{
  struct Case
  {
    const char* mName;
    PtU32 mCategory;
    PtU16 mDeviceId;
    bool mRestored;
  };
  const Case lCases[] = {
      {"editable device value", F_EDITABLE, 12, true},
      {"not exchanged with the device", F_EDITABLE, 0, false},
      {"read-only", CAT_CONFIGURATION, 12, false},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxIntegerProperty lProperty(c.mCategory, 1, c.mDeviceId, 4);
    lProperty.SetCount(2);
    lProperty.Values()[0] = 3;
    lProperty.PostRead();
    lProperty.SetValue(1, 40);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.Restore();
    EXPECT_EQ(lProperty.Value(1), c.mRestored ? 0 : 40);
    EXPECT_EQ(lProperty.Value(0), 3);
    EXPECT_EQ(lValues.count(), c.mRestored ? 1 : 0);
    lProperty.Restore();
    EXPECT_EQ(lValues.count(), c.mRestored ? 1 : 0);
  }
}

TEST(PropertyBase, RestoreBringsBackTheCountOfTheLastRead)
{
  PxIntegerProperty lProperty(F_EDITABLE, 1, 5, 4);
  lProperty.SetCount(2);
  lProperty.PostRead();
  lProperty.Values().resize(12);
  lProperty.Restore();
  EXPECT_EQ(lProperty.Count(), 2u);
}

TEST(PropertyBase, CategoryIsTheLowBitsAndFlagsAreKept)
{
  PxIntegerProperty lProperty(CAT_USER_CALIBRATION | F_EDITABLE | F_SAVE | 0x100, 42, 77, 2);
  EXPECT_EQ(lProperty.Category(), static_cast<PtU32>(CAT_USER_CALIBRATION));
  EXPECT_EQ(lProperty.Flags(), CAT_USER_CALIBRATION | F_EDITABLE | F_SAVE | 0x100);
  EXPECT_EQ(lProperty.Id(), 42u);
  EXPECT_EQ(lProperty.DeviceId(), 77);
  EXPECT_EQ(lProperty.UnitSize(), 2u);
  EXPECT_EQ(lProperty.Stride(), 4u);
  EXPECT_EQ(lProperty.Count(), 0u);
  EXPECT_EQ(lProperty.Format(), QStringLiteral("%n %v"));
  EXPECT_EQ(lProperty.UnitType(), 0);
  EXPECT_TRUE(lProperty.Available());
}
} // namespace
