#pragma once

#include "ParvexTechExport.h"
#include "PtDialog.h"

class QLabel;
class QLineEdit;

// Asks for one line of text: a label, an edit field and OK / Cancel.
class PT_EXPORT PtTextPrompt : public PtDialog
{
  Q_OBJECT

public:
  PtTextPrompt(QWidget* aParent, const QString& aTitle, const QString& aLabel, const QString& aText = QString());

  QString Text() const;
  void SetText(const QString& aText);

  // Runs the prompt. On OK stores the entered text in aText and returns true; on Cancel leaves
  // aText as it was and returns false. aText also gives the text the field starts with.
  static bool Ask(QWidget* aParent, const QString& aTitle, const QString& aLabel, QString* aText);

protected:
  PtModalScript::Interaction Describe() const override;
  void Answer(const PtModalScript::Answer& aAnswer) override;

private:
  QLabel* mLabel = nullptr;
  QLineEdit* mEdit = nullptr;
};
