#pragma once

#include "ParvexExport.h"
#include "PxColorCondition.h"
#include "PxResult.h"
#include "PxResultProvider.h"

#include <QDateTime>

#include <array>

class PxIntegerProperty;
class PxProperty;

// The sensor's state group (provider 2): the device timestamp of each frame, the measurement rate
// derived from the last 16 timestamps, the wall-clock time of each frame, and the state values a
// driver adds (a temperature among them).
class PX_EXPORT PxResultState : public PxResultProvider
{
  Q_OBJECT

public:
  enum : PtU32 {
    SECTION_ID = 6656,          // record-file section of one state frame
    FILETIME_ELEMENT_ID = 6657, // frame time as a Windows FILETIME, as older files hold it
    TIMESTAMP_ID = 6673,        // timestamp result; in files the frame time
    TIMESTAMP_DEVICE_ID = 4176,
    RATE_ID = 0x500101,
    RATE_DEVICE_ID = 1
  };
  static constexpr size_t RING_SIZE = 16;

  PxResultState();
  ~PxResultState() override;

  // The rate turns red when it leaves +-10 % of the configured refresh rate.
  void SetRefreshRate(PxProperty* aProperty);
  // The temperature result's scale follows aProperty. May be set once.
  void SetTemperatureScale(PxIntegerProperty* aProperty);
  // Takes ownership of a driver's temperature result. A result given before the sensor's maps
  // are set is entered by SetMaps, one given after is entered at once.
  void SetTemperatureResult(PxResult* aResult);

  // A new device timestamp (milliseconds): updates the rate, the start and the frame time.
  void SetTimestamp(PtU32 aTimestamp);

  // The answer header has been read: reads the payload and decodes one frame.
  void ReadFromPtProtocol(PxProtocolReader& aReader);
  // One recorded frame: section 6656.
  void Save(PtDocumentWriter& aWriter);

  void SetMaps(Map* aResults, Map* aDeviceResults) override;
  void Load(PtDocumentReader& aReader) override;
  void WriteElementsToFile(PtDocumentWriter& aWriter) override;
  void ReadElementFromFile(PtDocumentReader& aReader) override;
  void ReadElementFromPtProtocol(PxProtocolReader& aReader) override;

  PxResult* TimestampResult() { return &mTimestamp; }
  PxResult* RateResult() { return &mRate; }
  PxResult* TemperatureResult() const { return mTemperature; }
  const PxColorConditionOutBoundPourcentage& RateCondition() const { return mRateCondition; }
  // Local time, for display. Inside, both are kept as they were set (UTC while live), so that a
  // frame costs no time-zone lookup; the conversion happens only when a view asks.
  QDateTime FrameTime() const { return mFrameTime.toLocalTime(); }
  QDateTime StartTime() const { return mStartTime.toLocalTime(); }
  PtU32 FirstTimestamp() const { return mFirstTimestamp; }

public Q_SLOTS:
  void TemperatureScaleValueChanged(size_t aIndex);

private:
  bool StartTimeSet() const;
  void CheckRefreshRate(PxProperty* aProperty) const;
  void CheckTemperatureScale(PxIntegerProperty* aProperty) const;
  void CheckUpdating() const;

  PxResult* mTemperature = nullptr;
  QDateTime mFrameTime;
  QDateTime mStartTime;
  PtU32 mFirstTimestamp = 0;
  PxResult mTimestamp{TIMESTAMP_ID, TIMESTAMP_DEVICE_ID, DT_UNSIGNED_32, 1, 4, 4, 0};
  PxResult mRate{RATE_ID, RATE_DEVICE_ID, DT_FLOAT, 1, 4, 4, 2};
  PxColorConditionOutBoundPourcentage mRateCondition{Qt::red, 0.0, 0.1};
  PxIntegerProperty* mTemperatureScaleProperty = nullptr;
  std::array<PtU32, RING_SIZE> mRing{};
  size_t mRingIndex = 0;
};
