// Recording and replay of full frames (state, echoes, 16 traces of 512 samples):
// - writing frames against a raw sequential write of the same bytes (the disk's limit), and
//   against the same bytes written naively one write() per frame; at a sensor's 100 Hz the
//   recorder must cost under 5 % of one core;
// - ReadNext in frames per second (the replay form steps at up to 5 000 frames/s);
// - MoveTo a random frame of a 360 000-frame record (an hour at 100 Hz): median and 99th percentile;
// - the player's heap after opening and jumping through a record ten times smaller and the large one.
// Files are written into a temporary folder and removed at the end of each benchmark.
#include "PxBenchUi.h"
#include "PxRecorder.h"
#include "RecordingTestSupport.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <malloc.h>
#include <random>

using namespace RecordingTest;

namespace {
constexpr int FRAMES_WRITTEN = 4000; // about 70 MB per run

PtU64 FrameBytes()
{
  QTemporaryDir lDir;
  PxRecorder::SetParameters(37, lDir.path(), 4095, 60);
  SyntheticSensor lSource(16, 512);
  lSource.PublishFrame(0);
  lSource.mSensor.CreateRecorder();
  PxRecorder* lRecorder = lSource.mSensor.Recorder();
  lSource.PublishFrame(1);
  const PtU64 lBefore = lRecorder->FileSize();
  lSource.PublishFrame(2);
  const PtU64 lBytes = lRecorder->FileSize() - lBefore;
  lSource.mSensor.StopRecorder();
  return lBytes;
}

// The recorder's share: the providers hold a frame, the recorder's slots write it as they do when
// the providers publish.
void BM_RecordFrame(benchmark::State& aState)
{
  QTemporaryDir lDir;
  PxRecorder::SetParameters(37, lDir.path(), 4095, 60);
  SyntheticSensor lSource(16, 512);
  lSource.PublishFrame(7);
  lSource.mSensor.CreateRecorder();
  PxRecorder* lRecorder = lSource.mSensor.Recorder();
  for (auto _ : aState) {
    lRecorder->RawTracesNewData();
    lRecorder->EchoesNewData();
    lRecorder->StateNewData();
  }
  const PtU64 lBytes = lRecorder->FileSize();
  lSource.mSensor.StopRecorder();
  aState.SetBytesProcessed(static_cast<int64_t>(lBytes));
  aState.counters["frames_per_s"] =
      benchmark::Counter(static_cast<double>(aState.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_RecordFrame)->Iterations(FRAMES_WRITTEN)->Unit(benchmark::kMicrosecond)->UseRealTime();

// The limit: the same bytes, copied into a 1 MB buffer written out when full.
void BM_RawSequentialWrite(benchmark::State& aState)
{
  static const PtU64 sFrame = FrameBytes();
  QTemporaryDir lDir;
  QFile lFile(lDir.path() + QStringLiteral("/raw"));
  lFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  std::vector<char> lFrame(sFrame, 'x');
  std::vector<char> lBuffer(1 << 20);
  size_t lUsed = 0;
  for (auto _ : aState) {
    for (size_t lDone = 0; lDone < lFrame.size();) {
      const size_t lPart = std::min(lFrame.size() - lDone, lBuffer.size() - lUsed);
      std::memcpy(lBuffer.data() + lUsed, lFrame.data() + lDone, lPart);
      lUsed += lPart;
      lDone += lPart;
      if (lUsed == lBuffer.size()) {
        lFile.write(lBuffer.data(), static_cast<qint64>(lUsed));
        lUsed = 0;
      }
    }
  }
  lFile.write(lBuffer.data(), static_cast<qint64>(lUsed));
  lFile.close();
  aState.SetBytesProcessed(static_cast<int64_t>(sFrame * aState.iterations()));
  aState.counters["frames_per_s"] =
      benchmark::Counter(static_cast<double>(aState.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_RawSequentialWrite)->Iterations(FRAMES_WRITTEN)->Unit(benchmark::kMicrosecond)->UseRealTime();

// What any writer that hands each frame to the system as it completes pays at the least, done
// naively: one write() per frame onto the end of the file.
void BM_RawWriteEachFrame(benchmark::State& aState)
{
  static const PtU64 sFrame = FrameBytes();
  QTemporaryDir lDir;
  QFile lFile(lDir.path() + QStringLiteral("/raw"));
  lFile.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
  std::vector<char> lFrame(sFrame, 'x');
  for (auto _ : aState) {
    lFile.write(lFrame.data(), static_cast<qint64>(lFrame.size()));
  }
  lFile.close();
  aState.SetBytesProcessed(static_cast<int64_t>(sFrame * aState.iterations()));
  aState.counters["frames_per_s"] =
      benchmark::Counter(static_cast<double>(aState.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_RawWriteEachFrame)->Iterations(FRAMES_WRITTEN)->Unit(benchmark::kMicrosecond)->UseRealTime();

QString RecordFile(const QString& aDirectory, PtU32 aFrames, int aChannels, PtU32 aSamples)
{
  return RecordSynthetic(aDirectory, aFrames, aChannels, aSamples, 4095);
}

void BM_ReadNext(benchmark::State& aState)
{
  QTemporaryDir lDir;
  const QString lFile = RecordFile(lDir.path(), 2000, 16, 512);
  RegisterTestPlayer();
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
  lPlayer->Start();
  for (auto _ : aState) {
    if (!lPlayer->ReadNext()) {
      lPlayer->MoveTo(0); // rewind: the next ReadNext replays frame 1
    }
  }
  aState.counters["frames_per_s"] =
      benchmark::Counter(static_cast<double>(aState.iterations()), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_ReadNext)->Unit(benchmark::kMicrosecond)->UseRealTime();

// Heap bytes in use: what the player holds, whatever the allocator keeps around.
double HeapKb()
{
  const struct mallinfo2 lInfo = mallinfo2();
  return static_cast<double>(lInfo.uordblks + lInfo.hblkhd) / 1024.0;
}

// An hour at 100 Hz of state and echoes; the player jumps to random frames.
void BM_MoveToRandomFrame(benchmark::State& aState)
{
  const PtU32 lFrames = static_cast<PtU32>(aState.range(0));
  QTemporaryDir lDir;
  const QString lFile = RecordFile(lDir.path(), lFrames, 0, 0);
  RegisterTestPlayer();
  const double lBefore = HeapKb();
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
  lPlayer->Start();
  std::mt19937 lRandom(42);
  std::uniform_int_distribution<unsigned long> lIndex(1, lFrames);
  std::vector<double> lTimes;
  for (auto _ : aState) {
    const auto lStart = std::chrono::steady_clock::now();
    lPlayer->MoveTo(lIndex(lRandom));
    lTimes.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - lStart).count());
  }
  std::sort(lTimes.begin(), lTimes.end());
  aState.counters["median_us"] = lTimes[lTimes.size() / 2];
  aState.counters["p99_us"] = lTimes[lTimes.size() * 99 / 100];
  aState.counters["player_heap_kb"] = HeapKb() - lBefore;
  aState.counters["file_mb"] = static_cast<double>(QFileInfo(lFile).size()) / (1 << 20);
}
BENCHMARK(BM_MoveToRandomFrame)
    ->Arg(36000)
    ->Arg(360000)
    ->Iterations(2000)
    ->Unit(benchmark::kMicrosecond)
    ->UseRealTime();
} // namespace

int main(int argc, char** argv)
{
  // The recorder's error path may show a message box: hence an application, offscreen.
  return PxBenchRunWithUi(argc, argv);
}
