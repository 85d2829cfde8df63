#include "PxResultSubscription.h"

#include "PtAssert.h"

namespace {
PxResultSubscription::Detacher sDetacher = nullptr;
} // namespace

PxResultSubscription::PxResultSubscription(PtU32 aMask)
    : mMask(aMask)
{
  CheckMask(aMask);
}

PxResultSubscription::~PxResultSubscription()
{
  if (mSensor && sDetacher) {
    sDetacher(mSensor, this);
  }
  mSensor = nullptr;
}

void PxResultSubscription::SetMask(PtU32 aMask)
{
  if (!mSensor) {
    mMask = aMask;
  }
}

void PxResultSubscription::SetDetacher(Detacher aDetacher)
{
  sDetacher = aDetacher;
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxResultSubscription::CheckMask(PtU32 aMask)
{
#line 52
  PT_ASSERT(aMask);
}
