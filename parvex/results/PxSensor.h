#pragma once

#include "PxCommand.h"
#include "PxDevice.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxResultEchoes.h"
#include "PxResultProvider.h"
#include "PxResultTrace.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QString>
#include <memory>
#include <unordered_map>
#include <vector>

class PxDataLogger;
class PxRecorder;
class PxResult;
class PxResultState;
class PxResultSubscription;

// A device that produces measurement data. It owns the result providers and the two result maps
// they share, keeps the views' subscriptions and the resulting data mask, and holds the
// properties every sensor has. The exchange with the hardware (which requests fetch which group,
// the periodic acquisition) is the driver's, through the pure operations.
class PX_EXPORT PxSensor : public PxDevice
{
  Q_OBJECT

public:
  // The two debug commands; each carries four parameters (u64, u32, u8, u64).
  static constexpr PtU32 COMMAND_DEBUG_1 = 5242878;
  static constexpr PtU32 COMMAND_DEBUG_2 = 5242879;
  // Command states while the driver runs one.
  static constexpr PtU32 COMMAND_DONE = 1;
  static constexpr PtU32 COMMAND_BUSY = 3;

  static constexpr PtU32 ID_LENGTH = 2097152;
  static constexpr PtU32 ID_REFRESH_RATE = 2097153;
  static constexpr PtU32 ID_FIELD_OF_VIEW = 2097155;
  static constexpr PtU32 ID_CHANNEL_COUNT = 4117;
  static constexpr PtU32 ID_ECHO_DISTANCE_SCALE = 4099;
  static constexpr PtU32 ID_TRACE_AMPLITUDE_SCALE = 4098;
  static constexpr PtU32 ID_ECHO_AMPLITUDE_SCALE = 4100;
  static constexpr PtU32 ID_POINT_STEP = 4105;
  static constexpr PtU32 ID_ECHO_DISTANCE_OFFSET = 4102;

  explicit PxSensor(PxConnection* aConnection);
  ~PxSensor() override;

  // Reads what the sensor needs after connecting; does nothing unless live.
  virtual void Initialize();
  // Trace learning, for sensors that support it; the defaults do nothing.
  virtual void LearnTraceClient();
  virtual void LearnTraceProd();
  virtual int TraceLearningState();
  virtual void WriteLearnedTrace();
  virtual void GetLearnedTrace();
  // Start recording or logging this sensor's results, replacing a running one; configuration is
  // locked while either runs.
  virtual void CreateRecorder();
  virtual void CreateDataLogger();
  // The targets of the two debug commands.
  virtual void DebugCommand1(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) = 0;
  virtual void DebugCommand2(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue) = 0;
  virtual PtU32 GetDebugDefaultMemoryLength();
  virtual QMap<int, QString> GetOptionToolTips();
  // The device memories the debug form offers, by the number ReadMemory and WriteMemory take. A
  // sensor without a memory interface has none, and the form says so.
  virtual QStringList MemoryNames() const;
  // aLength bytes of memory aMemory from aAddress. Throws what the device answers (an address
  // beyond the memory, a memory that cannot be read); the default, with no memories, refuses.
  virtual QByteArray ReadMemory(int aMemory, PtU64 aAddress, PtU32 aLength);
  // Writes aData at aAddress; a memory that cannot be written throws the device's answer.
  virtual void WriteMemory(int aMemory, PtU64 aAddress, const QByteArray& aData);
  // Reads the property aId from the device again, for values that change without the user (the
  // state form keeps one current). The default does nothing: such a sensor has none.
  virtual void RefreshProperty(PtU32 aId);
  // Makes the provider of a group on first request; the base knows the state provider (2).
  virtual PxResultProvider* CreateProvider(PtU32 aId);
  // Data mask := OR of the subscriptions' masks.
  virtual void RefreshDataMask();
  // The document type of this sensor's record files (the recorder writes it, the player checks it).
  virtual PtU32 RecordDocumentType() const = 0;
  // Whether the sensor delivers filtered traces (provider 8) besides the raw ones.
  virtual bool DeliversFilteredTraces() const;

