#include "PxUnits.h"

#include "PtException.h"

#include <QCoreApplication>
#include <QLocale>
#include <QSettings>
#include <memory>

int PxUnits::sUnits[UT_MAX] = {};
PxUnits::Conversion PxUnits::sConversions[UT_MAX];

namespace
{
// Owned by the class and destroyed when the library is unloaded; nothing else deletes it.
std::unique_ptr<PxUnits>& SingletonHolder()
{
  static std::unique_ptr<PxUnits> sSingleton;
  return sSingleton;
}

const char* const GROUP = "Units";
const char* const KEY_DISTANCE = "DistanceUnit";
const char* const KEY_TEMPERATURE = "TemperatureUnit";
} // namespace

PxUnits::PxUnits()
{
  sConversions[UT_NONE] = Conversion{0.0f, 1.0f, QString(), QString()};
  for (int i = UT_DISTANCE; i < UT_MAX; ++i) {
    sUnits[i] = 0;
  }
}

void PxUnits::Initialize()
{
  if (SingletonHolder()) {
    return;
  }
  SingletonHolder().reset(new PxUnits());
  Singleton()->ConnectPreferences();
  LoadPreferences();
}

PxUnits* PxUnits::Singleton()
{
  return SingletonHolder().get();
}

void PxUnits::LoadPreferences()
{
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(GROUP));
  int lDistance = lSettings.value(QLatin1String(KEY_DISTANCE), 0).toInt();
  int lTemperature = lSettings.value(QLatin1String(KEY_TEMPERATURE), 0).toInt();
  lSettings.endGroup();

  // A first start follows the customs of the user's country.
  const int lLocaleChoice = QLocale().country() == QLocale::UnitedStates ? 2 : 1;
  if (lDistance == 0) {
    lDistance = lLocaleChoice;
  }
  if (lTemperature == 0) {
    lTemperature = lLocaleChoice;
  }
  SetUnit(UT_DISTANCE, lDistance);
  SetUnit(UT_TEMPERATURE, lTemperature);
  SetUnit(UT_SPEED, lDistance); // speed follows distance: metres with km/h, feet with MPH
  SetUnit(UT_ANGLE, 2);         // angles are always shown in degrees
}

int PxUnits::Unit(int aType)
{
  PT_ASSERT(( aType >= UT_NONE ) && ( aType < UT_MAX ));
  return sUnits[aType];
}

void PxUnits::SetUnit(int aType, int aUnit)
{
  if (aType >= UT_NONE && aType < UT_MAX && sUnits[aType] == aUnit) {
    return;
  }

  // The long names are kept untranslated and translated by LongName: the choices are loaded at
  // start-up, possibly before the application has installed its translator.
  auto lTr = [](const char* aText) { return QString::fromLatin1(aText); };
  // A bad choice is reported, yet still remembered and announced: settings written by a newer
  // version keep their value instead of being silently reset. The row keeps its old conversion.
  bool lBadUnit = false;
  int lSite = 0;
  switch (aType) {
  case UT_DISTANCE:
    if (aUnit == 1) {
      sConversions[aType] = {0.0f, 1.0f, QStringLiteral("m"), lTr(QT_TRANSLATE_NOOP("PxUnits", "meters"))};
    } else if (aUnit == 2) {
      sConversions[aType] = {0.0f, 3.28084f, QStringLiteral("ft"), lTr(QT_TRANSLATE_NOOP("PxUnits", "feet"))};
    } else {
      lBadUnit = true;
      lSite = 1;
    }
    break;
  case UT_TEMPERATURE:
    if (aUnit == 1) {
      sConversions[aType] = {0.0f, 1.0f, QStringLiteral("C"), lTr(QT_TRANSLATE_NOOP("PxUnits", "Celsius"))};
    } else if (aUnit == 2) {
      sConversions[aType] = {32.0f, 1.8f, QStringLiteral("F"), lTr(QT_TRANSLATE_NOOP("PxUnits", "Fahrenheit"))};
    } else if (aUnit == 3) {
      sConversions[aType] = {273.0f, 1.0f, QStringLiteral("K"), lTr(QT_TRANSLATE_NOOP("PxUnits", "Kelvin"))};
    } else {
      lBadUnit = true;
      lSite = 2;
    }
    break;
  case UT_SPEED:
    if (aUnit == 1) {
      sConversions[aType] = {0.0f, 1.0f, QStringLiteral("km/h"), lTr(QT_TRANSLATE_NOOP("PxUnits", "km/h"))};
    } else if (aUnit == 2) {
      sConversions[aType] = {0.0f, 0.6213712f, QStringLiteral("MPH"), lTr(QT_TRANSLATE_NOOP("PxUnits", "MPH"))};
    } else {
      lBadUnit = true;
      lSite = 3;
    }
    break;
  case UT_ANGLE:
    if (aUnit == 1) {
      sConversions[aType] = {0.0f, 1.0f, QStringLiteral("rad"), lTr(QT_TRANSLATE_NOOP("PxUnits", "radians"))};
    } else if (aUnit == 2) {
      sConversions[aType] = {0.0f, 57.29578f, QStringLiteral("deg"), lTr(QT_TRANSLATE_NOOP("PxUnits", "degrees"))};
    }
    break;
  default:
    // There is no row to remember the choice in.
    PtInvalidArgument(QStringLiteral("aType"), QString::number(aType), 4);
  }

  const int lPrevious = sUnits[aType];
  sUnits[aType] = aUnit;
  if (Singleton()) {
    Q_EMIT Singleton()->Changed(aType, lPrevious);
  }
  if (lBadUnit) {
    PtInvalidArgument(QStringLiteral("aValue"), QString::number(aUnit), lSite);
  }
}

QString PxUnits::LongName(int aType)
{
  PT_ASSERT(( aType >= UT_NONE ) && ( aType < UT_MAX ));
  const QString& lSource = sConversions[aType].mLongName;
  return lSource.isEmpty() ? lSource : QCoreApplication::translate("PxUnits", lSource.toLatin1().constData());
}

QString PxUnits::Format(const QString& aText, int aType, float aValue, int aDecimals, bool aConverted)
{
  const float lValue = aConverted ? aValue : To(aType, aValue);
  return aText.arg(static_cast<double>(lValue), 0, 'f', aDecimals, QLatin1Char(' ')) + ShortName(aType);
}
