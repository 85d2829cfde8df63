#include "PxSimConnectionTypes.h"

#include "PxConnection.h"
#include "PxInProcessConnection.h"
#include "PxSimDevice.h"
#include "PxSimDeviceUi.h"
#include "PxSimInProcessWidget.h"
#include "PxSimSensor.h"
#include "PxSimTcpWidget.h"
#include "PxTcpConnection.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTcpSocket>

#include <memory>
#include <stdexcept>

namespace {
bool sRegistered = false;
QString sStateDir;
bool sOlderFirmware = false;

const char* const SETTINGS_GROUP = "TcpConnection";
// A lister must not keep the caller waiting for an address that does not answer.
constexpr int LIST_PROBE_MS = 300;
} // namespace

void PxSimConnectionTypes::Register()
{
  if (sRegistered) {
    return;
  }
  sRegistered = true;
  PxConnection::RegisterType(QLatin1String(SIM), tr("Simulated sensor"), &CreateSim, &CreateSimWidget, &ListSim);
  PxConnection::RegisterType(QLatin1String(TCP), tr("TCP"), &CreateTcp, &CreateTcpWidget, &ListTcp);
}

void PxSimConnectionTypes::SetSimulatorStateDir(const QString& aDirectory)
{
  sStateDir = aDirectory;
}

QString PxSimConnectionTypes::SimulatorStateDir()
{
  return sStateDir;
}

void PxSimConnectionTypes::SetSimulatorOnOlderFirmware(bool aOlder)
{
  sOlderFirmware = aOlder;
}

PxControlConnection* PxSimConnectionTypes::CreateSimulatorConnection()
{
  auto* lConnection = new PxInProcessConnection(sStateDir);
  if (sOlderFirmware) {
    lConnection->Device().Configuration().RunOlderFirmware();
  }
  return lConnection;
}

PxSimDeviceUi* PxSimConnectionTypes::CreateDeviceUi(PxControlConnection* aConnection)
{
  std::unique_ptr<PxControlConnection> lConnection(aConnection);
  PxDevice* lDevice = PxDevice::Create(PxSimSensor::TYPE, aConnection);
  auto* lSensor = qobject_cast<PxSimSensor*>(lDevice);
  if (!lSensor) {
    delete lDevice;
    throw std::runtime_error(tr("No driver is registered for the Parvex 16.").toStdString());
  }
  // The device UI deletes the sensor at disconnect, and the link goes with it.
  lConnection.release()->setParent(lSensor);
  std::unique_ptr<PxSimSensor> lOwned(lSensor);
  lSensor->Initialize();
  return new PxSimDeviceUi(lOwned.release());
}

QString PxSimConnectionTypes::LastTcpHost()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  return lSettings.value(QStringLiteral("Host"), QStringLiteral("127.0.0.1")).toString();
}

quint16 PxSimConnectionTypes::LastTcpPort()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  const uint lPort = lSettings.value(QStringLiteral("Port"), PxTcpConnection::DEFAULT_PORT).toUInt();
  return lPort >= 1 && lPort <= 65535 ? static_cast<quint16>(lPort) : PxTcpConnection::DEFAULT_PORT;
}

void PxSimConnectionTypes::StoreTcpAddress(const QString& aHost, quint16 aPort)
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  lSettings.setValue(QStringLiteral("Host"), aHost);
  lSettings.setValue(QStringLiteral("Port"), aPort);
}

PxConnection* PxSimConnectionTypes::CreateSim()
{
  return CreateSimulatorConnection();
}

PxConnection* PxSimConnectionTypes::CreateTcp()
{
  return new PxTcpConnection(LastTcpHost(), LastTcpPort());
}

PxConnectionWidget* PxSimConnectionTypes::CreateSimWidget(QWidget* aParent)
{
  return new PxSimInProcessWidget(aParent);
}

PxConnectionWidget* PxSimConnectionTypes::CreateTcpWidget(QWidget* aParent)
{
  return new PxSimTcpWidget(aParent);
}

QStringList PxSimConnectionTypes::ListSim()
{
  return {QLatin1String(SIM)};
}

QStringList PxSimConnectionTypes::ListTcp()
{
  // Where a sensor was last found, and where parvex-sim listens by default.
  QStringList lCandidates{QStringLiteral("%1:%2").arg(LastTcpHost()).arg(LastTcpPort()),
                          QStringLiteral("127.0.0.1:%1").arg(PxTcpConnection::DEFAULT_PORT)};
  lCandidates.removeDuplicates();
  QStringList lFound;
  for (const QString& lCandidate : lCandidates) {
    const int lColon = lCandidate.lastIndexOf(QLatin1Char(':'));
    QTcpSocket lSocket;
    lSocket.connectToHost(lCandidate.left(lColon), static_cast<quint16>(lCandidate.mid(lColon + 1).toUInt()));
    if (lSocket.waitForConnected(LIST_PROBE_MS)) {
      lFound << QStringLiteral("tcp://") + lCandidate;
    }
    lSocket.abort();
  }
  return lFound;
}
