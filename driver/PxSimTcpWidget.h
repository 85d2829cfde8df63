#pragma once

#include "ParvexSimDriverExport.h"
#include "PxConnectionWidget.h"

#include <QPointer>

class PxTcpConnection;
class QLabel;
class QLineEdit;

// The "TCP" connection: a sensor, or parvex-sim, at a host and port. Both fields are checked as
// they are typed; the connect runs in the background so the dialog stays responsive and its Cancel
// button works, and a failure is told in the widget in plain words.
class PXSIMDRIVER_EXPORT PxSimTcpWidget : public PxConnectionWidget
{
  Q_OBJECT

public:
  explicit PxSimTcpWidget(QWidget* aParent = nullptr);
  ~PxSimTcpWidget() override;

  PxDeviceUi* Ui() const override { return mUi; }
  void Connect() override;

  // The connect time-out; the default suits a user, tests shorten it.
  void SetTimeout(int aMilliseconds) { mTimeoutMs = aMilliseconds; }
  bool IsConnecting() const { return mConnection != nullptr; }
  QString StatusText() const;
  QLineEdit* HostEdit() const { return mHost; }
  QLineEdit* PortEdit() const { return mPort; }

Q_SIGNALS:
  // A connect attempt ended without a device UI; the reason is in the status text.
  void ConnectionFailed();

private Q_SLOTS:
  void LEAddressTextChanged();
  void ConnectFinished(bool aConnected);

private:
  // The reason the fields cannot be used as they are, or an empty text.
  QString Problem() const;
  void ShowStatus(const QString& aText, bool aError);
  void Fail(const QString& aText);

  QLineEdit* mHost = nullptr;
  QLineEdit* mPort = nullptr;
  QLabel* mStatus = nullptr;
  PxTcpConnection* mConnection = nullptr; // while connecting
  PxDeviceUi* mUi = nullptr;              // handed over, never deleted here
  int mTimeoutMs;
};
