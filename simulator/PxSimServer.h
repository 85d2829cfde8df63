#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>

class PxSimDevice;
class QTcpServer;
class QTcpSocket;

// Serves one simulated sensor over TCP, one client at a time: a second client is turned away while
// one is connected. Requests are cut from the byte stream by their header and answered in order;
// a late answer (injected fault) holds back the requests behind it, as a busy device would.
class PxSimServer : public QObject
{
  Q_OBJECT

public:
  explicit PxSimServer(PxSimDevice& aDevice, QObject* aParent = nullptr);
  ~PxSimServer() override;

  // Listens on aAddress:aPort (0 = any free port); false with the reason in ErrorString.
  bool Listen(quint16 aPort, const QHostAddress& aAddress = QHostAddress::LocalHost);
  quint16 Port() const;
  QString ErrorString() const;
  bool HasClient() const { return mClient != nullptr; }

private:
  void NewConnection();
  void ReadyRead();
  void ClientDisconnected();
  void Process();
  void SendHeld();
  void Drop();

  PxSimDevice& mDevice;
  QTcpServer* mServer = nullptr;
  QTcpSocket* mClient = nullptr;
  QString mPeer;
  QByteArray mIncoming;
  QByteArray mHeld; // a late answer waiting for its time
  QTimer mHeldTimer;
  quint64 mRequests = 0;
};
