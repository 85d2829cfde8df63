#pragma once

#include <QObject>
#include <QPointer>

class ConfigWindow;
#include "PxEchoesGraph.h"

// The centre of the main window while a sensor is connected: the echoes graph, a top view of what
// the sensor sees, around which the dock forms are arranged. It follows the application UI: a new
// sensor UI brings a graph for its sensor, a torn-down one takes it away again.
class SensorView : public QObject
{
  Q_OBJECT

public:
  explicit SensorView(ConfigWindow& aWindow, QObject* aParent = nullptr);
  ~SensorView() override;

  PxEchoesGraph* Graph() const { return mGraph; }

private Q_SLOTS:
  void UiChanged();

private:
  ConfigWindow& mWindow;
  QPointer<PxEchoesGraph> mGraph;
};
