#include "PtRadioPrompt.h"

#include "PtAssert.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

PtRadioPrompt::PtRadioPrompt(QWidget* aParent, const QString& aTitle, const QString& aPrompt)
    : PtDialog(aParent)
    , mPrompt(new QLabel(aPrompt, this))
    , mItemLayout(new QVBoxLayout())
    , mGroup(new QButtonGroup(this))
{
  setWindowTitle(aTitle);
  // Short prompts stay on one line; long ones wrap instead of making a very wide box.
  mPrompt->setWordWrap(aPrompt.size() > 80);

  auto* lButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(lButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(lButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);

  auto* lLayout = new QVBoxLayout(this);
  lLayout->addWidget(mPrompt);
  mItemLayout->setContentsMargins(12, 4, 0, 4);
  lLayout->addLayout(mItemLayout);
  lLayout->addWidget(lButtons);
  lLayout->setSizeConstraint(QLayout::SetFixedSize);
}

void PtRadioPrompt::AddItem(const QString& aText, int aValue)
{
  auto* lButton = new QRadioButton(aText, this);
  // The button's id in the group is its index; values may repeat or be negative.
  mGroup->addButton(lButton, mValues.size());
  mValues.append(aValue);
  mItemLayout->addWidget(lButton);
  if (mValues.size() == 1) {
    lButton->setChecked(true);
  }
}

int PtRadioPrompt::Count() const
{
  return mValues.size();
}

int PtRadioPrompt::Value() const
{
  const int lIndex = mGroup->checkedId();
  return lIndex >= 0 && lIndex < mValues.size() ? mValues.at(lIndex) : -1;
}

bool PtRadioPrompt::SetValue(int aValue)
{
  const int lIndex = mValues.indexOf(aValue);
  if (lIndex < 0) {
    return false;
  }
  mGroup->button(lIndex)->setChecked(true);
  return true;
}

PtModalScript::Interaction PtRadioPrompt::Describe() const
{
  PtModalScript::Interaction lInteraction;
  lInteraction.mKind = PtModalScript::K_RADIO_PROMPT;
  lInteraction.mTitle = windowTitle();
  lInteraction.mText = mPrompt->text();
  for (QAbstractButton* lButton : mGroup->buttons()) {
    lInteraction.mOptions.append(lButton->text());
  }
  return lInteraction;
}

void PtRadioPrompt::Answer(const PtModalScript::Answer& aAnswer)
{
  if (aAnswer.mType == PtModalScript::Answer::A_VALUE) {
    // A script that picks a value no item carries is broken: the user could not pick it either.
    const bool lFound = SetValue(aAnswer.mValue);
    PT_ASSERT(lFound && "the scripted value is not among the radio items");
    accept();
  } else {
    PtDialog::Answer(aAnswer);
  }
}
