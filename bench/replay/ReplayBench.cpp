// The replay form and the serial-port viewer against their limits:
// - playing "as fast as possible" a record with state, echoes and 16 traces of 512 samples, in
//   frames per second, alone (/0) and with the replayed sensor's state, trace and echo forms open
//   from its UI (/1), against the player's own ReadNext on the same file; target at least 500
//   frames/s with the forms;
// - a seek by the position slider to a random frame of a 360 000-frame record (an hour at
//   100 Hz), until the form has painted it: median and worst, target under 50 ms;
// - the serial viewer polling 64 registers at 10 Hz at 115 200 baud over a socat pseudo-terminal
//   pair for 60 s (PARVEX_BENCH_SERIAL_S to change): polls done and missed, target none missed.
//   Needs socat; skipped without it.
#include "PtModbus.h"
#include "PxBenchUi.h"
#include "PxRecordPlayerForm.h"
#include "PxSensorUi.h"
#include "PxSerialPortForm.h"
#include "PxSerialPortListener.h"
#include "PxSimDevice.h"
#include "PxSimDriver.h"
#include "PxSimModbusMap.h"
#include "PxSimModbusSlave.h"
#include "PxStaticUi.h"
#include "RecordingTestSupport.h"
#include "ReplayTestUi.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QSlider>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <random>

using namespace RecordingTest;

