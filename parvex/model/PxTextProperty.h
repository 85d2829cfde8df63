#pragma once

#include "ParvexExport.h"
#include "PxProperty.h"

#include <QPointer>

class QCheckBox;
class QLineEdit;

// One string of fixed maximum length (names, part and serial numbers). The whole string is one
// value of MaxLength() bytes: 8-bit text in the local encoding padded with NULs, or UTF-16 code
// units ended by a NUL.
class PX_EXPORT PxTextProperty : public PxProperty
{
  Q_OBJECT

public:
  enum eType { TYPE_ASCII = 1, TYPE_UTF16 = 2 };

  PxTextProperty(PtU32 aCategory, eType aType, PtU32 aId, PtU16 aDeviceId, PtU32 aMaxLength);

  // The string (aIndex must be 0).
  QString TextValue(size_t aIndex) const override;
  QString FormattedValue(size_t aIndex) const override;
  // Replaces the string; a text longer than MaxLength() is a programming error. Emits
  // ValueChanged(0) every time, also when the text is the same.
  void SetTextValue(size_t aIndex, const QString& aValue) override;
  // A line edit in a new row of aLayout, with a check box that switches it off when aDisabler.
  void CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames) override;
  void SetWidgetEnable(bool aEnable) override;
  // The caption of the disabler check box.
  void SetWidgetEnableLabel(QString aLabel) override;
  // ASCII text is one unit of MaxLength() bytes. UTF-16 text is stored as UTF-8 with a count of
  // UTF-16 code units, as files have always had it.
  void WriteToFile(PtDocumentWriter& aWriter) override;
  void ReadFromFile(PtDocumentReader& aReader) override;

  eType Type() const { return mType; }
  PtU32 MaxLength() const { return UnitSize(); }

  // Raw 8-bit text from a device: aLength bytes, or up to the NUL when aLength is all-ones, at
  // most MaxLength(). Only for ASCII properties.
  void SetValue(const char* aText, size_t aLength);
  // Copies another text property: ASCII into ASCII or UTF-16, UTF-16 into UTF-16.
  void SetValue(const PxTextProperty& aOther);

  // Serial numbers and similar codes are typed in capitals whatever the user presses.
  bool ForceUpperCase() const { return mForceUpperCase; }
  void SetForceUpperCase(bool aForce) { mForceUpperCase = aForce; }

public Q_SLOTS:
  void TextEdited();
  void DisablerToggled();

private:
  // Clears the value to NULs, making it exist if a read has not done so yet.
  void ClearValue();

  eType mType = TYPE_ASCII;
  // Made by CreateWidget and owned by the form; the form may go before the property.
  QPointer<QLineEdit> mLineEdit;
  QPointer<QCheckBox> mDisabler;
  bool mForceUpperCase = false;
};
