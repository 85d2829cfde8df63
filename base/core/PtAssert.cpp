#include "PtAssert.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

void PtAssertFailed(const char* aExpression, const char* aFile, int aLine)
{
  // File name without directories and without extension: "PxProperty", not a build path.
  const char* lBase = aFile;
  for (const char* p = aFile; *p; ++p) {
    if (*p == '/' || *p == '\\') {
      lBase = p + 1;
    }
  }
  const char* lDot = std::strrchr(lBase, '.');
  const int lLength = lDot ? static_cast<int>(lDot - lBase) : static_cast<int>(std::strlen(lBase));
  std::fprintf(stderr, "Assertion failed: %s, file %.*s, line %d\n", aExpression, lLength, lBase, aLine);
  std::fflush(stderr);
  std::abort();
}
