#include "PropertyTestSupport.h"
#include "PxBitFieldProperty.h"
#include "PxEnumProperty.h"
#include "PxTextProperty.h"

namespace {
constexpr PtU32 NONE = 0xFFFFFFFFu;

TEST(EnumProperty, AcceptsOnlyListedValues)
{
  PxEnumProperty lProperty(F_EDITABLE, 1, 1, 1);
  lProperty.AddEnumValue(0, QStringLiteral("Off"));
  lProperty.AddEnumValue(1, QStringLiteral("On"));
  lProperty.SetCount(1);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  ExpectRefused([&] { lProperty.SetValue(0, 2); }, 5, QStringLiteral("2"));
  ExpectRefused([&] { lProperty.SetDoubleValue(0, -1.0); }, 5, QStringLiteral("4294967295"));
  lProperty.SetValue(0, 0);
  EXPECT_EQ(lValues.count(), 0);
  lProperty.SetDoubleValue(0, 1.7);
  lProperty.SetValue(0, 1);
  EXPECT_EQ(lProperty.Value(0), 1u);
  EXPECT_EQ(lProperty.DoubleValue(0), 1.0);
  EXPECT_EQ(lValues.count(), 1);
  EXPECT_EQ(lProperty.ValueIndex(0), 1u);
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("On"));
}

TEST(EnumProperty, LooksUpPositionsAndValues)
{
  // Values that differ from their positions show which of the two each lookup gives.
  PxEnumProperty lProperty(F_EDITABLE, 1, 1, 2);
  lProperty.AddEnumValue(20, QStringLiteral("High"));
  lProperty.AddEnumValue(10, QStringLiteral("Low"));
  lProperty.AddEnumValue(20, QStringLiteral("Maximum"));
  lProperty.SetCount(2);
  lProperty.SetValueIndex(1, 2);
  EXPECT_EQ(lProperty.Value(1), 20u);
  EXPECT_EQ(lProperty.ValueIndex(1), 0u) << "the first entry with the value wins";
  EXPECT_EQ(lProperty.ValueIndex(0), NONE) << "0 is not listed";
  EXPECT_EQ(lProperty.GetIndexFromValue(QStringLiteral("Low")), 10u) << "gives the value, not the position";
  EXPECT_EQ(lProperty.GetIndexFromValue(QStringLiteral("low")), NONE);
  EXPECT_EQ(lProperty.FormattedValue(1), QStringLiteral("High"));
  // A value that came from a device or a file without being listed still shows.
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("0"));
  EXPECT_DEATH(lProperty.SetValueIndex(0, 3), AssertionMessage("aEnumIndex < mEnumValues.size()", "PxEnumProperty"));

  PxEnumProperty lEmpty(F_EDITABLE, 2, 1, 4);
  lEmpty.SetCount(1);
  EXPECT_EQ(lEmpty.ValueIndex(0), NONE);
  EXPECT_EQ(lEmpty.GetIndexFromValue(QString()), NONE);
}

TEST(BitFieldProperty, MaskToBitAcceptsSingleBitsOnly)
{
  const std::pair<PtU32, PtU32> lBits[] = {{1, 0}, {8, 3}, {0x10000, 16}, {0x80000000u, 31}};
  for (const auto& c : lBits) {
    EXPECT_EQ(PxBitFieldProperty::MaskToBit(c.first), c.second) << c.first;
  }
  const std::pair<PtU32, const char*> lBad[] = {{6, "6"}, {0, "0"}, {0xFFFFFFFFu, "ffffffff"}, {0x8001, "8001"}};
  for (const auto& c : lBad) {
    ExpectRefused([&] { PxBitFieldProperty::MaskToBit(c.first); }, 14, QString::fromLatin1(c.second),
                  QStringLiteral("aMask"));
  }
}

TEST(BitFieldProperty, HoldsAnyWordAsUnsigned)
{
  PxBitFieldProperty lProperty(F_EDITABLE, 1, 1, 4);
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetValue(1, 0xFFFFFFFFu);
  lProperty.SetValue(1, 0xFFFFFFFFu);
  lProperty.SetDoubleValue(0, 5.9);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{1, 0}));
  EXPECT_EQ(lProperty.Value(0), 5u);
  EXPECT_EQ(lProperty.DoubleValue(1), 4294967295.0);
  EXPECT_EQ(lProperty.FormattedValue(1), QStringLiteral("4294967295"));
}

struct TextCase
{
  const char* mName;
  PxTextProperty::eType mType;
  PtU32 mMaxLength;
  QString mText;
};

TEST(TextProperty, KeepsTextUpToItsMaximumLength)
{
  const TextCase lCases[] = {
      {"ascii", PxTextProperty::TYPE_ASCII, 11, QStringLiteral("1234567-ABC")},
      {"ascii, shorter", PxTextProperty::TYPE_ASCII, 11, QStringLiteral("12")},
      {"utf-16 at capacity", PxTextProperty::TYPE_UTF16, 32, QStringLiteral("Sensor Nord-Ost 0123456789").left(16)},
      {"utf-16 beyond latin", PxTextProperty::TYPE_UTF16, 64, QString::fromUtf8("Größe 測距 \xF0\x9F\x93\xA1")},
      {"empty", PxTextProperty::TYPE_UTF16, 8, QString()},
  };
  for (const TextCase& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxTextProperty lProperty(F_EDITABLE, c.mType, 1, 1, c.mMaxLength);
    EXPECT_EQ(lProperty.TextValue(0), QString()) << "no value yet";
    lProperty.SetCount(1);
    lProperty.SetTextValue(0, QStringLiteral("previous, longer text").left(static_cast<int>(c.mMaxLength) / 2));
    lProperty.SetTextValue(0, c.mText);
    EXPECT_EQ(lProperty.TextValue(0), c.mText);
    EXPECT_EQ(lProperty.FormattedValue(0), c.mText);
    EXPECT_EQ(lProperty.Count(), 1u);
    EXPECT_EQ(lProperty.MaxLength(), c.mMaxLength);
  }
}

