#include "SensorView.h"

#include "ConfigWindow.h"
#include "PxDeviceUi.h"
#include "PxEchoesGraph.h"
#include "PxSensor.h"
#include "PxStaticUi.h"

SensorView::SensorView(ConfigWindow& aWindow, QObject* aParent)
    : QObject(aParent)
    , mWindow(aWindow)
{
  connect(PxStaticUi::Singleton(), &PxStaticUi::UiChanged, this, &SensorView::UiChanged);
  UiChanged();
}

SensorView::~SensorView()
{
  mWindow.SetCentralView(nullptr);
  delete mGraph;
}

void SensorView::UiChanged()
{
  // The graph watches the sensor: it goes before a sensor that is going.
  mWindow.SetCentralView(nullptr);
  delete mGraph;
  // A replayed sensor is shown like a connected one.
  PxDeviceUi* lUi = PxStaticUi::Ui() ? PxStaticUi::Ui() : PxStaticUi::ReplayUi();
  auto* lSensor = lUi ? qobject_cast<PxSensor*>(lUi->Device()) : nullptr;
  if (!lSensor) {
    return;
  }
  mGraph = new PxEchoesGraph;
  mGraph->setObjectName(QStringLiteral("EchoesGraph"));
  mGraph->SetSensor(lSensor);
  mWindow.SetCentralView(mGraph);
}
