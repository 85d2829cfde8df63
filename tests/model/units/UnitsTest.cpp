#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestUi.h"
#include "PxUnits.h"

#include <QGroupBox>
#include <QLocale>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>

#include <cmath>
#include <gtest/gtest.h>

namespace {
using PxTest::Button;

// The checked choice of each group on the dialog's current page, as "Group: Choice".
QStringList Checked(QDialog* aDialog)
{
  QStringList lChecked;
  QWidget* lPage = static_cast<PtPreferencesDialog*>(aDialog)->Page(QStringLiteral("Units"));
  EXPECT_EQ(static_cast<PtPreferencesDialog*>(aDialog)->CurrentPage(), lPage);
  for (QGroupBox* lBox : lPage->findChildren<QGroupBox*>()) {
    for (QRadioButton* lButton : lBox->findChildren<QRadioButton*>()) {
      if (lButton->isChecked()) {
        lChecked.append(lBox->title() + QStringLiteral(": ") + lButton->text());
      }
    }
  }
  return lChecked;
}

class Units : public ::testing::Test
{
protected:
  static void SetUpTestSuite() { PxUnits::Initialize(); }

  void SetUp() override
  {
    QSettings().remove(QStringLiteral("Units"));
    // A known starting point that differs from every choice the cases make.
    PxUnits::SetUnit(UT_DISTANCE, 1);
    PxUnits::SetUnit(UT_TEMPERATURE, 1);
    PxUnits::SetUnit(UT_SPEED, 1);
    PxUnits::SetUnit(UT_ANGLE, 2);
  }

  void TearDown() override { QLocale::setDefault(QLocale::c()); }

