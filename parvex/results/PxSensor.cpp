#include "PxSensor.h"

#include "PtAssert.h"
#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PxDataLogger.h"
#include "PxRecorder.h"
#include "PxResult.h"
#include "PxResultState.h"
#include "PxResultSubscription.h"

#include <QCoreApplication>
#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace
{
constexpr PtU32 SENSOR_CONSTANT = PxProperty::CAT_CONFIGURATION | PxProperty::F_SAVE; // 8
constexpr PtU32 DECIMALS_FREE = 0xFFFFFFFFu;
// A memory access on a sensor that offers no memories.
constexpr int LOGIC_NO_MEMORIES = 20;
} // namespace

PxSensor::PxSensor(PxConnection* aConnection)
  : PxDevice(aConnection)
  , mLength(SENSOR_CONSTANT, ID_LENGTH, 0, 4, 1.0f, 1)
  , mRefreshRate(SENSOR_CONSTANT, ID_REFRESH_RATE, 0, 4, 1.0f, DECIMALS_FREE)
  , mChannelCount(SENSOR_CONSTANT, ID_CHANNEL_COUNT, 432, 4)
  , mEchoDistanceScale(SENSOR_CONSTANT, ID_ECHO_DISTANCE_SCALE, 4100, 4)
  , mTraceAmplitudeScale(SENSOR_CONSTANT, ID_TRACE_AMPLITUDE_SCALE, 4101, 4)
  , mEchoAmplitudeScale(SENSOR_CONSTANT, ID_ECHO_AMPLITUDE_SCALE, 4102, 4)
  , mPointStep(SENSOR_CONSTANT, ID_POINT_STEP, 4107, 4, 1.0f, 3)
  , mEchoDistanceOffset(SENSOR_CONSTANT, ID_ECHO_DISTANCE_OFFSET, 4105, 4, 65536.0f, 2)
  , mFieldOfView(SENSOR_CONSTANT, ID_FIELD_OF_VIEW, 0, 4, 1.0f, 1)
  , mEchoes(mEchoDistanceScale, mEchoAmplitudeScale)
  , mTraces(false, mChannelCount, mTraceAmplitudeScale, mPointStep)
  , mDebugCommand1(COMMAND_DEBUG_1, 4)
  , mDebugCommand2(COMMAND_DEBUG_2, 4)
{
  mLength.SetCount(1);
  mLength.SetName(tr("Length:"));
  mRefreshRate.SetCount(1);
  mRefreshRate.SetName(tr("Refresh Rate:"));
  mRefreshRate.SetFormat(QStringLiteral("%n %v Hz"));
  mChannelCount.SetLimits(1, 16);
  mFieldOfView.SetLimits(-1.0f, 360.0f);

  AddProperty(&mChannelCount);
  AddProperty(&mEchoDistanceScale);
  AddProperty(&mTraceAmplitudeScale);
  AddProperty(&mEchoAmplitudeScale);
  AddProperty(&mPointStep);
  AddProperty(&mEchoDistanceOffset);
  AddProperty(&mLength);
  AddProperty(&mRefreshRate);
  AddProperty(&mFieldOfView);

  AddProvider(&mEchoes);
  AddProvider(&mTraces);

  AddCommand(&mDebugCommand1);
  AddCommand(&mDebugCommand2);
}

PxSensor::~PxSensor()
{
  // No StopRecorder/StopDataLogger here: they refresh editability, which would reach properties
  // of the concrete sensor that are already destroyed.
  DestroyRecording();
  // Views may outlive the sensor; they must not try to leave it later.
  for (PxResultSubscription* lSubscription : mSubscriptions) {
    lSubscription->SetSensor(nullptr);
  }
  mSubscriptions.clear();
}

void PxSensor::Initialize()
{
  if (!IsLive()) {
    return;
  }
  InitializeRecording();
  // Identity and configuration as the device has them, then the two steps that follow every load
  // of a configuration (nothing is modified yet, so the first writes nothing; the second brings
  // limits, units and editability in line with what was read).
  ReadIdentity();
  ReadConfiguration();
  WriteConfiguration();
  ApplyConfiguration();
  if (auto* lState = static_cast<PxResultState*>(GetProvider(PxResultProvider::ID_STATE))) {
    lState->SetRefreshRate(&mRefreshRate);
  }
}

void PxSensor::InitializeRecording()
{
  PxRecorder::Initialize();
  PxDataLogger::Initialize();
}

