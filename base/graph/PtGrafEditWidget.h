#pragma once

#include "PtGrafObject.h"
#include "PtGraphWidget.h"

#include <memory>
#include <vector>

// A graph that holds graphic objects besides what subclasses paint: it owns them, draws them in
// the order they were added and asks them for tooltips, the last drawn (topmost) first.
class PT_EXPORT PtGrafEditWidget : public PtGraphWidget
{
  Q_OBJECT

public:
  explicit PtGrafEditWidget(QWidget* aParent = nullptr);
  ~PtGrafEditWidget() override;

  // Takes ownership.
  void AddEditableObject(PtGrafObject* aObject);
  size_t ObjectCount() const { return mObjects.size(); }
  PtGrafObject* Object(size_t aIndex) const { return mObjects.at(aIndex).get(); }
  void ClearObjects();

protected:
  void PaintGraph() override;
  bool CheckToolTip(int aX, int aY) override;

  PtGrafSelection mSelection;

private:
  std::vector<std::unique_ptr<PtGrafObject>> mObjects;
};