  bool CanModifyConfiguration() const override;
  void ExecuteCommand(PtU32 aId) override;
  void LoadCalibration(PtDocumentReader& aReader) override;

  void AddProvider(PxResultProvider* aProvider);
  PxResultProvider* GetProvider(PtU32 aId);
  void AddResult(PxResult* aResult);
  PxResult* FindResult(PtU32 aId) const;
  std::vector<PxResult*> GetResultsByCategory(int aCategory) const;

  void Subscribe(PxResultSubscription* aSubscription);
  void Unsubscribe(PxResultSubscription* aSubscription);
  PtU32 DataMask() const { return mDataMask; }
  const std::vector<PxResultSubscription*>& Subscriptions() const { return mSubscriptions; }

  void StopRecorder();
  void StopDataLogger();
  PxRecorder* Recorder() const { return mRecorder; }
  PxDataLogger* DataLogger() const { return mDataLogger; }

  void SetFieldOfView(float aValue);

  PxResultState* StateProvider() const { return mStateProvider; }
  PxResultEchoes& EchoesProvider() { return mEchoes; }
  PxResultTrace& TraceProvider() { return mTraces; }
  PxResultProvider::Map& Results() { return mResults; }
  PxResultProvider::Map& DeviceResults() { return mDeviceResults; }

  PxFloatProperty& LengthProperty() { return mLength; }
  PxFloatProperty& RefreshRateProperty() { return mRefreshRate; }
  PxFloatProperty& FieldOfViewProperty() { return mFieldOfView; }
  PxIntegerProperty& ChannelCountProperty() { return mChannelCount; }
  PxIntegerProperty& EchoDistanceScaleProperty() { return mEchoDistanceScale; }
  PxIntegerProperty& TraceAmplitudeScaleProperty() { return mTraceAmplitudeScale; }
  PxIntegerProperty& EchoAmplitudeScaleProperty() { return mEchoAmplitudeScale; }
  PxFloatProperty& PointStepProperty() { return mPointStep; }
  PxFloatProperty& EchoDistanceOffsetProperty() { return mEchoDistanceOffset; }
  // The number of segments (channels); 0 before the driver has read it.
  int ChannelCount() const;

protected:
  PxResultState* mStateProvider = nullptr;
  PxFloatProperty mLength;
  PxFloatProperty mRefreshRate;
  std::unordered_map<PtU32, PxResultProvider*> mProviders;
  std::vector<PxResultSubscription*> mSubscriptions;
  PxResultProvider::Map mResults;
  PxResultProvider::Map mDeviceResults;
  PtU32 mDataMask = 0;
  PxIntegerProperty mChannelCount;
  PxIntegerProperty mEchoDistanceScale;
  PxIntegerProperty mTraceAmplitudeScale;
  PxIntegerProperty mEchoAmplitudeScale;
  PxFloatProperty mPointStep;
  PxFloatProperty mEchoDistanceOffset;
  PxFloatProperty mFieldOfView;
  PxResultEchoes mEchoes;
  PxResultTrace mTraces;
  PxCommand mDebugCommand1;
  PxCommand mDebugCommand2;
  PxRecorder* mRecorder = nullptr;
  PxDataLogger* mDataLogger = nullptr;

private:
  // Unregisters a provider made by CreateProvider, takes its results out of the maps, destroys it.
  void ForgetProvider(PxResultProvider* aProvider);
  // Reads the recorder's and the data logger's persisted settings.
  void InitializeRecording();
  // Destroys a running recorder and data logger without touching the properties.
  void DestroyRecording();

  // Providers made by CreateProvider (the members are not in here).
  std::vector<std::unique_ptr<PxResultProvider>> mCreatedProviders;
  // The results each provider entered into the maps when it was added.
  std::unordered_map<PxResultProvider*, std::vector<PxResult*>> mEnteredResults;

  static void CheckProvider(PxResultProvider* aProvider);
  static void CheckResult(PxResult* aResult);
  static void CheckSubscribe(PxResultSubscription* aSubscription);
  static void CheckUnsubscribe(PxResultSubscription* aSubscription);
};
