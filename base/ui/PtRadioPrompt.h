#pragma once

#include "ParvexTechExport.h"
#include "PtDialog.h"

#include <QList>

class QButtonGroup;
class QLabel;
class QVBoxLayout;

// Lets the user pick one of several items, each carrying an integer value. The first item added
// starts selected, so OK always has a choice to return.
class PT_EXPORT PtRadioPrompt : public PtDialog
{
  Q_OBJECT

public:
  PtRadioPrompt(QWidget* aParent, const QString& aTitle, const QString& aPrompt);

  void AddItem(const QString& aText, int aValue);
  int Count() const;

  // The value of the selected item; -1 while there are no items.
  int Value() const;
  // Selects the item with the value; returns false, selecting nothing new, when there is none.
  bool SetValue(int aValue);

protected:
  PtModalScript::Interaction Describe() const override;
  void Answer(const PtModalScript::Answer& aAnswer) override;

private:
  QLabel* mPrompt = nullptr;
  QVBoxLayout* mItemLayout = nullptr;
  QButtonGroup* mGroup = nullptr;
  QList<int> mValues;
};
