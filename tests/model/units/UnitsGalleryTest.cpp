// Renders the preferences dialog with its "Units" page to a PNG file in the build folder.
#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PxUnits.h"

#include <QDir>
#include <QPixmap>

#include <gtest/gtest.h>

namespace {
TEST(UnitsGallery, PreferencesDialogWithUnitsPage)
{
  PxUnits::Initialize();
  PxUnits::SetUnit(UT_DISTANCE, 1);
  PxUnits::SetUnit(UT_TEMPERATURE, 2);
  QDir().mkpath(QStringLiteral(PX_GALLERY_DIR));
  bool lSaved = false;
  PtModalScript lScript;
  lScript.Queue([&](QDialog* aDialog) {
    lSaved = aDialog->grab().save(QStringLiteral(PX_GALLERY_DIR "/preferences_units.png"));
  });
  PtPreferencesDialog lDialog;
  lDialog.exec();
  EXPECT_TRUE(lSaved);
}
} // namespace
