#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

class PxHost;
class PxControlConnection;
class PxResultSubscription;
class PxSensor;
class QLabel;

// The sensor the application is connected to: the link, the driver's sensor on it, and a live
// line in the status bar (frames and measured rate). The application starts on the built-in
// simulated sensor, so a new user sees a working device without any set-up.
class DeviceSession : public QObject
{
  Q_OBJECT

public:
  explicit DeviceSession(PxHost& aHost, QObject* aParent = nullptr);
  ~DeviceSession() override;

  // aTarget: "sim" (the simulated sensor in this process) or "tcp://HOST:PORT". Errors are logged
  // and shown over the host; false leaves nothing connected.
  bool Open(const QString& aTarget, const QString& aSimulatorStateDir);
  void Close();

  PxSensor* Sensor() const { return mSensor; }
  bool IsOpen() const { return mSensor != nullptr; }
  // The status line as shown.
  QString StatusText() const;

private Q_SLOTS:
  void StateNewData();
  void LinkLost();

private:
  PxHost& mHost;
  std::unique_ptr<PxControlConnection> mConnection;
  PxSensor* mSensor = nullptr;
  std::unique_ptr<PxResultSubscription> mSubscription;
  QObject* mHostContext = nullptr;
  QPointer<QLabel> mStatus;
  unsigned long long mFrames = 0;
};
