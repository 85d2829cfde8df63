#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxResultState.h"
#include "PxTest.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <limits>


namespace {
void Frame(PxResultState& aState, PtU32 aTimestamp)
{
  aState.StartUpdate();
  aState.SetTimestamp(aTimestamp);
  aState.EndUpdate();
}

// A state provider in a sensor's maps, with a driver's temperature (tenths of a degree).
struct State
{
  State()
  {
    mProvider.SetTemperatureResult(new PxResult(0x500200, 4180, DT_SIGNED_16, 1, 2, 2, 1));
    mProvider.SetMaps(&mResults, &mDeviceResults);
  }
  // Decodes one state answer of timestamp aTimestamp and temperature aTemperature.
  void Answer(PtU32 aTimestamp, std::uint16_t aTemperature)
  {
    mProvider.ReadFromPtProtocol(mTransport.Answer(PxTestBytes().ElementHeader(4176, 1, 4).U32(aTimestamp).ElementHeader(4180, 1, 2).U16(aTemperature)));
  }
  float Rate() const { return static_cast<float>(mRate->Value(0)); }
  PxResultProvider::Map mResults, mDeviceResults;
  PxResultState mProvider;
  PxResult* mRate = mProvider.RateResult();
  PxTestTransport mTransport;
};
} // namespace

TEST(ResultState, RateComesFromTheLastSixteenTimestamps)
{
  std::vector<PtU32> lSteady, lWrapping;
  for (PtU32 i = 0; i < 20; ++i) {
    lSteady.push_back(i * 100);
    lWrapping.push_back(0xFFFFFC18u + i * 100); // the device clock wraps at the 10th frame
  }
  const std::pair<std::vector<PtU32>, float> lCases[] = {
      {lSteady, 10.0f},
      {lWrapping, 10.0f},
      {{5000}, 3.0f}, // the first frame measures against a ring of zeros
      {{0}, std::numeric_limits<float>::infinity()}, // equal timestamps
  };
  for (const auto& c : lCases) {
    SCOPED_TRACE(c.first.size());
    State lState;
    for (PtU32 lTimestamp : c.first) {
      Frame(lState.mProvider, lTimestamp);
    }
    EXPECT_FLOAT_EQ(lState.Rate(), c.second);
    EXPECT_EQ(lState.mProvider.TimestampResult()->IntValue(0), c.first.back());
  }
}

TEST(ResultState, DecodesTheStateAnswer)
{
  State lState;
  PxResultState& lProvider = lState.mProvider;
  EXPECT_EQ(lState.mResults.at(0x500101), lState.mRate);

  PxIntegerProperty lTemperatureScale(CAT_STATE, 4200, 0, 4);
  lTemperatureScale.SetCount(1);
  lProvider.SetTemperatureScale(&lTemperatureScale);
  lTemperatureScale.SetValue(0, 10);

  QSignalSpy lNewData(&lProvider, &PxResultProvider::NewData);
  lState.Answer(1000, 0xFF38);
  EXPECT_EQ(lNewData.count(), 1);
  EXPECT_EQ(lProvider.TimestampResult()->IntValue(0), 1000u);
  EXPECT_FLOAT_EQ(lState.Rate(), 15.0f);
  EXPECT_DOUBLE_EQ(lProvider.TemperatureResult()->Value(0), -20.0);

  // Element 1 is the rate result's device id: a device that measures its own rate overrides ours.
  lProvider.ReadFromPtProtocol(
      lState.mTransport.Answer(PxTestBytes().ElementHeader(4176, 1, 4).U32(1100).ElementHeader(1, 1, 4).F32(9.5f)));
  EXPECT_FLOAT_EQ(lState.Rate(), 9.5f);

  // A timestamp of the wrong size is a protocol error; no frame is announced and no update stays open.
  EXPECT_EQ(PxTest::ErrorCode([&] {
              lProvider.ReadFromPtProtocol(lState.mTransport.Answer(PxTestBytes().ElementHeader(4176, 1, 2).U16(5)));
            }),
            1002u);
  EXPECT_FALSE(lProvider.Updating());
  EXPECT_EQ(lNewData.count(), 2);
}

