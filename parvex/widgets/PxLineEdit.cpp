#include "PxLineEdit.h"

#include "PtAssert.h"
#include "PxTextProperty.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

PxLineEdit::PxLineEdit(QWidget* aParent)
    : QLineEdit(aParent)
{
  setEnabled(false);
}

void PxLineEdit::SetProperty(PxTextProperty* aProperty)
{
  PT_ASSERT(mProperty == nullptr);
  PT_ASSERT(aProperty);
  mProperty = aProperty;
  // UTF-16 text takes two of the property's bytes per character.
  const int lLength = static_cast<int>(aProperty->MaxLength());
  setMaxLength(aProperty->Type() == PxTextProperty::TYPE_UTF16 ? lLength / 2 : lLength);
  if (aProperty->Count() == 0) {
    return;
  }
  PropertyValueChanged();
  PropertyEditableChanged(0);
  connect(this, &QLineEdit::textChanged, this, &PxLineEdit::ThisTextChanged);
  connect(aProperty, &PxProperty::ValueChanged, this, &PxLineEdit::PropertyValueChanged);
  connect(aProperty, &PxProperty::EditableChanged, this, &PxLineEdit::PropertyEditableChanged);
}

void PxLineEdit::SetLayout(QGridLayout& aLayout, int aRow, int aColumn)
{
  PT_ASSERT(mProperty);
  if (!mProperty->Name().isEmpty()) {
    mLabel = new QLabel(mProperty->Name());
    mLabel->setEnabled(isEnabled());
    aLayout.addWidget(mLabel, aRow, aColumn - 1);
  }
  aLayout.addWidget(this, aRow, aColumn);
}

void PxLineEdit::PropertyValueChanged()
{
  const QString lText = mProperty->TextValue(0);
  // The property reports every write, also of the same text; setting it again would move the
  // cursor under the user's fingers.
  if (lText == text()) {
    return;
  }
  const QSignalBlocker lBlocker(this);
  setText(lText);
}

void PxLineEdit::PropertyEditableChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  setEnabled(mProperty->Editable(0));
  if (mLabel) {
    mLabel->setEnabled(isEnabled());
  }
}

bool PxLineEdit::Fits(const QString& aText) const
{
  if (mProperty->Type() == PxTextProperty::TYPE_UTF16) {
    return static_cast<PtU32>(aText.length()) * 2 <= mProperty->MaxLength();
  }
  return static_cast<PtU32>(aText.toLocal8Bit().length()) <= mProperty->MaxLength();
}

void PxLineEdit::ThisTextChanged(const QString& aText)
{
  Q_UNUSED(aText);
  // The line edit reports a typed key after its textEdited listeners ran, with the text from before
  // them; a listener that rewrote the text (upper case) must not be undone by that late copy.
  const QString lText = text();
  if (!Fits(lText)) {
    // Characters beyond 7 bits take more than one byte: the last ones typed do not fit.
    QString lCut = lText;
    while (!lCut.isEmpty() && !Fits(lCut)) {
      lCut.chop(1);
    }
    setText(lCut);
    return;
  }
  mProperty->SetTextValue(0, lText);
}
