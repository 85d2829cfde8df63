// How fast a driver can acquire full frames (state, echoes, 16 raw traces of 512 samples) from the
// simulated sensor: over loopback TCP from parvex-sim, against the in-process link on the same data
// as the peer. The target is 200 frames per second over TCP; the counters give the frame rate, its
// ratio to the target and to the in-process peer, and the CPU time per frame on each side. The
// driver's sensor acquiring the same groups through the framework's providers is measured against
// the bare decoding of the in-process run.

#include "PxInProcessConnection.h"
#include "PxResultSubscription.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"

#include <QCoreApplication>
#include <QProcess>

#include <benchmark/benchmark.h>
#include <chrono>
#include <csignal>
#include <ctime>
#include <fstream>
#include <sstream>
#include <unistd.h>
#include <vector>

using namespace PxSimProtocol;

namespace {
constexpr double TARGET_FPS = 200.0;
double sInProcessFps = 0.0;

double WallSeconds()
{
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double ProcessCpuSeconds()
{
  timespec lTime{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &lTime);
  return lTime.tv_sec + lTime.tv_nsec * 1e-9;
}

// User and system time of another process, from /proc.
double ChildCpuSeconds(qint64 aPid)
{
  std::ifstream lFile("/proc/" + std::to_string(aPid) + "/stat");
  std::string lLine;
  std::getline(lFile, lLine);
  // Fields after the command name (which may hold blanks) start behind its closing parenthesis.
  std::istringstream lFields(lLine.substr(lLine.rfind(')') + 2));
  std::string lSkip;
  for (int i = 0; i < 11; ++i) {
    lFields >> lSkip;
  }
  double lUser = 0, lSystem = 0;
  lFields >> lUser >> lSystem;
  return (lUser + lSystem) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// One frame, decoded as the framework's providers decode it.
class Acquisition
{
public:
  explicit Acquisition(PxControlConnection& aLink)
      : mLink(aLink)
      , mSamples(16 * 512)
      , mDelays(16)
      , mEchoes(96 * 24)
  {
  }

  void Frame()
  {
    Whole(REQ_STATE);
    Whole(REQ_ECHOES);
    mLink.StartRequest(REQ_RAW_TRACES);
    mLink.SendRequest();
    PxProtocolReader& lReader = mLink.Reader();
    lReader.ReadAnswerHeader(REQ_RAW_TRACES);
    lReader.ResetConsumedLength();
    while (lReader.PullHeader()) {
      switch (lReader.Id()) {
      case ID_TRACE_LENGTH_ELEMENT:
        lReader.PullElement(&mLength, 4, 1);
        mSamples.resize(16 * static_cast<size_t>(mLength));
        break;
      case ID_TRACE_FRAME:
      case ID_TRACE_ACTIVE:
        lReader.PullElement(&mScratch, 4, 1);
        break;
      case ID_TRACE_SAMPLES:
        lReader.PullElement(mSamples.data(), 2 * mLength, 16);
        break;
      case ID_TRACE_DELAYS:
        lReader.PullElement(mDelays.data(), 4, 16);
        break;
      default:
        throw std::runtime_error("unexpected trace element");
      }
    }
    benchmark::DoNotOptimize(mSamples.data());
  }

private:
  void Whole(PtU16 aRequest)
  {
    mLink.StartRequest(aRequest);
    mLink.SendRequest();
    PxProtocolReader* lReader = mLink.ReadAnswer();
    while (lReader->Advance()) {
      // Echo fields are scattered into 24-byte records, as the echoes provider does.
      const PtU32 lSize = lReader->UnitSize();
      lReader->ReadElement(mEchoes.data(), lReader->Count(), lSize, aRequest == REQ_ECHOES ? 24 : lSize);
    }
  }

  PxControlConnection& mLink;
  PtU32 mLength = 512;
  PtU32 mScratch = 0;
  std::vector<PtU16> mSamples;
  std::vector<Pt32> mDelays;
  std::vector<PtByte> mEchoes;
};

void Report(benchmark::State& aState, double aClientCpu, double aServerCpu)
{
  const double lFrames = static_cast<double>(aState.iterations());
  aState.SetItemsProcessed(aState.iterations());
  aState.counters["fps"] = benchmark::Counter(lFrames, benchmark::Counter::kIsRate);
  aState.counters["client_cpu_us_per_frame"] = aClientCpu / lFrames * 1e6;
  if (aServerCpu >= 0) {
    aState.counters["sim_cpu_us_per_frame"] = aServerCpu / lFrames * 1e6;
  }
}

void BM_AcquireInProcess(benchmark::State& aState)
{
  PxInProcessConnection lLink;
  lLink.Connect();
  Acquisition lAcquisition(lLink);
  lAcquisition.Frame();
  const double lStart = ProcessCpuSeconds();
  const double lWall = WallSeconds();
  for (auto _ : aState) {
    lAcquisition.Frame();
  }
  // In-process, the sensor's work is on this side too.
  Report(aState, ProcessCpuSeconds() - lStart, -1);
  sInProcessFps = aState.iterations() / (WallSeconds() - lWall);
}
BENCHMARK(BM_AcquireInProcess)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_SensorAcquireInProcess(benchmark::State& aState)
{
  PxInProcessConnection lLink;
  lLink.Connect();
  PxSimSensor lSensor(&lLink);
  lSensor.Initialize();
  PxResultSubscription lView(PxResultProvider::ID_STATE | PxResultProvider::ID_TRACES | PxResultProvider::ID_ECHOES);
  lSensor.Subscribe(&lView);
  lSensor.Acquire();
  const double lStart = ProcessCpuSeconds();
  const double lWall = WallSeconds();
  for (auto _ : aState) {
    lSensor.Acquire();
  }
  Report(aState, ProcessCpuSeconds() - lStart, -1);
  if (sInProcessFps > 0) {
    aState.counters["vs_bare_decoding"] = aState.iterations() / (WallSeconds() - lWall) / sInProcessFps;
  }
  lSensor.Unsubscribe(&lView);
}
BENCHMARK(BM_SensorAcquireInProcess)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_AcquireTcp(benchmark::State& aState)
{
  QProcess lSim;
  lSim.start(QStringLiteral(PARVEX_SIM_PROGRAM),
             {QStringLiteral("--port"), QStringLiteral("0"), QStringLiteral("--no-state")});
  QByteArray lLine;
  while (!lLine.contains('\n') && lSim.waitForReadyRead(10000)) {
    lLine += lSim.readAllStandardOutput();
  }
  const quint16 lPort = static_cast<quint16>(lLine.mid(lLine.indexOf(':') + 1).trimmed().toUInt());
  PxTcpConnection lLink(QStringLiteral("127.0.0.1"), lPort);
  if (lPort == 0 || !lLink.Connect()) {
    aState.SkipWithError("parvex-sim did not start");
    return;
  }
  Acquisition lAcquisition(lLink);
  lAcquisition.Frame();
  const double lClient = ProcessCpuSeconds();
  const double lServer = ChildCpuSeconds(lSim.processId());
  const double lWall = WallSeconds();
  for (auto _ : aState) {
    lAcquisition.Frame();
  }
  const double lFps = aState.iterations() / (WallSeconds() - lWall);
  aState.counters["vs_target_200fps"] = lFps / TARGET_FPS;
  if (sInProcessFps > 0) {
    aState.counters["vs_in_process"] = lFps / sInProcessFps;
  }
  const double lClientCpu = ProcessCpuSeconds() - lClient;
  const double lServerCpu = ChildCpuSeconds(lSim.processId()) - lServer;
  Report(aState, lClientCpu, lServerCpu);
  lLink.Disconnect();
  ::kill(static_cast<pid_t>(lSim.processId()), SIGTERM);
  lSim.waitForFinished(10000);
}
BENCHMARK(BM_AcquireTcp)->Unit(benchmark::kMicrosecond)->UseRealTime()->MinTime(2.0);
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
