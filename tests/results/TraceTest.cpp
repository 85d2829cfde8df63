#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxResultTrace.h"
#include "PxTest.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {
// The sensor's properties that drive a trace provider, and the provider.
struct Traces
{
  explicit Traces(bool aThirtyTwoBit = false, int aChannels = 2, float aPointStep = 0.5f)
  {
    for (PxIntegerProperty* lProperty : {&mChannels, &mAmplitudeScale, &mTimebaseScale}) {
      lProperty->SetCount(1);
      lProperty->SetLimits(0, 1000000);
    }
    mPointStep.SetCount(1);
    mPointStep.SetLimits(0.0f, 100.0f);
    mPointStep.SetValue(0, aPointStep);
    mProvider = std::make_unique<PxResultTrace>(aThirtyTwoBit, mChannels, mAmplitudeScale, mPointStep);
    mProvider->SetTimebaseScale(&mTimebaseScale);
    mChannels.SetValue(0, aChannels);
  }
  void Answer(const PxTestBytes& aPayload) { mProvider->ReadFromPtProtocol(mTransport.Answer(aPayload)); }
  const PxTrace& Trace(size_t aIndex) const { return mProvider->Traces().at(aIndex); }

  PxIntegerProperty mChannels{8, 4117, 432, 4};
  PxIntegerProperty mAmplitudeScale{8, 4098, 4101, 4};
  PxIntegerProperty mTimebaseScale{8, 4200, 4201, 4};
  PxFloatProperty mPointStep{8, 4105, 4107, 4, 1.0f, 3};
  std::unique_ptr<PxResultTrace> mProvider;
  PxTestTransport mTransport;
};

// A traces answer of 2 channels of aLength samples (sample k of channel c = 1000 c + k), with
// the received values 0xA1 and 0xB2 and the timebase delays aDelay0 and aDelay1.
PxTestBytes TwoChannels(PtU32 aLength, Pt32 aDelay0, Pt32 aDelay1, PtU32 aSampleSize = 2)
{
  PxTestBytes lBody;
  lBody.ElementHeader(419, 1, 4).U32(aLength).ElementHeader(420, 1, 4).U32(0xA1).ElementHeader(421, 1, 4).U32(0xB2);
  lBody.ElementHeader(3, 2, aLength * aSampleSize);
  for (PtU32 c = 0; c < 2; ++c) {
    for (PtU32 k = 0; k < aLength; ++k) {
      aSampleSize == 4 ? lBody.U32(1000 * c + k) : lBody.U16(static_cast<std::uint16_t>(1000 * c + k));
    }
  }
  return lBody.ElementHeader(4116, 2, 4).U32(static_cast<PtU32>(aDelay0)).U32(static_cast<PtU32>(aDelay1));
}

std::vector<PtU32> Samples(const PxTrace& aTrace)
{
  std::vector<PtU32> lSamples;
  for (size_t k = 0; k < aTrace.Length(); ++k) {
    lSamples.push_back(aTrace.RawSample(k));
  }
  return lSamples;
}
} // namespace

TEST(ResultTrace, StreamsTheTracesAnswerIntoTheSampleBuffer)
{
  Traces lTraces;
  QSignalSpy lNewData(lTraces.mProvider.get(), &PxResultProvider::NewData);
  lTraces.Answer(TwoChannels(3, 2000, -500));
  EXPECT_EQ(lNewData.count(), 1);
  EXPECT_EQ(Samples(lTraces.Trace(0)), (std::vector<PtU32>{0, 1, 2}));
  EXPECT_EQ(Samples(lTraces.Trace(1)), (std::vector<PtU32>{1000, 1001, 1002}));
  EXPECT_EQ(lTraces.Trace(1).RawTimebaseDelay(), -500);
  EXPECT_EQ(lTraces.mProvider->FirstReceivedValue(), 0xA1u);
  EXPECT_EQ(lTraces.mProvider->SecondReceivedValue(), 0xB2u);
  EXPECT_EQ(lTraces.mTransport.Pending(), 0);

  // A new length ahead of the samples reshapes the buffer before they arrive.
  lTraces.Answer(TwoChannels(5, 0, 0));
  EXPECT_EQ(lTraces.mProvider->SampleBuffer().size(), 2u * 2u * 5u);
  EXPECT_EQ(Samples(lTraces.Trace(1)), (std::vector<PtU32>{1000, 1001, 1002, 1003, 1004}));

  // Samples of another length than announced: 1003, and no frame announced.
  EXPECT_EQ(PxTest::ErrorCode([&] { lTraces.Answer(PxTestBytes().ElementHeader(3, 2, 8).Zeros(16)); }), 1003u);
  EXPECT_EQ(lNewData.count(), 2);
  EXPECT_FALSE(lTraces.mProvider->Updating());

  // A length whose samples could never arrive in one answer is refused, not allocated (on a new
  // link: the one above is out of step and would be dropped).
  PxTestTransport lNewLink;
  EXPECT_EQ(PxTest::ErrorCode([&] {
              lTraces.mProvider->ReadFromPtProtocol(
                  lNewLink.Answer(PxTestBytes().ElementHeader(419, 1, 4).U32(1u << 30)));
            }),
            1003u);
  EXPECT_EQ(lTraces.mProvider->TraceLength(), 5u);
  // Nor is a channel count that one answer's 16-bit count cannot carry.
  EXPECT_TRUE(Traces(false, 0x10000).mProvider->Traces().empty());
}

