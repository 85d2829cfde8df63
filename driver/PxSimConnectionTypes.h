#pragma once

#include "ParvexSimDriverExport.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

class PxConnection;
class PxConnectionWidget;
class PxControlConnection;
class PxSimDeviceUi;
class QWidget;

// The connection types of the Parvex 16 driver, as the connection dialog and parvex-cli list them:
// "sim", the simulated sensor inside the application, and "tcp", a sensor (or parvex-sim) on the
// network.
class PXSIMDRIVER_EXPORT PxSimConnectionTypes
{
  Q_DECLARE_TR_FUNCTIONS(PxSimConnectionTypes)

public:
  static constexpr const char* SIM = "sim";
  static constexpr const char* TCP = "tcp";

  // Enters both types in the connection registry (the first call only).
  static void Register();

  // Where the simulated sensor keeps its saved configuration and firmware; empty keeps nothing.
  static void SetSimulatorStateDir(const QString& aDirectory);
  static QString SimulatorStateDir();
  // Starts the simulated sensor on the previous firmware release, so the update is offered.
  static void SetSimulatorOnOlderFirmware(bool aOlder);
  // A new link to the simulated sensor with the options above; not yet connected.
  static PxControlConnection* CreateSimulatorConnection();

  // The sensor on aConnection, which must be up, read and wrapped in its device UI. The sensor
  // takes the connection as its child. Throws, deleting both, when the device cannot be read.
  static PxSimDeviceUi* CreateDeviceUi(PxControlConnection* aConnection);

  // The address the TCP widget starts with: the last that connected, else 127.0.0.1 and the
  // default port.
  static QString LastTcpHost();
  static quint16 LastTcpPort();
  static void StoreTcpAddress(const QString& aHost, quint16 aPort);

private:
  static PxConnection* CreateSim();
  static PxConnection* CreateTcp();
  static PxConnectionWidget* CreateSimWidget(QWidget* aParent);
  static PxConnectionWidget* CreateTcpWidget(QWidget* aParent);
  static QStringList ListSim();
  static QStringList ListTcp();
};
