#include "LiveStatus.h"

#include "PxDeviceUi.h"
#include "PxHost.h"
#include "PxInProcessConnection.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"
#include "PxSensor.h"
#include "PxStaticUi.h"
#include "PxTcpConnection.h"

#include <QLabel>

LiveStatus::LiveStatus(PxHost& aHost, QObject* aParent)
    : QObject(aParent)
    , mLabel(new QLabel)
{
  mLabel->hide();
  aHost.AddStatusWidget(mLabel);
  connect(PxStaticUi::Singleton(), &PxStaticUi::UiChanged, this, &LiveStatus::UiChanged);
  UiChanged();
}

LiveStatus::~LiveStatus()
{
  Stop();
}

QString LiveStatus::Text() const
{
  return mLabel && mLabel->isVisible() ? mLabel->text() : QString();
}

void LiveStatus::Stop()
{
  mSubscription.reset(); // a sensor already gone has let go of it
  mFrames = 0;
  mConnection.clear();
  if (mLabel) {
    mLabel->hide();
  }
}

void LiveStatus::UiChanged()
{
  Stop();
  PxDeviceUi* lUi = PxStaticUi::Ui();
  auto* lSensor = lUi ? qobject_cast<PxSensor*>(lUi->Device()) : nullptr;
  if (!lSensor || !mLabel) {
    return;
  }
  if (auto* lTcp = qobject_cast<PxTcpConnection*>(lSensor->Connection())) {
    mConnection = tr("TCP %1:%2").arg(lTcp->Host()).arg(lTcp->Port());
  } else if (qobject_cast<PxInProcessConnection*>(lSensor->Connection())) {
    mConnection = tr("built-in simulated sensor");
  } else {
    mConnection = lUi->Name();
  }
  mLabel->setText(tr("%1 - waiting for data...").arg(mConnection));
  mLabel->show();
  // The state drives the line; echoes too, so the simulated scene is measured from the start.
  mSubscription = std::make_unique<PxResultSubscription>(PxResultProvider::ID_STATE | PxResultProvider::ID_ECHOES);
  if (PxResultProvider* lState = lSensor->GetProvider(PxResultProvider::ID_STATE)) {
    connect(lState, &PxResultProvider::NewData, this, &LiveStatus::StateNewData, Qt::UniqueConnection);
  }
  lSensor->Subscribe(mSubscription.get());
}

void LiveStatus::StateNewData()
{
  PxDeviceUi* lUi = PxStaticUi::Ui();
  auto* lSensor = lUi ? qobject_cast<PxSensor*>(lUi->Device()) : nullptr;
  auto* lState = lSensor ? static_cast<PxResultState*>(lSensor->StateProvider()) : nullptr;
  if (!lState || !mLabel || !mSubscription) {
    return;
  }
  ++mFrames;
  mLabel->setText(
      tr("%1 - %2 frames at %3 Hz").arg(mConnection).arg(mFrames).arg(lState->RateResult()->Value(0), 0, 'f', 1));
}
