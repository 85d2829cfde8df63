// Document writer and reader against plain file I/O on the same bytes and the same disk.
//
// BM_WriteFrames   frames as the recorder writes them vs a raw sequential write of as many bytes;
//                  counter "ratio" = writer throughput / raw throughput (target >= 0.5).
// BM_OpenIndexed   open a closed 360 000-frame record and build its main-section list; "ms".
// BM_RebuildCut    the same file without its index: list rebuilt by walking it; "GBps" and
//                  "ratio" against reading the file once from the page cache (target >= 1 GB/s).
// BM_MoveToRandom  jump to a random frame and read it whole; "us" per jump (target <= 1000).
// BM_Extract       extract half of the recorded frames vs copying the same bytes; "ratio".
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <chrono>
#include <random>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;

double Seconds(Clock::time_point aStart)
{
  return std::chrono::duration<double>(Clock::now() - aStart).count();
}

// On the disk of the build tree, not in a RAM file system: the same disk for both sides.
QString BenchDir()
{
  static QTemporaryDir sDir(QDir::currentPath() + QStringLiteral("/bench-document-XXXXXX"));
  return sDir.path();
}

QString BenchFile(const char* aName)
{
  return BenchDir() + QLatin1Char('/') + QLatin1String(aName);
}

struct Echo
{
  PtU32 mDistance, mAmplitude, mThird;
  PtU16 mFourth;
  PtByte mSegment, mFlag;
  PtU32 mSeventh, mEighth;
};

struct FrameData
{
  std::vector<Echo> mEchoes = std::vector<Echo>(96);
  std::vector<PtU16> mSamples = std::vector<PtU16>(16 * 512);
  FrameData()
  {
    for (size_t i = 0; i < mSamples.size(); ++i) {
      mSamples[i] = PtU16(i * 7);
    }
    for (size_t i = 0; i < mEchoes.size(); ++i) {
      mEchoes[i] = {PtU32(i), PtU32(i * 3), 0, 1, PtByte(i % 16), 0, 2, 3};
    }
  }
};

// A state section, an echoes section of 8 fields of 96 echoes (stride 24), and a traces section of
// 16 traces of 512 16-bit samples.
void WriteFrame(PtDocumentWriter& aWriter, const FrameData& aData, PtU32 aFrame)
{
  static const size_t OFFSETS[8] = {0, 4, 8, 12, 14, 15, 16, 20};
  static const PtU32 WIDTHS[8] = {4, 4, 4, 2, 1, 1, 4, 4};
  aWriter.StartSection(5536, 0, 1);
  aWriter.StartSection(6656, 1);
  const PtU64 lTime = 1420070400000ull + aFrame;
  aWriter.AddElement(6673, &lTime, 8, 1, 8);
  aWriter.AddElement(6660, &aFrame, 4, 1, 4);
  aWriter.EndSection();
  aWriter.StartSection(6144, 1);
  for (int f = 0; f < 8; ++f) {
    aWriter.AddElement(6145 + f, reinterpret_cast<const char*>(aData.mEchoes.data()) + OFFSETS[f], WIDTHS[f], 96, 24);
  }
  aWriter.EndSection();
  aWriter.StartSection(6016, 1);
  const PtU32 lLength = 512;
  for (PtU32 t = 0; t < 16; ++t) {
    aWriter.StartSection(5888, 1);
    aWriter.AddElement(5889, &t, 4, 1, 4);
    aWriter.AddElement(5894, &lLength, 4, 1, 4);
    aWriter.AddElement(5893, aData.mSamples.data() + t * 512, 2, 512, 2);
    aWriter.EndSection();
  }
  aWriter.EndSection();
  aWriter.EndSection();
}

PtU64 WriteRecord(const QString& aFile, PtU32 aFrames)
{
  static const FrameData sData;
  PtDocumentWriter lWriter(aFile, 0x52454331);
  lWriter.StartSection(4352, 0, 1);
  lWriter.EndSection();
  for (PtU32 f = 0; f < aFrames; ++f) {
    WriteFrame(lWriter, sData, f);
  }
  lWriter.StartSection(5536, 0, 1);
  lWriter.EndSection();
  lWriter.EndLastSection();
  return QFile(aFile).size();
}

double RawWrite(const QString& aFile, PtU64 aBytes)
{
  std::vector<char> lBlock(1 << 20, 'r');
  const auto lStart = Clock::now();
  QFile lFile(aFile);
  lFile.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
  for (PtU64 lDone = 0; lDone < aBytes; lDone += lBlock.size()) {
    lFile.write(lBlock.data(), qint64(std::min<PtU64>(lBlock.size(), aBytes - lDone)));
  }
  lFile.close();
  return Seconds(lStart);
}

void BM_WriteFrames(benchmark::State& aState)
{
  const PtU32 lFrames = 2000; // about 36 MB
  double lRatio = 0;
  PtU64 lBytes = 0;
  for (auto _ : aState) {
    const auto lStart = Clock::now();
    lBytes = WriteRecord(BenchFile("frames.ptl"), lFrames);
    const double lWriter = Seconds(lStart);
    const double lRaw = RawWrite(BenchFile("raw.bin"), lBytes);
    aState.SetIterationTime(lWriter);
    lRatio += lRaw / lWriter;
  }
  aState.SetBytesProcessed(PtU64(aState.iterations()) * lBytes);
  aState.counters["ratio"] = lRatio / double(aState.iterations());
  QFile::remove(BenchFile("raw.bin"));
}
BENCHMARK(BM_WriteFrames)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

