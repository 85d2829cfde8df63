#pragma once

#include "ParvexExport.h"
#include "PxResultProvider.h"

#include <vector>

class PxIntegerProperty;
class QTextStream;

// One detection of the sensor. The layout is fixed at 24 bytes: each field travels on the wire
// and in record files as one element over all echoes with a stride of 24, straight into place.
struct PxEcho
{
  Pt32 mDistance = 0;   // raw; times the distance scale gives metres
  PtU32 mAmplitude = 0; // raw; times the amplitude scale
  PtU32 mValue3 = 0;    // carried unchanged: its meaning is the device's
  PtU16 mValue4 = 0;    // carried unchanged
  PtByte mSegment = 0;  // the channel that saw the echo
  PtByte mFlag = 0;     // non-zero: set
  PtU32 mValue7 = 0;    // carried unchanged
  PtU32 mValue8 = 0;    // carried unchanged
};
static_assert(sizeof(PxEcho) == 24, "echo records are exchanged with a stride of 24 bytes");

// The echoes group of a sensor (provider 16): up to 96 echoes per frame, with the distance and
// amplitude scales following two device properties.
class PX_EXPORT PxResultEchoes : public PxResultProvider
{
  Q_OBJECT

public:
  static constexpr size_t CAPACITY = 96;
  enum : PtU32 {
    SECTION_ID = 6144 // record-file section of one echoes frame
  };

  // The properties (not owned) give raw units per display unit and must outlive the provider.
  PxResultEchoes(PxIntegerProperty& aDistanceScale, PxIntegerProperty& aAmplitudeScale);

  // Inside an update only, and never above the capacity.
  void SetEchoCount(PtU32 aValue);
  PtU32 EchoCount() const { return mEchoCount; }
  float DistanceScale() const { return mDistanceScale; }
  float AmplitudeScale() const { return mAmplitudeScale; }
  const std::vector<PxEcho>& Echoes() const { return mEchoes; }

  // The answer header has been read: reads the payload and decodes one frame.
  void ReadFromPtProtocol(PxProtocolReader& aReader);
  // One recorded frame: section 6144 with the eight field elements.
  void Save(PtDocumentWriter& aWriter);
  void Load(PtDocumentReader& aReader) override;
  // One text line per valid echo, stamped with aTimestamp (the data logger's format).
  void Log(QTextStream& aStream, unsigned int aTimestamp) const;

  // The valid echoes are the first EchoCount(); the rest is room for the largest frame.
  std::vector<PxEcho> mEchoes;

public Q_SLOTS:
  void DistanceScaleValueChanged(size_t aIndex);
  void AmplitudeScaleValueChanged(size_t aIndex);

private:
  void CheckEchoCount(PtU32 aValue) const;

  PtU32 mEchoCount = 0;
  float mDistanceScale = 1.0f;
  float mAmplitudeScale = 1.0f;
  PxIntegerProperty& mDistanceScaleProperty;
  PxIntegerProperty& mAmplitudeScaleProperty;
};
