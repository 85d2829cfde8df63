#include "PxTest.h"

#include <QApplication>
#include <QLocale>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{
QTemporaryDir* sScratch = nullptr;
}

// Leak checking stays on in the sanitizer build, but the toolkit's own one-time allocations (the
// offscreen screen, font and platform caches) are not ours to fix. The toolkit's libraries carry no
// frame pointers, so their reports end inside them; allocations made by our code still show our
// frame and are reported.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions()
{
  return "leak:libQt5Core.so\n"
         "leak:libQt5Gui.so\n"
         "leak:libQt5Widgets.so\n"
         "leak:libqoffscreen.so\n"
         "leak:libfontconfig.so\n";
}

QString PxTest::ScratchDir()
{
  return sScratch->path();
}

int main(int argc, char** argv)
{
  // Widgets and forms are tested without a display.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  ::testing::InitGoogleTest(&argc, argv);
  // Death tests re-run this program for each case, so a QApplication in the parent stays safe.
  GTEST_FLAG_SET(death_test_style, "threadsafe");

  QApplication lApp(argc, argv);
  QCoreApplication::setOrganizationName(QStringLiteral("ParvexTest"));
  QCoreApplication::setApplicationName(QStringLiteral("parvex-tests"));
  QLocale::setDefault(QLocale::c());

  // Deterministic and isolated settings: INI files in a scratch folder, never the user's own.
  QTemporaryDir lScratch;
  sScratch = &lScratch;
  QSettings::setDefaultFormat(QSettings::IniFormat);
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, lScratch.path());
  QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, lScratch.path() + QStringLiteral("/system"));

  return RUN_ALL_TESTS();
}
