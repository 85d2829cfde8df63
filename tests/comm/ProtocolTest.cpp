#include "PtException.h"
#include "PxProtocolReader.h"
#include "PxProtocolWriter.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <array>
#include <cstring>
#include <gtest/gtest.h>

namespace
{
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

// A 12-byte record of which only one field travels: the shape of echo and trace arrays.
struct Record {
  std::uint32_t mField;
  std::uint32_t mOther[2];
};

TEST(ProtocolWriter, MessagesAreByteExact)
{
  PxProtocolWriter lWriter;
  lWriter.SetProtocolId(2);

  lWriter.StartAnswer(0x0102);
  lWriter.CloseAnswer(0);
  EXPECT_EQ(Message(lWriter), QByteArray(PxTestBytes().AnswerHeader(2, 0, 0, 0x0102)));

  const Record lRecords[3] = {{0x11111111, {1, 2}}, {0x22222222, {3, 4}}, {0x33333333, {5, 6}}};
  lWriter.StartRequest(7);
  lWriter.AddElement(40, 0, 4, nullptr, 4);
  lWriter.AddElement(41, 3, 4, lRecords, sizeof(Record));
  lWriter.CloseRequest();
  EXPECT_EQ(Message(lWriter), QByteArray(PxTestBytes()
                                           .RequestHeader(2, 7, 8 + 8 + 12)
                                           .ElementHeader(40, 0, 4)
                                           .ElementHeader(41, 3, 4)
                                           .U32(0x11111111)
                                           .U32(0x22222222)
                                           .U32(0x33333333)));

  lWriter.StartAnswer(7);
  const std::uint16_t lWords[2] = {0xBEEF, 0xCAFE};
  lWriter.AddElement(3, 2, 2, lWords, 2);
  lWriter.CloseAnswer(5);
  EXPECT_EQ(Message(lWriter), QByteArray(PxTestBytes().AnswerHeader(2, 5, 12, 7).ElementHeader(3, 2, 2).U16(0xBEEF).U16(0xCAFE)));
}

TEST(ProtocolWriter, BufferGrowsByWholeElementsAndNeverShrinks)
{
  PxProtocolWriter lWriter;
  EXPECT_EQ(lWriter.BufferSize(), 1024u);
  std::vector<std::uint8_t> lBlock(600, 0xAB);
  lWriter.StartRequest(1);
  lWriter.AddElement(1, 600, 1, lBlock.data(), 1); // 8 + 8 + 600 fits
  EXPECT_EQ(lWriter.BufferSize(), 1024u);
  lWriter.AddElement(2, 600, 1, lBlock.data(), 1); // needs 1224: grows by exactly 608
  EXPECT_EQ(lWriter.BufferSize(), 1024u + 608u);
  lWriter.CloseRequest();
  EXPECT_EQ(lWriter.Size(), 8u + 2 * 608u);
  EXPECT_EQ(Message(lWriter).right(600), QByteArray(600, char(0xAB)));

  lWriter.StartRequest(2);
  lWriter.CloseRequest();
  EXPECT_EQ(lWriter.Size(), 8u);
  EXPECT_EQ(lWriter.BufferSize(), 1024u + 608u);
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

TEST(ProtocolReader, LargePayloadGrowsTheBufferToExactlyItsLength)
{
  PxTestTransport lLink;
  PxProtocolReader& lReader = lLink.Reader();
  EXPECT_EQ(lReader.BufferSize(), 16384u);
  const QByteArray lData(20000, 'x');
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 8 + 20000, 1).ElementHeader(1, 20000, 1).Bytes(lData));
  lReader.ReadAnswerHeader(1);
  lReader.ReadPayload();
  EXPECT_EQ(lReader.BufferSize(), 20008u);
  // A later short answer keeps the larger buffer.
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 0, 1));
  lReader.ReadAnswerHeader(1);
  lReader.ReadPayload();
  EXPECT_EQ(lReader.BufferSize(), 20008u);
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

TEST(ProtocolReader, StreamingPullsStraightIntoTheDestination)
{
  PxTestTransport lLink;
  PxProtocolReader& lReader = lLink.Reader();
  lLink.Queue(PxTestBytes()
                .AnswerHeader(2, 0, 8 + 8 + 8 + 4, 1)
                .ElementHeader(3, 4, 2)
                .U16(1).U16(2).U16(3).U16(4)
                .ElementHeader(419, 1, 4)
                .U32(4096));
  lReader.ReadAnswerHeader(1);
  lReader.ResetConsumedLength();
  ASSERT_TRUE(lReader.PullHeader());
  std::array<std::uint16_t, 4> lSamples{};
  EXPECT_EQ(CodeOf([&] { lReader.PullElement(lSamples.data(), 2, 3); }), 1003u);
  lReader.PullElement(lSamples.data(), 2, 4);
  EXPECT_EQ(lSamples, (std::array<std::uint16_t, 4>{1, 2, 3, 4}));
  ASSERT_TRUE(lReader.PullHeader());
  EXPECT_EQ(lReader.Id(), 419);
  lReader.PullElement(nullptr, 4, 1);
  EXPECT_EQ(lReader.BufferSize(), 4u) << "no destination: the buffer is exactly the element";
  std::uint32_t lLength = 0;
  std::memcpy(&lLength, lReader.Data(), 4);
  EXPECT_EQ(lLength, 4096u);
  EXPECT_FALSE(lReader.PullHeader());
  EXPECT_EQ(lLink.Pending(), 0);
}

TEST(ProtocolReader, AnswerHeaderLeavesTheConsumedLengthAsItWas)
{
  PxTestTransport lLink;
  PxProtocolReader& lReader = lLink.Reader();
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 12, 1).ElementHeader(1, 1, 4).U32(0));
  lReader.ReadAnswerHeader(1);
  lReader.ReadPayload();
  EXPECT_EQ(lReader.ConsumedLength(), 12u);
  lLink.Queue(PxTestBytes().AnswerHeader(2, 0, 8, 1).ElementHeader(2, 0, 4));
  lReader.ReadAnswerHeader(1);
  EXPECT_EQ(lReader.ConsumedLength(), 12u);
  EXPECT_FALSE(lReader.PullHeader()) << "12 consumed of 8: nothing left to stream";
}

TEST(ProtocolReader, CorruptSizesEndInAProtocolErrorNotAnAllocation)
{
  struct Case {
    const char* mName;
    QByteArray mBytes;
    bool mStream;
    unsigned int mCode;
  };
  const Case lCases[] = {
    {"4 GiB payload", PxTestBytes().U16(2).U16(0).U32(0xFFFFFFF0u).U16(1).Zeros(6), false, 1004},
    {"size below the header", PxTestBytes().U16(2).U16(0).U32(15).U16(1).Zeros(6), false, 1004},
    {"element longer than the payload", PxTestBytes().AnswerHeader(2, 0, 12, 1).ElementHeader(1, 60000, 60000).U32(0), false, 1005},
    {"half an element header", PxTestBytes().AnswerHeader(2, 0, 12, 1).ElementHeader(1, 0, 4).U32(0), false, 1005},
    {"streamed element longer than the payload", PxTestBytes().AnswerHeader(2, 0, 12, 1).ElementHeader(1, 65535, 65535).U32(0), true, 1005},
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
