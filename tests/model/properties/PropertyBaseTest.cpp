#include "PropertyTestSupport.h"
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
  const std::tuple<std::function<void()>, const char*, const char*> lCases[] = {
      {[] { RawProperty(0, 0, 4, 4); }, "aId && aUnitSize && aStride", "PxProperty"},
      {[] { RawProperty(0, 1, 4, 2); }, "aStride >= aUnitSize", "PxProperty"},
      {[] { PxIntegerProperty(0, 1, 1, 3); }, "( aUnitSize == 1 ) || ( aUnitSize == 2 ) || ( aUnitSize == 4 )",
       "PxIntegerProperty"},
      {[] { PxTextProperty(0, static_cast<PxTextProperty::eType>(3), 1, 1, 8); },
       "( aType == TYPE_ASCII ) || ( aType == TYPE_UTF16 )", "PxTextProperty"},
      {[] { PxFloatProperty(0, 1, 1, 4, 1.0f, 2).SetRawValue(0, 5); }, "mScale != 1", "PxFloatProperty"},
  };
  for (const auto& [lCall, lExpression, lFile] : lCases) {
    EXPECT_DEATH(lCall(), AssertionMessage(lExpression, lFile));
  }
}

TEST(PropertyBase, UnsupportedTypedAccessRaisesItsLogicError)
{
  RawProperty lRaw(0, 1, 4, 4);
  lRaw.SetCount(1);
  ExpectLogicError([&] { lRaw.DoubleValue(0); }, 7);
  ExpectLogicError([&] { lRaw.TextValue(0); }, 8);
  ExpectLogicError([&] { lRaw.SetDoubleValue(0, 1.0); }, 9);
  ExpectLogicError([&] { lRaw.SetTextValue(0, QStringLiteral("1")); }, 10);
  // Widening needs 4-byte slots.
  RawProperty lWide(F_EDITABLE, 3, 2, 8, true);
  lWide.SetCount(1);
  ExpectLogicError([&] { lWide.PostRead(); }, 6);
}

TEST(PropertyBase, EditableFlagsChangeOnlyAsTheEditableFlagAllows)
{
  struct Case
  {
    PtU32 mCategory;
    std::function<void(PxProperty&)> mThen; // after SetCount(2)
    int mSignals;
    std::vector<PtU32> mWords;
  };
  const Case lCases[] = {
      {F_EDITABLE, [](PxProperty&) {}, 1, {ALL_ONES, ALL_ONES}},
      {CAT_STATE, [](PxProperty& p) { p.SetEditable(true); }, 1, {0, 0}},
      {F_EDITABLE, [](PxProperty& p) { p.SetEditable(false); }, 2, {0, 0}},
      {F_EDITABLE, [](PxProperty& p) { p.SetEditable(1, 0x0Fu), p.SetEditable(1, 0x0Fu); }, 2, {ALL_ONES, 0x0Fu}},
      {CAT_CONFIGURATION, [](PxProperty& p) { p.SetEditable(0, ALL_ONES); }, 1, {0, 0}},
  };
  for (size_t lCase = 0; lCase < std::size(lCases); ++lCase) {
    SCOPED_TRACE(lCase);
    const Case& c = lCases[lCase];
    RawProperty lProperty(c.mCategory, 1, 4, 4);
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

// What a read leaves in the slots: narrow signed values are widened in place, reading value i at
// i times the unit size, so only a single value is sure to come out right.
TEST(PropertyBase, PostReadWidensSignedNarrowValues)
{
  struct Case
  {
    PtU32 mUnitSize;
    bool mSigned;
    std::vector<PtByte> mArrived; // one 4-byte slot per value
    std::vector<Pt32> mValues;
  };
  const Case lCases[] = {
      {1, true, {0xFB, 0, 0, 0}, {-5}},
      {2, true, {0x00, 0x80, 0, 0}, {-32768}},
      {2, false, {0xFF, 0xFF, 0, 0}, {65535}},
      {1, true, {0x05, 0, 0, 0, 0x07, 0, 0, 0}, {5, 0}},
      {1, true, {0xFF, 0, 0, 0, 0x07, 0, 0, 0}, {-1, -1}},
  };
  for (size_t lCase = 0; lCase < std::size(lCases); ++lCase) {
    SCOPED_TRACE(lCase);
    const Case& c = lCases[lCase];
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
  EXPECT_EQ(Indexes(lValues), std::vector<size_t>{PT_ALL});
  // A new count sizes the backup as well and keeps leading values, so it alone is no change; a
  // read of another length is.
  lProperty.SetCount(3);
  lProperty.PostRead();
  EXPECT_EQ(lProperty.Value(1), 9);
  EXPECT_EQ(lValues.count(), 1);
  lProperty.Values().resize(4);
  lProperty.PostRead();
  EXPECT_EQ(lValues.count(), 2);
}

TEST(PropertyBase, RestoreUndoesEditsOnlyOfEditableDeviceValues)
{
  const std::tuple<PtU32, PtU16, bool> lCases[] = {
      {F_EDITABLE, 12, true}, {F_EDITABLE, 0, false}, {CAT_CONFIGURATION, 12, false}};
  for (const auto& [lCategory, lDeviceId, lRestored] : lCases) {
    SCOPED_TRACE(lDeviceId);
    PxIntegerProperty lProperty(lCategory, 1, lDeviceId, 4);
    lProperty.SetCount(2);
    lProperty.Values()[0] = 3;
    lProperty.PostRead();
    lProperty.SetValue(1, 40);
    lProperty.Values().resize(12);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.Restore();
    lProperty.Restore();
    EXPECT_EQ(lProperty.Count(), lRestored ? 2u : 3u);
    EXPECT_EQ(lProperty.Value(0), 3);
    EXPECT_EQ(lProperty.Value(1), lRestored ? 0 : 40);
    EXPECT_EQ(lValues.count(), lRestored ? 1 : 0);
  }
}
} // namespace
