#include "PxEntry.h"
#include "PxUnits.h"

#include <gtest/gtest.h>

namespace {
TEST(Entry, InitWithoutHostFailsButLeavesUnitsReady)
{
  EXPECT_FALSE(PxInit(nullptr));
  ASSERT_NE(PxUnits::Singleton(), nullptr);
  PxUnits* lUnits = PxUnits::Singleton();
  // Units are usable right away: distances in metres in the C locale of the tests.
  EXPECT_EQ(PxUnits::ShortName(UT_DISTANCE), QStringLiteral("m"));
  EXPECT_FALSE(PxInit(nullptr));
  EXPECT_EQ(PxUnits::Singleton(), lUnits) << "a second init must not replace the singleton";
  PxShutdown();
  EXPECT_EQ(PxUnits::Singleton(), lUnits) << "shutdown must leave the units alive";
}
} // namespace