void PxSensor::CreateRecorder()
{
  // The new one first: when it cannot start, the running recording goes on.
  auto* lRecorder = new PxRecorder(this);
  std::unique_ptr<PxRecorder> lPrevious(std::exchange(mRecorder, lRecorder));
  if (lPrevious) {
    try {
      lPrevious->Close();
    } catch (const std::exception&) {
      UpdateEditables();
      throw;
    }
  }
  lPrevious.reset();
  UpdateEditables();
}

void PxSensor::CreateDataLogger()
{
  auto* lLogger = new PxDataLogger(this);
  delete std::exchange(mDataLogger, lLogger);
  UpdateEditables();
}

void PxSensor::DestroyRecording()
{
  std::unique_ptr<PxRecorder> lRecorder(std::exchange(mRecorder, nullptr));
  if (lRecorder) {
    // The file is finished all the same; an error doing so has nobody to go to but the log.
    try {
      lRecorder->Close();
    } catch (const std::exception& e) {
      PtErrorLogForm::LogError(e);
    }
  }
  lRecorder.reset();
  delete std::exchange(mDataLogger, nullptr);
}

void PxSensor::StopRecorder()
{
  std::unique_ptr<PxRecorder> lRecorder(std::exchange(mRecorder, nullptr));
  std::exception_ptr lError;
  if (lRecorder) {
    // The file is finished before the recorder goes; an error doing so reaches the caller, with
    // the recorder gone and the configuration unlocked all the same.
    try {
      lRecorder->Close();
    } catch (const std::exception&) {
      lError = std::current_exception();
    }
    lRecorder.reset();
  }
  UpdateEditables();
  if (lError) {
    std::rethrow_exception(lError);
  }
}

void PxSensor::StopDataLogger()
{
  delete std::exchange(mDataLogger, nullptr);
  UpdateEditables();
}

void PxSensor::LearnTraceClient() {}
void PxSensor::LearnTraceProd() {}
int PxSensor::TraceLearningState()
{
  return 0;
}
void PxSensor::WriteLearnedTrace() {}
void PxSensor::GetLearnedTrace() {}

PtU32 PxSensor::GetDebugDefaultMemoryLength()
{
  return 1;
}

QMap<int, QString> PxSensor::GetOptionToolTips()
{
  return {};
}

QStringList PxSensor::MemoryNames() const
{
  return {};
}

QByteArray PxSensor::ReadMemory(int, PtU64, PtU32)
{
  PtLogicError(LOGIC_NO_MEMORIES);
}

void PxSensor::WriteMemory(int, PtU64, const QByteArray&)
{
  PtLogicError(LOGIC_NO_MEMORIES);
}

void PxSensor::RefreshProperty(PtU32)
{
}

bool PxSensor::DeliversFilteredTraces() const
{
  return false;
}

PxResultProvider* PxSensor::CreateProvider(PtU32 aId)
{
  if (aId != PxResultProvider::ID_STATE) {
    return nullptr;
  }
  if (mStateProvider) {
    ForgetProvider(mStateProvider);
  }
  auto lState = std::make_unique<PxResultState>();
  mStateProvider = lState.get();
  mCreatedProviders.push_back(std::move(lState));
  return mStateProvider;
}

void PxSensor::ForgetProvider(PxResultProvider* aProvider)
{
  auto lAt = mProviders.find(aProvider->Id());
  if (lAt != mProviders.end() && lAt->second == aProvider) {
    mProviders.erase(lAt);
  }
  // The maps must not keep pointers to the results of a provider about to be destroyed.
  const std::vector<PxResult*>& lEntered = mEnteredResults[aProvider];
  auto lEnteredBy = [&lEntered](const PxResult* aResult) {
    return std::find(lEntered.begin(), lEntered.end(), aResult) != lEntered.end();
  };
  for (PxResultProvider::Map* lMap : {&mResults, &mDeviceResults}) {
    for (auto i = lMap->begin(); i != lMap->end();) {
      i = lEnteredBy(i->second) ? lMap->erase(i) : std::next(i);
    }
  }
  mEnteredResults.erase(aProvider);
  mCreatedProviders.erase(std::remove_if(mCreatedProviders.begin(), mCreatedProviders.end(),
                                         [aProvider](const auto& aOwned) { return aOwned.get() == aProvider; }),
                          mCreatedProviders.end());
}

void PxSensor::RefreshDataMask()
{
  PtU32 lMask = 0;
  for (const PxResultSubscription* lSubscription : mSubscriptions) {
    lMask |= lSubscription->Mask();
  }
  mDataMask = lMask;
}

