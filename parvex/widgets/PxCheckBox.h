#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QCheckBox>

class PxBitFieldProperty;
class PxBoolProperty;
class PxProperty;

// A switch bound to one value of a bool property, or to one bit of a bit-field value (the other
// bits are left as they are). Either may be shown inverted, for settings the device words the
// other way round ("disable ..." shown as "enable ...").
class PX_EXPORT PxCheckBox : public QCheckBox
{
  Q_OBJECT

public:
  explicit PxCheckBox(QWidget* aParent = nullptr);
  PxCheckBox(const QString& aText, QWidget* aParent = nullptr);

  void SetProperty(PxBoolProperty* aProperty, size_t aIndex, bool aInverted);
  // aBit: 0 to 31.
  void SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtByte aBit);
  // For a bit: checked when the bit is clear. Set it before binding.
  void SetInverted(bool aInverted) { mInverted = aInverted; }

  PxProperty* Property() const;

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void ThisStateChanged(int aState);

private:
  void Connect(PxProperty* aProperty);
  bool Shown() const;

  PxBoolProperty* mBoolProperty = nullptr;
  PxBitFieldProperty* mBitProperty = nullptr;
  size_t mIndex = 0;
  PtByte mBit = 0;
  bool mInverted = false;
};