TEST(TextProperty, TooLongTextIsAProgrammingError)
{
  PxTextProperty lUtf16(F_EDITABLE, PxTextProperty::TYPE_UTF16, 1, 1, 32);
  lUtf16.SetCount(1);
  EXPECT_DEATH(lUtf16.SetTextValue(0, QString(17, QLatin1Char('x'))),
               AssertionMessage("aValue.length()*2 <= (int) MaxLength()", "PxTextProperty"));
  PxTextProperty lAscii(F_EDITABLE, PxTextProperty::TYPE_ASCII, 2, 1, 11);
  lAscii.SetCount(1);
  EXPECT_DEATH(lAscii.SetTextValue(0, QString(12, QLatin1Char('x'))),
               AssertionMessage("lTmp.length() <= (int) MaxLength()", "PxTextProperty"));
  EXPECT_DEATH(lAscii.TextValue(1), AssertionMessage("aIndex == 0", "PxTextProperty"));
}

TEST(TextProperty, EverySetReportsTheTextEvenUnchanged)
{
  PxTextProperty lProperty(F_EDITABLE, PxTextProperty::TYPE_ASCII, 1, 1, 16);
  lProperty.SetCount(1);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetTextValue(0, QStringLiteral("SN-1"));
  lProperty.SetTextValue(0, QStringLiteral("SN-1"));
  lProperty.SetValue("SN-1", PT_ALL);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{0, 0, 0}));
}

TEST(TextProperty, RawDeviceTextIsCutToTheMaximumLength)
{
  struct Case
  {
    const char* mName;
    const char* mBytes;
    size_t mLength;
    const char* mText;
  };
  const Case lCases[] = {
      {"up to the NUL", "V1.2\0junk", PT_ALL, "V1.2"},
      {"given length", "V1.2.3", 4, "V1.2"},
      {"longer than the field", "0123456789ABCDEF", PT_ALL, "01234567"},
      {"given length beyond the field", "0123456789ABCDEF", 12, "01234567"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxTextProperty lProperty(CAT_CONFIGURATION, PxTextProperty::TYPE_ASCII, 1, 1, 8);
    lProperty.SetCount(1);
    lProperty.SetTextValue(0, QStringLiteral("XXXXXXXX"));
    lProperty.SetValue(c.mBytes, c.mLength);
    EXPECT_EQ(lProperty.TextValue(0), QString::fromLatin1(c.mText));
  }
  PxTextProperty lUtf16(CAT_CONFIGURATION, PxTextProperty::TYPE_UTF16, 2, 1, 8);
  lUtf16.SetCount(1);
  QSignalSpy lValues(&lUtf16, &PxProperty::ValueChanged);
  ExpectLogicError([&] { lUtf16.SetValue("abc", PT_ALL); }, 11);
  EXPECT_EQ(lValues.count(), 1);
}

TEST(TextProperty, CopiesBetweenTextKinds)
{
  using T = PxTextProperty;
  struct Case
  {
    const char* mName;
    T::eType mTo;
    PtU32 mToLength;
    T::eType mFrom;
    PtU32 mFromLength;
  };
  const Case lCases[] = {
      {"ascii to ascii", T::TYPE_ASCII, 12, T::TYPE_ASCII, 8},
      {"ascii widened to utf-16", T::TYPE_UTF16, 16, T::TYPE_ASCII, 8},
      {"utf-16 to utf-16", T::TYPE_UTF16, 16, T::TYPE_UTF16, 16},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    T lFrom(CAT_CONFIGURATION, c.mFrom, 1, 1, c.mFromLength);
    lFrom.SetCount(1);
    lFrom.SetTextValue(0, QStringLiteral("PX-42"));
    T lTo(CAT_CONFIGURATION, c.mTo, 2, 1, c.mToLength);
    lTo.SetCount(1);
    lTo.SetTextValue(0, QStringLiteral("previous"));
    QSignalSpy lValues(&lTo, &PxProperty::ValueChanged);
    lTo.SetValue(lFrom);
    EXPECT_EQ(lTo.TextValue(0), QStringLiteral("PX-42"));
    EXPECT_EQ(lValues.count(), 1);
    lTo.SetValue(lTo);
    EXPECT_EQ(lTo.TextValue(0), QStringLiteral("PX-42")) << "copied onto itself";
  }
  T lAscii(CAT_CONFIGURATION, T::TYPE_ASCII, 1, 1, 16);
  lAscii.SetCount(1);
  T lUtf16(CAT_CONFIGURATION, T::TYPE_UTF16, 2, 1, 16);
  lUtf16.SetCount(1);
  ExpectLogicError([&] { lAscii.SetValue(lUtf16); }, 12);
  T lShortAscii(CAT_CONFIGURATION, T::TYPE_ASCII, 3, 1, 8);
  T lShortUtf16(CAT_CONFIGURATION, T::TYPE_UTF16, 4, 1, 15);
  EXPECT_DEATH(lShortAscii.SetValue(lAscii), AssertionMessage("lLenDest >= lLenSrc", "PxTextProperty"));
  EXPECT_DEATH(lShortUtf16.SetValue(lShortAscii), AssertionMessage("lLenDest >= lLenSrc*2", "PxTextProperty"));
}
} // namespace
