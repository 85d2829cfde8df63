#pragma once

#include "ParvexSimDriverExport.h"
#include "PxControlConnection.h"

#include <QByteArray>
#include <QElapsedTimer>

#include <memory>

class PxSimDevice;

// PtCom to a simulated sensor in the same process: no network and nothing to set up, which makes it
// the default link of a fresh installation and of the tests. Requests go to the device as they are
// written; answers wait in a buffer for Read. The device's faults behave as over TCP: a late answer
// arrives late (Read waits for it up to the time-out, then drops the link), a dropped link is
// found by the next Read. Since nothing else can ever deliver bytes, a Read with no answer coming
// fails at once instead of sleeping through the time-out.
class PXSIMDRIVER_EXPORT PxInProcessConnection : public PxControlConnection
{
  Q_OBJECT

public:
  static constexpr int DEFAULT_TIMEOUT_MS = 2000;

  // Its own simulated sensor; with a state directory, the sensor's saved configuration lives there.
  explicit PxInProcessConnection(const QString& aStateDir = QString(), QObject* aParent = nullptr);
  // A sensor that outlives the link (a test reconnecting, a sensor shared with a view); not owned.
  explicit PxInProcessConnection(PxSimDevice& aDevice, QObject* aParent = nullptr);
  ~PxInProcessConnection() override;

  bool Connected() const override { return mUp; }
  bool Connect() override;
  void Disconnect() override;
  void Read(void* aData, unsigned int aSize) override;
  void Write(const void* aData, unsigned int aSize) override;

  void SetTimeout(int aMilliseconds) { mTimeoutMs = aMilliseconds; }
  int Timeout() const { return mTimeoutMs; }
  PxSimDevice& Device() { return *mDevice; }

private:
  void Pump();
  [[noreturn]] void Fail(unsigned short aReason);

  std::unique_ptr<PxSimDevice> mOwned;
  PxSimDevice* mDevice = nullptr;
  int mTimeoutMs = DEFAULT_TIMEOUT_MS;
  bool mUp = false;
  bool mDropped = false;
  QByteArray mToDevice;   // request bytes not yet handled
  QByteArray mFromDevice; // answer bytes not yet read
  int mReadPosition = 0;
  QByteArray mHeld; // a late answer
  QElapsedTimer mClock;
  qint64 mHeldDue = 0; // mClock time at which mHeld arrives
};
