#include "PxIntegerProperty.h"
#include "PxResultEchoes.h"
#include "PxTest.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QSignalSpy>
#include <QTextStream>

#include <gtest/gtest.h>

namespace {
struct Echoes
{
  Echoes()
  {
    for (PxIntegerProperty* lProperty : {&mDistanceScale, &mAmplitudeScale}) {
      lProperty->SetCount(1);
      lProperty->SetLimits(0, 1000000);
    }
  }
  void Answer(const PxTestBytes& aPayload) { mProvider.ReadFromPtProtocol(mTransport.Answer(aPayload)); }
  PxIntegerProperty mDistanceScale{8, 4099, 4100, 4};
  PxIntegerProperty mAmplitudeScale{8, 4100, 4102, 4};
  PxResultEchoes mProvider{mDistanceScale, mAmplitudeScale};
  PxTestTransport mTransport;
};

// Field f (0 to 7, record order) of echo i is 0x10000 f + i, cut to the field's width. The
// amplitude (4227) goes first: devices send the first two ids crossed against the record order.
const std::uint16_t PROTOCOL_IDS[8] = {4228, 4227, 4229, 4230, 4231, 4232, 4233, 4234};
const PtU32 WIDTHS[8] = {4, 4, 4, 2, 1, 1, 4, 4};

PxTestBytes AllFields(std::uint16_t aCount)
{
  PxTestBytes lBody;
  lBody.ElementHeader(4400, 1, 4).U32(0xDEAD); // not an echo field: skipped
  for (int f : {1, 0, 2, 3, 4, 5, 6, 7}) {
    lBody.ElementHeader(PROTOCOL_IDS[f], aCount, WIDTHS[f]);
    for (PtU32 i = 0; i < aCount; ++i) {
      const PtU32 lValue = 0x10000 * f + i;
      WIDTHS[f] == 4 ? lBody.U32(lValue) : WIDTHS[f] == 2 ? lBody.U16(lValue & 0xFFFF) : lBody.U8(lValue & 0xFF);
    }
  }
  return lBody;
}

void ExpectAllFields(const PxResultEchoes& aProvider, PtU32 aCount)
{
  ASSERT_EQ(aProvider.EchoCount(), aCount);
  for (PtU32 i = 0; i < aCount; ++i) {
    const PxEcho& e = aProvider.mEchoes[i];
    EXPECT_EQ(std::vector<PtU32>({static_cast<PtU32>(e.mDistance), e.mAmplitude, e.mValue3, e.mValue4, e.mSegment,
                                  e.mFlag, e.mValue7, e.mValue8}),
              std::vector<PtU32>({i, 0x10000 + i, 0x20000 + i, i, i, i, 0x60000 + i, 0x70000 + i}))
        << "echo " << i;
  }
}
// What the echo log writes for the provider's frame, followed by what the caller writes next.
QString Logged(const PxResultEchoes& aProvider, unsigned int aTimestamp)
{
  QString lText;
  QTextStream lStream(&lText);
  aProvider.Log(lStream, aTimestamp);
  lStream << 1.5 << '|' << 7; // the caller's formatting is left as it was
  lStream.flush();
  return lText;
}
} // namespace

TEST(ResultEchoes, DecodesEveryFieldOfTheEchoesAnswer)
{
  Echoes lEchoes;
  PxResultEchoes& lProvider = lEchoes.mProvider;
  QSignalSpy lNewData(&lProvider, &PxResultProvider::NewData);
  lEchoes.Answer(AllFields(96));
  EXPECT_EQ(lNewData.count(), 1);
  ExpectAllFields(lProvider, 96);

  // A frame of the distances alone: the count follows it, the other fields stay as they were.
  lEchoes.Answer(PxTestBytes().ElementHeader(4228, 5, 4).U32(9).U32(8).U32(7).U32(6).U32(static_cast<PtU32>(-5)));
  EXPECT_EQ(lProvider.EchoCount(), 5u);
  EXPECT_EQ(lProvider.mEchoes[4].mDistance, -5);
  EXPECT_EQ(lProvider.mEchoes[4].mAmplitude, 0x10004u);

  // No echoes at all is still a frame.
  lEchoes.Answer(PxTestBytes());
  EXPECT_EQ(lProvider.EchoCount(), 0u);
  EXPECT_EQ(lNewData.count(), 3);

  // A field of another width than the record's: 1002.
  EXPECT_EQ(PxTest::ErrorCode([&] { lEchoes.Answer(PxTestBytes().ElementHeader(4231, 1, 2).U16(3)); }), 1002u);
  EXPECT_FALSE(lProvider.Updating());
}

TEST(ResultEchoes, LogWritesFixedWidthLinesWithScalesFromTheProperties)
{
  struct Case
  {
    unsigned int mTimestamp;
    Pt32 mDistance;   // millimetres
    PtU32 mAmplitude; // tenths
    PtByte mSegment, mFlag;
    const char* mLine;
  } const lCases[] = {
      {0, 12345, 0, 0, 0, "        0  0   0.00  12.35 0 \n"}, // 12345 x 0.001 in single precision
      {7, -2500, 1, 15, 0x80, "        7 15   0.10  -2.50 1 \n"},
      {4294967295u, 123456000, 100000000, 255, 0, "429496729525510000000.00123456.01 0 \n"}, // widths are minimums
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mLine);
    Echoes lEchoes;
    lEchoes.mDistanceScale.SetValue(0, 1000);
    lEchoes.mAmplitudeScale.SetValue(0, 10);
    lEchoes.Answer(PxTestBytes()
                       .ElementHeader(4228, 1, 4)
                       .U32(static_cast<PtU32>(c.mDistance))
                       .ElementHeader(4227, 1, 4)
                       .U32(c.mAmplitude)
                       .ElementHeader(4231, 1, 1)
                       .U8(c.mSegment)
                       .ElementHeader(4232, 1, 1)
                       .U8(c.mFlag));
    EXPECT_EQ(Logged(lEchoes.mProvider, c.mTimestamp), QString::fromLatin1(c.mLine) + QStringLiteral("1.5|7"));
  }
  EXPECT_EQ(Logged(Echoes().mProvider, 5), QStringLiteral("1.5|7")) << "no echoes, no line";
}
