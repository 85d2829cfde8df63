#include "ConfigWindow.h"
#include "PxBenchUi.h"
#include "PxControlConnection.h"
#include "PxEntry.h"
#include "PxResultProvider.h"
#include "PxResultSubscription.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxSimDriver.h"
#include "PxSimSensor.h"
#include "PxStaticUi.h"
#include "SensorView.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <time.h>

namespace {
QTemporaryDir* sState = nullptr;

// Processor time of the calling thread, in milliseconds.
double ThreadCpuMs()
{
  timespec lTime{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &lTime);
  return static_cast<double>(lTime.tv_sec) * 1000.0 + static_cast<double>(lTime.tv_nsec) / 1e6;
}

// One iteration runs the event loop for two seconds with the sensor acquiring at 50 Hz (a 20 ms
// timer instead of the host's tick). Reported: the GUI thread's processor time as a share of the
// wall time, and the longest gap between the ticks of a 5 ms pulse timer beyond its period (the
// longest stretch the GUI thread did not get back to its event loop, preemption included) and the
// processor time spent between two pulse ticks (the part of it that is our work). Range 1 opens
// the forms and the graph; 0 is the peer, acquisition alone.
void BM_FormsOpenAt50Hz(benchmark::State& aState)
{
  constexpr int RUN_MS = 2000;
  constexpr int PULSE_MS = 5;
  ConfigWindow lWindow;
  PxInit(&lWindow);
  PxSimDriver::Register(&lWindow);
  PxSimConnectionTypes::SetSimulatorStateDir(sState->path());
  lWindow.resize(1280, 800);
  lWindow.show();
  PxControlConnection* lLink = PxSimConnectionTypes::CreateSimulatorConnection();
  lLink->Connect();
  auto* lSensor = static_cast<PxSimSensor*>(PxDevice::Create(PxSimSensor::TYPE, lLink));
  lLink->setParent(lSensor);
  lSensor->Initialize();
  auto* lUi = new PxSimDeviceUi(lSensor);
  PxStaticUi::Singleton()->InstallUi(lUi);
  // The bench paces the acquisition itself.
  QObject::disconnect(&lWindow, &PxHost::Tick, lSensor, &PxSimSensor::Acquire);
  std::unique_ptr<SensorView> lView;
  // The peer fetches the same groups for nobody.
  PxResultSubscription lEverything(2 | 4 | 8 | 16);
  if (aState.range(0) == 0) {
    lSensor->Subscribe(&lEverything);
  } else {
    lView = std::make_unique<SensorView>(lWindow);
    lUi->StateAction()->trigger();
    lUi->RawTracesAction()->trigger();
    lUi->FilteredTracesAction()->trigger();
    lUi->EchoesAction()->trigger();
  }
  double lFrames = 0;
  QObject::connect(lSensor->GetProvider(2), &PxResultProvider::NewData, [&] { ++lFrames; });
  QTimer lAcquisition;
  QObject::connect(&lAcquisition, &QTimer::timeout, lSensor, &PxSimSensor::Acquire);
  lAcquisition.setTimerType(Qt::PreciseTimer);
  lAcquisition.start(20);
  double lWorstStall = 0.0;
  // Processor time the GUI thread spent between two pulses: the stall it caused itself, which a
  // busy machine's preemption (in the wall-clock gap) does not inflate.
  double lWorstBusy = 0.0;
  double lCpuShare = 0.0;
  for (auto _ : aState) {
    QElapsedTimer lClock;
    qint64 lLast = 0;
    qint64 lLongest = 0;
    double lCpuLast = ThreadCpuMs();
    double lBusiest = 0.0;
    QTimer lPulse;
    lPulse.setTimerType(Qt::PreciseTimer);
    QObject::connect(&lPulse, &QTimer::timeout, [&] {
      lLongest = std::max(lLongest, lClock.elapsed() - lLast);
      lLast = lClock.elapsed();
      const double lCpuNow = ThreadCpuMs();
      lBusiest = std::max(lBusiest, lCpuNow - lCpuLast);
      lCpuLast = lCpuNow;
    });
    QEventLoop lLoop;
    QTimer::singleShot(RUN_MS, &lLoop, &QEventLoop::quit);
    const double lCpuStart = ThreadCpuMs();
    lClock.start();
    lPulse.start(PULSE_MS);
    lLoop.exec();
    const double lCpu = ThreadCpuMs() - lCpuStart;
    const double lShare = 100.0 * lCpu / static_cast<double>(lClock.elapsed());
    lCpuShare = std::max(lCpuShare, lShare);
    lWorstStall = std::max(lWorstStall, static_cast<double>(lLongest - PULSE_MS));
    lWorstBusy = std::max(lWorstBusy, lBusiest);
    aState.SetIterationTime(lCpu / 1000.0);
  }
  aState.counters["gui_cpu_percent"] = lCpuShare;
  aState.counters["longest_stall_ms"] = lWorstStall;
  aState.counters["longest_busy_ms"] = lWorstBusy;
  aState.counters["frames_per_s"] = lFrames * 1000.0 / (RUN_MS * static_cast<double>(aState.iterations()));
  lAcquisition.stop();
  lView.reset();
  PxShutdown();
}
BENCHMARK(BM_FormsOpenAt50Hz)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
} // namespace

int main(int argc, char** argv)
{
  QTemporaryDir lState;
  sState = &lState;
  return PxBenchRunWithUi(argc, argv);
}
