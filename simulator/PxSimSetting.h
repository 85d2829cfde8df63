#pragma once

#include "PtTypes.h"

#include <QString>

#include <vector>

// One value the device exposes under a device id: an identity field, a sensor constant or a
// setting. Values are kept exactly as they travel (count x item size bytes, little-endian), so
// reading, writing and saving never convert; typed access is only for the device's own use.
class PxSimSetting
{
public:
  enum Kind { UNSIGNED, SIGNED, FLOAT, SCALED, BOOL, ENUM, BITS, ASCII, UTF16 };

  static PxSimSetting Unsigned(PtU16 aId, const char* aName, PtU32 aSize, double aMin, double aMax, double aValue);
  static PxSimSetting Signed(PtU16 aId, const char* aName, PtU32 aSize, double aMin, double aMax, double aValue);
  static PxSimSetting Float(PtU16 aId, const char* aName, double aMin, double aMax, double aValue);
  // 32-bit raw integers worth raw / aScale, aCount of them.
  static PxSimSetting Scaled(PtU16 aId, const char* aName, double aScale, PtU16 aCount, double aMin, double aMax,
                             double aValue);
  static PxSimSetting Bool(PtU16 aId, const char* aName, bool aValue);
  static PxSimSetting Enum(PtU16 aId, const char* aName, PtU32 aSize, std::vector<PtU32> aValues, PtU32 aValue);
  static PxSimSetting Bits(PtU16 aId, const char* aName, PtU32 aValidBits, PtU32 aValue);
  static PxSimSetting Ascii(PtU16 aId, const char* aName, PtU32 aLength, const QString& aText);
  static PxSimSetting Utf16(PtU16 aId, const char* aName, PtU32 aLength, const QString& aText);

  PxSimSetting& ReadOnly()
  {
    mWritable = false;
    return *this;
  }

  PtU16 Id() const { return mId; }
  const QString& Name() const { return mName; }
  Kind GetKind() const { return mKind; }
  PtU32 Size() const { return mSize; }
  PtU16 Count() const { return mCount; }
  bool Writable() const { return mWritable; }
  double Min() const { return mMin; }
  double Max() const { return mMax; }
  const std::vector<PtU32>& EnumValues() const { return mEnumValues; }
  const std::vector<PtByte>& Bytes() const { return mValue; }
  const std::vector<PtByte>& DefaultBytes() const { return mDefault; }

  // The answer code for putting these wire bytes into the setting: ANSWER_OK, ANSWER_BAD_ELEMENT
  // for a wrong count or item size, ANSWER_OUT_OF_RANGE for a value outside limits, enumeration
  // or valid bits. Writability is the caller's business.
  PtU16 Check(PtU16 aCount, PtU32 aSize, const std::vector<PtByte>& aData) const;
  // Stores bytes that passed Check.
  void Assign(const std::vector<PtByte>& aData) { mValue = aData; }
  void RestoreDefault() { mValue = mDefault; }

  double Number(size_t aIndex = 0) const;
  void SetNumber(size_t aIndex, double aValue);
  QString Text() const;

private:
  PxSimSetting(PtU16 aId, const char* aName, Kind aKind, PtU32 aSize, PtU16 aCount);
  double Decode(const PtByte* aAt) const;
  void Encode(PtByte* aAt, double aValue) const;
  void SetAll(double aValue);
  void SetText(const QString& aText);

  PtU16 mId = 0;
  QString mName;
  Kind mKind = UNSIGNED;
  PtU32 mSize = 0;
  PtU16 mCount = 1;
  bool mWritable = true;
  double mMin = 0.0;
  double mMax = 0.0;
  double mScale = 1.0;
  PtU32 mValidBits = 0;
  std::vector<PtU32> mEnumValues;
  std::vector<PtByte> mValue;
  std::vector<PtByte> mDefault;
};
