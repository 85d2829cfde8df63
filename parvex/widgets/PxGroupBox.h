#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QGroupBox>

class PxBitFieldProperty;
class PxBoolProperty;
class PxProperty;

// A checkable group of settings that only matter while a switch is on: the box's check is bound
// to a bool value or to one bit of a bit-field value, and unchecking it greys out what it holds.
class PX_EXPORT PxGroupBox : public QGroupBox
{
  Q_OBJECT

public:
  explicit PxGroupBox(QWidget* aParent = nullptr);
  PxGroupBox(const QString& aTitle, QWidget* aParent = nullptr);

  void SetProperty(PxBoolProperty* aProperty, size_t aIndex);
  void SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, PtByte aBit);

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void ThisToggled(bool aChecked);

private:
  void Connect(PxProperty* aProperty);

  PxBoolProperty* mBoolProperty = nullptr;
  PxBitFieldProperty* mBitProperty = nullptr;
  size_t mIndex = 0;
  PtByte mBit = 0;
};
