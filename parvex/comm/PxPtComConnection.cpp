#include "PxPtComConnection.h"

PxPtComConnection::PxPtComConnection(QObject* aParent)
  : PxConnection(aParent)
{
}
