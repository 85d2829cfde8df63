#include "PtGrafEditWidget.h"

PtGrafEditWidget::PtGrafEditWidget(QWidget* aParent)
    : PtGraphWidget(aParent)
{
}

PtGrafEditWidget::~PtGrafEditWidget() = default;

void PtGrafEditWidget::AddEditableObject(PtGrafObject* aObject)
{
  PT_ASSERT(aObject != nullptr);
  mObjects.emplace_back(aObject);
  update();
}

void PtGrafEditWidget::ClearObjects()
{
  mSelection = PtGrafSelection();
  mObjects.clear();
  update();
}

void PtGrafEditWidget::PaintGraph()
{
  for (const std::unique_ptr<PtGrafObject>& lObject : mObjects) {
    lObject->Draw(Context());
  }
}

bool PtGrafEditWidget::CheckToolTip(int aX, int aY)
{
  for (auto lObject = mObjects.rbegin(); lObject != mObjects.rend(); ++lObject) {
    int lX = aX;
    int lY = aY;
    if ((*lObject)->GetToolTip(mToolTipText, lX, lY)) {
      mToolTipX = lX;
      mToolTipY = lY;
      return true;
    }
  }
  return false;
}
