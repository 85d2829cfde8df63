#include "PxInProcessConnection.h"

#include "PxSimDevice.h"
#include "PxTransportError.h"

#include <QThread>

#include <cstring>

using namespace PxTransportError;

PxInProcessConnection::PxInProcessConnection(const QString& aStateDir, QObject* aParent)
    : PxControlConnection(aParent)
    , mOwned(std::make_unique<PxSimDevice>(aStateDir))
    , mDevice(mOwned.get())
{
  mClock.start();
}

PxInProcessConnection::PxInProcessConnection(PxSimDevice& aDevice, QObject* aParent)
    : PxControlConnection(aParent)
    , mDevice(&aDevice)
{
  mClock.start();
}

PxInProcessConnection::~PxInProcessConnection() = default;

bool PxInProcessConnection::Connect()
{
  if (!mUp) {
    mUp = true;
    mDropped = false;
    mToDevice.clear();
    mFromDevice.clear();
    mReadPosition = 0;
    mHeld.clear();
  }
  return true;
}

void PxInProcessConnection::Disconnect()
{
  if (!mUp) {
    return;
  }
  mUp = false;
  Q_EMIT Disconnected();
}

void PxInProcessConnection::Fail(unsigned short aReason)
{
  Disconnect();
  PtCommunicationError(aReason, TRANSPORT_IN_PROCESS);
}

void PxInProcessConnection::Pump()
{
  // Requests behind a late answer wait for it, as they would in the device's queue.
  while (!mDropped && mHeld.isEmpty()) {
    const qint64 lLength = PxSimDevice::MessageLength(mToDevice.constData(), mToDevice.size());
    if (lLength < 0) {
      mDropped = true; // the device cannot find its way in this stream and closes the link
      return;
    }
    if (lLength == 0) {
      return;
    }
    const PxSimReply lReply = mDevice->Handle(mToDevice.left(static_cast<int>(lLength)));
    mToDevice.remove(0, static_cast<int>(lLength));
    if (lReply.mDropLink) {
      mDropped = true;
      return;
    }
    if (lReply.mDelayMs > 0) {
      mHeld = lReply.mBytes;
      mHeldDue = mClock.elapsed() + lReply.mDelayMs;
      return;
    }
    mFromDevice.append(lReply.mBytes);
  }
}

void PxInProcessConnection::Write(const void* aData, unsigned int aSize)
{
  if (!mUp) {
    PtCommunicationError(REASON_NOT_CONNECTED, TRANSPORT_IN_PROCESS);
  }
  if (mDropped) {
    Fail(REASON_LINK_LOST);
  }
  mToDevice.append(static_cast<const char*>(aData), static_cast<int>(aSize));
  Pump();
}

void PxInProcessConnection::Read(void* aData, unsigned int aSize)
{
  if (!mUp) {
    PtCommunicationError(REASON_NOT_CONNECTED, TRANSPORT_IN_PROCESS);
  }
  const qint64 lDeadline = mClock.elapsed() + mTimeoutMs;
  while (static_cast<unsigned int>(mFromDevice.size() - mReadPosition) < aSize) {
    if (mDropped) {
      Fail(REASON_LINK_LOST);
    }
    if (mHeld.isEmpty()) {
      Fail(REASON_TIMEOUT);
    }
    const qint64 lNow = mClock.elapsed();
    if (mHeldDue > lDeadline) {
      QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, lDeadline - lNow)));
      Fail(REASON_TIMEOUT);
    }
    QThread::msleep(static_cast<unsigned long>(std::max<qint64>(0, mHeldDue - lNow)));
    mFromDevice.append(mHeld);
    mHeld.clear();
    Pump();
  }
  std::memcpy(aData, mFromDevice.constData() + mReadPosition, aSize);
  mReadPosition += static_cast<int>(aSize);
  // Keep the buffer from growing over a long acquisition.
  if (mReadPosition == mFromDevice.size()) {
    mFromDevice.clear();
    mReadPosition = 0;
  }
}
