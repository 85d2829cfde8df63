#include "PxEntry.h"

extern "C" const char* PtGetVersion()
{
  static const char sVersion[] = "3.2.1.23";
  return sVersion;
}
