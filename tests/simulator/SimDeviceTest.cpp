// The simulated sensor at the protocol level, through the in-process transport: what each request
// answers, what it refuses, and how the settings show in the data.

#include "PxInProcessConnection.h"
#include "PxSimDevice.h"
#include "PxSimFirmware.h"
#include "PxTestBytes.h"
#include "SimTestClient.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>

using namespace PxSimProtocol;

namespace {
struct Bench
{
  explicit Bench(const QString& aStateDir = QString())
      : mDevice(aStateDir)
      , mLink(mDevice)
      , mClient(mLink)
  {
    mLink.Connect();
  }
  PxSimDevice mDevice;
  PxInProcessConnection mLink;
  SimTestClient mClient;
};
} // namespace

TEST(SimDevice, RefusedWritesNameTheElementAndChangeNothing)
{
  Bench b;
  const float lNaN = std::nanf("");
  struct Case
  {
    const char* mWhat;
    PtU16 mId;
    PtU16 mCount;
    QByteArray mData;
    unsigned int mCode;
  } const lCases[] = {
      {"unknown id", 0x7777, 1, PxTestBytes().U32(1), ANSWER_BAD_ELEMENT},
      {"read-only constant", ID_CHANNEL_COUNT, 1, PxTestBytes().U32(8), ANSWER_READ_ONLY},
      {"power above 100 %", ID_LIGHT_POWER, 1, PxTestBytes().U8(101), ANSWER_OUT_OF_RANGE},
      {"threshold not a number", ID_DETECTION_THRESHOLD, 1, PxTestBytes().F32(lNaN), ANSWER_OUT_OF_RANGE},
  };
  for (const Case& c : lCases) {
    // A valid change rides along: the request is all or nothing.
    const unsigned int lCode = b.mClient.Code(REQ_WRITE_CONFIG, [&](PxProtocolWriter& w) {
      const PtByte lPower = 40;
      w.AddElement(ID_LIGHT_POWER, 1, 1, &lPower, 1);
      w.AddElement(c.mId, c.mCount, static_cast<unsigned int>(c.mData.size() / c.mCount), c.mData.constData(),
                   static_cast<unsigned long>(c.mData.size() / c.mCount));
    });
    EXPECT_EQ(lCode, c.mCode) << c.mWhat;
    EXPECT_TRUE(b.mLink.Connected()) << c.mWhat;
    SimTestClient::Answer lError = SimTestClient::Collect(b.mLink.Reader());
    ASSERT_EQ(lError.count(ID_ERROR_ELEMENT), 1u) << c.mWhat;
    EXPECT_EQ(lError.at(ID_ERROR_ELEMENT).At<PtU16>(), c.mId) << c.mWhat;
    EXPECT_EQ(b.mClient.Read(ID_LIGHT_POWER).At<PtByte>(), 100) << c.mWhat << ": nothing may be applied";
  }
}

