#pragma once

#include "PtTypes.h"

// A request the device refuses: the answer code it answers with and, when one element is to blame,
// that element's id (sent back as ID_ERROR_ELEMENT). Thrown by the protocol areas, caught by the
// device, never seen by a transport.
struct PxSimError
{
  PtU16 mCode = 0;
  PtU16 mElement = 0;
};