bool PxSensor::CanModifyConfiguration() const
{
  if (mRecorder || mDataLogger) {
    return false;
  }
  return PxDevice::CanModifyConfiguration();
}

void PxSensor::ExecuteCommand(PtU32 aId)
{
  PxCommand* lCommand = aId == COMMAND_DEBUG_1 ? &mDebugCommand1 : aId == COMMAND_DEBUG_2 ? &mDebugCommand2 : nullptr;
  if (!lCommand) {
    PxDevice::ExecuteCommand(aId);
    return;
  }
  lCommand->SetState(COMMAND_BUSY);
  const PtU64 lAddress = lCommand->Parameter(0).toULongLong();
  const PtU32 lLength = lCommand->Parameter(1).toUInt();
  const PtByte lMode = static_cast<PtByte>(lCommand->Parameter(2).toUInt());
  const PtU64 lValue = lCommand->Parameter(3).toULongLong();
  if (aId == COMMAND_DEBUG_1) {
    DebugCommand1(lAddress, lLength, lMode, lValue);
  } else {
    DebugCommand2(lAddress, lLength, lMode, lValue);
  }
  lCommand->SetState(COMMAND_DONE);
}

void PxSensor::LoadCalibration(PtDocumentReader& aReader)
{
  PxDevice::LoadCalibration(aReader);
  // Send the calibration to the device, then bring the model in line with it.
  WriteCalibration();
  ApplyConfiguration();
}

void PxSensor::AddProvider(PxResultProvider* aProvider)
{
  CheckProvider(aProvider);
  mProviders[aProvider->Id()] = aProvider;
  // Remember which results the provider entered, so they can leave the maps with it.
  const PxResultProvider::Map lBefore = mResults;
  aProvider->SetMaps(&mResults, &mDeviceResults);
  std::vector<PxResult*>& lEntered = mEnteredResults[aProvider];
  for (const auto& lEntry : mResults) {
    auto lOld = lBefore.find(lEntry.first);
    if (lOld == lBefore.end() || lOld->second != lEntry.second) {
      lEntered.push_back(lEntry.second);
    }
  }
}

PxResultProvider* PxSensor::GetProvider(PtU32 aId)
{
  auto lAt = mProviders.find(aId);
  if (lAt != mProviders.end()) {
    return lAt->second;
  }
  PxResultProvider* lProvider = CreateProvider(aId);
  if (lProvider) {
    AddProvider(lProvider);
  }
  return lProvider;
}

void PxSensor::AddResult(PxResult* aResult)
{
  CheckResult(aResult);
  mResults[aResult->Id()] = aResult;
}

PxResult* PxSensor::FindResult(PtU32 aId) const
{
  auto lAt = mResults.find(aId);
  return lAt == mResults.end() ? nullptr : lAt->second;
}

std::vector<PxResult*> PxSensor::GetResultsByCategory(int aCategory) const
{
  std::vector<PxResult*> lResults;
  for (const auto& lEntry : mResults) {
    if (lEntry.second->Category() == aCategory) {
      lResults.push_back(lEntry.second);
    }
  }
  return lResults;
}

void PxSensor::Subscribe(PxResultSubscription* aSubscription)
{
  CheckSubscribe(aSubscription);
  aSubscription->SetSensor(this);
  mSubscriptions.push_back(aSubscription);
  RefreshDataMask();
}

void PxSensor::Unsubscribe(PxResultSubscription* aSubscription)
{
  CheckUnsubscribe(aSubscription);
  auto lAt = std::find(mSubscriptions.begin(), mSubscriptions.end(), aSubscription);
  if (lAt == mSubscriptions.end()) {
    return;
  }
  mSubscriptions.erase(lAt);
  aSubscription->SetSensor(nullptr);
  RefreshDataMask();
}

void PxSensor::SetFieldOfView(float aValue)
{
  mFieldOfView.SetCount(1);
  mFieldOfView.SetValue(0, aValue);
}

int PxSensor::ChannelCount() const
{
  return mChannelCount.Count() > 0 ? mChannelCount.Value(0) : 0;
}

// The precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxSensor::CheckProvider(PxResultProvider* aProvider)
{
#line 191
  PT_ASSERT(aProvider);
}

void PxSensor::CheckResult(PxResult* aResult)
{
#line 213
  PT_ASSERT(aResult);
}

void PxSensor::CheckSubscribe(PxResultSubscription* aSubscription)
{
#line 390
  PT_ASSERT(aSubscription);
}

void PxSensor::CheckUnsubscribe(PxResultSubscription* aSubscription)
{
#line 414
  PT_ASSERT(aSubscription);
}
