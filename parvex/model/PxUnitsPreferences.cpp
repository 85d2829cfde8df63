// The "Units" page of the preferences dialog.
#include "PtPreferencesDialog.h"
#include "PxUnits.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QSettings>
#include <QVBoxLayout>

namespace {
QRadioButton* AddChoice(QGroupBox* aBox, const QString& aText, bool aChecked)
{
  auto* lButton = new QRadioButton(aText, aBox);
  lButton->setChecked(aChecked);
  aBox->layout()->addWidget(lButton);
  return lButton;
}

QGroupBox* AddGroup(QWidget* aPage, const QString& aTitle)
{
  auto* lBox = new QGroupBox(aTitle, aPage);
  new QHBoxLayout(lBox);
  aPage->layout()->addWidget(lBox);
  return lBox;
}

// The choices sit together at the left of their box rather than spread over its width.
void EndGroup(QGroupBox* aBox)
{
  static_cast<QHBoxLayout*>(aBox->layout())->addStretch(1);
}

bool IsChecked(const QPointer<QRadioButton>& aButton)
{
  return aButton && aButton->isChecked();
}
} // namespace

void PxUnits::ConnectPreferences()
{
  connect(PtPreferencesDialog::Signaler(), &PtPreferencesSignaler::Open, this, &PxUnits::PreferenceOpen);
}

void PxUnits::PreferenceOpen(PtPreferencesDialog* aForm)
{
  auto* lPage = new QWidget();
  auto* lLayout = new QVBoxLayout(lPage);

  QGroupBox* lDistance = AddGroup(lPage, tr("Distance"));
  const bool lFeet = sUnits[UT_DISTANCE] == 2;
  mMeter = AddChoice(lDistance, tr("Meter"), !lFeet);
  mFoot = AddChoice(lDistance, tr("Foot"), lFeet);
  EndGroup(lDistance);

  QGroupBox* lTemperature = AddGroup(lPage, tr("Temperature"));
  const int lTemperatureUnit = sUnits[UT_TEMPERATURE];
  mCelsius = AddChoice(lTemperature, tr("Celsius"), lTemperatureUnit != 2 && lTemperatureUnit != 3);
  mFahrenheit = AddChoice(lTemperature, tr("Fahrenheit"), lTemperatureUnit == 2);
  mKelvin = AddChoice(lTemperature, tr("Kelvin"), lTemperatureUnit == 3);
  EndGroup(lTemperature);

  lLayout->addStretch(100);

  aForm->AddPage(QString(), tr("Units"), lPage);
  // Unique: a dialog opened a second time must not report its closing to us twice.
  connect(aForm, &PtPreferencesDialog::Closed, this, &PxUnits::PreferencesDialogClosed, Qt::UniqueConnection);
}

void PxUnits::PreferencesDialogClosed(bool aCancel)
{
  if (aCancel) {
    return;
  }
  if (IsChecked(mMeter)) {
    SetUnit(UT_DISTANCE, 1);
    SetUnit(UT_SPEED, 1);
  } else if (IsChecked(mFoot)) {
    SetUnit(UT_DISTANCE, 2);
    SetUnit(UT_SPEED, 2);
  }
  if (IsChecked(mCelsius)) {
    SetUnit(UT_TEMPERATURE, 1);
  } else if (IsChecked(mFahrenheit)) {
    SetUnit(UT_TEMPERATURE, 2);
  } else if (IsChecked(mKelvin)) {
    SetUnit(UT_TEMPERATURE, 3);
  }

  // Speed follows distance and angles are always degrees, so these two keys say everything.
  QSettings lSettings;
  lSettings.beginGroup(QStringLiteral("Units"));
  lSettings.setValue(QStringLiteral("DistanceUnit"), sUnits[UT_DISTANCE]);
  lSettings.setValue(QStringLiteral("TemperatureUnit"), sUnits[UT_TEMPERATURE]);
  lSettings.endGroup();
}
