#include "PxSystemStateForm.h"

#include "PtAssert.h"
#include "PtErrorLogForm.h"
#include "PtTime.h"
#include "PxIntegerProperty.h"
#include "PxLabel.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxSensor.h"
#include "PxTextProperty.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {
// The first value of an integer property as the 16-bit word the device reports; 0 before it has
// been read.
PtU16 Word(const PxSensor& aSensor, PtU32 aId)
{
  const auto& lProperty = static_cast<const PxIntegerProperty&>(aSensor.Property(aId));
  return lProperty.Count() > 0 ? static_cast<PtU16>(lProperty.Value(0)) : 0;
}

QString Text(const PxSensor& aSensor, PtU32 aId)
{
  const PxProperty* lProperty = aSensor.FindProperty(aId);
  return lProperty && lProperty->Count() > 0 ? lProperty->TextValue(0) : QString();
}
} // namespace

PxSystemStateForm::PxSystemStateForm(QWidget* aParent)
    : PxDockWidget(aParent)
{
  setWindowTitle(tr("System State"));
  mContent = new QWidget(this);
  auto* lGrid = new QGridLayout(mContent);

  mInformationGroup = Group(tr("Device Information"), mInformationLayout);
  mSerialNumber = new QLabel;
  mVersion = new QLabel;
  mPartNumbers = new QLabel;
  for (QLabel* lLabel : {mSerialNumber, mVersion, mPartNumbers}) {
    lLabel->setTextInteractionFlags(Qt::TextSelectableByMouse); // users copy these into reports
    mInformationLayout->addWidget(lLabel);
  }
  mTemperatureGroup = Group(tr("Temperature"), mTemperatureLayout);
  mTimersGroup = Group(tr("Timers && Load"), mTimersLayout);
  auto* lElapsedRow = new QHBoxLayout;
  lElapsedRow->addWidget(new QLabel(tr("Elapsed Time:")));
  mElapsedTime = new QLabel;
  lElapsedRow->addWidget(mElapsedTime, 1);
  mTimersLayout->addLayout(lElapsedRow);
  mAcquisitionGroup = Group(tr("Acquisition State"), mAcquisitionLayout);
  mDeviceStateGroup = Group(tr("Device State"), mDeviceStateLayout);
  mDebugGroup = Group(tr("Debug"), mDebugLayout);

  lGrid->addWidget(mInformationGroup, 0, 0, 1, 2);
  lGrid->addWidget(mTemperatureGroup, 1, 0);
  lGrid->addWidget(mTimersGroup, 1, 1);
  lGrid->addWidget(mAcquisitionGroup, 2, 0);
  lGrid->addWidget(mDeviceStateGroup, 2, 1);
  lGrid->addWidget(mDebugGroup, 3, 0, 1, 2);
  lGrid->setRowStretch(4, 1);
  // Shown once the sensor offers diagnostic values.
  mDebugGroup->hide();
  setWidget(mContent);
}

PxSystemStateForm::~PxSystemStateForm() = default;

QGroupBox* PxSystemStateForm::Group(const QString& aTitle, QVBoxLayout*& aLayout)
{
  auto* lGroup = new QGroupBox(aTitle);
  aLayout = new QVBoxLayout(lGroup);
  return lGroup;
}

void PxSystemStateForm::AddResultLabel(PxResult* aResult, QVBoxLayout* aLayout)
{
  auto* lLabel = new PxLabel;
  lLabel->SetResult(aResult, mState);
  aLayout->addWidget(lLabel);
  mResultLabels << lLabel;
}

void PxSystemStateForm::SetSensor(PxSensor* aSensor)
{
  PT_ASSERT(aSensor);
  PT_ASSERT(mSensor == nullptr);
  mSensor = aSensor;
  mState = static_cast<PxResultState*>(aSensor->GetProvider(2));
  PT_ASSERT(mState);
  SetupDeviceInformation();

  if (PxResult* lDeviceState = aSensor->FindResult(ID_DEVICE_STATE_RESULT)) {
    AddResultLabel(lDeviceState, mAcquisitionLayout);
  }
  mRefreshed = aSensor->IsLive() ? aSensor->FindProperty(ID_REFRESHED_PROPERTY) : nullptr;
  if (mRefreshed) {
    auto* lLabel = new PxLabel;
    lLabel->SetProperty(mRefreshed);
    mDeviceStateLayout->addWidget(lLabel);
  }
  if (PxResult* lTemperature = mState->TemperatureResult()) {
    AddResultLabel(lTemperature, mTemperatureLayout);
  }
  if (PxResult* lLoad = aSensor->FindResult(ID_LOAD_RESULT)) {
    AddResultLabel(lLoad, mTimersLayout);
  }
  if (PxResult* lRate = aSensor->FindResult(ID_RATE_RESULT)) {
    AddResultLabel(lRate, mTimersLayout);
  }
  for (PxResult* lResult : aSensor->GetResultsByCategory(DIAGNOSTIC_CATEGORY)) {
    if (lResult->Count() > 0) {
      AddResultLabel(lResult, mDebugLayout);
      mDebugGroup->show();
    }
  }
  // Groups with nothing to show would only be empty frames.
  mTemperatureGroup->setVisible(mTemperatureLayout->count() > 0);
  mAcquisitionGroup->setVisible(mAcquisitionLayout->count() > 0);
  mDeviceStateGroup->setVisible(mDeviceStateLayout->count() > 0);
  for (QVBoxLayout* lLayout :
       {mInformationLayout, mTemperatureLayout, mTimersLayout, mDebugLayout, mAcquisitionLayout, mDeviceStateLayout}) {
    lLayout->addStretch(100);
  }
  connect(mState, &PxResultProvider::NewData, this, &PxSystemStateForm::StateNewData);
  aSensor->Subscribe(&mSubscription);
}

void PxSystemStateForm::SetupDeviceInformation()
{
  const PtU16 lFpga = Word(*mSensor, PxDevice::ID_FPGA_VERSION);
  const PtU16 lSoftware = Word(*mSensor, PxDevice::ID_SOFTWARE_VERSION);
  const PtU16 lCrc = Word(*mSensor, PxDevice::ID_SOFTWARE_CRC);
  // A factory image stays one when it is later upgraded: bit 14 wins over bit 15.
  const QString lKind = (lSoftware & 0x4000) ? tr("Factory") : (lSoftware & 0x8000) ? tr("Upgrade") : QString();
  mSerialNumber->setText(tr("Serial Number: ") + Text(*mSensor, PxDevice::ID_SERIAL_NUMBER));
  mVersion->setText(tr("Version: FPGA: %1.%2  Software: %3 (%4)  CRC: %5")
                        .arg(lFpga >> 8)
                        .arg(lFpga & 0xFF)
                        .arg(lSoftware & 0x3FFF)
                        .arg(lKind)
                        .arg(lCrc));
  mPartNumbers->setText(
      tr("Part Numbers: Hardware: %1  Software: %2")
          .arg(Text(*mSensor, PxDevice::ID_HARDWARE_PART_NUMBER), Text(*mSensor, PxDevice::ID_SOFTWARE_PART_NUMBER)));
}

void PxSystemStateForm::StateNewData()
{
  mElapsedTime->setText(PtToElapsedTimeString(mState->TimestampResult()->IntValue(0)));
  if (mRefreshed && mSensor->IsLive()) {
    try {
      mSensor->RefreshProperty(ID_REFRESHED_PROPERTY);
    } catch (const std::exception& e) {
      // The next frame tries again; a link that is gone reports itself.
      PtErrorLogForm::LogError(e);
    }
  }
}
