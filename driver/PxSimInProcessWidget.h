#pragma once

#include "ParvexSimDriverExport.h"
#include "PxConnectionWidget.h"

class QLabel;

// The "Simulated sensor" connection: a Parvex 16 simulated inside the application. Nothing to
// enter; Connect starts it and reads it like a real sensor.
class PXSIMDRIVER_EXPORT PxSimInProcessWidget : public PxConnectionWidget
{
  Q_OBJECT

public:
  explicit PxSimInProcessWidget(QWidget* aParent = nullptr);

  PxDeviceUi* Ui() const override { return mUi; }
  void Connect() override;

  QString StatusText() const;

private:
  QLabel* mStatus = nullptr;
  PxDeviceUi* mUi = nullptr; // handed over, never deleted here
};
