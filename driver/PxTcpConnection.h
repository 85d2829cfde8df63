#pragma once

#include "ParvexSimDriverExport.h"
#include "PxControlConnection.h"

#include <QString>
#include <QTimer>

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
  // How long a connect started from a window waits for the device: a host that never answers must
  // not keep the user waiting much longer than a slow network would.
  static constexpr int DEFAULT_CONNECT_TIMEOUT_MS = 5000;

  // Why a connect failed, for the words a user is shown.
  enum ConnectFailure {
    CONNECT_OK,
    CONNECT_REFUSED,        // the host answered, nothing listens on the port
    CONNECT_HOST_NOT_FOUND, // the name does not resolve
    CONNECT_UNREACHABLE,    // no route to the host
    CONNECT_TIMED_OUT,      // nothing answered within the time-out
    CONNECT_OTHER
  };

  explicit PxTcpConnection(const QString& aHost = QStringLiteral("127.0.0.1"), quint16 aPort = DEFAULT_PORT,
                           QObject* aParent = nullptr);
  ~PxTcpConnection() override;

  bool Connected() const override { return mUp; }
  // Connects within the time-out; false (reason in ErrorString) when the device does not answer.
  bool Connect() override;
  void Disconnect() override;
  // Starts connecting and returns at once, for a window that must stay responsive: ConnectFinished
  // reports the outcome, at the latest after aTimeoutMs.
  void StartConnect(int aTimeoutMs = DEFAULT_CONNECT_TIMEOUT_MS);
  // Abandons a connect in progress; ConnectFinished is not emitted for it.
  void CancelConnect();
  bool IsConnecting() const { return mConnecting; }
  ConnectFailure Failure() const { return mFailure; }
  void Read(void* aData, unsigned int aSize) override;
  void Write(const void* aData, unsigned int aSize) override;

  void SetTimeout(int aMilliseconds) { mTimeoutMs = aMilliseconds; }
  int Timeout() const { return mTimeoutMs; }
  const QString& Host() const { return mHost; }
  quint16 Port() const { return mPort; }
  QString ErrorString() const { return mError; }

Q_SIGNALS:
  void ConnectFinished(bool aConnected);

private:
  void SocketDisconnected();
  void SocketConnected();
  void SocketError();
  void ConnectTimedOut();
  void LinkUp();
  [[noreturn]] void Fail(unsigned short aReason);

  QString mHost;
  quint16 mPort = DEFAULT_PORT;
  int mTimeoutMs = DEFAULT_TIMEOUT_MS;
  QTcpSocket* mSocket = nullptr;
  bool mUp = false;
  QString mError;
  QTimer mConnectTimer;
  bool mConnecting = false;
  ConnectFailure mFailure = CONNECT_OK;
};