TEST(SimDevice, BadRequestsGetAnswerCodesAndKeepTheLink)
{
  Bench b;
  struct Case
  {
    const char* mWhat;
    PtU16 mRequest;
    QByteArray mPayload;
    unsigned int mCode;
  } const lCases[] = {
      {"unknown request", 77, QByteArray(), ANSWER_UNKNOWN_REQUEST},
      {"element running past the payload", REQ_WRITE_CONFIG, PxTestBytes().ElementHeader(ID_LIGHT_POWER, 4, 4).U32(1),
       ANSWER_BAD_ELEMENT},
      {"select of an unknown id", REQ_READ_CONFIG, PxTestBytes().ElementHeader(ID_SELECT, 1, 2).U16(0x7777),
       ANSWER_BAD_ELEMENT},
      {"memory read without address", REQ_READ_MEMORY,
       PxTestBytes().ElementHeader(ID_MEMORY_AREA, 1, 1).U8(0).ElementHeader(ID_MEMORY_LENGTH, 1, 4).U32(4),
       ANSWER_MISSING_ELEMENT},
      {"firmware chunk without an update", REQ_FIRMWARE_CHUNK,
       PxTestBytes().ElementHeader(ID_FIRMWARE_OFFSET, 1, 4).U32(0).ElementHeader(ID_FIRMWARE_DATA, 1, 1).U8(0),
       ANSWER_SEQUENCE},
  };
  for (const Case& c : lCases) {
    const QByteArray lRequest = PxTestBytes().RequestHeader(2, c.mRequest, c.mPayload.size()).Bytes(c.mPayload);
    b.mLink.Write(lRequest.constData(), static_cast<unsigned int>(lRequest.size()));
    PxProtocolReader& lReader = b.mLink.Reader();
    lReader.ReadAnswerHeader(c.mRequest);
    EXPECT_EQ(lReader.AnswerCode(), c.mCode) << c.mWhat;
    EXPECT_THROW(lReader.ReadPayload(), PxProtocolReader::Exception) << c.mWhat;
  }
  EXPECT_EQ(b.mClient.Exchange(REQ_STATE).count(ID_TIMESTAMP), 1u) << "the stream is still in step";

  // A header that is not ours cannot be answered: the device closes the link.
  QSignalSpy lLost(&b.mLink, &PxConnection::Disconnected);
  const QByteArray lForeign = PxTestBytes().RequestHeader(7, REQ_STATE, 0);
  b.mLink.Write(lForeign.constData(), static_cast<unsigned int>(lForeign.size()));
  char lByte;
  EXPECT_THROW(b.mLink.Read(&lByte, 1), PxConnection::Exception);
  EXPECT_EQ(lLost.count(), 1);
  EXPECT_FALSE(b.mLink.Connected());
}

TEST(SimDevice, SettingsShowInTheData)
{
  Bench b;
  b.mClient.Scene(7, SCENE_FREEZE_MOTION | SCENE_NO_NOISE);
  auto lEchoes = [&] { return b.mClient.Exchange(REQ_ECHOES); };

  SimTestClient::Answer lFirst = lEchoes();
  const PtU16 lCount = lFirst.at(ID_ECHO_DISTANCE).mCount;
  ASSERT_LE(lCount, MAX_ECHOES);
  // Without noise the far echo of a middle segment is the wall, 20 m away (millimetres on the wire).
  std::map<int, std::vector<double>> lBySegment;
  for (PtU16 i = 0; i < lCount; ++i) {
    lBySegment[lFirst.at(ID_ECHO_SEGMENT).At<PtByte>(i)].push_back(lFirst.at(ID_ECHO_DISTANCE).At<Pt32>(i) / 1000.0);
  }
  EXPECT_EQ(lBySegment.size(), 16u);
  EXPECT_NEAR(lBySegment[8].back(), 20.0 / std::cos(1.5 * M_PI / 180), 0.002);
  EXPECT_NEAR(lBySegment[3].front(), 6.0, 0.002);

  // Segment mask: disabled segments send no echoes and their traces carry no pulse.
  b.mClient.Write<PtU32>(ID_SEGMENT_MASK, 0x00FF);
  SimTestClient::Answer lMasked = lEchoes();
  for (PtU16 i = 0; i < lMasked.at(ID_ECHO_SEGMENT).mCount; ++i) {
    EXPECT_LT(lMasked.at(ID_ECHO_SEGMENT).At<PtByte>(i), 8);
  }
  SimTestClient::Answer lTraces = b.mClient.Exchange(REQ_RAW_TRACES);
  EXPECT_EQ(lTraces.at(ID_TRACE_ACTIVE).At<PtU32>(), 0x00FFu);
  const PtU32 lLength = lTraces.at(ID_TRACE_LENGTH_ELEMENT).At<PtU32>();
  const auto lPeak = [&](size_t aChannel) {
    PtU16 lMax = 0;
    for (size_t k = 0; k < lLength; ++k) {
      lMax = std::max(lMax, lTraces.at(ID_TRACE_SAMPLES).At<PtU16>(aChannel * lLength + k));
    }
    return lMax;
  };
  EXPECT_GT(lPeak(3), 2000) << "an enabled segment sees its target";
  EXPECT_EQ(lPeak(11), 1000) << "a disabled segment sees only the baseline";
  b.mClient.Write<PtU32>(ID_SEGMENT_MASK, 0xFFFF);

  // Light power: half the power, half the amplitude of the same echo (the pole in segment 3), and
  // the far wall sinks below the detection threshold.
  const auto lPole = [&](const SimTestClient::Answer& aEchoes) {
    for (PtU16 i = 0; i < aEchoes.at(ID_ECHO_SEGMENT).mCount; ++i) {
      if (aEchoes.at(ID_ECHO_SEGMENT).At<PtByte>(i) == 3 && aEchoes.at(ID_ECHO_INDEX).At<PtU16>(i) == 0) {
        return aEchoes.at(ID_ECHO_AMPLITUDE).At<PtU32>(i);
      }
    }
    return PtU32(0);
  };
  const PtU32 lFull = lPole(lEchoes());
  b.mClient.Write<PtByte>(ID_LIGHT_POWER, 50);
  SimTestClient::Answer lDimmed = lEchoes();
  EXPECT_NEAR(lPole(lDimmed), lFull / 2.0, 1.0);
  EXPECT_LT(lDimmed.at(ID_ECHO_DISTANCE).mCount, lCount);
  b.mClient.Write<PtByte>(ID_LIGHT_POWER, 100);
}

