#include "PxResultSubscription.h"

#include "PtAssert.h"
#include "PxSensor.h"

PxResultSubscription::PxResultSubscription(PtU32 aMask)
    : mMask(aMask)
{
  CheckMask(aMask);
}

PxResultSubscription::~PxResultSubscription()
{
  if (mSensor) {
    mSensor->Unsubscribe(this);
  }
}

void PxResultSubscription::SetMask(PtU32 aMask)
{
  if (!mSensor) {
    mMask = aMask;
  }
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxResultSubscription::CheckMask(PtU32 aMask)
{
#line 52
  PT_ASSERT(aMask);
}
