#include "PxTestTransport.h"

#include <cstring>

PxTestTransport::PxTestTransport(QObject* aParent)
  : PxControlConnection(aParent)
{
}

bool PxTestTransport::Connect()
{
  mConnected = true;
  return true;
}

void PxTestTransport::Disconnect()
{
  ++mDisconnectCount;
  if (mConnected) {
    mConnected = false;
    Q_EMIT Disconnected();
  }
}

void PxTestTransport::Read(void* aData, unsigned int aSize)
{
  if (Pending() < 0 || static_cast<unsigned int>(Pending()) < aSize) {
    // What a real transport does when the device stays silent past its time-out.
    PtCommunicationError(1, 0);
  }
  std::memcpy(aData, mIncoming.constData() + mReadPosition, aSize);
  mReadPosition += static_cast<int>(aSize);
}

void PxTestTransport::Write(const void* aData, unsigned int aSize)
{
  if (mFailNextWrite) {
    mFailNextWrite = false;
    PtCommunicationError(2, 0);
  }
  mWritten.emplace_back(static_cast<const char*>(aData), static_cast<int>(aSize));
}

void PxTestTransport::Rewind()
{
  mIncoming.remove(0, mReadPosition);
  mReadPosition = 0;
}
