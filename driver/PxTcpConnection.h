#pragma once

#include "ParvexSimDriverExport.h"
#include "PxControlConnection.h"

#include <QString>

class QTcpSocket;

// PtCom over TCP. Every wait is bounded by one time-out: connecting, each Read and each Write. A
// Read that times out or finds the link gone drops the link (the byte stream is out of step either
// way) and throws; Disconnected is emitted once per link, whoever notices the loss first.
class PXSIMDRIVER_EXPORT PxTcpConnection : public PxControlConnection
{
  Q_OBJECT

public:
  static constexpr quint16 DEFAULT_PORT = 48016;
  static constexpr int DEFAULT_TIMEOUT_MS = 2000;

  explicit PxTcpConnection(const QString& aHost = QStringLiteral("127.0.0.1"), quint16 aPort = DEFAULT_PORT,
                           QObject* aParent = nullptr);
  ~PxTcpConnection() override;

  bool Connected() const override { return mUp; }
  // Connects within the time-out; false (reason in ErrorString) when the device does not answer.
  bool Connect() override;
  void Disconnect() override;
  void Read(void* aData, unsigned int aSize) override;
  void Write(const void* aData, unsigned int aSize) override;

  void SetTimeout(int aMilliseconds) { mTimeoutMs = aMilliseconds; }
  int Timeout() const { return mTimeoutMs; }
  const QString& Host() const { return mHost; }
  quint16 Port() const { return mPort; }
  QString ErrorString() const { return mError; }

private:
  void SocketDisconnected();
  [[noreturn]] void Fail(unsigned short aReason);

  QString mHost;
  quint16 mPort = DEFAULT_PORT;
  int mTimeoutMs = DEFAULT_TIMEOUT_MS;
  QTcpSocket* mSocket = nullptr;
  bool mUp = false;
  QString mError;
};
