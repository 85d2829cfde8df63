#pragma once

#include "PtDocumentReader.h"
#include "PxProtocolReader.h"
#include "PxRecordPlayer.h"
#include "PxRecorder.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxTestBytes.h"
#include "PxTestSensor.h"
#include "PxTestTransport.h"

#include <QDir>
#include <QString>
#include <QStringList>

#include <cstring>
#include <gtest/gtest.h>
#include <vector>

// A test sensor fed with synthetic frames through its real providers, as a driver feeds them.
// Every value of frame n is derived from n, so a replayed frame tells which frame it is and
// whether any of it was mixed up.
namespace RecordingTest {
constexpr PtU32 DOCUMENT_SIGNATURE = 0x43445850; // "PXDC", the first word of every document
constexpr unsigned short TRACES_REQUEST = 0x30;

inline PtU32 EchoCountOf(PtU32 aFrame)
{
  return 1 + aFrame % 8;
}

inline PtU32 SampleOf(PtU32 aFrame, PtU32 aChannel, PtU32 aIndex)
{
  return (aFrame * 7 + aChannel * 131 + aIndex) & 0xFFFF;
}

class SyntheticSensor
{
public:
  // aChannels 0: the sensor publishes no traces.
  explicit SyntheticSensor(int aChannels = 16, PtU32 aSamples = 512, const QString& aName = QStringLiteral("Unit 3"))
      : mChannels(aChannels)
      , mSamples(aSamples)
  {
    mSensor.DeviceName().SetTextValue(0, aName);
    mSensor.ChannelCountProperty().SetCount(1);
    mSensor.ChannelCountProperty().SetValue(0, aChannels > 0 ? aChannels : 1);
    for (PxIntegerProperty* lScale : {&mSensor.EchoDistanceScaleProperty(), &mSensor.EchoAmplitudeScaleProperty(),
                                      &mSensor.TraceAmplitudeScaleProperty()}) {
      lScale->SetCount(1);
      lScale->SetLimits(1, 1000000);
    }
    mSensor.EchoDistanceScaleProperty().SetValue(0, 1000);
    mSensor.EchoAmplitudeScaleProperty().SetValue(0, 100);
    mSensor.TraceAmplitudeScaleProperty().SetValue(0, 10);
    mState = static_cast<PxResultState*>(mSensor.GetProvider(PxResultProvider::ID_STATE));
  }

  void PublishTraces(PtU32 aFrame)
  {
    PxTestBytes lBody;
    lBody.ElementHeader(419, 1, 4).U32(mSamples).ElementHeader(420, 1, 4).U32(aFrame).ElementHeader(421, 1, 4).U32(
        ~aFrame);
    lBody.ElementHeader(3, static_cast<std::uint16_t>(mChannels), mSamples * 2);
    for (int c = 0; c < mChannels; ++c) {
      for (PtU32 k = 0; k < mSamples; ++k) {
        lBody.U16(static_cast<std::uint16_t>(SampleOf(aFrame, static_cast<PtU32>(c), k)));
      }
    }
    lBody.ElementHeader(4116, static_cast<std::uint16_t>(mChannels), 4);
    for (int c = 0; c < mChannels; ++c) {
      lBody.U32(aFrame + static_cast<PtU32>(c));
    }
    mTransport.Rewind();
    mSensor.TraceProvider().ReadFromPtProtocol(mTransport.Answer(lBody, TRACES_REQUEST));
  }

  void PublishEchoes(PtU32 aFrame)
  {
    PxResultEchoes& lEchoes = mSensor.EchoesProvider();
    lEchoes.StartUpdate();
    const PtU32 lCount = EchoCountOf(aFrame);
    lEchoes.SetEchoCount(lCount);
    for (PtU32 i = 0; i < lCount; ++i) {
      PxEcho& lEcho = lEchoes.mEchoes[i];
      lEcho.mDistance = static_cast<Pt32>(aFrame * 100 + i);
      lEcho.mAmplitude = aFrame + 3 * i;
      lEcho.mValue3 = aFrame ^ 0x5A5A;
      lEcho.mValue4 = static_cast<PtU16>(aFrame + i);
      lEcho.mSegment = static_cast<PtByte>(i % 16);
      lEcho.mFlag = static_cast<PtByte>(i & 1);
      lEcho.mValue7 = aFrame * 3;
      lEcho.mValue8 = ~aFrame;
    }
    lEchoes.EndUpdate();
  }

  // Device timestamps 10 ms apart.
  void PublishState(PtU32 aFrame) { PublishTimestamp(1000 + 10 * aFrame); }
  void PublishTimestamp(PtU32 aTimestamp)
  {
    mState->StartUpdate();
    mState->SetTimestamp(aTimestamp);
    mState->EndUpdate();
  }

  // One measurement cycle as the acquisition publishes it: traces, echoes, then the state.
  void PublishFrame(PtU32 aFrame)
  {
    if (mChannels > 0) {
      PublishTraces(aFrame);
    }
    PublishEchoes(aFrame);
    PublishState(aFrame);
  }

