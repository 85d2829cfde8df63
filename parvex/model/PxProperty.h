#pragma once

#include "ParvexExport.h"
#include "PtAssert.h"
#include "PtTypes.h"

#include <QMap>
#include <QObject>
#include <QString>

#include <cstring>
#include <vector>

class PtDocumentReader;
class PtDocumentWriter;
class PxControlConnection;
class PxProtocolReader;
class QGridLayout;

// One setting, constant or state value of a device: a counted array of values of one type kept as
// raw bytes, the same values as last read from the device or a document (the backup), and one
// editable flag per value. The typed views (integer, float, bool, enum, text, bit field) derive
// from it; the device owns its properties and finds them by identifier.
//
// A property is "modified" while its values differ from the backup; every read ends in PostRead,
// which makes them equal again, and Restore undoes the user's edits by copying the backup back.
class PX_EXPORT PxProperty : public QObject
{
  Q_OBJECT

public:
  // The first constructor argument: the category in bits 0-1, flags above. Other bits are the
  // creating device's own business and are kept as given.
  enum : PtU32 {
    CAT_CONFIGURATION = 0,    // written to configuration files
    CAT_CALIBRATION = 1,      // also written to the factory part of calibration files
    CAT_USER_CALIBRATION = 2, // also written to the part of calibration files the user may redo
    CAT_STATE = 3,            // never written to configuration or calibration files
    CAT_MASK = 3,
    F_EDITABLE = 4, // the user may edit the property
    F_SAVE = 8      // the property is written to documents
  };

  // aUnitSize: bytes of one value on the wire and in documents; aStride: bytes of one value in
  // memory (a narrower wire value sits at the start of its slot).
  PxProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize, size_t aStride);

  // Typed access for code that does not know the kind of property (tables, loggers). The base
  // supports none of it; each kind overrides what makes sense for it.
  virtual double DoubleValue(size_t aIndex) const;
  virtual QString TextValue(size_t aIndex) const;
  virtual QString FormattedValue(size_t aIndex) const = 0;
  // True when narrower wire values must be sign-extended into their slot (PostRead).
  virtual bool Signed() const;
  virtual void SetDoubleValue(size_t aIndex, double aValue);
  virtual void SetTextValue(size_t aIndex, const QString& aValue);

  // Builds the property's editing widget in a new row of aLayout. aDisabler adds a check box that
  // switches the value off; aBitNames names the bits of a bit field.
  virtual void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) = 0;
  virtual void SetWidgetEnable(bool aEnable) = 0;
  virtual void SetWidgetEnableLabel(QString aLabel);

  // Configuration and calibration documents: one element per property, its id being mId.
  virtual void WriteToFile(PtDocumentWriter& aWriter);
  virtual void ReadFromFile(PtDocumentReader& aReader);

  size_t Count() const { return mValues.size() / mStride; }
  PtU32 Id() const { return mId; }
  PtU16 DeviceId() const { return mDeviceId; }
  PtU32 Category() const { return mCategory & CAT_MASK; }
  // The first constructor argument as given: category and flags.
  PtU32 Flags() const { return mCategory; }
  PtU32 UnitSize() const { return mUnitSize; }
  size_t Stride() const { return mStride; }

  // The raw value bytes (Count() times Stride()) and the backup as last read.
  const std::vector<PtByte>& Values() const { return mValues; }
  std::vector<PtByte>& Values() { return mValues; }
  const std::vector<PtByte>& Backup() const { return mBackup; }

  const QString& Name() const { return mName; }
  void SetName(const QString& aName) { mName = aName; }
  // Display template: "%n" is replaced by the name, "%v" by the value, "%u" by the unit.
  const QString& Format() const { return mFormat; }
  void SetFormat(const QString& aFormat) { mFormat = aFormat; }
  // A unit type (UT_NONE, UT_DISTANCE, ...): values are kept in its internal unit.
  int UnitType() const { return mUnitType; }
  void SetUnitType(int aUnitType) { mUnitType = aUnitType; }

  // Whether the property is offered to the user at all.
  bool Available() const;
  // Whether value aIndex may be edited: its flag word is all-ones. A value that does not exist is
  // not editable.
  bool Editable(size_t aIndex) const;
  // The flag word of value aIndex (0 when there is none). Bit-field editors use it as a mask of the
  // bits that may be edited.
  PtU32 EditableWord(size_t aIndex) const;
  // Every value at once. Without F_EDITABLE a property can be made read-only but never editable.
  void SetEditable(bool aEditable);
  // One value, with the word stored as given. Ignored without F_EDITABLE.
  void SetEditable(size_t aIndex, PtU32 aEditable);

  // New values are zero. Emits no ValueChanged: a count changes only on the way to a read, and
  // the read reports the values.
  void SetCount(size_t aCount);
  // Undoes the user's edits (only for editable properties exchanged with the device).
  void Restore();
  // Ends every read from a document or the device: widens signed values, then takes the values
  // as the new backup.
  void PostRead();

  // The PtCom protocol: one element per property, its id being the device identifier.
  void ReadFromPtProtocol(PxProtocolReader& aReader);
  void WriteToPtProtocol(PxControlConnection& aConnection);

Q_SIGNALS:
  // aIndex is the value that changed; PT_ALL means every value.
  void ValueChanged(size_t aIndex);
  void EditableChanged(size_t aIndex);

protected:
  bool HasFlag(PtU32 aFlag) const { return (mCategory & aFlag) != 0; }

  // Copies value aIndex in or out of its slot. The slot must exist.
  template <class T>
  T ValueAt(size_t aIndex) const
  {
    PT_ASSERT(aIndex < Count());
    T lValue;
    std::memcpy(&lValue, mValues.data() + aIndex * mStride, sizeof(T));
    return lValue;
  }
  template <class T>
  void StoreAt(size_t aIndex, T aValue)
  {
    PT_ASSERT(aIndex < Count());
    std::memcpy(mValues.data() + aIndex * mStride, &aValue, sizeof(T));
  }

private:
  PtU32 mCategory = 0;
  PtU32 mId = 0;
  PtU16 mDeviceId = 0;
  QString mName;
  QString mFormat = QStringLiteral("%n %v");
  int mUnitType = 0; // UT_NONE
  std::vector<PtU32> mEditable;
  size_t mStride = 0;
  PtU32 mUnitSize = 0;
  std::vector<PtByte> mValues;
  std::vector<PtByte> mBackup;
};

// The category and flag names are also used without the class name, as the first argument of
// every property's constructor.
constexpr PtU32 CAT_CONFIGURATION = PxProperty::CAT_CONFIGURATION;
constexpr PtU32 CAT_CALIBRATION = PxProperty::CAT_CALIBRATION;
constexpr PtU32 CAT_USER_CALIBRATION = PxProperty::CAT_USER_CALIBRATION;
constexpr PtU32 CAT_STATE = PxProperty::CAT_STATE;
constexpr PtU32 F_EDITABLE = PxProperty::F_EDITABLE;
constexpr PtU32 F_SAVE = PxProperty::F_SAVE;
