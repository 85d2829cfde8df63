#include "DeviceSession.h"

#include "PtErrorLogForm.h"
#include "PtMessageBox.h"
#include "PxHost.h"
#include "PxInProcessConnection.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"

#include <QLabel>
#include <QUrl>

DeviceSession::DeviceSession(PxHost& aHost, QObject* aParent)
  : QObject(aParent)
  , mHost(aHost)
{
}

DeviceSession::~DeviceSession()
{
  Close();
}

bool DeviceSession::Open(const QString& aTarget, const QString& aSimulatorStateDir)
{
  Close();
  try {
    if (aTarget == QLatin1String("sim")) {
      mConnection = std::make_unique<PxInProcessConnection>(aSimulatorStateDir);
    } else {
      const QUrl lUrl(aTarget);
      if (lUrl.scheme() != QLatin1String("tcp") || lUrl.host().isEmpty()) {
        throw std::invalid_argument(
          tr("\"%1\" is not a device address; use sim or tcp://HOST:PORT.").arg(aTarget).toStdString());
      }
      mConnection = std::make_unique<PxTcpConnection>(lUrl.host(), static_cast<quint16>(lUrl.port(PxTcpConnection::DEFAULT_PORT)));
    }
    if (!mConnection->Connect()) {
      throw std::runtime_error(tr("The sensor at %1 does not answer.").arg(aTarget).toStdString());
    }
    mSensor = qobject_cast<PxSensor*>(PxDevice::Create(PxSimSensor::TYPE, mConnection.get()));
    if (!mSensor) {
      throw std::runtime_error(tr("No driver is registered for this sensor.").toStdString());
    }
    mSensor->Initialize();
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    PtMessageBox::ShowError(&mHost, e);
    Close();
    return false;
  }

  connect(mConnection.get(), &PxConnection::Disconnected, this, &DeviceSession::LinkLost, Qt::QueuedConnection);
  mHostContext = mHost.CreateDeviceContext();
  mHost.SetDeviceTitle(mSensor->Name());
  mStatus = new QLabel(tr("Waiting for data..."));
  mHost.AddStatusWidget(mStatus);
  // State for the status line; echoes so that the simulated scene is measured from the start.
  mSubscription = std::make_unique<PxResultSubscription>(PxResultProvider::ID_STATE | PxResultProvider::ID_ECHOES);
  if (PxResultProvider* lState = mSensor->GetProvider(PxResultProvider::ID_STATE)) {
    connect(lState, &PxResultProvider::NewData, this, &DeviceSession::StateNewData);
  }
  mSensor->Subscribe(mSubscription.get());
  return true;
}

void DeviceSession::Close()
{
  mSubscription.reset(); // leaves the sensor on its own
  delete mSensor;
  mSensor = nullptr;
  mConnection.reset();
  delete mHostContext;
  mHostContext = nullptr;
  delete mStatus;
  mFrames = 0;
}

QString DeviceSession::StatusText() const
{
  return mStatus ? mStatus->text() : QString();
}

void DeviceSession::StateNewData()
{
  ++mFrames;
  auto* lState = static_cast<PxResultState*>(mSensor->StateProvider());
  if (mStatus && lState) {
    mStatus->setText(tr("%1 frames at %2 Hz").arg(mFrames).arg(lState->RateResult()->Value(0), 0, 'f', 1));
  }
}

void DeviceSession::LinkLost()
{
  mHost.SetDeviceTitle(QString());
  Close();
  mHost.ShowStatusMessage(tr("The connection to the sensor was lost."), 0);
}
