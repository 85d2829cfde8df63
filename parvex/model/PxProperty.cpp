#include "PxProperty.h"

#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PxControlConnection.h"
#include "PxProtocolReader.h"

#include <QMetaType>

namespace {
constexpr PtU32 EDITABLE_WORD = 0xFFFFFFFFu;

// ValueChanged and EditableChanged carry a size_t, which the meta-type system does not know by
// that name; registering it lets queued connections and signal spies carry the index.
void RegisterIndexType()
{
  static const int sType = qRegisterMetaType<size_t>("size_t");
  Q_UNUSED(sType);
}
} // namespace

PxProperty::PxProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize, size_t aStride)
    : mCategory(aCategory)
    , mId(aId)
    , mDeviceId(aDeviceId)
    , mStride(aStride)
    , mUnitSize(aUnitSize)
{
  PT_ASSERT(aId && aUnitSize && aStride);
  PT_ASSERT(aStride >= aUnitSize);
  RegisterIndexType();
}

double PxProperty::DoubleValue(size_t aIndex) const
{
  Q_UNUSED(aIndex);
  PtLogicError(7);
}

QString PxProperty::TextValue(size_t aIndex) const
{
  Q_UNUSED(aIndex);
  PtLogicError(8);
}

bool PxProperty::Signed() const
{
  return false;
}

void PxProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  Q_UNUSED(aIndex);
  Q_UNUSED(aValue);
  PtLogicError(9);
}

void PxProperty::SetTextValue(size_t aIndex, const QString& aValue)
{
  Q_UNUSED(aIndex);
  Q_UNUSED(aValue);
  PtLogicError(10);
}

// The text is taken by value as the operation has always been declared.
void PxProperty::SetWidgetEnableLabel(QString aLabel) // NOLINT(performance-unnecessary-value-param)
{
  // Only kinds whose widget has a disabler caption (text) use it.
  Q_UNUSED(aLabel);
}

bool PxProperty::Available() const
{
  return true;
}

bool PxProperty::Editable(size_t aIndex) const
{
  return EditableWord(aIndex) == EDITABLE_WORD;
}

PtU32 PxProperty::EditableWord(size_t aIndex) const
{
  // A widget bound to a value that a later read took away asks about it; it is simply not editable.
  return aIndex < mEditable.size() ? mEditable[aIndex] : 0;
}

void PxProperty::SetEditable(bool aEditable)
{
  if (!HasFlag(F_EDITABLE) && aEditable) {
    return;
  }
  const size_t lCount = Count();
  bool lChanged = mEditable.size() != lCount;
  for (size_t i = 0; !lChanged && i < lCount; ++i) {
    lChanged = (mEditable[i] == EDITABLE_WORD) != aEditable;
  }
  mEditable.assign(lCount, aEditable ? EDITABLE_WORD : 0);
  if (lChanged) {
    Q_EMIT EditableChanged(PT_ALL);
  }
}

void PxProperty::SetEditable(size_t aIndex, PtU32 aEditable)
{
  if (!HasFlag(F_EDITABLE)) {
    return;
  }
  PT_ASSERT(aIndex < mEditable.size());
  if (mEditable[aIndex] == aEditable) {
    return;
  }
  mEditable[aIndex] = aEditable;
  Q_EMIT EditableChanged(aIndex);
}

void PxProperty::SetCount(size_t aCount)
{
  mValues.resize(aCount * mStride, 0);
  mBackup.resize(mValues.size(), 0);
  SetEditable(HasFlag(F_EDITABLE));
}

void PxProperty::Restore()
{
  // Values not exchanged with the device, or not editable, have no user edits to undo.
  if (!HasFlag(F_EDITABLE) || mDeviceId == 0) {
    return;
  }
  if (mValues != mBackup) {
    mValues = mBackup;
    Q_EMIT ValueChanged(PT_ALL);
  }
}

void PxProperty::PostRead()
{
  if (mUnitSize < mStride && Signed()) {
    // Narrow signed values arrive zero-extended in 32-bit slots. The source is read at i times
    // the unit size, as it always has been: files and devices send one value for every property
    // that widens, and that single value is sure to come out right.
    if (mStride != 4) {
      PtLogicError(6);
    }
    const size_t lCount = Count();
    PtByte* lData = mValues.data();
    for (size_t i = 0; i < lCount; ++i) {
      Pt32 lWide = 0;
      if (mUnitSize == 1) {
        // Sign extension is the point here.
        lWide = static_cast<std::int8_t>(lData[i]); // NOLINT(bugprone-signed-char-misuse)
      } else if (mUnitSize == 2) {
        std::int16_t lNarrow;
        std::memcpy(&lNarrow, lData + 2 * i, sizeof(lNarrow));
        lWide = lNarrow;
      } else {
        break;
      }
      std::memcpy(lData + 4 * i, &lWide, sizeof(lWide));
    }
  }
  const bool lChanged = mValues != mBackup;
  mBackup = mValues;
  if (lChanged) {
    Q_EMIT ValueChanged(PT_ALL);
  }
}

void PxProperty::WriteToFile(PtDocumentWriter& aWriter)
{
  const size_t lCount = Count();
  if (!HasFlag(F_SAVE) || lCount == 0) {
    return;
  }
  aWriter.AddElement(mId, mValues.data(), mUnitSize, static_cast<PtU32>(lCount), mStride);
}

void PxProperty::ReadFromFile(PtDocumentReader& aReader)
{
  PT_ASSERT(mId == aReader.Id());
  // Read into a new buffer first: a damaged document throws from GetElement and must leave the
  // property as it was. The buffer starts zeroed because the document fills only the first unit
  // size bytes of each slot; a narrow value must not inherit the high bytes of the one before.
  const PtU32 lCount = aReader.Count();
  std::vector<PtByte> lValues(static_cast<size_t>(lCount) * mStride, 0);
  aReader.GetElement(lValues.data(), mUnitSize, lCount, mStride);
  mValues.swap(lValues);
  SetEditable(HasFlag(F_EDITABLE));
  PostRead();
}

void PxProperty::WriteToPtProtocol(PxControlConnection& aConnection)
{
  const size_t lCount = Count();
  if (mDeviceId == 0 || lCount == 0) {
    return;
  }
  // A wire element counts its items in 16 bits; no device property comes near that.
  PT_ASSERT(lCount <= 0xFFFF);
  aConnection.Writer().AddElement(mDeviceId, static_cast<unsigned short>(lCount), mUnitSize, mValues.data(), mStride);
}

void PxProperty::ReadFromPtProtocol(PxProtocolReader& aReader)
{
  const PtU16 lCount = aReader.Count();
  const PtU32 lWireSize = aReader.UnitSize();
  std::vector<PtByte> lValues;
  PtU32 lSize = mUnitSize;
  if (mUnitSize > lWireSize) {
    // The device sends narrower items than the property holds: start from zeros so that every
    // value arrives zero-extended.
    lValues.assign(static_cast<size_t>(lCount) * mStride, 0);
    lSize = lWireSize;
  } else {
    lValues = mValues;
    lValues.resize(static_cast<size_t>(lCount) * mStride, 0);
  }
  // Decoded into a copy: an answer that does not fit (wider items fail with a protocol error)
  // leaves the property as it was.
  aReader.ReadElement(lValues.data(), lCount, lSize, mStride);
  mValues.swap(lValues);
  // Every read resets the editable flags; the device applies its own rule afterwards.
  SetEditable(HasFlag(F_EDITABLE));
  PostRead();
}