TEST(SimDevice, MemoriesReadBackWhatWasWrittenAndGuardTheirBounds)
{
  Bench b;
  const QByteArray lData("\x11\x22\x33\x44\x55", 5);
  // A memory request: aLength bytes read, or with aLength 0 lData written.
  auto lAccess = [&](PtByte aArea, PtU32 aAddress, PtU32 aLength) {
    return [=, &lData](PxProtocolWriter& w) {
      w.AddElement(ID_MEMORY_AREA, 1, 1, &aArea, 1);
      w.AddElement(ID_MEMORY_ADDRESS, 1, 4, &aAddress, 4);
      aLength ? w.AddElement(ID_MEMORY_LENGTH, 1, 4, &aLength, 4)
              : w.AddElement(ID_MEMORY_DATA, 5, 1, lData.constData(), 1);
    };
  };
  b.mClient.Exchange(REQ_WRITE_MEMORY, lAccess(MEMORY_RAM, 0xFFF0, 0));
  auto lRam = [&] {
    return b.mClient.Exchange(REQ_READ_MEMORY, lAccess(MEMORY_RAM, 0xFFF0, 5)).at(ID_MEMORY_DATA).mData;
  };
  EXPECT_EQ(lRam(), lData);

  struct Case
  {
    PtByte mArea;
    PtU32 mAddress;
    PtU32 mLength;
    unsigned int mCode;
  } const lCases[] = {
      {MEMORY_RAM, 0xFFFC, 5, ANSWER_OUT_OF_RANGE},
      {MEMORY_RAM, 0, 4097, ANSWER_OUT_OF_RANGE},
      {MEMORY_REGISTERS, 0, 256, 0},
      {MEMORY_REGISTERS, 1, 256, ANSWER_OUT_OF_RANGE},
      {9, 0, 1, ANSWER_OUT_OF_RANGE},
  };
  for (const Case& c : lCases) {
    EXPECT_EQ(b.mClient.Code(REQ_READ_MEMORY, lAccess(c.mArea, c.mAddress, c.mLength)), c.mCode)
        << int(c.mArea) << " " << c.mAddress;
  }
  EXPECT_EQ(b.mClient.Code(REQ_WRITE_MEMORY, lAccess(MEMORY_FIRMWARE, 0, 0)), unsigned(ANSWER_READ_ONLY));
  b.mClient.Exchange(REQ_RESET);
  EXPECT_EQ(lRam(), QByteArray(5, '\0')) << "RAM does not survive a restart";
}

