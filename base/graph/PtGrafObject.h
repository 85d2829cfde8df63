#pragma once

#include "ParvexTechExport.h"

#include <QPointF>
#include <QString>

class PtGrafContext;
class PtGrafObject;

// What the user has picked on an editable graph and how far it has been dragged, in data units.
struct PtGrafSelection
{
  PtGrafObject* mObject = nullptr;
  QPointF mStart; // data point where the drag began
  QPointF mDelta; // data offset since the last Move
};

// Something drawn on an editable graph that draws itself and may take part in selection, moving
// and tooltips. The graph owns its objects.
class PT_EXPORT PtGrafObject
{
public:
  virtual ~PtGrafObject();

  virtual void Draw(PtGrafContext& aContext) = 0;
  // Called when the selection changes; the object claims it by setting aSelection.mObject.
  virtual void UpdateSelection(PtGrafSelection& aSelection);
  // Called while a selection that this object claimed is dragged.
  virtual void Move(PtGrafSelection& aSelection);
  // Whether the object has a tooltip at pixel (aX, aY); if so, sets its text and moves (aX, aY) to
  // its anchor.
  virtual bool GetToolTip(QString& aText, int& aX, int& aY);
};

// Whether direction aAngle lies on the arc that runs counter-clockwise from aFrom to aTo (radians,
// any turn: directions are compared modulo a full turn). An arc of a full turn or more holds
// every direction.
PT_EXPORT bool AngleInRange(double aAngle, double aFrom, double aTo);
