#pragma once

#include "ParvexExport.h"

#include <QGroupBox>
#include <QList>

class PxEnumProperty;
class QGridLayout;
class QRadioButton;
class QSpinBox;

// An enum value as a group of radio buttons, one per entry in the entries' order, in a row or in
// a column, titled with the property's name.
class PX_EXPORT PxRadioGroup : public QGroupBox
{
  Q_OBJECT

public:
  PxRadioGroup(bool aHorizontal, QWidget* aParent = nullptr);

  void SetProperty(PxEnumProperty* aProperty, size_t aIndex);
  void SetIndexer(QSpinBox& aIndexer);

  const QList<QRadioButton*>& Buttons() const { return mButtons; }

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void RadioButtonToggled();
  void IndexerValueChanged(int aValue);

private:
  QGridLayout* mLayout = nullptr;
  QList<QRadioButton*> mButtons;
  PxEnumProperty* mProperty = nullptr;
  size_t mIndex = 0;
  bool mHorizontal = false;
};