TEST(ResultTrace, DistancesAndLimits)
{
  Traces lTraces;
  lTraces.mTimebaseScale.SetValue(0, 1000); // delays in millimetres
  lTraces.mAmplitudeScale.SetValue(0, 4);
  lTraces.Answer(TwoChannels(10, 2000, 0));
  const PxTrace& lTrace = lTraces.Trace(0);
  EXPECT_FLOAT_EQ(lTrace.TimebaseDelay(), 2.0f);

  struct Case
  {
    float mDistance;
    bool mClamp, mRound;
    Pt32 mIndex;
  } const lCases[] = {
      {4.3f, false, false, 4}, {4.3f, false, true, 5},  {1.0f, false, false, -1}, {1.0f, true, false, 0},
      {20.0f, true, false, 9}, {6.9f, false, true, -1}, {1.9f, false, false, 0}, // truncated toward zero
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(testing::Message() << c.mDistance << " clamp " << c.mClamp << " round " << c.mRound);
    EXPECT_EQ(lTrace.IndexFromDistance(c.mDistance, c.mClamp, c.mRound), c.mIndex);
  }
  float lMin = 0.0f, lMax = 0.0f;
  lTrace.ComputeXLimits(lMin, lMax);
  EXPECT_FLOAT_EQ(lMin, 2.0f);
  EXPECT_FLOAT_EQ(lMax, 7.0f);
  lTraces.Trace(1).ComputeYLimits(lMin, lMax);
  EXPECT_FLOAT_EQ(lMin, 250.0f);  // 1000 / 4
  EXPECT_FLOAT_EQ(lMax, 252.25f); // 1009 / 4
}

TEST(ResultTrace, RecordsAndReplaysFramesOfBothKinds)
{
  for (bool lThirtyTwoBit : {false, true}) {
    SCOPED_TRACE(lThirtyTwoBit);
    Traces lWritten(lThirtyTwoBit);
    EXPECT_EQ(lWritten.mProvider->Id(), lThirtyTwoBit ? 8u : 4u);
    lWritten.Answer(TwoChannels(3, 77, -88, lThirtyTwoBit ? 4 : 2));
    const QString lFile = PxTest::ScratchDir() + QStringLiteral("/traces.ptl");
    {
      PtDocumentWriter lWriter(lFile, 5);
      lWritten.mProvider->Save(lWriter);
      lWriter.EndLastSection();
    }

    Traces lRead(lThirtyTwoBit);
    QSignalSpy lNewData(lRead.mProvider.get(), &PxResultProvider::NewData);
    PtDocumentReader lReader(lFile);
    lReader.Advance();
    lRead.mProvider->Load(lReader);
    EXPECT_EQ(lNewData.count(), 1);
    EXPECT_EQ(Samples(lRead.Trace(0)), (std::vector<PtU32>{0, 1, 2}));
    EXPECT_EQ(Samples(lRead.Trace(1)), (std::vector<PtU32>{1000, 1001, 1002}));
    EXPECT_EQ(lRead.Trace(1).RawTimebaseDelay(), -88);
    EXPECT_EQ(lRead.mProvider->SecondReceivedValue(), 0xB2u);
  }
}
