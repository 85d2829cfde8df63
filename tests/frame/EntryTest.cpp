#include "PxEntry.h"
#include "PxUnits.h"

#include <QImage>

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

TEST(Entry, EveryToolbarIconIsCompiledIn)
{
  const char* lNames[] = {"Connect", "Disconnect", "Apply", "Undo", "mm-Stop", "mm-Play", "mm-First", "mm-Last"};
  for (const char* n : lNames) {
    const QString lPath = QStringLiteral(":/icons/%1.png").arg(QLatin1String(n));
    QImage lImage(lPath);
    ASSERT_FALSE(lImage.isNull()) << lPath.toStdString();
    EXPECT_GE(lImage.width(), 32);
    EXPECT_TRUE(lImage.hasAlphaChannel()) << "icons must sit on any tool-bar background";
  }
}
} // namespace
