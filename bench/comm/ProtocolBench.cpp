// Decoding cost of the two heaviest answers against memcpy of the same bytes, and heap
// allocations per answer once the buffers have reached their working size. The echoes answer also
// has a floor: what its decode cannot avoid doing with one load and one store per item.
#include "PxControlConnection.h"
#include "PxTestBytes.h"
#include "PxBenchAllocations.h"
#include "PxBenchPeers.h"
#include "PxTestTransport.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

namespace
{
constexpr int CHANNELS = 16;
constexpr int SAMPLES = 4096;
constexpr int ECHOES = 96;
constexpr unsigned short TRACES_REQUEST = 0x30;
constexpr unsigned short ECHOES_REQUEST = 0x20;

struct Echo { // 24 bytes, one field per element on the wire
  std::uint32_t mDistance;
  std::uint32_t mAmplitude;
  std::uint32_t mWidth;
  std::uint32_t mFlags;
  std::uint16_t mSegment;
  std::uint16_t mIndex;
  std::uint16_t mQuality;
  std::uint16_t mReserved;
};
static_assert(sizeof(Echo) == 24, "the echo record is 24 bytes");
const unsigned int FIELD_SIZE[8] = {4, 4, 4, 4, 2, 2, 2, 2};
const unsigned int FIELD_OFFSET[8] = {0, 4, 8, 12, 16, 18, 20, 22};

QByteArray TracesAnswer()
{
  PxTestBytes lBody;
  lBody.ElementHeader(419, 1, 4).U32(SAMPLES);
  lBody.ElementHeader(3, CHANNELS, SAMPLES * 2);
  for (int i = 0; i < CHANNELS * SAMPLES; ++i) {
    lBody.U16(static_cast<std::uint16_t>(i * 31));
  }
  return PxTestBytes().AnswerHeader(2, 0, static_cast<std::uint32_t>(lBody.Size()), TRACES_REQUEST).Bytes(lBody);
}

QByteArray EchoesAnswer()
{
  PxTestBytes lBody;
  for (int f = 0; f < 8; ++f) {
    lBody.ElementHeader(static_cast<std::uint16_t>(4224 + f), ECHOES, FIELD_SIZE[f]);
    for (int i = 0; i < ECHOES; ++i) {
      FIELD_SIZE[f] == 4 ? lBody.U32(static_cast<std::uint32_t>(i * f)) : lBody.U16(static_cast<std::uint16_t>(i + f));
    }
  }
  return PxTestBytes().AnswerHeader(2, 0, static_cast<std::uint32_t>(lBody.Size()), ECHOES_REQUEST).Bytes(lBody);
}

// Runs aDecode once so the buffers reach their working size, then measures it, with the heap
// allocations per answer once in steady state.
template <class F> void MeasureDecode(benchmark::State& aState, F aDecode, const void* aOutput, size_t aBytes)
{
  aDecode();
  const long lBefore = PxBenchAllocations();
  for (auto _ : aState) {
    aDecode();
    benchmark::DoNotOptimize(aOutput);
  }
  aState.counters["allocs_per_answer"] =
    benchmark::Counter(static_cast<double>(PxBenchAllocations() - lBefore) / static_cast<double>(aState.iterations()));
  aState.SetBytesProcessed(static_cast<int64_t>(aState.iterations()) * static_cast<int64_t>(aBytes));
}

void BM_TracesStreamed(benchmark::State& aState)
{
  PxTestTransport lLink;
  const QByteArray lAnswer = TracesAnswer();
  lLink.Replay(lAnswer);
  std::vector<std::uint16_t> lSamples(CHANNELS * SAMPLES);
  std::uint32_t lLength = 0;
  PxProtocolReader& lReader = lLink.Reader();
  auto lDecode = [&] {
    lReader.ReadAnswerHeader(TRACES_REQUEST);
    lReader.ResetConsumedLength();
    while (lReader.PullHeader()) {
      if (lReader.Id() == 419) {
        lReader.PullElement(&lLength, 4, 1);
      } else {
        lReader.PullElement(lSamples.data(), SAMPLES * 2, CHANNELS);
      }
    }
  };
  MeasureDecode(aState, lDecode, lSamples.data(), static_cast<size_t>(lAnswer.size()));
}

void BM_TracesMemcpy(benchmark::State& aState)
{
  PxBenchMemcpyPeer(aState, TracesAnswer());
}

void BM_EchoesScattered(benchmark::State& aState)
{
  PxTestTransport lLink;
  const QByteArray lAnswer = EchoesAnswer();
  lLink.Replay(lAnswer);
  std::vector<Echo> lEchoes(ECHOES);
  PxProtocolReader& lReader = lLink.Reader();
  auto lDecode = [&] {
    lReader.ReadAnswerHeader(ECHOES_REQUEST);
    lReader.ReadPayload();
    while (lReader.Advance()) {
      const int f = lReader.Id() - 4224;
      lReader.ReadElement(reinterpret_cast<PtByte*>(lEchoes.data()) + FIELD_OFFSET[f], ECHOES, FIELD_SIZE[f], sizeof(Echo));
    }
  };
  MeasureDecode(aState, lDecode, lEchoes.data(), static_cast<size_t>(lAnswer.size()));
}

// One echoes element into its field of every record, with item size, count and stride known to the
// compiler and the loop fully unrolled; returns the next element.
template <size_t N> const PtByte* ScatterField(PtByte* aField, const PtByte* aElement)
{
  const PtByte* lItems = aElement + 8;
#pragma GCC unroll 96
  for (int i = 0; i < ECHOES; ++i) {
    std::memcpy(aField + i * sizeof(Echo), lItems + i * N, N);
  }
  return lItems + ECHOES * N;
}

// The floor of BM_EchoesScattered: the payload copied into a buffer, as ReadPayload must, then every
// item moved with one scalar load and store. No reader, no checks, nothing looked up at run time.
void BM_EchoesFloor(benchmark::State& aState)
{
  const QByteArray lAnswer = EchoesAnswer();
  std::vector<PtByte> lPayload(static_cast<size_t>(lAnswer.size()) - 16);
  std::vector<Echo> lEchoes(ECHOES);
  auto lDecode = [&] {
    std::memcpy(lPayload.data(), lAnswer.constData() + 16, lPayload.size());
    auto* lRecords = reinterpret_cast<PtByte*>(lEchoes.data());
    const PtByte* lAt = lPayload.data();
    for (int f = 0; f < 4; ++f) {
      lAt = ScatterField<4>(lRecords + FIELD_OFFSET[f], lAt);
    }
    for (int f = 4; f < 8; ++f) {
      lAt = ScatterField<2>(lRecords + FIELD_OFFSET[f], lAt);
    }
  };
  MeasureDecode(aState, lDecode, lEchoes.data(), static_cast<size_t>(lAnswer.size()));
}

void BM_EchoesMemcpy(benchmark::State& aState)
{
  PxBenchMemcpyPeer(aState, EchoesAnswer());
}
} // namespace

BENCHMARK(BM_TracesStreamed);
BENCHMARK(BM_TracesMemcpy);
BENCHMARK(BM_EchoesScattered);
BENCHMARK(BM_EchoesFloor);
BENCHMARK(BM_EchoesMemcpy);

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
