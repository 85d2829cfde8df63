#pragma once

#include "ParvexExport.h"

#include <QWidget>

class PxDeviceUi;

// The parameters of one connection type, shown by the connection dialog below the type chooser.
// A concrete widget connects with what the user entered, creates the device and its device UI,
// and emits ConnectionCompleted; a failure it reports itself, in the widget, so the user can
// correct the parameters and try again.
class PX_EXPORT PxConnectionWidget : public QWidget
{
  Q_OBJECT

public:
  explicit PxConnectionWidget(QWidget* aParent = nullptr);

  // The device UI of the last successful connection, or null. Ownership passes to whoever takes
  // it: the widget must not delete it with itself.
  virtual PxDeviceUi* Ui() const = 0;
  // Starts connecting with the parameters entered; may finish later.
  virtual void Connect() = 0;

Q_SIGNALS:
  void ConnectionCompleted();
};
