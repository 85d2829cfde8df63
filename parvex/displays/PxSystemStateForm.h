#pragma once

#include "PtTypes.h"
#include "PxDockWidget.h"
#include "PxResultSubscription.h"

#include <QList>

class PxLabel;
class PxProperty;
class PxResult;
class PxResultState;
class PxSensor;
class QGroupBox;
class QLabel;
class QVBoxLayout;

// The "System State" window: who the sensor is (serial number, versions, part numbers) and how it
// runs (temperatures, time and load, acquisition and device state, and the diagnostic values the
// sensor offers). Result labels follow each state frame by themselves; the form formats the
// identity lines and the elapsed time.
class PX_EXPORT PxSystemStateForm : public PxDockWidget
{
  Q_OBJECT

public:
  // Results and properties the form looks for.
  enum : PtU32 {
    ID_DEVICE_STATE_RESULT = 6659,
    ID_LOAD_RESULT = 0x500100,
    ID_RATE_RESULT = 0x500101,
    ID_REFRESHED_PROPERTY = 0x400002,
    DIAGNOSTIC_CATEGORY = 3
  };

  explicit PxSystemStateForm(QWidget* aParent = nullptr);
  ~PxSystemStateForm() override;

  unsigned int PermanentId() const override { return 1; }
  void SetSensor(PxSensor* aSensor);
  // Fills the serial-number, version and part-number lines; a sensor type may show others.
  virtual void SetupDeviceInformation();

  QLabel* SerialNumberLabel() const { return mSerialNumber; }
  QLabel* VersionLabel() const { return mVersion; }
  QLabel* PartNumbersLabel() const { return mPartNumbers; }
  QLabel* ElapsedTimeLabel() const { return mElapsedTime; }
  QGroupBox* DebugGroup() const { return mDebugGroup; }
  const QList<PxLabel*>& ResultLabels() const { return mResultLabels; }

public Q_SLOTS:
  void StateNewData();

protected:
  PxSensor* Sensor() const { return mSensor; }

private:
  QGroupBox* Group(const QString& aTitle, QVBoxLayout*& aLayout);
  // A label bound to aResult, added to aLayout.
  void AddResultLabel(PxResult* aResult, QVBoxLayout* aLayout);

  QWidget* mContent = nullptr;
  QVBoxLayout* mLayout = nullptr;
  QGroupBox* mTemperatureGroup = nullptr;
  QVBoxLayout* mTemperatureLayout = nullptr;
  QGroupBox* mTimersGroup = nullptr;
  QVBoxLayout* mTimersLayout = nullptr;
  QGroupBox* mDebugGroup = nullptr;
  QVBoxLayout* mDebugLayout = nullptr;
  QGroupBox* mAcquisitionGroup = nullptr;
  QVBoxLayout* mAcquisitionLayout = nullptr;
  QGroupBox* mInformationGroup = nullptr;
  QVBoxLayout* mInformationLayout = nullptr;
  QGroupBox* mDeviceStateGroup = nullptr;
  QVBoxLayout* mDeviceStateLayout = nullptr;
  QLabel* mSerialNumber = nullptr;
  QLabel* mVersion = nullptr;
  QLabel* mPartNumbers = nullptr;
  QLabel* mElapsedTime = nullptr;
  QList<PxLabel*> mResultLabels;
  PxSensor* mSensor = nullptr;
  PxResultState* mState = nullptr;
  PxProperty* mRefreshed = nullptr;
  // The state group is fetched while the form shows it.
  PxResultSubscription mSubscription{2};
};
