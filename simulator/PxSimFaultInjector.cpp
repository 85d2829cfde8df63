#include "PxSimFaultInjector.h"

using namespace PxSimProtocol;

void PxSimFaultInjector::Arm(Fault aFault, PtU16 aRequest, PtU32 aParameter, PtU64 aCount)
{
  mFault = aFault;
  mRequest = aRequest;
  mParameter = aParameter;
  mRemaining = aCount;
}

PxSimFaultInjector::Hit PxSimFaultInjector::Next(PtU16 aRequest)
{
  if (mFault == FAULT_NONE || (mRequest != 0 && mRequest != aRequest)) {
    return {};
  }
  Hit lHit{mFault, mParameter};
  if (mRemaining != 0 && --mRemaining == 0) {
    mFault = FAULT_NONE;
  }
  return lHit;
}
