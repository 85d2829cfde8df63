#pragma once

#include "ParvexExport.h"

#include <QLineEdit>

class PxTextProperty;
class QGridLayout;
class QLabel;

// Edits the string of a text property. Every keystroke goes into the property at once, so what
// the user sees is what Apply sends; the line edit never takes more than the property can hold.
class PX_EXPORT PxLineEdit : public QLineEdit
{
  Q_OBJECT

public:
  explicit PxLineEdit(QWidget* aParent = nullptr);

  void SetProperty(PxTextProperty* aProperty);
  // The name's label at (aRow, aColumn - 1), the line edit at (aRow, aColumn).
  void SetLayout(QGridLayout& aLayout, int aRow, int aColumn);

  PxTextProperty* Property() const { return mProperty; }
  QLabel* Label() const { return mLabel; }

public Q_SLOTS:
  void PropertyValueChanged();
  void PropertyEditableChanged(size_t aIndex);
  void ThisTextChanged(const QString& aText);

private:
  // Whether aText fits the property's bytes (8-bit text may take more than a byte per character).
  bool Fits(const QString& aText) const;

  QLabel* mLabel = nullptr;
  PxTextProperty* mProperty = nullptr;
};
