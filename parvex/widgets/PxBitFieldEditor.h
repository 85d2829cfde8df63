#pragma once

#include "ParvexExport.h"

#include <QList>
#include <QMap>
#include <QWidget>

class PxBitFieldProperty;
class QCheckBox;
class QGroupBox;
class QHBoxLayout;
class QGridLayout;
class QSignalMapper;

// Every bit of one bit-field value as a check box, in a titled box: one row per byte of the value
// and one column per bit of the byte, bit 0 top left and bits running down each column. The value's
// editable word says, bit by bit, which boxes the user may change.
class PX_EXPORT PxBitFieldEditor : public QWidget
{
  Q_OBJECT

public:
  PxBitFieldEditor(const QString& aTitle, QWidget* aParent = nullptr);

  // aBitNames: captions by bit position; a bit without one shows its 1-based number.
  void SetProperty(PxBitFieldProperty* aProperty, size_t aIndex, QMap<int, QString>* aBitNames);
  // Makes the box checkable: unchecking it disables every bit.
  void SetDisabler(bool aDisabler);
  void SetEnabled(bool aEnabled);

  PxBitFieldProperty* Property() const { return mProperty; }
  QGroupBox* Box() const { return mGroupBox; }
  const QList<QCheckBox*>& CheckBoxes() const { return mCheckBoxes; }

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void CheckBoxStateChanged(int aBit);

private:
  QHBoxLayout* mLayout = nullptr;
  QGroupBox* mGroupBox = nullptr;
  QGridLayout* mGrid = nullptr;
  QSignalMapper* mMapper = nullptr;
  QList<QCheckBox*> mCheckBoxes;
  PxBitFieldProperty* mProperty = nullptr;
  size_t mIndex = 0;
  int mBitCount = 0;
};
