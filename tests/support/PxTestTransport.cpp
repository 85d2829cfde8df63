#include "PxTestTransport.h"

#include "PxTestBytes.h"

#include <algorithm>
#include <cstring>

PxTestTransport::PxTestTransport(QObject* aParent)
  : PxControlConnection(aParent)
{
}

PxProtocolReader& PxTestTransport::Answer(const QByteArray& aPayload, unsigned short aRequest)
{
  Queue(PxTestBytes().AnswerHeader(2, 0, static_cast<std::uint32_t>(aPayload.size()), aRequest).Bytes(aPayload));
  Reader().ReadAnswerHeader(aRequest);
  return Reader();
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
  if (!mReplay.isEmpty()) {
    auto* lOut = static_cast<char*>(aData);
    while (aSize > 0) {
      const unsigned int lChunk = std::min<unsigned int>(aSize, static_cast<unsigned int>(mReplay.size() - mReplayPosition));
      std::memcpy(lOut, mReplay.constData() + mReplayPosition, lChunk);
      lOut += lChunk;
      aSize -= lChunk;
      mReplayPosition = (mReplayPosition + static_cast<int>(lChunk)) % mReplay.size();
    }
    return;
  }
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

void PxTestTransport::Replay(const QByteArray& aBytes)
{
  mReplay = aBytes;
  mReplayPosition = 0;
}
