#pragma once

#include "ParvexExport.h"
#include "PtAssert.h"

#include <QObject>
#include <QPointer>
#include <QString>

class PtPreferencesDialog;
class QRadioButton;

// Unit types: values are held in the internal unit and converted only for display.
enum : int {
  UT_NONE = 0,        // no conversion
  UT_DISTANCE = 1,    // metre inside; metre or foot shown
  UT_TEMPERATURE = 2, // degree Celsius inside; Celsius, Fahrenheit or Kelvin shown
  UT_SPEED = 3,       // km/h inside; km/h or miles per hour shown
  UT_ANGLE = 4,       // radian inside; radian or degree shown
  UT_MAX = 5
};

// The process-wide table that turns internal values into the units the user chose, and the
// "Units" preferences page that chooses them.
class PX_EXPORT PxUnits : public QObject
{
  Q_OBJECT

public:
  struct Conversion {
    float mOffset = 0.0f;
    float mFactor = 0.0f;
    QString mShortName;
    QString mLongName;
  };

  // Creates the singleton once and loads the saved choices; later calls do nothing.
  static void Initialize();
  static PxUnits* Singleton();

  // Reads the "Units" settings, falls back to the locale's customary units and applies them.
  // Initialize runs it once; it is public so that the settings can be re-read.
  static void LoadPreferences();

  static void SetUnit(int aType, int aUnit);
  static int Unit(int aType);

  // Internal unit to display unit.
  template <class T> static T To(int aType, T aValue)
  {
    PT_ASSERT(( aType >= UT_NONE ) && ( aType < UT_MAX ));
    return static_cast<T>(aValue * sConversions[aType].mFactor + sConversions[aType].mOffset);
  }

  // Display unit to internal unit.
  static float From(int aType, float aValue)
  {
    PT_ASSERT(( aType >= UT_NONE ) && ( aType < UT_MAX ));
    return (aValue - sConversions[aType].mOffset) / sConversions[aType].mFactor;
  }

  static QString ShortName(int aType)
  {
    PT_ASSERT(( aType >= UT_NONE ) && ( aType < UT_MAX ));
    return sConversions[aType].mShortName;
  }

  static QString LongName(int aType);

  // aText with its first placeholder replaced by the value in fixed notation, followed directly by
  // the unit's short name. aConverted tells that aValue is already in the display unit.
  static QString Format(const QString& aText, int aType, float aValue, int aDecimals, bool aConverted);

Q_SIGNALS:
  void Changed(int aUnitType, int aPreviousUnit);

public Q_SLOTS:
  void PreferenceOpen(PtPreferencesDialog* aForm);
  void PreferencesDialogClosed(bool aCancel);

private:
  PxUnits();
  // Connects to the preferences dialog's signaler, so that every opening gets a "Units" page.
  void ConnectPreferences();

  static int sUnits[UT_MAX];
  static Conversion sConversions[UT_MAX];

  // The radio buttons of the open preferences page. The dialog owns them; they become null by
  // themselves when it is destroyed.
  QPointer<QRadioButton> mMeter;
  QPointer<QRadioButton> mFoot;
  QPointer<QRadioButton> mCelsius;
  QPointer<QRadioButton> mFahrenheit;
  QPointer<QRadioButton> mKelvin;
};
