#include "PropertyTestSupport.h"
#include "PxIntegerProperty.h"
#include "PxTest.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <gtest/gtest.h>

namespace {
constexpr PtU32 EDITABLE_CONFIG = PxProperty::CAT_CONFIGURATION | PxProperty::F_EDITABLE | PxProperty::F_SAVE;

// Puts one answer carrying aElement in front of the reader, positioned on that element.
PxProtocolReader& AnswerWith(PxTestTransport& aLink, const PxTestBytes& aElement)
{
  PxProtocolReader& lReader = aLink.Answer(aElement, 1);
  lReader.ReadPayload();
  EXPECT_TRUE(lReader.Advance());
  return lReader;
}

TEST(PropertyOnTheWire, RequestsCarryTheValuesUnderTheDeviceId)
{
  PxTestTransport lLink;
  PxIntegerProperty lPower(EDITABLE_CONFIG, 0x400010, 0x0210, 2);
  Fill(lPower, {80, 0x1234, 65535});
  PxIntegerProperty lLocalOnly(EDITABLE_CONFIG, 0x400011, 0, 4);
  lLocalOnly.SetCount(1);
  PxIntegerProperty lEmpty(EDITABLE_CONFIG, 0x400012, 0x0212, 4);

  lLink.StartRequest(0x0101);
  lPower.WriteToPtProtocol(lLink);
  lLocalOnly.WriteToPtProtocol(lLink); // device id 0: never exchanged
  lEmpty.WriteToPtProtocol(lLink);     // no values: nothing to send
  lLink.SendRequest();
  ASSERT_EQ(lLink.Written().size(), 1u);
  // Two bytes of each 32-bit slot travel: the unit size, not the stride.
  EXPECT_EQ(lLink.Written()[0],
            QByteArray(
                PxTestBytes().RequestHeader(2, 0x0101, 14).ElementHeader(0x0210, 3, 2).U16(80).U16(0x1234).U16(65535)));
}

TEST(PropertyOnTheWire, ReadsResetEditableFlagsAndBackup)
{
  PxTestTransport lLink;
  PxIntegerProperty lProperty(EDITABLE_CONFIG, 0x400020, 0x0220, 4);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  QSignalSpy lEditable(&lProperty, &PxProperty::EditableChanged);

  lProperty.ReadFromPtProtocol(AnswerWith(lLink, PxTestBytes().ElementHeader(0x0220, 2, 4).U32(7).U32(9)));
  EXPECT_EQ(lProperty.Count(), 2u);
  EXPECT_EQ(lProperty.Value(1), 9);
  EXPECT_EQ(Indexes(lValues), (std::vector<size_t>{PT_ALL}));
  EXPECT_EQ(Indexes(lEditable), (std::vector<size_t>{PT_ALL}));
  EXPECT_TRUE(lProperty.Editable(0));

  // The device re-applies its own rule after a read; the next read resets it again.
  lProperty.SetEditable(false);
  lProperty.SetValue(0, 8); // a user edit, then the same values read again: the edit is gone
  lValues.clear();
  lProperty.ReadFromPtProtocol(AnswerWith(lLink, PxTestBytes().ElementHeader(0x0220, 2, 4).U32(7).U32(9)));
  EXPECT_TRUE(lProperty.Editable(1));
  EXPECT_EQ(lProperty.Value(0), 7);
  EXPECT_EQ(lProperty.Values(), lProperty.Backup());
}

TEST(PropertyOnTheWire, WireWidthsAgainstPropertyWidths)
{
  struct Case
  {
    const char* mName;
    PtU32 mPropertyUnit;
    PxTestBytes mElement;
    std::vector<Pt32> mExpected; // empty: the read fails with 1002
  } const lCases[] = {
      {"narrower items arrive zero-extended",
       2,
       PxTestBytes().ElementHeader(0x30, 2, 1).U8(0xFF).U8(0x80),
       {0xFF, 0x80}},
      {"wider items are refused", 2, PxTestBytes().ElementHeader(0x30, 1, 4).U32(5), {}},
      {"no items", 4, PxTestBytes().ElementHeader(0x30, 0, 4), {}},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxTestTransport lLink;
    PxIntegerProperty lProperty(EDITABLE_CONFIG, 0x400030, 0x30, c.mPropertyUnit);
    Fill(lProperty, {42});
    PxProtocolReader& lReader = AnswerWith(lLink, c.mElement);
    if (c.mExpected.empty() && lReader.Count() != 0) {
      EXPECT_EQ(PxTest::ErrorCode([&] { lProperty.ReadFromPtProtocol(lReader); }), 1002u);
      EXPECT_EQ(lProperty.Count(), 1u) << "a refused answer leaves the property as it was";
      EXPECT_EQ(lProperty.Value(0), 42);
      continue;
    }
    lProperty.ReadFromPtProtocol(lReader);
    ASSERT_EQ(lProperty.Count(), c.mExpected.size());
    for (size_t i = 0; i < c.mExpected.size(); ++i) {
      EXPECT_EQ(lProperty.Value(i), c.mExpected[i]) << i;
    }
  }
}

} // namespace