TEST(ResultState, RateTurnsRedAwayFromTheConfiguredRefreshRate)
{
  State lState;
  PxFloatProperty lRefresh(CAT_CONFIGURATION, 2097153, 0, 4, 1.0f, PtU32(-1));
  lRefresh.SetCount(1);
  lRefresh.SetLimits(0.0f, 1000.0f);
  lRefresh.SetValue(0, 10.0f);
  lState.mProvider.SetRefreshRate(&lRefresh);
  // Frames every 100 ms give 10 Hz, 95 ms 10.53 Hz, 90 ms 11.11 Hz, 115 ms 8.70 Hz, 110 ms 9.09 Hz.
  const std::pair<PtU32, Qt::GlobalColor> lCases[] = {
      {95, Qt::black}, {90, Qt::red}, {115, Qt::red}, {110, Qt::black}};
  for (const auto& c : lCases) {
    SCOPED_TRACE(c.first);
    for (PtU32 i = 1; i <= 16; ++i) {
      Frame(lState.mProvider, i * c.first);
    }
    EXPECT_EQ(lState.mRate->FormattedColorStyle(0), c.second);
  }
  EXPECT_EQ(lState.mRate->FormattedValue(0), QStringLiteral("Measurement Rate:  9.09 Hz"));
  lRefresh.SetValue(0, 8.0f); // the configured rate changes: the colour follows at once
  EXPECT_EQ(lState.mRate->FormattedColorStyle(0), Qt::red);
}

TEST(ResultState, RecordsAndReplaysFrames)
{
  const QString lFile = PxTest::ScratchDir() + QStringLiteral("/state.ptl");
  const QDateTime lOldTime(QDate(2015, 3, 2), QTime(14, 3, 7, 42), Qt::UTC);
  QDateTime lFirstFrame;
  {
    State lState;
    PtDocumentWriter lWriter(lFile, 5);
    for (PtU32 lTimestamp : {1000u, 1250u}) {
      lState.Answer(lTimestamp, 215);
      lFirstFrame = lFirstFrame.isValid() ? lFirstFrame : lState.mProvider.FrameTime();
      lState.mProvider.Save(lWriter);
    }
    // Older files hold the frame time as a Windows FILETIME.
    const PtU64 lFiletime = (static_cast<PtU64>(lOldTime.toMSecsSinceEpoch()) + 11644473600000ull) * 10000ull;
    lWriter.StartSection(6656, 1);
    lWriter.AddElement(6657, &lFiletime, 8, 1, 8);
    lWriter.EndLastSection();
  }

  State lReplay;
  QSignalSpy lNewData(&lReplay.mProvider, &PxResultProvider::NewData);
  PtDocumentReader lReader(lFile);
  lReader.Advance();
  lReplay.mProvider.Load(lReader);
  EXPECT_EQ(lReplay.mProvider.FrameTime(), lFirstFrame);
  EXPECT_EQ(lReplay.mProvider.StartTime(), lFirstFrame);
  EXPECT_EQ(lReplay.mProvider.TimestampResult()->IntValue(0), 0u);
  EXPECT_FLOAT_EQ(lReplay.Rate(), 15.0f);
  EXPECT_DOUBLE_EQ(lReplay.mProvider.TemperatureResult()->Value(0), 215.0);
  lReader.Advance();
  lReplay.mProvider.Load(lReader);
  // On replay the timestamp is the time since the first replayed frame.
  EXPECT_EQ(lReplay.mProvider.TimestampResult()->IntValue(0), 250u);
  lReader.Advance();
  lReplay.mProvider.Load(lReader);
  EXPECT_EQ(lReplay.mProvider.FrameTime(), lOldTime);
  EXPECT_EQ(lNewData.count(), 3);
}
