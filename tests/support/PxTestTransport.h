#pragma once

#include "PxControlConnection.h"

#include <QByteArray>
#include <vector>

// A control connection over an in-memory byte stream: a test queues the bytes the "device" sends
// and reads back every message the code under test wrote. Read throws like a real transport on a
// time-out when the queued bytes run out, so a decoder that reads too far fails instead of hanging.
class PxTestTransport : public PxControlConnection
{
  Q_OBJECT

public:
  explicit PxTestTransport(QObject* aParent = nullptr);

  bool Connected() const override { return mConnected; }
  bool Connect() override;
  void Disconnect() override;
  void Read(void* aData, unsigned int aSize) override;
  void Write(const void* aData, unsigned int aSize) override;

  // Bytes the device sends next.
  void Queue(const QByteArray& aBytes) { mIncoming.append(aBytes); }
  // Queues one successful answer to aRequest carrying aPayload and reads its header, as a driver
  // does before it hands the reader to a provider.
  PxProtocolReader& Answer(const QByteArray& aPayload, unsigned short aRequest = 0x21);
  // Bytes still unread.
  int Pending() const { return mIncoming.size() - mReadPosition; }
  int Consumed() const { return mReadPosition; }
  // Drops what was read so far, keeping long streams from growing without end.
  void Rewind();
  // Serves aBytes over and over instead of the queue: a device that sends the same answer forever,
  // without any allocation per read (for the benchmarks).
  void Replay(const QByteArray& aBytes);

  // Every message written, in order.
  const std::vector<QByteArray>& Written() const { return mWritten; }
  int DisconnectCount() const { return mDisconnectCount; }
  // The next Write throws (once), as a broken link would.
  void FailNextWrite() { mFailNextWrite = true; }

private:
  QByteArray mIncoming;
  int mReadPosition = 0;
  QByteArray mReplay;
  int mReplayPosition = 0;
  std::vector<QByteArray> mWritten;
  bool mConnected = true;
  bool mFailNextWrite = false;
  int mDisconnectCount = 0;
};
