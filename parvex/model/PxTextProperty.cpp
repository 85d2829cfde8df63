#include "PxTextProperty.h"

#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PxLineEdit.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLineEdit>

#include <algorithm>
#include <cstring>

PxTextProperty::PxTextProperty(PtU32 aCategory, eType aType, PtU32 aId, PtU16 aDeviceId, PtU32 aMaxLength)
    : PxProperty(aCategory, aId, aDeviceId, aMaxLength, aMaxLength)
    , mType(aType)
{
  // Assertion checks are spelled as their messages have always read, so they are kept out of
  // formatting here and below.
  // clang-format off
  PT_ASSERT(( aType == TYPE_ASCII ) || ( aType == TYPE_UTF16 ));
  // clang-format on
}

QString PxTextProperty::TextValue(size_t aIndex) const
{
  PT_ASSERT(aIndex == 0);
  // Before the first read there is no value: that is an empty text.
  const std::vector<PtByte>& lValues = Values();
  const size_t lBytes = std::min<size_t>(MaxLength(), lValues.size());
  const char* lData = reinterpret_cast<const char*>(lValues.data());
  if (mType == TYPE_ASCII) {
    const size_t lLength = std::find(lData, lData + lBytes, '\0') - lData;
    return QString::fromLocal8Bit(lData, static_cast<int>(lLength));
  }
  const size_t lUnits = lBytes / 2;
  if (lUnits == 0) {
    return QString();
  }
  QString lText(static_cast<int>(lUnits), Qt::Uninitialized);
  std::memcpy(lText.data(), lData, lUnits * 2);
  const int lEnd = lText.indexOf(QChar(0));
  if (lEnd >= 0) {
    lText.truncate(lEnd);
  }
  return lText;
}

QString PxTextProperty::FormattedValue(size_t aIndex) const
{
  return TextValue(aIndex);
}

void PxTextProperty::ClearValue()
{
  // One value of MaxLength bytes. Callers normally give the property its value first; a property
  // that has none yet gets it here instead of being written past its end.
  Values().assign(MaxLength(), 0);
}

void PxTextProperty::SetTextValue(size_t aIndex, const QString& aValue)
{
  Q_UNUSED(aIndex);
  ClearValue();
  PtByte* lData = Values().data();
  if (mType == TYPE_ASCII) {
    const QByteArray lTmp = aValue.toLocal8Bit();
    // clang-format off
    PT_ASSERT(lTmp.length() <= (int) MaxLength());
    // clang-format on
    std::memcpy(lData, lTmp.constData(), static_cast<size_t>(lTmp.length()));
  } else {
    // clang-format off
    PT_ASSERT(aValue.length()*2 <= (int) MaxLength());
    // clang-format on
    std::memcpy(lData, aValue.utf16(), static_cast<size_t>(aValue.length()) * 2);
  }
  Q_EMIT ValueChanged(0);
}

void PxTextProperty::SetValue(const char* aText, size_t aLength)
{
  ClearValue();
  if (mType != TYPE_ASCII) {
    // The value was cleared, so listeners still hear of it before the refusal.
    Q_EMIT ValueChanged(0);
    PtLogicError(11);
  }
  const size_t lLength = aLength == PT_ALL ? strnlen(aText, MaxLength()) : std::min<size_t>(aLength, MaxLength());
  std::memcpy(Values().data(), aText, lLength);
  Q_EMIT ValueChanged(0);
}

void PxTextProperty::SetValue(const PxTextProperty& aOther)
{
  const size_t lLenDest = MaxLength();
  const size_t lLenSrc = aOther.MaxLength();
  // Taken before clearing, so that copying a property onto itself keeps its text.
  std::vector<PtByte> lSource = aOther.Values();
  lSource.resize(lLenSrc, 0);
  ClearValue();
  if (mType == TYPE_ASCII && aOther.mType == TYPE_UTF16) {
    // UTF-16 does not fit 8-bit text in general. The value was cleared, so listeners still hear
    // of it before the refusal.
    Q_EMIT ValueChanged(0);
    PtLogicError(12);
  }
  PtByte* lData = Values().data();
  if (mType == aOther.mType) {
    PT_ASSERT(lLenDest >= lLenSrc);
    std::memcpy(lData, lSource.data(), lLenSrc);
  } else {
    // clang-format off
    PT_ASSERT(lLenDest >= lLenSrc*2);
    // clang-format on
    for (size_t i = 0; i < lLenSrc; ++i) {
      const PtU16 lUnit = lSource[i];
      std::memcpy(lData + 2 * i, &lUnit, sizeof(lUnit));
    }
  }
  Q_EMIT ValueChanged(0);
}

void PxTextProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  Q_UNUSED(aBitNames);
  if (Count() == 0) {
    return;
  }
  const int lRow = aLayout.rowCount();
  auto* lLineEdit = new PxLineEdit;
  lLineEdit->SetProperty(this);
  lLineEdit->SetLayout(aLayout, lRow, 1);
  mLineEdit = lLineEdit;
  if (aDisabler) {
    mDisabler = new QCheckBox;
    // Checked means the text is in use, so it starts as the line edit does.
    mDisabler->setChecked(lLineEdit->isEnabled());
    aLayout.addWidget(mDisabler, lRow, 2);
    connect(mDisabler, &QCheckBox::toggled, this, &PxTextProperty::DisablerToggled);
  }
  if (mForceUpperCase) {
    connect(lLineEdit, &QLineEdit::textEdited, this, &PxTextProperty::TextEdited);
  }
}

void PxTextProperty::SetWidgetEnable(bool aEnable)
{
  if (mLineEdit) {
    mLineEdit->setEnabled(aEnable);
  }
}

void PxTextProperty::SetWidgetEnableLabel(QString aLabel)
{
  if (mLineEdit && mDisabler) {
    mDisabler->setText(aLabel);
  }
}

void PxTextProperty::TextEdited()
{
  if (mForceUpperCase && mLineEdit) {
    mLineEdit->setText(mLineEdit->text().toUpper());
  }
}

void PxTextProperty::DisablerToggled()
{
  if (mDisabler) {
    SetWidgetEnable(mDisabler->isChecked());
  }
}

void PxTextProperty::WriteToFile(PtDocumentWriter& aWriter)
{
  if (mType == TYPE_ASCII) {
    PxProperty::WriteToFile(aWriter);
    return;
  }
  if (!HasFlag(F_SAVE) || Count() == 0) {
    return;
  }
  // The count is the number of UTF-16 code units, not of UTF-8 bytes: text beyond 7-bit ASCII is
  // stored cut short by the surplus bytes. Existing files are written so and read so.
  const QString lText = TextValue(0);
  const QByteArray lUtf8 = lText.toUtf8();
  aWriter.AddElement(Id(), lUtf8.constData(), 1, static_cast<PtU32>(lText.length()), 1);
}

void PxTextProperty::ReadFromFile(PtDocumentReader& aReader)
{
  PT_ASSERT(Id() == aReader.Id());
  const PtU32 lMaxLength = MaxLength();
  const PtU32 lCount = aReader.Count();
  const PtU32 lUnitSize = aReader.UnitSize();
  // Read into a copy first: a damaged document throws from GetElement and must leave the
  // property as it was.
  std::vector<PtByte> lValue = Values();
  lValue.resize(lMaxLength, 0);
  if (mType == TYPE_ASCII) {
    if (lCount <= lMaxLength && lUnitSize == 1) {
      aReader.GetElement(lValue.data(), 1, lCount, 1);
      // The rest of the buffer is not cleared; a NUL after a shorter text ends it.
      if (lCount < lMaxLength) {
        lValue[lCount] = 0;
      }
    } else {
      aReader.GetElement(lValue.data(), lMaxLength, 1, lMaxLength);
    }
  } else if (lUnitSize == 1) {
    QByteArray lUtf8(static_cast<int>(lCount), '\0');
    aReader.GetElement(lUtf8.data(), 1, lCount, 1);
    const QString lText = QString::fromUtf8(lUtf8);
    // A file may hold more than fits; what fits is kept, ended by a NUL when there is room.
    const size_t lBytes = std::min<size_t>(static_cast<size_t>(lText.length()) * 2, lMaxLength);
    std::memcpy(lValue.data(), lText.utf16(), lBytes);
    if (lBytes + 2 <= lMaxLength) {
      lValue[lBytes] = 0;
      lValue[lBytes + 1] = 0;
    }
  } else if (lUnitSize == 2) {
    aReader.GetElement(lValue.data(), 2, lMaxLength / 2, 2);
  }
  SetCount(1);
  Values().swap(lValue);
  PostRead();
}
