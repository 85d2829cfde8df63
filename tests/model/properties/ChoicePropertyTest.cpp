#include "PropertyTestSupport.h"
#include "PxBitFieldProperty.h"
#include "PxEnumProperty.h"
#include "PxTextProperty.h"

namespace {
constexpr PtU32 NONE = 0xFFFFFFFFu;
using Text = PxTextProperty;

TEST(EnumProperty, AcceptsOnlyListedValuesAndLooksUpPositionsAndValues)
{
  // Values that differ from their positions show which of the two each lookup gives.
  PxEnumProperty lProperty(F_EDITABLE, 1, 1, 2);
  lProperty.AddEnumValue(20, QStringLiteral("High"));
  lProperty.AddEnumValue(10, QStringLiteral("Low"));
  lProperty.AddEnumValue(20, QStringLiteral("Maximum"));
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  ExpectRefused([&] { lProperty.SetValue(0, 2); }, 5, QStringLiteral("2"));
  ExpectRefused([&] { lProperty.SetDoubleValue(0, -1.0); }, 5, QStringLiteral("4294967295"));
  lProperty.SetValue(0, 10);
  lProperty.SetDoubleValue(0, 10.7); // cut to 10: no change
  EXPECT_EQ(lProperty.DoubleValue(0), 10.0);
  EXPECT_EQ(Indexes(lValues), std::vector<size_t>{0});
  EXPECT_EQ(lProperty.ValueIndex(0), 1u);
  lProperty.SetValueIndex(1, 2);
  EXPECT_EQ(lProperty.Value(1), 20u);
  EXPECT_EQ(lProperty.ValueIndex(1), 0u) << "the first entry with the value wins";
  EXPECT_EQ(lProperty.GetIndexFromValue(QStringLiteral("Low")), 10u) << "gives the value, not the position";
  EXPECT_EQ(lProperty.GetIndexFromValue(QStringLiteral("low")), NONE);
  EXPECT_EQ(lProperty.FormattedValue(1), QStringLiteral("High"));
  // A value that came from a device or a file without being listed still shows.
  lProperty.Values()[0] = 7;
  EXPECT_EQ(lProperty.ValueIndex(0), NONE);
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("7"));
}

TEST(BitFieldProperty, HoldsAnyWordAndNamesSingleBits)
{
  const std::pair<PtU32, PtU32> lBits[] = {{1, 0}, {0x80000000u, 31}};
  for (const auto& [lMask, lBit] : lBits) {
    EXPECT_EQ(PxBitFieldProperty::MaskToBit(lMask), lBit) << lMask;
  }
  const std::pair<PtU32, const char*> lBad[] = {{6, "6"}, {0, "0"}};
  for (const auto& [lMask, lText] : lBad) {
    ExpectRefused([&] { PxBitFieldProperty::MaskToBit(lMask); }, 14, QString::fromLatin1(lText),
                  QStringLiteral("aMask"));
  }
  PxBitFieldProperty lProperty(F_EDITABLE, 1, 1, 4);
  lProperty.SetCount(2);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  lProperty.SetValue(1, 0xFFFFFFFFu);
  lProperty.SetValue(1, 0xFFFFFFFFu);
  lProperty.SetDoubleValue(0, 5.9);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{1, 0}));
  EXPECT_EQ(lProperty.DoubleValue(1), 4294967295.0);
  EXPECT_EQ(lProperty.FormattedValue(0), QStringLiteral("5"));
}

TEST(TextProperty, KeepsTextUpToItsMaximumLengthAndReportsEverySet)
{
  const std::tuple<Text::eType, PtU32, QString> lCases[] = {
      {Text::TYPE_ASCII, 11, QStringLiteral("1234567-ABC")},
      {Text::TYPE_UTF16, 64, QString::fromUtf8("Größe 測距 \xF0\x9F\x93\xA1")},
      {Text::TYPE_UTF16, 8, QString()},
  };
  for (const auto& [lType, lMaxLength, lText] : lCases) {
    SCOPED_TRACE(lText.toStdString());
    Text lProperty(F_EDITABLE, lType, 1, 1, lMaxLength);
    EXPECT_EQ(lProperty.TextValue(0), QString()) << "no value yet";
    lProperty.SetCount(1);
    QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
    lProperty.SetTextValue(0, QStringLiteral("older and longer").left(static_cast<int>(lMaxLength) / 2));
    lProperty.SetTextValue(0, lText);
    lProperty.SetTextValue(0, lText);
    EXPECT_EQ(lProperty.FormattedValue(0), lText);
    EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{0, 0, 0})) << "even when the text is the same";
  }
}

TEST(TextProperty, RawDeviceTextIsCutToTheMaximumLength)
{
  const std::tuple<const char*, size_t, const char*> lCases[] = {
      {"V1.2\0junk", PT_ALL, "V1.2"},
      {"V1.2.3", 4, "V1.2"},
      {"0123456789ABCDEF", PT_ALL, "01234567"},
  };
  for (const auto& [lBytes, lLength, lText] : lCases) {
    Text lProperty(CAT_CONFIGURATION, Text::TYPE_ASCII, 1, 1, 8);
    lProperty.SetCount(1);
    lProperty.SetTextValue(0, QStringLiteral("XXXXXXXX"));
    lProperty.SetValue(lBytes, lLength);
    EXPECT_EQ(lProperty.TextValue(0), QString::fromLatin1(lText));
  }
}

} // namespace
