#include "PxSimServer.h"

#include "PxSimDevice.h"
#include "PxSimLog.h"

#include <QTcpServer>
#include <QTcpSocket>

PxSimServer::PxSimServer(PxSimDevice& aDevice, QObject* aParent)
    : QObject(aParent)
    , mDevice(aDevice)
    , mServer(new QTcpServer(this))
{
  mHeldTimer.setSingleShot(true);
  connect(&mHeldTimer, &QTimer::timeout, this, &PxSimServer::SendHeld);
  connect(mServer, &QTcpServer::newConnection, this, &PxSimServer::NewConnection);
}

PxSimServer::~PxSimServer()
{
  if (mClient) {
    mClient->disconnect(this);
    mClient->abort();
  }
}

bool PxSimServer::Listen(quint16 aPort, const QHostAddress& aAddress)
{
  return mServer->listen(aAddress, aPort);
}

quint16 PxSimServer::Port() const
{
  return mServer->serverPort();
}

QString PxSimServer::ErrorString() const
{
  return mServer->errorString();
}

void PxSimServer::NewConnection()
{
  while (QTcpSocket* lSocket = mServer->nextPendingConnection()) {
    const QString lPeer = QStringLiteral("%1:%2").arg(lSocket->peerAddress().toString()).arg(lSocket->peerPort());
    if (mClient) {
      // A client that has just closed may not have been noticed yet: its end of stream and the next
      // client's connection can arrive in the same turn of the event loop. Look before refusing.
      mClient->waitForReadyRead(0);
    }
    if (mClient) {
      qCInfo(lcSim).noquote() << "connection from" << lPeer << "refused: serving" << mPeer;
      lSocket->abort();
      lSocket->deleteLater();
      continue;
    }
    mClient = lSocket;
    mPeer = lPeer;
    mRequests = 0;
    mIncoming.clear();
    // Answers are small and go out one per request: do not let them wait for more data.
    mClient->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(mClient, &QTcpSocket::readyRead, this, &PxSimServer::ReadyRead);
    connect(mClient, &QTcpSocket::disconnected, this, &PxSimServer::ClientDisconnected);
    qCInfo(lcSim).noquote() << "client" << mPeer << "connected";
  }
}

void PxSimServer::ReadyRead()
{
  if (!mClient) {
    return;
  }
  mIncoming.append(mClient->readAll());
  Process();
}

void PxSimServer::Process()
{
  while (mClient && !mHeldTimer.isActive()) {
    const qint64 lLength = PxSimDevice::MessageLength(mIncoming.constData(), mIncoming.size());
    if (lLength < 0) {
      qCWarning(lcSim).noquote() << "client" << mPeer << "sent a header that is not a request; dropping the link";
      Drop();
      return;
    }
    if (lLength == 0) {
      return;
    }
    const QByteArray lMessage = mIncoming.left(static_cast<int>(lLength));
    mIncoming.remove(0, static_cast<int>(lLength));
    ++mRequests;
    const PxSimReply lReply = mDevice.Handle(lMessage);
    if (lReply.mDropLink) {
      Drop();
      return;
    }
    if (lReply.mDelayMs > 0) {
      mHeld = lReply.mBytes;
      mHeldTimer.start(lReply.mDelayMs);
      return;
    }
    mClient->write(lReply.mBytes);
  }
}

void PxSimServer::SendHeld()
{
  if (mClient) {
    mClient->write(mHeld);
  }
  mHeld.clear();
  Process();
}

void PxSimServer::Drop()
{
  if (mClient) {
    mClient->abort(); // emits disconnected, which cleans up
  }
}

void PxSimServer::ClientDisconnected()
{
  if (!mClient) {
    return;
  }
  qCInfo(lcSim).noquote() << "client" << mPeer << "disconnected after" << mRequests << "requests";
  mHeldTimer.stop();
  mHeld.clear();
  mIncoming.clear();
  mClient->disconnect(this);
  mClient->deleteLater();
  mClient = nullptr;
}
