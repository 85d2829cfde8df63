#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QObject>
#include <QStringList>
#include <stdexcept>
#include <vector>

class PtModbus;
class PxConnectionWidget;
class PxSerialPortListener;
class QTableWidget;
class QWidget;

// The link between the application and one device, and the registry of every kind of link the
// drivers offer. The application only ever sees this interface; transports are the drivers'.
class PX_EXPORT PxConnection : public QObject
{
  Q_OBJECT

public:
  // Every failure of a link: the text is the decimal code, one blank and the message.
  class PX_EXPORT Exception : public std::runtime_error
  {
  public:
    using std::runtime_error::runtime_error;
  };

  using ConnectionCreator = PxConnection* (*)();
  using WidgetCreator = PxConnectionWidget* (*)(QWidget* aParent);
  using Lister = QStringList (*)();
  using SerialPortListener = PxSerialPortListener* (*)(PtModbus* aModbus, QTableWidget* aTable);

  // One kind of link, as a driver registers it.
  struct Type {
    QString mName;        // the key the type is chosen by
    QString mDescription; // what the connection dialog lists
    ConnectionCreator mConnectionCreator = nullptr;
    WidgetCreator mWidgetCreator = nullptr;
    Lister mLister = nullptr; // may be null: the type then lists no devices
  };

  struct SerialConnection {
    int mType = 0;
    SerialPortListener mSerialPortListener = nullptr;
  };

  explicit PxConnection(QObject* aParent = nullptr);

  // Whether the link is up.
  virtual bool Connected() const = 0;
  // Opens the link with the settings the transport was made with; true when it is up. The library
  // never calls it: opening is the connection widget's job.
  virtual bool Connect() = 0;
  // Closes the link; the transport then emits Disconnected.
  virtual void Disconnect() = 0;
  // True when the connected device runs in a reduced operating mode.
  virtual bool IsLimitedMode() const;

  // Registry. Types and listeners are kept in the order registered; lookups take the first match.
  static void RegisterType(const QString& aName, const QString& aDescription, ConnectionCreator aConnectionCreator,
                           WidgetCreator aWidgetCreator, Lister aLister);
  static PxConnection* CreateConnection(const QString& aName);
  static QStringList ListDevices(const QString& aName);
  static void RegisterSerialListener(int aType, SerialPortListener aSerialPortListener);
  static PxSerialPortListener* CreateSerialPortListener(int aType, PtModbus* aModbus, QTableWidget* aTable);

  // Throws Exception with the code (aHigh << 16) | aLow and the text "Communication error".
  [[noreturn]] static void PtCommunicationError(unsigned short aLow, unsigned short aHigh);

  // Read directly by the connection dialog.
  static std::vector<Type> sTypes;
  static std::vector<SerialConnection> sSerialConnections;

  // Free for the transport's own use; the library never reads it.
  PtU16 mTransportData = 0;

Q_SIGNALS:
  // The link was lost or closed.
  void Disconnected();

private:
  static void CheckTypeCreators(ConnectionCreator aConnectionCreator, WidgetCreator aWidgetCreator);
  static void CheckSerialListener(SerialPortListener aSerialPortListener);
};
