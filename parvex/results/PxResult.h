#pragma once

#include "ParvexExport.h"
#include "PtAssert.h"
#include "PtTypes.h"

#include <QObject>
#include <QString>

#include <cstring>
#include <vector>

class PtDocumentReader;
class PtDocumentWriter;
class PxColorCondition;
class PxProtocolReader;

// How the items of a result are held. Items are addressed by the type's natural size.
enum : int {
  DT_INTEGER_16 = 0,  // unsigned 16-bit
  DT_UNSIGNED_32 = 1, // unsigned 32-bit
  DT_SIGNED_16 = 2,   // signed 16-bit
  DT_SIGNED_32 = 3,   // signed 32-bit
  DT_FLOAT = 4        // 32-bit float
};

// One named measurement value (or array of values) of a sensor: raw items of one data type with
// a scale, a unit, a display format and colour conditions. Results are created by their provider
// and entered into the sensor's two maps: by mId (record files) and by device id (PtCom answers).
class PX_EXPORT PxResult : public QObject
{
  Q_OBJECT

public:
  // aElementSize: bytes of one item in answers and files; aStride: bytes of one item in memory.
  // A stride wider than the element size takes narrower items from devices that send them so.
  PxResult(PtU32 aId, PtU16 aDeviceId, int aDataType, int aCategory, PtU32 aElementSize, size_t aStride, int aDecimals);

  // Raw item aIndex read by data type, divided by the scale. 0 for an item that does not exist
  // (a view may ask before the first frame has arrived).
  double Value(size_t aIndex) const;
  // The raw item of a DT_UNSIGNED_32 result; any other type is a logic error (65535).
  PtU32 IntValue(size_t aIndex) const;
  // The format with "%n" (name), then "%v" (value in the display unit), then "%u" (unit) filled in.
  QString FormattedValue(size_t aIndex) const;
  // The colour of the first condition that holds for the value, black when none does.
  Qt::GlobalColor FormattedColorStyle(size_t aIndex) const;

  // Appends a condition; the caller keeps it alive as long as the result.
  void AddColorCondition(PxColorCondition* aCondition);
  const std::vector<const PxColorCondition*>& ColorConditions() const { return mColorConditions; }

  // Resizes to aCount items; new items are zero.
  void SetCount(size_t aCount);
  size_t Count() const { return mData.size() / mStride; }

  // The reader's current element carries this result's device id. Narrower items are widened
  // with zero high bytes; wider ones fail with protocol error 1002.
  void ReadFromPtProtocol(PxProtocolReader& aReader);
  // One element of id mId; nothing when the result holds no data.
  void WriteToFile(PtDocumentWriter& aWriter) const;
  // The reader stands on the element of id mId.
  void ReadFromFile(PtDocumentReader& aReader);

  // Stores item aIndex as it is held in memory; the item must exist.
  template <class T>
  void SetRawValue(size_t aIndex, T aValue)
  {
    PT_ASSERT(sizeof(T) <= mStride && aIndex < Count());
    std::memcpy(mData.data() + aIndex * mStride, &aValue, sizeof(T));
  }

  PtU32 Id() const { return mId; }
  PtU16 DeviceId() const { return mDeviceId; }
  int DataType() const { return mDataType; }
  int Category() const { return mCategory; }
  PtU32 ElementSize() const { return mElementSize; }
  size_t Stride() const { return mStride; }

  const QString& Name() const { return mName; }
  void SetName(const QString& aName) { mName = aName; }
  const QString& Format() const { return mFormat; }
  void SetFormat(const QString& aFormat) { mFormat = aFormat; }
  int UnitType() const { return mUnitType; }
  void SetUnitType(int aUnitType) { mUnitType = aUnitType; }
  // Negative: general notation with 6 significant digits.
  int Decimals() const { return mDecimals; }
  void SetDecimals(int aDecimals) { mDecimals = aDecimals; }
  // Every raw value is divided by it.
  float Scale() const { return mScale; }
  void SetScale(float aScale) { mScale = aScale; }

  const std::vector<PtByte>& Data() const { return mData; }

private:
  static void CheckId(PtU32 aId);
  void CheckDataType() const;
  void CheckFileElement(const PtDocumentReader& aReader) const;

  PtU32 mId = 0;
  PtU16 mDeviceId = 0;
  QString mName;
  QString mFormat = QStringLiteral("%n %v");
  std::vector<const PxColorCondition*> mColorConditions;
  int mDataType = DT_INTEGER_16;
  int mCategory = 0;
  int mUnitType = 0; // UT_NONE
  int mDecimals = 0;
  float mScale = 1.0f;
  size_t mStride = 0;
  PtU32 mElementSize = 0;
  std::vector<PtByte> mData;
};
