#pragma once

#include "ParvexTechExport.h"

// Reports a failed programming-error check and aborts. Never returns; kept out of line so the
// check itself costs one compare at the call site.
[[noreturn]] PT_EXPORT void PtAssertFailed(const char* aExpression, const char* aFile, int aLine);

// Always on, also in release builds: a broken invariant must stop the program where it broke
// rather than corrupt a device's configuration further down. The message names the expression,
// the source file without its extension and the line.
#define PT_ASSERT(aCondition)                                                                      \
  ((aCondition) ? static_cast<void>(0) : PtAssertFailed(#aCondition, __FILE__, __LINE__))