  static bool HasSetting(const char* aKey)
  {
    return QSettings().contains(QStringLiteral("Units/") + QLatin1String(aKey));
  }
};

TEST_F(Units, FirstStartFollowsTheLocaleAndSavedChoicesWin)
{
  struct Case
  {
    const char* mName;
    QLocale mLocale;
    int mSavedDistance; // 0: not saved
    int mSavedTemperature;
    const char* mDistance;
    const char* mTemperature;
    const char* mSpeed;
  } const lCases[] = {
      {"United States, first start", QLocale(QLocale::English, QLocale::UnitedStates), 0, 0, "ft", "F", "MPH"},
      {"Germany, first start", QLocale(QLocale::German, QLocale::Germany), 0, 0, "m", "C", "km/h"},
      {"United States, saved metres and Kelvin", QLocale(QLocale::English, QLocale::UnitedStates), 1, 3, "m", "K",
       "km/h"},
      {"Germany, only temperature saved", QLocale(QLocale::German, QLocale::Germany), 0, 2, "m", "F", "km/h"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    QSettings lSettings;
    lSettings.remove(QStringLiteral("Units"));
    if (c.mSavedDistance) {
      lSettings.setValue(QStringLiteral("Units/DistanceUnit"), c.mSavedDistance);
    }
    if (c.mSavedTemperature) {
      lSettings.setValue(QStringLiteral("Units/TemperatureUnit"), c.mSavedTemperature);
    }
    lSettings.sync();
    QLocale::setDefault(c.mLocale);

    PxUnits::LoadPreferences();
    EXPECT_EQ(PxUnits::ShortName(UT_DISTANCE), QLatin1String(c.mDistance));
    EXPECT_EQ(PxUnits::ShortName(UT_TEMPERATURE), QLatin1String(c.mTemperature));
    EXPECT_EQ(PxUnits::ShortName(UT_SPEED), QLatin1String(c.mSpeed));
    EXPECT_EQ(PxUnits::ShortName(UT_ANGLE), QStringLiteral("deg"));
    // Only the user's choice is ever written; reading never stores the locale's guess.
    EXPECT_EQ(HasSetting("DistanceUnit"), c.mSavedDistance != 0);
  }
}

TEST_F(Units, ConversionsAndDisplayTexts)
{
  struct Case
  {
    const char* mName;
    int mType;
    int mUnit;
    double mInternal;
    double mShown;
  } const lCases[] = {
      {"Kelvin keeps the offset 273.0, not 273.15", UT_TEMPERATURE, 3, 0.0, 273.0},
      {"Fahrenheit boiling point", UT_TEMPERATURE, 2, 100.0, 212.0},
      {"one metre in feet", UT_DISTANCE, 2, 1.0, 3.28084},
      {"100 km/h in miles per hour", UT_SPEED, 2, 100.0, 62.13712},
      {"half a turn in degrees", UT_ANGLE, 2, M_PI, 180.0},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxUnits::SetUnit(c.mType, c.mUnit);
    EXPECT_NEAR(PxUnits::To(c.mType, c.mInternal), c.mShown, 1e-4);
    EXPECT_NEAR(PxUnits::To(c.mType, static_cast<float>(c.mInternal)), c.mShown, 1e-4);
    EXPECT_NEAR(PxUnits::From(c.mType, static_cast<float>(c.mShown)), c.mInternal, 1e-4);
  }

  struct FormatCase
  {
    const char* mText;
    int mType;
    int mUnit;
    float mValue;
    int mDecimals;
    bool mConverted;
    const char* mExpected;
  } const lFormats[] = {
      {"%1 ", UT_DISTANCE, 2, 1.0f, 2, false, "3.28 ft"},
      {"%1 ", UT_DISTANCE, 2, 3.0f, 1, true, "3.0 ft"}, // already in feet: not converted twice
      {"T = %1 ", UT_TEMPERATURE, 2, 37.0f, 1, false, "T = 98.6 F"},
      {"%1", UT_NONE, 0, 2.5f, 3, false, "2.500"},
  };
  for (const FormatCase& f : lFormats) {
    SCOPED_TRACE(f.mExpected);
    if (f.mType != UT_NONE) {
      PxUnits::SetUnit(f.mType, f.mUnit);
    }
    EXPECT_EQ(PxUnits::Format(QString::fromLatin1(f.mText), f.mType, f.mValue, f.mDecimals, f.mConverted),
              QString::fromLatin1(f.mExpected));
  }
}

TEST_F(Units, BadUnitIsReportedYetStoredAndAnnounced)
{
  struct Case
  {
    const char* mName;
    int mType;
    int mUnit;
    bool mReported;
    unsigned int mSite;
    const char* mShortNameKept;
  } const lCases[] = {
      {"distance", UT_DISTANCE, 7, true, 1, "m"},
      {"temperature", UT_TEMPERATURE, 4, true, 2, "C"},
      {"speed", UT_SPEED, 0, true, 3, "km/h"},
      {"angle is never reported", UT_ANGLE, 9, false, 0, "deg"},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    QSignalSpy lChanged(PxUnits::Singleton(), &PxUnits::Changed);
    const int lPrevious = PxUnits::Unit(c.mType);
    if (c.mReported) {
      EXPECT_EQ(PxTest::ErrorCode([&] { PxUnits::SetUnit(c.mType, c.mUnit); }), c.mSite);
    } else {
      PxUnits::SetUnit(c.mType, c.mUnit);
    }
    // Stored and announced all the same, with the conversion row left as it was.
    EXPECT_EQ(PxUnits::Unit(c.mType), c.mUnit);
    ASSERT_EQ(lChanged.count(), 1);
    EXPECT_EQ(lChanged.at(0).at(1).toInt(), lPrevious);
    EXPECT_EQ(PxUnits::ShortName(c.mType), QLatin1String(c.mShortNameKept));
  }
}

// OK applies and saves the choice, Cancel keeps what was there and writes nothing; each time it
// opens, the page shows the current choice under its two headings.
TEST_F(Units, PreferencesOkAppliesAndSavesTheChoiceAndCancelChangesNothing)
{
  QSignalSpy lChanged(PxUnits::Singleton(), &PxUnits::Changed);
  QStringList lShown;
  PtModalScript lScript;
  lScript.Queue([&](QDialog* aDialog) {
    PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Foot"))->click();
    PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Fahrenheit"))->click();
    Button(aDialog, QStringLiteral("Cancel"))->click();
  });
  lScript.Queue([](QDialog* aDialog) { PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Foot"))->click(); }); // then closed
  lScript.Queue([&](QDialog* aDialog) {
    lShown += Checked(aDialog);
    PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Foot"))->click();
    PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Kelvin"))->click();
    Button(aDialog, QStringLiteral("OK"))->click();
  });
  lScript.Queue([&](QDialog* aDialog) {
    lShown += Checked(aDialog);
    PxTest::ByText<QRadioButton>(aDialog, QStringLiteral("Fahrenheit"))->click();
    // The "Units" page as the user sees it, for a person to look at.
    EXPECT_TRUE(PxTest::SaveToGallery(aDialog, QStringLiteral("preferences_units")));
    Button(aDialog, QStringLiteral("OK"))->click();
  });
  lScript.Queue([&](QDialog* aDialog) { lShown += Checked(aDialog); }); // then closed
  {
    PtPreferencesDialog lDialog;
    EXPECT_EQ(lDialog.exec(), QDialog::Rejected);
    EXPECT_EQ(lDialog.exec(), QDialog::Rejected);
    EXPECT_EQ(lChanged.count(), 0);
    EXPECT_EQ(PxUnits::Unit(UT_DISTANCE), 1);
    EXPECT_EQ(PxUnits::Unit(UT_TEMPERATURE), 1);
    EXPECT_FALSE(HasSetting("DistanceUnit"));
    EXPECT_EQ(lDialog.exec(), QDialog::Accepted);
    EXPECT_EQ(lDialog.exec(), QDialog::Accepted);
    EXPECT_EQ(lDialog.exec(), QDialog::Rejected);
  }
  EXPECT_EQ(lShown, (QStringList{QStringLiteral("Distance: Meter"), QStringLiteral("Temperature: Celsius"),
                                 QStringLiteral("Distance: Foot"), QStringLiteral("Temperature: Kelvin"),
                                 QStringLiteral("Distance: Foot"), QStringLiteral("Temperature: Fahrenheit")}));
  EXPECT_EQ(PxUnits::Unit(UT_DISTANCE), 2);
  EXPECT_EQ(PxUnits::Unit(UT_SPEED), 2); // speed follows distance
  EXPECT_EQ(PxUnits::Unit(UT_TEMPERATURE), 2);
  QList<int> lTypes;
  for (const QList<QVariant>& lArgs : lChanged) {
    lTypes.append(lArgs.at(0).toInt());
  }
  EXPECT_EQ(lTypes, (QList<int>{UT_DISTANCE, UT_SPEED, UT_TEMPERATURE, UT_TEMPERATURE}));
  QSettings lSettings;
  EXPECT_EQ(lSettings.value(QStringLiteral("Units/DistanceUnit")).toInt(), 2);
  EXPECT_EQ(lSettings.value(QStringLiteral("Units/TemperatureUnit")).toInt(), 2);
  EXPECT_FALSE(lSettings.contains(QStringLiteral("Units/SpeedUnit")));
}
} // namespace
