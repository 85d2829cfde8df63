// parvex-sim: the simulated Parvex 16-segment sensor as a TCP server on the loopback interface.

#include "PxSimDevice.h"
#include "PxSimLog.h"
#include "PxSimModbusMap.h"
#include "PxSimModbusSlave.h"
#include "PxSimServer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QTextStream>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace {
constexpr quint16 DEFAULT_PORT = 48016;
int sSignalPipe[2] = {-1, -1};

void OnSignal(int)
{
  const char lByte = 1;
  // Only async-signal-safe work here: wake the event loop, which quits cleanly.
  [[maybe_unused]] const auto lWritten = ::write(sSignalPipe[0], &lByte, 1);
}
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("parvex-sim"));
  QCoreApplication::setApplicationVersion(QStringLiteral("3.2.1.23"));

  QCommandLineParser lParser;
  lParser.setApplicationDescription(
      QCoreApplication::translate("main", "Simulated Parvex 16-segment sensor, served over TCP on 127.0.0.1."));
  lParser.addHelpOption();
  lParser.addVersionOption();
  const QCommandLineOption lPort(
      QStringList{QStringLiteral("p"), QStringLiteral("port")},
      QCoreApplication::translate("main", "TCP port to listen on (0 = any free port; default %1).").arg(DEFAULT_PORT),
      QStringLiteral("port"), QString::number(DEFAULT_PORT));
  const QString lDefaultState = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
  const QCommandLineOption lState(
      QStringLiteral("state-dir"),
      QCoreApplication::translate("main", "Directory of the saved configuration and firmware (default %1).")
          .arg(lDefaultState),
      QStringLiteral("dir"), lDefaultState);
  const QCommandLineOption lNoState(QStringLiteral("no-state"),
                                    QCoreApplication::translate("main", "Keep nothing on disk between runs."));
  const QCommandLineOption lOlder(
      QStringLiteral("old-firmware"),
      QCoreApplication::translate("main", "Start on the previous firmware release, so that a tool offers the update."));
  const QCommandLineOption lModbus(
      QStringLiteral("modbus"),
      QCoreApplication::translate("main", "Also serve the live registers as a Modbus RTU slave on this serial port."),
      QStringLiteral("serial-port"));
  const QCommandLineOption lModbusBaud(
      QStringLiteral("modbus-baud"),
      QCoreApplication::translate("main", "Baud rate of the Modbus port (default 19200)."), QStringLiteral("baud"),
      QStringLiteral("19200"));
  const QCommandLineOption lModbusAddress(QStringLiteral("modbus-address"),
                                          QCoreApplication::translate("main", "Modbus slave address (default %1).")
                                              .arg(PxSimModbusMap::DEFAULT_SLAVE_ADDRESS),
                                          QStringLiteral("address"),
                                          QString::number(PxSimModbusMap::DEFAULT_SLAVE_ADDRESS));
  lParser.addOptions({lPort, lState, lNoState, lOlder, lModbus, lModbusBaud, lModbusAddress});
  lParser.process(lApp);

  bool lPortOk = false;
  const uint lPortValue = lParser.value(lPort).toUInt(&lPortOk);
  QTextStream lErr(stderr);
  if (!lPortOk || lPortValue > 65535) {
    lErr << QCoreApplication::translate("main", "Invalid port: %1").arg(lParser.value(lPort)) << '\n';
    return 2;
  }

  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, sSignalPipe) != 0) {
    lErr << "socketpair failed\n";
    return 1;
  }
  QSocketNotifier lNotifier(sSignalPipe[1], QSocketNotifier::Read);
  QObject::connect(&lNotifier, &QSocketNotifier::activated, &lApp, [&] {
    char lByte;
    [[maybe_unused]] const auto lRead = ::read(sSignalPipe[1], &lByte, 1);
    qCInfo(lcSim) << "signal received, stopping";
    QCoreApplication::quit();
  });
  struct sigaction lAction = {};
  lAction.sa_handler = OnSignal;
  sigemptyset(&lAction.sa_mask);
  lAction.sa_flags = SA_RESTART;
  sigaction(SIGINT, &lAction, nullptr);
  sigaction(SIGTERM, &lAction, nullptr);

  PxSimDevice lDevice(lParser.isSet(lNoState) ? QString() : lParser.value(lState));
  if (lParser.isSet(lOlder)) {
    lDevice.Configuration().RunOlderFirmware();
  }
  PxSimServer lServer(lDevice);
  if (!lServer.Listen(static_cast<quint16>(lPortValue))) {
    lErr << QCoreApplication::translate("main", "Cannot listen on 127.0.0.1:%1: %2")
                .arg(lPortValue)
                .arg(lServer.ErrorString())
         << '\n';
    return 1;
  }
  // The one line on standard output: scripts and tests read the port from it.
  QTextStream lOut(stdout);
  lOut << "listening on 127.0.0.1:" << lServer.Port() << Qt::endl;

  PxSimModbusSlave lSlave(lDevice);
  if (lParser.isSet(lModbus)) {
    const int lBaud = lParser.value(lModbusBaud).toInt();
    const int lAddress = lParser.value(lModbusAddress).toInt();
    if (lBaud <= 0 || lAddress < 1 || lAddress > 247) {
      lErr << QCoreApplication::translate("main", "Invalid Modbus baud rate or address.") << '\n';
      return 2;
    }
    if (!lSlave.Open(lParser.value(lModbus), lBaud, lAddress)) {
      lErr
          << QCoreApplication::translate("main", "Cannot open %1: %2").arg(lParser.value(lModbus), lSlave.ErrorString())
          << '\n';
      return 1;
    }
    lErr << QCoreApplication::translate("main", "Modbus slave %1 on %2").arg(lAddress).arg(lParser.value(lModbus))
         << Qt::endl;
  }

  const int lResult = QCoreApplication::exec();
  qCInfo(lcSim) << "stopped after" << lDevice.RequestCount() << "requests";
  return lResult;
}
