#include "ConfigWindow.h"
#include "PtModalScript.h"
#include "PxBenchUi.h"
#include "PxEntry.h"
#include "PxInProcessConnection.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDriver.h"
#include "PxSimSensor.h"
#include "PxSimTcpWidget.h"
#include "PxStaticUi.h"

#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {
QTemporaryDir* sState = nullptr;

// The whole of "Connect...": the dialog, the simulated sensor's widget, reading the sensor, the
// version check and the device UI's set-up. Disconnecting is not timed.
void BM_ConnectFromConnectAction(benchmark::State& aState)
{
  ConfigWindow lWindow;
  PxInit(&lWindow);
  PxSimDriver::Register(&lWindow);
  PxSimConnectionTypes::SetSimulatorStateDir(sState->path());
  for (auto _ : aState) {
    PtModalScript lScript;
    lScript.Queue([](QDialog* aDialog) {
      auto* lTypes = aDialog->findChild<QComboBox*>();
      lTypes->setCurrentIndex(lTypes->findText(QStringLiteral("Simulated sensor")));
      for (QPushButton* b : aDialog->findChildren<QPushButton*>()) {
        if (b->text() == QStringLiteral("Connect")) {
          b->click();
        }
      }
    });
    PxStaticUi::Singleton()->ConnectAction()->trigger();
    if (!PxStaticUi::Ui()) {
      aState.SkipWithError("not connected");
      break;
    }
    aState.PauseTiming();
    PxStaticUi::Singleton()->ConnectAction()->trigger();
    aState.ResumeTiming();
  }
  PxShutdown();
}
BENCHMARK(BM_ConnectFromConnectAction)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

// The peer: only the exchanges that reading the sensor takes, with no dialog and no UI.
void BM_ReadSensorOnly(benchmark::State& aState)
{
  for (auto _ : aState) {
    auto* lLink = new PxInProcessConnection(sState->path());
    lLink->Connect();
    std::unique_ptr<PxDevice> lSensor(PxDevice::Create(PxSimSensor::TYPE, lLink));
    lLink->setParent(lSensor.get());
    static_cast<PxSimSensor*>(lSensor.get())->Initialize();
  }
}
BENCHMARK(BM_ReadSensorOnly)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

// A listening socket whose backlog is full: a connect to it neither succeeds nor fails.
struct SilentPeer
{
  SilentPeer()
  {
    mListener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in lAddress{};
    lAddress.sin_family = AF_INET;
    lAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t lLength = sizeof(lAddress);
    ::bind(mListener, reinterpret_cast<sockaddr*>(&lAddress), sizeof(lAddress));
    ::listen(mListener, 0);
    ::getsockname(mListener, reinterpret_cast<sockaddr*>(&lAddress), &lLength);
    mPort = ntohs(lAddress.sin_port);
    for (int& lFiller : mFillers) {
      lFiller = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
      ::connect(lFiller, reinterpret_cast<sockaddr*>(&lAddress), sizeof(lAddress));
    }
  }
  ~SilentPeer()
  {
    for (int lFiller : mFillers) {
      ::close(lFiller);
    }
    ::close(mListener);
  }
  quint16 mPort = 0;
  int mListener = -1;
  int mFillers[4] = {-1, -1, -1, -1};
};

// The longest gap between 5 ms timer ticks on the GUI thread over a 500 ms wait, with the TCP
// widget connecting to a silent host (aState.range(0) == 1) or with nothing running (0, the peer).
void BM_GuiThreadLongestGap(benchmark::State& aState)
{
  SilentPeer lPeer;
  qint64 lWorst = 0;
  for (auto _ : aState) {
    PxSimTcpWidget lWidget;
    lWidget.HostEdit()->setText(QStringLiteral("127.0.0.1"));
    lWidget.PortEdit()->setText(QString::number(lPeer.mPort));
    lWidget.SetTimeout(500);
    QElapsedTimer lClock;
    qint64 lLast = 0;
    qint64 lLongest = 0;
    QTimer lPulse;
    QObject::connect(&lPulse, &QTimer::timeout, [&] {
      lLongest = std::max(lLongest, lClock.elapsed() - lLast);
      lLast = lClock.elapsed();
    });
    QEventLoop lLoop;
    QTimer::singleShot(550, &lLoop, &QEventLoop::quit);
    lClock.start();
    lPulse.start(5);
    if (aState.range(0) == 1) {
      lWidget.Connect();
    }
    lLoop.exec();
    lWorst = std::max(lWorst, lLongest);
    aState.SetIterationTime(static_cast<double>(lLongest) / 1000.0);
  }
  aState.counters["worst_gap_ms"] = static_cast<double>(lWorst);
}
BENCHMARK(BM_GuiThreadLongestGap)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace

int main(int argc, char** argv)
{
  QTemporaryDir lState;
  sState = &lState;
  return PxBenchRunWithUi(argc, argv);
}
