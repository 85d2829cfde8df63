#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QRadioButton>

class PxBitFieldProperty;

// One choice of a multi-bit field inside a bit-field value: checked while the bits under the
// mask equal the button's value. Several buttons on the same mask make a choice; the one that
// becomes checked writes, the others write nothing.
class PX_EXPORT PxRadioButton : public QRadioButton
{
  Q_OBJECT

public:
  explicit PxRadioButton(QWidget* aParent = nullptr);
  PxRadioButton(const QString& aText, QWidget* aParent = nullptr);

  void SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtU32 aMask, PtU32 aValue);

  PxBitFieldProperty* Property() const { return mProperty; }

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void ThisToggled(bool aChecked);

private:
  PxBitFieldProperty* mProperty = nullptr;
  size_t mIndex = 0;
  PtU32 mMask = 0;
  PtU32 mValue = 0;
};
