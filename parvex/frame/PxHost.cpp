#include "PxHost.h"

PxHost::PxHost(QWidget* aParent)
  : QMainWindow(aParent, Qt::WindowFlags())
{
}
