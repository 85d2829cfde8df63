#pragma once

#include "PxSimProtocol.h"

// The failure modes a test or a demo switches on at run time: which fault, which request code it
// hits (0 = any) and how many times (0 = until cleared). The transports carry a fault out; this
// only decides which request gets which.
class PxSimFaultInjector
{
public:
  struct Hit
  {
    PxSimProtocol::Fault mFault = PxSimProtocol::FAULT_NONE;
    PtU32 mParameter = 0;
  };

  void Arm(PxSimProtocol::Fault aFault, PtU16 aRequest, PtU32 aParameter, PtU64 aCount);
  void Clear() { mFault = PxSimProtocol::FAULT_NONE; }
  // The fault for this request, if any; counts it down.
  Hit Next(PtU16 aRequest);
  PxSimProtocol::Fault Armed() const { return mFault; }

private:
  PxSimProtocol::Fault mFault = PxSimProtocol::FAULT_NONE;
  PtU16 mRequest = 0;
  PtU32 mParameter = 0;
  PtU64 mRemaining = 0; // 0 = unlimited
};
