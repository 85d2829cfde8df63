#include "PxResult.h"

#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PxColorCondition.h"
#include "PxProtocolReader.h"
#include "PxUnits.h"

namespace {
template <class T>
bool LoadItem(const std::vector<PtByte>& aData, size_t aIndex, T& aValue)
{
  if (aIndex >= aData.size() / sizeof(T)) {
    return false;
  }
  std::memcpy(&aValue, aData.data() + aIndex * sizeof(T), sizeof(T));
  return true;
}

template <class T>
double ItemValue(const std::vector<PtByte>& aData, size_t aIndex)
{
  T lValue{};
  return LoadItem(aData, aIndex, lValue) ? static_cast<double>(lValue) : 0.0;
}
} // namespace

PxResult::PxResult(PtU32 aId, PtU16 aDeviceId, int aDataType, int aCategory, PtU32 aElementSize, size_t aStride,
                   int aDecimals)
    : mId(aId)
    , mDeviceId(aDeviceId)
    , mDataType(aDataType)
    , mCategory(aCategory)
    , mDecimals(aDecimals)
    , mStride(aStride)
    , mElementSize(aElementSize)
{
  CheckId(aId);
  CheckDataType();
  // An item must fit in its slot, and a slot of 0 bytes would make every count meaningless.
  PT_ASSERT(aStride > 0 && aStride >= aElementSize);
}

double PxResult::Value(size_t aIndex) const
{
  double lRaw = 0.0;
  switch (mDataType) {
  case DT_INTEGER_16:
    lRaw = ItemValue<PtU16>(mData, aIndex);
    break;
  case DT_UNSIGNED_32:
    lRaw = ItemValue<PtU32>(mData, aIndex);
    break;
  case DT_SIGNED_16:
    lRaw = ItemValue<std::int16_t>(mData, aIndex);
    break;
  case DT_SIGNED_32:
    lRaw = ItemValue<Pt32>(mData, aIndex);
    break;
  case DT_FLOAT:
    lRaw = ItemValue<float>(mData, aIndex);
    break;
  default:
    return 0.0;
  }
  return lRaw / static_cast<double>(mScale);
}

PtU32 PxResult::IntValue(size_t aIndex) const
{
  if (mDataType != DT_UNSIGNED_32) {
    PtLogicError(65535);
  }
  PtU32 lValue = 0;
  LoadItem(mData, aIndex, lValue);
  return lValue;
}

QString PxResult::FormattedValue(size_t aIndex) const
{
  QString lText = mFormat;
  // The name goes in first, so a name that itself holds "%v" or "%u" is filled in as well.
  lText.replace(QLatin1String("%n"), mName);
  double lValue = Value(aIndex);
  // Without a unit there is nothing to convert; this also keeps texts right before the units
  // table has been set up.
  if (mUnitType != UT_NONE) {
    lValue = PxUnits::To(mUnitType, lValue);
  }
  const QString lNumber = mDecimals < 0 ? QString::number(lValue, 'g', 6) : QString::number(lValue, 'f', mDecimals);
  lText.replace(QLatin1String("%v"), lNumber);
  lText.replace(QLatin1String("%u"), PxUnits::ShortName(mUnitType));
  return lText;
}

Qt::GlobalColor PxResult::FormattedColorStyle(size_t aIndex) const
{
  const double lValue = Value(aIndex);
  for (const PxColorCondition* lCondition : mColorConditions) {
    const Qt::GlobalColor lColor = lCondition->GetColor(lValue);
    // Black is the neutral colour: a condition that holds with black cannot be told from one
    // that does not hold, and the next one is asked.
    if (lColor != Qt::black) {
      return lColor;
    }
  }
  return Qt::black;
}

void PxResult::AddColorCondition(PxColorCondition* aCondition)
{
  mColorConditions.push_back(aCondition);
}

void PxResult::SetCount(size_t aCount)
{
  mData.resize(aCount * mStride, 0);
}

void PxResult::ReadFromPtProtocol(PxProtocolReader& aReader)
{
  const unsigned short lCount = aReader.Count();
  const PtU32 lSize = aReader.UnitSize();
  if (lSize < mElementSize) {
    // Narrow items sit at the start of their slot; the high bytes must be zero, not what the
    // previous frame left there.
    mData.assign(static_cast<size_t>(lCount) * mStride, 0);
    aReader.ReadElement(mData.data(), lCount, lSize, mStride);
  } else if (lSize == mElementSize) {
    mData.resize(static_cast<size_t>(lCount) * mStride, 0);
    aReader.ReadElement(mData.data(), lCount, mElementSize, mStride);
  } else {
    // Wider items cannot be taken: the reader refuses the element (1002) and the data stays as it
    // was, instead of being resized for a frame that never arrives.
    aReader.ReadElement(mData.data(), lCount, mElementSize, mStride);
  }
}

void PxResult::WriteToFile(PtDocumentWriter& aWriter) const
{
  if (mData.empty()) {
    return;
  }
  aWriter.AddElement(mId, mData.data(), mElementSize, static_cast<PtU32>(Count()), mStride);
}

void PxResult::ReadFromFile(PtDocumentReader& aReader)
{
  CheckFileElement(aReader);
  const PtU32 lCount = aReader.Count();
  // Read aside first: a damaged element leaves the result as it was.
  std::vector<PtByte> lData(static_cast<size_t>(lCount) * mStride, 0);
  aReader.GetElement(lData.data(), mElementSize, lCount, mStride);
  mData.swap(lData);
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
// clang-format off
void PxResult::CheckId(PtU32 aId)
{
#line 62
  PT_ASSERT(aId);
}

void PxResult::CheckDataType() const
{
#line 63
  PT_ASSERT(( mDataType >= DT_INTEGER_16 ) && ( mDataType <= DT_FLOAT ));
}

void PxResult::CheckFileElement(const PtDocumentReader& aReader) const
{
#line 254
  PT_ASSERT(mId == aReader.Id());
}
// clang-format on
