#include "PxEntry.h"

#include "PxHost.h"
#include "PxStaticUi.h"
#include "PxUnits.h"

bool PxInit(PxHost* aHost)
{
  // The units come first and regardless of the host: values can be formatted even by a host that
  // failed to build its window.
  PxUnits::Initialize();
  if (!aHost) {
    return false;
  }
  return PxStaticUi::Initialize(aHost);
}

void PxShutdown()
{
  // The units singleton stays until the library is unloaded: widgets destroyed after this call may
  // still format values.
  PxStaticUi::Shutdown();
}

extern "C" const char* PtGetVersion()
{
  static const char sVersion[] = "3.2.1.23";
  return sVersion;
}
