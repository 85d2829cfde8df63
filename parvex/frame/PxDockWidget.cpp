#include "PxDockWidget.h"

#include <QAction>
#include <QCloseEvent>

unsigned int PxDockWidget::sNextId = 0;

PxDockWidget::PxDockWidget(QWidget* aParent)
  : QDockWidget(aParent)
{
  // Id 0 means "no window" to owners, so the counter skips it when it wraps.
  mId = ++sNextId;
  if (mId == 0) {
    mId = sNextId = 1;
  }
}

void PxDockWidget::SetFlags(unsigned int aFlags)
{
  mFlags = aFlags;
}

void PxDockWidget::SetLinkedActions(QAction* aFirst, QAction* aSecond)
{
  mAction1 = aFirst;
  mAction2 = aSecond;
}

void PxDockWidget::closeEvent(QCloseEvent* aEvent)
{
  QDockWidget::closeEvent(aEvent);
  for (QAction* lAction : {mAction1, mAction2}) {
    if (lAction) {
      lAction->setChecked(false);
    }
  }
  emit Closed(this);
}
