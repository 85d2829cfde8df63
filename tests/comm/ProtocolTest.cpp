#include "PtException.h"
#include "PxProtocolReader.h"
#include "PxProtocolWriter.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <gtest/gtest.h>

namespace {
QByteArray Message(const PxProtocolWriter& aWriter)
{
  return QByteArray(reinterpret_cast<const char*>(aWriter.Data()), static_cast<int>(aWriter.Size()));
}

unsigned int CodeOf(const std::function<void()>& aCall)
{
  try {
    aCall();
  } catch (const PxProtocolReader::Exception& e) {
    unsigned int lCode = 0;
    QString lText;
    PtExtractException(e, &lCode, &lText);
    EXPECT_EQ(lText, QStringLiteral("Protocol error"));
    return lCode;
  }
  ADD_FAILURE() << "no protocol error";
  return 0;
}

TEST(ProtocolReader, StridedItemsOfEverySizeRoundTrip)
{
  // Sizes with a scalar path and one without; the stride leaves gaps that must stay untouched.
  for (unsigned int lSize : {1u, 2u, 3u, 4u, 8u}) {
    SCOPED_TRACE(lSize);
    const unsigned long lStride = lSize + 5;
    const unsigned short lCount = 7;
    std::vector<std::uint8_t> lSource(lStride * lCount);
    for (size_t i = 0; i < lSource.size(); ++i) {
      lSource[i] = static_cast<std::uint8_t>(i * 7 + 1);
    }
    PxTestTransport lLink;
    lLink.Writer().StartAnswer(3);
    lLink.Writer().AddElement(77, lCount, lSize, lSource.data(), lStride);
    lLink.Writer().CloseAnswer(0);
    lLink.Queue(Message(lLink.Writer()));

    PxProtocolReader& lReader = lLink.Reader();
    lReader.ReadAnswerHeader(3);
    lReader.ReadPayload();
    ASSERT_TRUE(lReader.Advance());
    EXPECT_EQ(lReader.Id(), 77);
    EXPECT_EQ(lReader.Count(), lCount);
    EXPECT_EQ(lReader.UnitSize(), lSize);
    std::vector<std::uint8_t> lBack(lSource.size(), 0xEE);
    lReader.ReadElement(lBack.data(), lCount, lSize, lStride);
    for (size_t i = 0; i < lCount; ++i) {
      for (size_t b = 0; b < lStride; ++b) {
        const size_t lAt = i * lStride + b;
        EXPECT_EQ(lBack[lAt], b < lSize ? lSource[lAt] : 0xEE) << "item " << i << " byte " << b;
      }
    }
    EXPECT_FALSE(lReader.Advance());
  }
}

TEST(ProtocolReader, HeaderAndPayloadRules)
{
  PxTestTransport lLink;
  PxProtocolReader& lReader = lLink.Reader();

  // Empty payload: nothing to read, no element.
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 0, 1));
  lReader.ReadAnswerHeader(1);
  lReader.ReadPayload();
  EXPECT_FALSE(lReader.Advance());
  EXPECT_EQ(lLink.Pending(), 0);

  // A device error: payload consumed, then the code.
  lLink.Queue(PxTestBytes().AnswerHeader(2, 5, 8, 1).ElementHeader(9, 0, 1));
  lReader.ReadAnswerHeader(1);
  EXPECT_EQ(lReader.AnswerCode(), 5);
  EXPECT_EQ(CodeOf([&] { lReader.ReadPayload(); }), 5u);
  EXPECT_EQ(lLink.Pending(), 0);

  // The wrong request: exactly the 16 header bytes are gone.
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 4, 2).U32(0));
  const int lBefore = lLink.Consumed();
  EXPECT_EQ(CodeOf([&] { lReader.ReadAnswerHeader(1); }), 1000u);
  EXPECT_EQ(lLink.Consumed() - lBefore, 16);

  // The device side: only the protocol id is checked.
  PxTestTransport lDevice;
  lDevice.Queue(PxTestBytes().RequestHeader(3, 8, 0));
  EXPECT_EQ(CodeOf([&] { lDevice.Reader().ReadRequestHeader(); }), 1001u);
  lDevice.Queue(PxTestBytes().RequestHeader(2, 8, 0));
  lDevice.Reader().ReadRequestHeader();
  EXPECT_EQ(lDevice.Reader().RequestCode(), 8);
  EXPECT_EQ(lDevice.Reader().PayloadLength(), 0u);
}

TEST(ProtocolReader, ElementMismatchFailsAndStaysOnTheElement)
{
  PxTestTransport lLink;
  PxProtocolReader& lReader = lLink.Reader();
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 16, 1).ElementHeader(5, 2, 4).U32(10).U32(20));
  lReader.ReadAnswerHeader(1);
  lReader.ReadPayload();
  ASSERT_TRUE(lReader.Advance());
  std::uint32_t lValues[3] = {};
  EXPECT_EQ(CodeOf([&] { lReader.ReadElement(lValues, 3, 4, 4); }), 1002u);
  EXPECT_EQ(CodeOf([&] { lReader.ReadElement(lValues, 2, 2, 2); }), 1002u);
  lReader.ReadElement(lValues, 2, 4, 4); // the identifier is the caller's business
  EXPECT_EQ(lValues[0], 10u);
  EXPECT_EQ(lValues[1], 20u);
}

TEST(ProtocolReader, CorruptSizesEndInAProtocolErrorNotAnAllocation)
{
  const PxTestBytes lHead = PxTestBytes().AnswerHeader(2, 0, 12, 1); // 12 bytes of payload follow
  struct Case
  {
    const char* mName;
    QByteArray mBytes;
    bool mStream;
    unsigned int mCode;
  } const lCases[] = {
      {"4 GiB payload", PxTestBytes().U16(2).U16(0).U32(0xFFFFFFF0u).U16(1).Zeros(6), false, 1004},
      {"size below the header", PxTestBytes().U16(2).U16(0).U32(15).U16(1).Zeros(6), false, 1004},
      {"element longer than the payload", PxTestBytes(lHead).ElementHeader(1, 60000, 60000).U32(0), false, 1005},
      {"element one byte past the payload", PxTestBytes(lHead).ElementHeader(1, 1, 5).U32(0), false, 1005},
      {"half an element header", PxTestBytes(lHead).ElementHeader(1, 0, 4).U32(0), false, 1005},
      {"streamed element too long", PxTestBytes(lHead).ElementHeader(1, 65535, 65535).U32(0), true, 1005},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxTestTransport lLink;
    PxProtocolReader& lReader = lLink.Reader();
    lLink.Queue(c.mBytes);
    EXPECT_EQ(CodeOf([&] {
                lReader.ReadAnswerHeader(1);
                if (c.mStream) {
                  lReader.ResetConsumedLength();
                  while (lReader.PullHeader()) {
                    lReader.PullElement(nullptr, lReader.UnitSize(), lReader.Count());
                  }
                } else {
                  lReader.ReadPayload();
                  while (lReader.Advance()) {
                  }
                }
              }),
              c.mCode);
    EXPECT_LE(lReader.BufferSize(), 16384u);
  }
}
} // namespace
