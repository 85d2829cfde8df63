#pragma once

#include <QString>

namespace PxTest
{
// The one time-out every QSignalSpy::wait in the suites uses: long enough for a sanitizer build on
// a busy two-core machine, short enough that a lost signal fails the test instead of hanging it.
constexpr int WAIT_MS = 10000;

// A directory that exists for the whole test program and is removed at exit; settings written by
// the code under test land in it instead of the user's real configuration.
QString ScratchDir();
} // namespace PxTest
