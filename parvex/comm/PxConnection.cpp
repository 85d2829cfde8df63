#include "PxConnection.h"

#include "PtAssert.h"
#include "PtException.h"

#include <QCoreApplication>

std::vector<PxConnection::Type> PxConnection::sTypes;
std::vector<PxConnection::SerialConnection> PxConnection::sSerialConnections;

PxConnection::PxConnection(QObject* aParent)
  : QObject(aParent)
{
}

bool PxConnection::IsLimitedMode() const
{
  return false;
}

void PxConnection::RegisterType(const QString& aName, const QString& aDescription, ConnectionCreator aConnectionCreator,
                                WidgetCreator aWidgetCreator, Lister aLister)
{
  CheckTypeCreators(aConnectionCreator, aWidgetCreator);
  sTypes.push_back(Type{aName, aDescription, aConnectionCreator, aWidgetCreator, aLister});
}

PxConnection* PxConnection::CreateConnection(const QString& aName)
{
  for (const Type& lType : sTypes) {
    if (lType.mName == aName) {
      return lType.mConnectionCreator();
    }
  }
  return nullptr;
}

QStringList PxConnection::ListDevices(const QString& aName)
{
  for (const Type& lType : sTypes) {
    if (lType.mName == aName) {
      return lType.mLister ? lType.mLister() : QStringList();
    }
  }
  return QStringList();
}

void PxConnection::RegisterSerialListener(int aType, SerialPortListener aSerialPortListener)
{
  CheckSerialListener(aSerialPortListener);
  sSerialConnections.push_back(SerialConnection{aType, aSerialPortListener});
}

PxSerialPortListener* PxConnection::CreateSerialPortListener(int aType, PtModbus* aModbus, QTableWidget* aTable)
{
  for (const SerialConnection& lConnection : sSerialConnections) {
    if (lConnection.mType == aType) {
      return lConnection.mSerialPortListener(aModbus, aTable);
    }
  }
  return nullptr;
}

void PxConnection::PtCommunicationError(unsigned short aLow, unsigned short aHigh)
{
  const unsigned int lCode = (static_cast<unsigned int>(aHigh) << 16) | aLow;
  PtThrow<Exception>(lCode, QCoreApplication::translate("PxConnection", "Communication error"));
}

// The registry's precondition checks stay at fixed line numbers: crash reports from installed
// versions are triaged by file and line, so these must not move when the code above changes.
void PxConnection::CheckTypeCreators(ConnectionCreator aConnectionCreator, WidgetCreator aWidgetCreator)
{
#line 95
  PT_ASSERT(aConnectionCreator);
  PT_ASSERT(aWidgetCreator);
}

void PxConnection::CheckSerialListener(SerialPortListener aSerialPortListener)
{
#line 186
  PT_ASSERT(aSerialPortListener);
}
