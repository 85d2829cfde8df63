#include "PxSimSetting.h"

#include "PtAssert.h"
#include "PxSimProtocol.h"

#include <algorithm>
#include <cmath>
#include <cstring>

using namespace PxSimProtocol;

PxSimSetting::PxSimSetting(PtU16 aId, const char* aName, Kind aKind, PtU32 aSize, PtU16 aCount)
    : mId(aId)
    , mName(QString::fromLatin1(aName))
    , mKind(aKind)
    , mSize(aSize)
    , mCount(aCount)
    , mValue(static_cast<size_t>(aSize) * aCount, 0)
{
}

PxSimSetting PxSimSetting::Unsigned(PtU16 aId, const char* aName, PtU32 aSize, double aMin, double aMax, double aValue)
{
  PT_ASSERT(aSize == 1 || aSize == 2 || aSize == 4);
  PxSimSetting lSetting(aId, aName, UNSIGNED, aSize, 1);
  lSetting.mMin = aMin;
  lSetting.mMax = aMax;
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Signed(PtU16 aId, const char* aName, PtU32 aSize, double aMin, double aMax, double aValue)
{
  PT_ASSERT(aSize == 1 || aSize == 2 || aSize == 4);
  PxSimSetting lSetting(aId, aName, SIGNED, aSize, 1);
  lSetting.mMin = aMin;
  lSetting.mMax = aMax;
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Float(PtU16 aId, const char* aName, double aMin, double aMax, double aValue)
{
  PxSimSetting lSetting(aId, aName, FLOAT, 4, 1);
  lSetting.mMin = aMin;
  lSetting.mMax = aMax;
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Scaled(PtU16 aId, const char* aName, double aScale, PtU16 aCount, double aMin, double aMax,
                                  double aValue)
{
  PxSimSetting lSetting(aId, aName, SCALED, 4, aCount);
  lSetting.mScale = aScale;
  lSetting.mMin = aMin;
  lSetting.mMax = aMax;
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Bool(PtU16 aId, const char* aName, bool aValue)
{
  PxSimSetting lSetting(aId, aName, BOOL, 1, 1);
  lSetting.mMax = 1;
  lSetting.SetAll(aValue ? 1 : 0);
  return lSetting;
}

PxSimSetting PxSimSetting::Enum(PtU16 aId, const char* aName, PtU32 aSize, std::vector<PtU32> aValues, PtU32 aValue)
{
  PT_ASSERT(aSize == 1 || aSize == 2 || aSize == 4);
  PxSimSetting lSetting(aId, aName, ENUM, aSize, 1);
  lSetting.mEnumValues = std::move(aValues);
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Bits(PtU16 aId, const char* aName, PtU32 aValidBits, PtU32 aValue)
{
  PxSimSetting lSetting(aId, aName, BITS, 4, 1);
  lSetting.mValidBits = aValidBits;
  lSetting.SetAll(aValue);
  return lSetting;
}

PxSimSetting PxSimSetting::Ascii(PtU16 aId, const char* aName, PtU32 aLength, const QString& aText)
{
  PxSimSetting lSetting(aId, aName, ASCII, aLength, 1);
  lSetting.SetText(aText);
  return lSetting;
}

PxSimSetting PxSimSetting::Utf16(PtU16 aId, const char* aName, PtU32 aLength, const QString& aText)
{
  PT_ASSERT(aLength % 2 == 0);
  PxSimSetting lSetting(aId, aName, UTF16, aLength, 1);
  lSetting.SetText(aText);
  return lSetting;
}

void PxSimSetting::SetAll(double aValue)
{
  for (PtU16 i = 0; i < mCount; ++i) {
    Encode(mValue.data() + static_cast<size_t>(i) * mSize, aValue);
  }
  mDefault = mValue;
}

void PxSimSetting::SetText(const QString& aText)
{
  std::fill(mValue.begin(), mValue.end(), 0);
  if (mKind == ASCII) {
    const QByteArray lBytes = aText.toLatin1();
    std::memcpy(mValue.data(), lBytes.constData(), std::min<size_t>(lBytes.size(), mSize));
  } else {
    std::memcpy(mValue.data(), aText.utf16(), std::min<size_t>(aText.size() * 2u, mSize));
  }
  mDefault = mValue;
}

double PxSimSetting::Decode(const PtByte* aAt) const
{
  switch (mKind) {
  case FLOAT: {
    float lValue;
    std::memcpy(&lValue, aAt, 4);
    return lValue;
  }
  case SCALED: {
    Pt32 lValue;
    std::memcpy(&lValue, aAt, 4);
    return lValue / mScale;
  }
  case SIGNED: {
    if (mSize == 1) {
      return static_cast<std::int8_t>(aAt[0]);
    }
    if (mSize == 2) {
      std::int16_t lValue;
      std::memcpy(&lValue, aAt, 2);
      return lValue;
    }
    Pt32 lValue;
    std::memcpy(&lValue, aAt, 4);
    return lValue;
  }
  default: {
    PtU32 lValue = 0;
    std::memcpy(&lValue, aAt, std::min<PtU32>(mSize, 4));
    return lValue;
  }
  }
}

void PxSimSetting::Encode(PtByte* aAt, double aValue) const
{
  switch (mKind) {
  case FLOAT: {
    const float lValue = static_cast<float>(aValue);
    std::memcpy(aAt, &lValue, 4);
    break;
  }
  case SCALED: {
    const Pt32 lRaw = static_cast<Pt32>(std::lround(aValue * mScale));
    std::memcpy(aAt, &lRaw, 4);
    break;
  }
  case SIGNED: {
    const Pt32 lValue = static_cast<Pt32>(aValue);
    std::memcpy(aAt, &lValue, mSize); // little-endian: the low bytes carry the narrow value
    break;
  }
  case ASCII:
  case UTF16:
    break;
  default: {
    const PtU32 lValue = static_cast<PtU32>(aValue);
    std::memcpy(aAt, &lValue, std::min<PtU32>(mSize, 4));
    break;
  }
  }
}

double PxSimSetting::Number(size_t aIndex) const
{
  PT_ASSERT(aIndex < mCount);
  return Decode(mValue.data() + aIndex * mSize);
}

void PxSimSetting::SetNumber(size_t aIndex, double aValue)
{
  PT_ASSERT(aIndex < mCount);
  Encode(mValue.data() + aIndex * mSize, aValue);
}

QString PxSimSetting::Text() const
{
  if (mKind == ASCII) {
    const auto lEnd = std::find(mValue.begin(), mValue.end(), 0);
    return QString::fromLatin1(reinterpret_cast<const char*>(mValue.data()), static_cast<int>(lEnd - mValue.begin()));
  }
  if (mKind == UTF16) {
    std::vector<ushort> lUnits(mSize / 2);
    std::memcpy(lUnits.data(), mValue.data(), mSize);
    const auto lEnd = std::find(lUnits.begin(), lUnits.end(), 0);
    return QString::fromUtf16(lUnits.data(), static_cast<int>(lEnd - lUnits.begin()));
  }
  return QString::number(Number());
}

PtU16 PxSimSetting::Check(PtU16 aCount, PtU32 aSize, const std::vector<PtByte>& aData) const
{
  if (aCount != mCount || aSize != mSize || aData.size() != mValue.size()) {
    return ANSWER_BAD_ELEMENT;
  }
  if (mKind == ASCII || mKind == UTF16) {
    return ANSWER_OK;
  }
  for (PtU16 i = 0; i < mCount; ++i) {
    const double lValue = Decode(aData.data() + static_cast<size_t>(i) * mSize);
    switch (mKind) {
    case ENUM:
      if (std::find(mEnumValues.begin(), mEnumValues.end(), static_cast<PtU32>(lValue)) == mEnumValues.end()) {
        return ANSWER_OUT_OF_RANGE;
      }
      break;
    case BITS:
      if (static_cast<PtU32>(lValue) & ~mValidBits) {
        return ANSWER_OUT_OF_RANGE;
      }
      break;
    default:
      // Written so that NaN fails too.
      if (!(lValue >= mMin && lValue <= mMax)) {
        return ANSWER_OUT_OF_RANGE;
      }
      break;
    }
  }
  return ANSWER_OK;
}