namespace {
constexpr int WAIT_MS = 120000;

void BM_FormPlaysAsFastAsPossible(benchmark::State& aState)
{
  QTemporaryDir lDir;
  const QString lFile = RecordSynthetic(lDir.path(), 2000, 16, 512, 4095);
  ReplayTest::RegisterUiPlayer();
  // The forms come with the sensor's UI, which lives in the application's window.
  ReplayTest::ReplayHost lHost;
  if (aState.range(0) != 0) {
    PxStaticUi::Initialize(&lHost);
    lHost.show();
  }
  auto lForm = std::make_unique<PxRecordPlayerForm>(nullptr);
  lForm->resize(640, 360);
  lForm->show();
  lForm->OpenFile(lFile);
  if (auto* lUi = qobject_cast<PxSensorUi*>(lForm->Ui())) {
    // The forms a user watches a replay with.
    for (QAction* lView : {lUi->StateAction(), lUi->RawTracesAction(), lUi->EchoesAction()}) {
      lView->trigger();
    }
    if (lUi->Windows().size() != 3) {
      aState.SkipWithError("the replayed sensor's forms did not open");
    }
  }
  lForm->SetSpeed(PxRecordPlayerForm::SPEED_AS_FAST_AS_POSSIBLE);
  qint64 lFrames = 0;
  for (auto _ : aState) {
    lForm->PBFirstClicked();
    QSignalSpy lPlaying(lForm.get(), &PxRecordPlayerForm::PlayingChanged);
    lForm->PBPlayClicked();
    while (lPlaying.size() < 2 && lPlaying.wait(WAIT_MS)) {
    }
    lFrames += static_cast<qint64>(lForm->Player()->RecordSize());
  }
  aState.counters["frames_per_s"] = benchmark::Counter(static_cast<double>(lFrames), benchmark::Counter::kIsRate);
  lForm.reset();
  PxStaticUi::Shutdown();
}
BENCHMARK(BM_FormPlaysAsFastAsPossible)->Arg(0)->Arg(1)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

// The peer: the player alone, nothing shown.
void BM_PlayerReadsAsFastAsPossible(benchmark::State& aState)
{
  QTemporaryDir lDir;
  const QString lFile = RecordSynthetic(lDir.path(), 2000, 16, 512, 4095);
  ReplayTest::RegisterUiPlayer();
  std::unique_ptr<PxRecordPlayer> lPlayer(PxRecordPlayer::CreateFromFile(lFile));
  lPlayer->Start();
  qint64 lFrames = 0;
  for (auto _ : aState) {
    lPlayer->MoveTo(0);
    while (lPlayer->ReadNext()) {
      ++lFrames;
    }
  }
  aState.counters["frames_per_s"] = benchmark::Counter(static_cast<double>(lFrames), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_PlayerReadsAsFastAsPossible)->Iterations(3)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SliderSeekShown(benchmark::State& aState)
{
  const PtU32 lFrames = static_cast<PtU32>(aState.range(0));
  QTemporaryDir lDir;
  const QString lFile = RecordSynthetic(lDir.path(), lFrames, 0, 0, 4095);
  ReplayTest::RegisterUiPlayer();
  PxRecordPlayerForm lForm(nullptr);
  lForm.resize(640, 360);
  lForm.show();
  lForm.OpenFile(lFile);
  auto* lSlider = lForm.findChild<QSlider*>();
  std::mt19937 lRandom(42);
  std::uniform_int_distribution<int> lIndex(1, static_cast<int>(lFrames));
  std::vector<double> lTimes;
  for (auto _ : aState) {
    QElapsedTimer lClock;
    lClock.start();
    lSlider->setValue(lIndex(lRandom));
    lForm.repaint();
    lTimes.push_back(static_cast<double>(lClock.nsecsElapsed()) / 1e6);
  }
  std::sort(lTimes.begin(), lTimes.end());
  aState.counters["median_ms"] = lTimes[lTimes.size() / 2];
  aState.counters["max_ms"] = lTimes.back();
}
BENCHMARK(BM_SliderSeekShown)->Arg(360000)->Iterations(500)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SerialViewerPolls(benchmark::State& aState)
{
  if (QStandardPaths::findExecutable(QStringLiteral("socat")).isEmpty()) {
    aState.SkipWithError("socat is not installed");
    return;
  }
  const int lSeconds =
      qEnvironmentVariableIsSet("PARVEX_BENCH_SERIAL_S") ? qEnvironmentVariableIntValue("PARVEX_BENCH_SERIAL_S") : 60;
  PxSimDriver::Register();
  QTemporaryDir lDir;
  const QString lA = lDir.path() + QStringLiteral("/viewer");
  const QString lB = lDir.path() + QStringLiteral("/device");
  QProcess lSocat;
  lSocat.start(QStringLiteral("socat"),
               {QStringLiteral("pty,raw,echo=0,link=") + lA, QStringLiteral("pty,raw,echo=0,link=") + lB});
  lSocat.waitForStarted();
  for (int i = 0; i < 500 && !(QFileInfo::exists(lA) && QFileInfo::exists(lB)); ++i) {
    QThread::msleep(10);
  }
  PxSimDevice lDevice;
  PxSimModbusSlave lSlave(lDevice);
  lSlave.Open(lB, 115200, PxSimModbusMap::DEFAULT_SLAVE_ADDRESS);
  PxSerialPortForm lForm(nullptr, nullptr);
  lForm.SetPort(lA);
  lForm.SetBaudRate(115200);
  lForm.SetSlaveAddress(PxSimModbusMap::DEFAULT_SLAVE_ADDRESS);
  lForm.SetListenerType(PxSimModbusMap::LISTENER_TYPE);
  lForm.SetRate(10);
  lForm.show();
  for (auto _ : aState) {
    if (!lForm.OpenPort()) {
      aState.SkipWithError("the port did not open");
      break;
    }
    QElapsedTimer lClock;
    lClock.start();
    while (lClock.elapsed() < lSeconds * 1000) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    }
    PxSerialPortListener* lListener = lForm.Listener();
    aState.counters["polls"] = static_cast<double>(lListener->Polls());
    aState.counters["expected"] = lSeconds * 10.0;
    aState.counters["missed"] = static_cast<double>(lListener->MissedPolls());
    aState.counters["failed"] = static_cast<double>(lListener->FailedPolls());
    lForm.ClosePort();
  }
  lSlave.Close();
  lSocat.terminate();
  lSocat.waitForFinished();
}
BENCHMARK(BM_SerialViewerPolls)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();
} // namespace

int main(int argc, char** argv)
{
  return PxBenchRunWithUi(argc, argv);
}
