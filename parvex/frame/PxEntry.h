#pragma once

#include "ParvexExport.h"

class PxHost;

// The library's entry points, called by the host application.

// Sets up the library around the host's main window. Call once, after the window exists and before
// the event loop runs. Returns false when the host is null or the application UI could not be built;
// the host should not go on then. The units are initialised in every case.
PX_EXPORT bool PxInit(PxHost* aHost);

// Tears down what PxInit built. Call once, before the main window is destroyed.
PX_EXPORT void PxShutdown();

// The library version, "3.2.1.23"; the same pointer on every call. Exported undecorated so that a
// host can look it up with dlsym before it trusts the rest of the library.
extern "C" PX_EXPORT const char* PtGetVersion();
