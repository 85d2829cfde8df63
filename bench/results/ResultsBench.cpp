// One full measurement frame (state, 96 echoes, 16 traces of 512 samples) decoded from the
// transport into the results and announced through NewData, against memcpy of the same bytes,
// with heap allocations counted per frame once the buffers have reached their working size.
// The live view needs 20 000 frames per second on one core to leave the GUI thread idle most of
// the time at the sensors' highest refresh rates.
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxTestBytes.h"
#include "PxBenchAllocations.h"
#include "PxBenchPeers.h"
#include "PxTestTransport.h"

#include <QCoreApplication>

#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>
#include <new>
#include <vector>


namespace {
constexpr int CHANNELS = 16;
constexpr PtU32 SAMPLES = 512;
constexpr int ECHOES = 96;
constexpr unsigned short STATE_REQUEST = 0x10;
constexpr unsigned short ECHOES_REQUEST = 0x20;
constexpr unsigned short TRACES_REQUEST = 0x30;

QByteArray Answer(unsigned short aRequest, const PxTestBytes& aBody)
{
  return PxTestBytes().AnswerHeader(2, 0, static_cast<std::uint32_t>(aBody.Size()), aRequest).Bytes(aBody);
}

// The three answers of one frame, back to back, as the sensor's acquisition fetches them.
QByteArray Frame()
{
  PxTestBytes lState;
  lState.ElementHeader(4176, 1, 4).U32(123456).ElementHeader(4180, 1, 2).U16(215);

  PxTestBytes lEchoes;
  const PtU32 lWidths[8] = {4, 4, 4, 2, 1, 1, 4, 4};
  for (PtU32 f = 0; f < 8; ++f) {
    lEchoes.ElementHeader(static_cast<std::uint16_t>(4227 + f), ECHOES, lWidths[f]);
    for (int i = 0; i < ECHOES; ++i) {
      switch (lWidths[f]) {
      case 4:
        lEchoes.U32(static_cast<PtU32>(i * 1000 + f));
        break;
      case 2:
        lEchoes.U16(static_cast<std::uint16_t>(i));
        break;
      default:
        lEchoes.U8(static_cast<std::uint8_t>(i % CHANNELS));
      }
    }
  }

  PxTestBytes lTraces;
  lTraces.ElementHeader(419, 1, 4).U32(SAMPLES).ElementHeader(420, 1, 4).U32(1).ElementHeader(421, 1, 4).U32(2);
  lTraces.ElementHeader(3, CHANNELS, SAMPLES * 2);
  for (PtU32 i = 0; i < CHANNELS * SAMPLES; ++i) {
    lTraces.U16(static_cast<std::uint16_t>(i * 31));
  }
  lTraces.ElementHeader(4116, CHANNELS, 4);
  for (int i = 0; i < CHANNELS; ++i) {
    lTraces.U32(static_cast<PtU32>(i * 10));
  }

  return Answer(STATE_REQUEST, lState).append(Answer(ECHOES_REQUEST, lEchoes)).append(Answer(TRACES_REQUEST, lTraces));
}

// What a sensor owns for these three groups: the shared properties, the providers and the maps.
struct Sensor
{
  Sensor()
  {
    for (PxIntegerProperty* lProperty : {&mChannels, &mDistanceScale, &mAmplitudeScale, &mTraceScale}) {
      lProperty->SetCount(1);
      lProperty->SetLimits(0, 1000000);
    }
    mPointStep.SetCount(1);
    mPointStep.SetLimits(0.0f, 10.0f);
    mPointStep.SetValue(0, 0.05f);
    mChannels.SetValue(0, CHANNELS);
    mDistanceScale.SetValue(0, 1000);
    mState.SetTemperatureResult(new PxResult(0x500200, 4180, DT_SIGNED_16, 1, 2, 2, 1));
    mState.SetMaps(&mResults, &mDeviceResults);
    mEchoes.SetMaps(&mResults, &mDeviceResults);
    mTraces.SetMaps(&mResults, &mDeviceResults);
    for (PxResultProvider* lProvider :
         {static_cast<PxResultProvider*>(&mState), static_cast<PxResultProvider*>(&mEchoes),
          static_cast<PxResultProvider*>(&mTraces)}) {
      QObject::connect(lProvider, &PxResultProvider::NewData, [this] { ++mNewData; });
    }
  }

  void Decode(PxProtocolReader& aReader)
  {
    aReader.ReadAnswerHeader(STATE_REQUEST);
    mState.ReadFromPtProtocol(aReader);
    aReader.ReadAnswerHeader(ECHOES_REQUEST);
    mEchoes.ReadFromPtProtocol(aReader);
    aReader.ReadAnswerHeader(TRACES_REQUEST);
    mTraces.ReadFromPtProtocol(aReader);
  }

  PxIntegerProperty mChannels{8, 4117, 432, 4};
  PxIntegerProperty mDistanceScale{8, 4099, 4100, 4};
  PxIntegerProperty mAmplitudeScale{8, 4100, 4102, 4};
  PxIntegerProperty mTraceScale{8, 4098, 4101, 4};
  PxFloatProperty mPointStep{8, 4105, 4107, 4, 1.0f, 3};
  PxResultProvider::Map mResults;
  PxResultProvider::Map mDeviceResults;
  PxResultState mState;
  PxResultEchoes mEchoes{mDistanceScale, mAmplitudeScale};
  PxResultTrace mTraces{false, mChannels, mTraceScale, mPointStep};
  long mNewData = 0;
};

void BM_FullFrame(benchmark::State& aState)
{
  const QByteArray lFrame = Frame();
  PxTestTransport lLink;
  lLink.Replay(lFrame);
  Sensor lSensor;
  PxProtocolReader& lReader = lLink.Reader();
  lSensor.Decode(lReader); // buffers and the start time reach their working state
  lSensor.mNewData = 0;

  const long lBefore = PxBenchAllocations();
  for (auto _ : aState) {
    lSensor.Decode(lReader);
    benchmark::DoNotOptimize(lSensor.mTraces.SampleBuffer().data());
  }
  const long lAllocations = PxBenchAllocations() - lBefore;

  const auto lFrames = static_cast<double>(aState.iterations());
  if (lSensor.mNewData != 3 * static_cast<long>(aState.iterations()) || lSensor.mEchoes.EchoCount() != ECHOES ||
      lSensor.mTraces.TraceLength() != SAMPLES) {
    aState.SkipWithError("frames were not decoded whole");
  }
  aState.counters["frames_per_second"] = benchmark::Counter(lFrames, benchmark::Counter::kIsRate);
  aState.counters["allocs_per_frame"] = benchmark::Counter(static_cast<double>(lAllocations) / lFrames);
  aState.SetBytesProcessed(static_cast<int64_t>(aState.iterations()) * lFrame.size());
}

// The physical limit: copying the frame's bytes once, with no decoding at all.
void BM_FullFrameMemcpy(benchmark::State& aState)
{
  PxBenchMemcpyPeer(aState, Frame());
  aState.counters["frames_per_second"] =
      benchmark::Counter(static_cast<double>(aState.iterations()), benchmark::Counter::kIsRate);
}
} // namespace

BENCHMARK(BM_FullFrame);
BENCHMARK(BM_FullFrameMemcpy);

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