  PxTestSensor mSensor;
  PxResultState* mState = nullptr;

private:
  int mChannels;
  PtU32 mSamples;
  PxTestTransport mTransport;
};

// Which synthetic frame aSensor shows; -1 (with aWhy set) when its results are not one whole
// frame. aTraces: whether the traces must belong to that frame too.
inline long FrameShown(PxSensor& aSensor, bool aTraces, QString* aWhy)
{
  const PxResultEchoes& lEchoes = aSensor.EchoesProvider();
  if (lEchoes.EchoCount() == 0) {
    *aWhy = QStringLiteral("no echoes");
    return -1;
  }
  const PtU32 lFrame = static_cast<PtU32>(lEchoes.mEchoes[0].mDistance) / 100;
  if (lEchoes.EchoCount() != EchoCountOf(lFrame)) {
    *aWhy = QStringLiteral("echo count %1 in frame %2").arg(lEchoes.EchoCount()).arg(lFrame);
    return -1;
  }
  for (PtU32 i = 0; i < lEchoes.EchoCount(); ++i) {
    const PxEcho& lEcho = lEchoes.mEchoes[i];
    if (lEcho.mDistance != static_cast<Pt32>(lFrame * 100 + i) || lEcho.mAmplitude != lFrame + 3 * i ||
        lEcho.mValue3 != (lFrame ^ 0x5A5A) || lEcho.mValue4 != static_cast<PtU16>(lFrame + i) ||
        lEcho.mSegment != i % 16 || lEcho.mFlag != (i & 1) || lEcho.mValue7 != lFrame * 3 || lEcho.mValue8 != ~lFrame) {
      *aWhy = QStringLiteral("echo %1 of frame %2").arg(i).arg(lFrame);
      return -1;
    }
  }
  if (aTraces) {
    const PxResultTrace& lTraces = aSensor.TraceProvider();
    if (lTraces.FirstReceivedValue() != lFrame || lTraces.SecondReceivedValue() != ~lFrame) {
      *aWhy = QStringLiteral("traces of frame %1 with frame %2").arg(lTraces.FirstReceivedValue()).arg(lFrame);
      return -1;
    }
    for (size_t c = 0; c < lTraces.Traces().size(); ++c) {
      const PxTrace& lTrace = lTraces.Traces()[c];
      if (lTrace.RawTimebaseDelay() != static_cast<Pt32>(lFrame + c)) {
        *aWhy = QStringLiteral("delay of trace %1 in frame %2").arg(c).arg(lFrame);
        return -1;
      }
      for (size_t k = 0; k < lTrace.Length(); ++k) {
        if (lTrace.RawSample(k) != SampleOf(lFrame, static_cast<PtU32>(c), static_cast<PtU32>(k))) {
          *aWhy = QStringLiteral("sample %1 of trace %2 in frame %3").arg(k).arg(c).arg(lFrame);
          return -1;
        }
      }
    }
  }
  return static_cast<long>(lFrame);
}

// The frame aSensor shows, with a test failure when its results are not one whole frame.
inline long Shown(PxSensor& aSensor)
{
  QString lWhy;
  const long lFrame = FrameShown(aSensor, true, &lWhy);
  EXPECT_GE(lFrame, 0) << lWhy.toStdString();
  return lFrame;
}

// The test sensor's record files open in the player (once per process).
inline void RegisterTestPlayer()
{
  static const bool sRegistered = [] {
    PxRecordPlayer::RegisterType(DOCUMENT_SIGNATURE, PxTestSensor::RECORD_DOCUMENT, [](const QString& aFileName) {
      return new PxRecordPlayer(aFileName, new PxTestSensor());
    });
    return true;
  }();
  (void)sRegistered;
}

inline QStringList RecordFiles(const QString& aDirectory)
{
  QStringList lFiles;
  for (const QString& lName : QDir(aDirectory).entryList({QStringLiteral("*.ptl")}, QDir::Files, QDir::Name)) {
    lFiles << aDirectory + QLatin1Char('/') + lName;
  }
  return lFiles;
}

// Frames replayed from aFiles in order, checked to be 0, 1, 2, ...; -1 (with aWhy set) on a mismatch.
inline long ReplayAll(const QStringList& aFiles, QString* aWhy)
{
  long lNext = 0;
  for (const QString& lFile : aFiles) {
    std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
    if (!lPlayer) {
      *aWhy = lFile + QStringLiteral(" does not open in the player");
      return -1;
    }
    lPlayer->Start();
    while (lPlayer->ReadNext()) {
      if (FrameShown(*lPlayer->Sensor(), true, aWhy) != lNext) {
        return -1;
      }
      ++lNext;
    }
  }
  return lNext;
}

// Records aFrames synthetic frames of aChannels traces (raw traces on when there are any) into
// aDirectory, files split at aMaxFileSizeMb; returns the first file.
inline QString RecordSynthetic(const QString& aDirectory, PtU32 aFrames, int aChannels, PtU32 aSamples,
                               unsigned int aMaxFileSizeMb = 500)
{
  PxRecorder::SetParameters(aChannels > 0 ? 37 : 33, aDirectory, aMaxFileSizeMb, 60);
  SyntheticSensor lSource(aChannels, aSamples);
  lSource.mSensor.CreateRecorder();
  for (PtU32 n = 0; n < aFrames; ++n) {
    lSource.PublishFrame(n);
  }
  lSource.mSensor.StopRecorder();
  return RecordFiles(aDirectory).value(0);
}
} // namespace RecordingTest
