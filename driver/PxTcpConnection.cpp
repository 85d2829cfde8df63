#include "PxTcpConnection.h"

#include "PxTransportError.h"

#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTcpSocket>

using namespace PxTransportError;

namespace {
Q_LOGGING_CATEGORY(lcTcp, "parvex.driver.tcp")
}

PxTcpConnection::PxTcpConnection(const QString& aHost, quint16 aPort, QObject* aParent)
    : PxControlConnection(aParent)
    , mHost(aHost)
    , mPort(aPort)
    , mSocket(new QTcpSocket(this))
{
  connect(mSocket, &QTcpSocket::disconnected, this, &PxTcpConnection::SocketDisconnected);
  connect(mSocket, &QTcpSocket::connected, this, &PxTcpConnection::SocketConnected);
  connect(mSocket, &QTcpSocket::errorOccurred, this, &PxTcpConnection::SocketError);
  mConnectTimer.setSingleShot(true);
  connect(&mConnectTimer, &QTimer::timeout, this, &PxTcpConnection::ConnectTimedOut);
}

PxTcpConnection::~PxTcpConnection()
{
  mSocket->disconnect(this);
  mSocket->abort();
}

bool PxTcpConnection::Connect()
{
  if (mUp) {
    return true;
  }
  CancelConnect();
  mSocket->abort();
  mSocket->connectToHost(mHost, mPort);
  if (!mSocket->waitForConnected(mTimeoutMs)) {
    mError = mSocket->errorString();
    qCInfo(lcTcp).noquote() << "cannot connect to" << mHost << mPort << ":" << mError;
    mSocket->abort();
    return false;
  }
  LinkUp();
  return true;
}

void PxTcpConnection::LinkUp()
{
  // Requests are small and each waits for its answer: Nagle's delay would cost a round trip each.
  mSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  mError.clear();
  mFailure = CONNECT_OK;
  mUp = true;
}

void PxTcpConnection::StartConnect(int aTimeoutMs)
{
  if (mUp) {
    Q_EMIT ConnectFinished(true);
    return;
  }
  mSocket->abort();
  mConnecting = true;
  mFailure = CONNECT_OK;
  mConnectTimer.start(aTimeoutMs);
  mSocket->connectToHost(mHost, mPort);
}

void PxTcpConnection::CancelConnect()
{
  if (!mConnecting) {
    return;
  }
  mConnecting = false;
  mConnectTimer.stop();
  mSocket->abort();
}

void PxTcpConnection::SocketConnected()
{
  if (!mConnecting) {
    return; // the blocking Connect handles its own outcome
  }
  mConnecting = false;
  mConnectTimer.stop();
  LinkUp();
  Q_EMIT ConnectFinished(true);
}

void PxTcpConnection::SocketError()
{
  if (!mConnecting) {
    return;
  }
  switch (mSocket->error()) {
  case QAbstractSocket::ConnectionRefusedError:
    mFailure = CONNECT_REFUSED;
    break;
  case QAbstractSocket::HostNotFoundError:
    mFailure = CONNECT_HOST_NOT_FOUND;
    break;
  case QAbstractSocket::NetworkError:
    mFailure = CONNECT_UNREACHABLE;
    break;
  case QAbstractSocket::SocketTimeoutError:
    mFailure = CONNECT_TIMED_OUT;
    break;
  default:
    mFailure = CONNECT_OTHER;
    break;
  }
  mError = mSocket->errorString();
  qCInfo(lcTcp).noquote() << "cannot connect to" << mHost << mPort << ":" << mError;
  mConnecting = false;
  mConnectTimer.stop();
  mSocket->abort();
  Q_EMIT ConnectFinished(false);
}

void PxTcpConnection::ConnectTimedOut()
{
  if (!mConnecting) {
    return;
  }
  mConnecting = false;
  mFailure = CONNECT_TIMED_OUT;
  mError = tr("No answer within %1 ms").arg(mConnectTimer.interval());
  qCInfo(lcTcp).noquote() << "cannot connect to" << mHost << mPort << ": timed out";
  mSocket->abort();
  Q_EMIT ConnectFinished(false);
}

void PxTcpConnection::Disconnect()
{
  if (!mUp) {
    return;
  }
  mUp = false; // first, so that the socket's own disconnected signal below finds nothing to do
  mSocket->abort();
  Q_EMIT Disconnected();
}

void PxTcpConnection::SocketDisconnected()
{
  if (mUp) {
    mError = mSocket->errorString();
    qCInfo(lcTcp).noquote() << "link to" << mHost << mPort << "lost:" << mError;
    Disconnect();
  }
}

void PxTcpConnection::Fail(unsigned short aReason)
{
  Disconnect();
  PtCommunicationError(aReason, TRANSPORT_TCP);
}

void PxTcpConnection::Read(void* aData, unsigned int aSize)
{
  if (!mUp) {
    PtCommunicationError(REASON_NOT_CONNECTED, TRANSPORT_TCP);
  }
  QElapsedTimer lClock;
  lClock.start();
  while (mSocket->bytesAvailable() < static_cast<qint64>(aSize)) {
    const qint64 lLeft = mTimeoutMs - lClock.elapsed();
    if (lLeft <= 0) {
      mError = tr("The device did not answer within %1 ms").arg(mTimeoutMs);
      Fail(REASON_TIMEOUT);
    }
    if (!mSocket->waitForReadyRead(static_cast<int>(lLeft)) && mSocket->state() != QAbstractSocket::ConnectedState) {
      // Bytes the peer sent before closing are still readable; only then is the link really gone.
      if (mSocket->bytesAvailable() < static_cast<qint64>(aSize)) {
        Fail(REASON_LINK_LOST);
      }
    }
    if (!mUp && mSocket->bytesAvailable() < static_cast<qint64>(aSize)) {
      PtCommunicationError(REASON_LINK_LOST, TRANSPORT_TCP);
    }
  }
  if (mSocket->read(static_cast<char*>(aData), aSize) != static_cast<qint64>(aSize)) {
    Fail(REASON_LINK_LOST);
  }
}

void PxTcpConnection::Write(const void* aData, unsigned int aSize)
{
  if (!mUp) {
    PtCommunicationError(REASON_NOT_CONNECTED, TRANSPORT_TCP);
  }
  if (mSocket->write(static_cast<const char*>(aData), aSize) != static_cast<qint64>(aSize)) {
    Fail(REASON_WRITE_FAILED);
  }
  QElapsedTimer lClock;
  lClock.start();
  while (mSocket->bytesToWrite() > 0) {
    const qint64 lLeft = mTimeoutMs - lClock.elapsed();
    if (lLeft <= 0 || !mSocket->waitForBytesWritten(static_cast<int>(lLeft))) {
      Fail(mSocket->state() == QAbstractSocket::ConnectedState ? REASON_TIMEOUT : REASON_LINK_LOST);
    }
  }
}
