#include "PropertyTestSupport.h"
#include "PxIntegerProperty.h"

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

} // namespace