TEST(SimDevice, FirmwareUpdateVerifiesItsImageAndRestartsOnTheNewVersion)
{
  QTemporaryDir lState;
  std::vector<PtByte> lImage(10000);
  for (size_t i = 0; i < lImage.size(); ++i) {
    lImage[i] = static_cast<PtByte>(i * 7 + 3);
  }
  const PtU32 lCrc = PxSimFirmware::Crc32(lImage.data(), lImage.size());
  EXPECT_EQ(PxSimFirmware::Crc32(reinterpret_cast<const PtByte*>("123456789"), 9), 0xCBF43926u)
      << "the standard check value";

  Bench b(lState.path());
  auto lBegin = [&](PtU32 aCrc, PtU32 aSize) {
    return b.mClient.Code(REQ_FIRMWARE_BEGIN, [&](PxProtocolWriter& w) {
      const PtByte lComponent = COMPONENT_SOFTWARE;
      const PtU16 lVersion = 0x8000 | 300;
      w.AddElement(ID_FIRMWARE_COMPONENT, 1, 1, &lComponent, 1);
      w.AddElement(ID_FIRMWARE_SIZE, 1, 4, &aSize, 4);
      w.AddElement(ID_FIRMWARE_CRC, 1, 4, &aCrc, 4);
      w.AddElement(ID_FIRMWARE_VERSION, 1, 2, &lVersion, 2);
    });
  };
  std::vector<int> lProgress;
  auto lSend = [&](PtU32 aFrom, PtU32 aTo) {
    for (PtU32 lOffset = aFrom; lOffset < aTo; lOffset += 4096) {
      const PtU16 lLength = static_cast<PtU16>(std::min<PtU32>(4096, aTo - lOffset));
      SimTestClient::Answer lAnswer = b.mClient.Exchange(REQ_FIRMWARE_CHUNK, [&](PxProtocolWriter& w) {
        w.AddElement(ID_FIRMWARE_OFFSET, 1, 4, &lOffset, 4);
        w.AddElement(ID_FIRMWARE_DATA, lLength, 1, lImage.data() + lOffset, 1);
      });
      lProgress.push_back(lAnswer.at(ID_FIRMWARE_PROGRESS).At<PtByte>());
    }
  };
  auto lEnd = [&] { return b.mClient.Code(REQ_FIRMWARE_END, [](PxProtocolWriter&) {}); };

  // Wrong checksum, then an incomplete image, then a chunk out of order: each refused.
  ASSERT_EQ(lBegin(lCrc ^ 1, 10000), 0u);
  EXPECT_EQ(b.mClient.Exchange(REQ_STATE).at(ID_ACQUISITION_STATE).At<PtU16>(), ACQUISITION_UPDATING);
  lSend(0, 10000);
  EXPECT_EQ(lEnd(), unsigned(ANSWER_CHECKSUM));
  ASSERT_EQ(lBegin(lCrc, 10000), 0u);
  lSend(0, 4096);
  EXPECT_EQ(lEnd(), unsigned(ANSWER_SIZE));
  ASSERT_EQ(lBegin(lCrc, 10000), 0u);
  EXPECT_EQ(b.mClient.Code(REQ_FIRMWARE_CHUNK,
                           [&](PxProtocolWriter& w) {
                             const PtU32 lOffset = 4096;
                             w.AddElement(ID_FIRMWARE_OFFSET, 1, 4, &lOffset, 4);
                             w.AddElement(ID_FIRMWARE_DATA, 16, 1, lImage.data(), 1);
                           }),
            unsigned(ANSWER_SEQUENCE));
  EXPECT_EQ(lBegin(lCrc, MAX_FIRMWARE_SIZE + 1), unsigned(ANSWER_SIZE));

  ASSERT_EQ(lBegin(lCrc, 10000), 0u);
  lProgress.clear();
  lSend(0, 10000);
  EXPECT_EQ(lProgress, (std::vector<int>{40, 81, 100}));
  ASSERT_EQ(lEnd(), 0u);
  SimTestClient::Answer lIdentity = b.mClient.Exchange(REQ_IDENTITY);
  EXPECT_EQ(lIdentity.at(ID_SOFTWARE_VERSION).At<PtU16>(), 0x8000 | 300);
  EXPECT_EQ(lIdentity.at(ID_SOFTWARE_CRC).At<PtU32>(), lCrc);
  EXPECT_EQ(b.mClient.Exchange(REQ_STATE).at(ID_FRAME_COUNTER).At<PtU32>(), 0u) << "restarted";

  Bench lAfter(lState.path());
  EXPECT_EQ(lAfter.mClient.Exchange(REQ_IDENTITY).at(ID_SOFTWARE_CRC).At<PtU32>(), lCrc)
      << "the installed version survives the simulator";
}