// 360 000 small frames (one state section each): about 26 MB, as many frames as a long recording.
const QString& LongRecord()
{
  static const QString sFile = [] {
    const QString lFile = BenchFile("long.ptl");
    PtDocumentWriter lWriter(lFile, 0x52454331);
    lWriter.StartSection(4352, 0, 1);
    lWriter.EndSection();
    for (PtU32 f = 0; f < 360000; ++f) {
      lWriter.StartSection(5536, 0, 1);
      lWriter.StartSection(6656, 1);
      const PtU64 lTime = 1420070400000ull + f * 100ull;
      lWriter.AddElement(6673, &lTime, 8, 1, 8);
      lWriter.EndSection();
      lWriter.EndSection();
    }
    lWriter.StartSection(5536, 0, 1);
    lWriter.EndSection();
    lWriter.EndLastSection();
    QFile lIn(lFile);
    lIn.open(QIODevice::ReadOnly);
    QFile lCut(BenchFile("long-cut.ptl"));
    lCut.open(QIODevice::WriteOnly);
    lCut.write(lIn.read(lIn.size() - 1)); // no trailer: what a killed recorder leaves
    return lFile;
  }();
  return sFile;
}

void BM_OpenIndexed(benchmark::State& aState)
{
  const QString& lFile = LongRecord();
  size_t lCount = 0;
  for (auto _ : aState) {
    PtDocumentReader lReader(lFile);
    lReader.BuildMainSectionList();
    lCount = lReader.MainSectionCount();
  }
  aState.counters["sections"] = double(lCount);
}
BENCHMARK(BM_OpenIndexed)->Unit(benchmark::kMillisecond);

void BM_RebuildCut(benchmark::State& aState)
{
  LongRecord();
  const QString lFile = BenchFile("long-cut.ptl");
  const double lSize = double(QFile(lFile).size());
  double lRatio = 0;
  std::vector<char> lBlock(1 << 20);
  for (auto _ : aState) {
    auto lStart = Clock::now();
    PtDocumentReader lReader(lFile);
    lReader.BuildMainSectionList();
    benchmark::DoNotOptimize(lReader.MainSectionCount());
    const double lRebuild = Seconds(lStart);
    lStart = Clock::now();
    QFile lPlain(lFile);
    lPlain.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    while (lPlain.read(lBlock.data(), qint64(lBlock.size())) > 0) {
    }
    const double lRead = Seconds(lStart);
    aState.SetIterationTime(lRebuild);
    lRatio += lRead / lRebuild;
  }
  aState.SetBytesProcessed(int64_t(lSize * double(aState.iterations())));
  aState.counters["ratio"] = lRatio / double(aState.iterations());
}
BENCHMARK(BM_RebuildCut)->UseManualTime()->Unit(benchmark::kMillisecond);

void BM_MoveToRandom(benchmark::State& aState)
{
  // The frames of BM_WriteFrames' size: a jump reads a whole 18 KB frame.
  const QString lFile = BenchFile("frames-move.ptl");
  WriteRecord(lFile, 2000);
  PtDocumentReader lReader(lFile);
  lReader.BuildMainSectionList();
  std::mt19937 lRandom(7);
  std::vector<char> lBuffer(1 << 16);
  const size_t lCount = lReader.MainSectionCount();
  for (auto _ : aState) {
    lReader.MoveTo(1 + lRandom() % (lCount - 2));
    int lDepth = 0;
    for (;;) {
      if (!lReader.Advance()) {
        if (--lDepth == 0) {
          break; // the end of the frame
        }
        continue;
      }
      if (lReader.IsSection()) {
        ++lDepth;
      } else {
        lReader.GetElement(lBuffer.data(), lReader.UnitSize(), lReader.Count(), lReader.UnitSize());
      }
    }
  }
  QFile::remove(lFile);
}
BENCHMARK(BM_MoveToRandom)->Unit(benchmark::kMicrosecond);

void BM_Extract(benchmark::State& aState)
{
  const QString lFile = BenchFile("frames-extract.ptl");
  const PtU64 lSize = WriteRecord(lFile, 4000);
  PtDocumentReader lReader(lFile);
  const size_t lCount = lReader.MainSectionCount();
  double lRatio = 0;
  std::vector<char> lBlock(4 << 20);
  for (auto _ : aState) {
    auto lStart = Clock::now();
    lReader.Extract(1, lCount / 4, lCount / 4 + lCount / 2, BenchFile("extract.ptl"));
    const double lExtract = Seconds(lStart);
    const PtU64 lBytes = QFile(BenchFile("extract.ptl")).size();
    lStart = Clock::now();
    QFile lIn(lFile), lOut(BenchFile("copy.bin"));
    lIn.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    lOut.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    lIn.seek(qint64(lSize / 4));
    for (PtU64 lDone = 0; lDone < lBytes;) {
      const qint64 lRead = lIn.read(lBlock.data(), qint64(std::min<PtU64>(lBlock.size(), lBytes - lDone)));
      lOut.write(lBlock.data(), lRead);
      lDone += PtU64(lRead);
    }
    lOut.close();
    const double lCopy = Seconds(lStart);
    aState.SetIterationTime(lExtract);
    lRatio += lCopy / lExtract;
  }
  aState.counters["ratio"] = lRatio / double(aState.iterations());
  QFile::remove(lFile);
  QFile::remove(BenchFile("extract.ptl"));
  QFile::remove(BenchFile("copy.bin"));
}
BENCHMARK(BM_Extract)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
} // namespace

int main(int aArgc, char** aArgv)
{
  benchmark::Initialize(&aArgc, aArgv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  // Every bench file lives in one temporary folder, removed here.
  QDir(BenchDir()).removeRecursively();
  return 0;
}
