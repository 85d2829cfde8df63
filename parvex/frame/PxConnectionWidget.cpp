#include "PxConnectionWidget.h"

PxConnectionWidget::PxConnectionWidget(QWidget* aParent)
    : QWidget(aParent)
{
}
