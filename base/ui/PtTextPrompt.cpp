#include "PtTextPrompt.h"

#include "PtAssert.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

PtTextPrompt::PtTextPrompt(QWidget* aParent, const QString& aTitle, const QString& aLabel, const QString& aText)
    : PtDialog(aParent)
    , mLabel(new QLabel(aLabel, this))
    , mEdit(new QLineEdit(aText, this))
{
  setWindowTitle(aTitle);
  mLabel->setBuddy(mEdit);
  // Wide enough for a sentence of comment without the user resizing the box first.
  mEdit->setMinimumWidth(320);

  auto* lButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(lButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(lButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* lLayout = new QVBoxLayout(this);
  lLayout->addWidget(mLabel);
  lLayout->addWidget(mEdit);
  lLayout->addWidget(lButtons);
  lLayout->setSizeConstraint(QLayout::SetFixedSize);
  mEdit->setFocus();
}

QString PtTextPrompt::Text() const
{
  return mEdit->text();
}

void PtTextPrompt::SetText(const QString& aText)
{
  mEdit->setText(aText);
}

bool PtTextPrompt::Ask(QWidget* aParent, const QString& aTitle, const QString& aLabel, QString* aText)
{
  PT_ASSERT(aText);
  PtTextPrompt lPrompt(aParent, aTitle, aLabel, *aText);
  if (lPrompt.exec() != QDialog::Accepted) {
    return false;
  }
  *aText = lPrompt.Text();
  return true;
}

PtModalScript::Interaction PtTextPrompt::Describe() const
{
  PtModalScript::Interaction lInteraction;
  lInteraction.mKind = PtModalScript::K_TEXT_PROMPT;
  lInteraction.mTitle = windowTitle();
  lInteraction.mText = mLabel->text();
  return lInteraction;
}

void PtTextPrompt::Answer(const PtModalScript::Answer& aAnswer)
{
  if (aAnswer.mType == PtModalScript::Answer::A_TEXT) {
    mEdit->setText(aAnswer.mText);
    accept();
  } else {
    PtDialog::Answer(aAnswer);
  }
}
