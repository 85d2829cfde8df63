#pragma once

#include "ParvexSimDriverExport.h"
#include "PxDockWidget.h"

#include <QList>

#include <unordered_map>

class PxProperty;
class PxSimSensor;
class QGridLayout;
class QLabel;

// The Parvex 16's settings in one tool window: every setting of the sensor through its own editing
// widget, grouped by area, with a tooltip that names the value's identifier, unit and limits. A
// value the user changed and that the device does not run yet is marked until Apply has sent it
// and read it back.
class PXSIMDRIVER_EXPORT PxSimConfigForm : public PxDockWidget
{
  Q_OBJECT

public:
  // Apart from the framework's own forms, so that saved layouts tell them apart.
  static constexpr unsigned int PERMANENT_ID = 16;

  explicit PxSimConfigForm(PxSimSensor& aSensor, QWidget* aParent = nullptr);

  unsigned int PermanentId() const override;

  // Whether the form marks aProperty as changed and not applied.
  bool ShownModified(const PxProperty* aProperty) const;
  // The widgets of one property's rows (name label, editor, indexer, marker).
  QList<QWidget*> PropertyWidgets(const PxProperty* aProperty) const;

private Q_SLOTS:
  void UnitsChanged();

private:
  struct Row
  {
    QLabel* mName = nullptr;
    QLabel* mMarker = nullptr;
    QList<QWidget*> mWidgets;
  };

  void AddProperty(QGridLayout& aGrid, PxProperty* aProperty);
  void UpdateMarker(const PxProperty* aProperty);
  void UpdateToolTip(const PxProperty* aProperty);

  std::unordered_map<const PxProperty*, Row> mRows;
};
