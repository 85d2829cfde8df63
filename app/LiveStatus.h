#pragma once

#include <QObject>
#include <QPointer>

#include <memory>

class PxHost;
class PxResultSubscription;
class QLabel;

// The live line in the status bar while a sensor is connected: how it is connected, and the frames
// received with their measured rate. It follows the application UI: a new device UI starts it, a
// torn-down one stops it.
class LiveStatus : public QObject
{
  Q_OBJECT

public:
  explicit LiveStatus(PxHost& aHost, QObject* aParent = nullptr);
  ~LiveStatus() override;

  // The line as shown; empty while nothing is connected.
  QString Text() const;
  unsigned long long Frames() const { return mFrames; }

private Q_SLOTS:
  void UiChanged();
  void StateNewData();

private:
  void Stop();

  QPointer<QLabel> mLabel;
  std::unique_ptr<PxResultSubscription> mSubscription;
  QString mConnection;
  unsigned long long mFrames = 0;
};
