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
  } const lCases[] = {
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

} // namespace
