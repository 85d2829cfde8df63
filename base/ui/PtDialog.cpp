#include "PtDialog.h"

namespace {
int sActiveCount = 0;
}

PtDialog::ModalGuard::ModalGuard()
{
  ++sActiveCount;
}

PtDialog::ModalGuard::~ModalGuard()
{
  --sActiveCount;
}

PtDialog::PtDialog(QWidget* aParent, Qt::WindowFlags aFlags)
    : QDialog(aParent, aFlags)
{
}

PtDialog::~PtDialog() = default;

int PtDialog::exec()
{
  ModalGuard lGuard;
  PtModalScript::Answer lAnswer;
  if (!PtModalScript::Intercept(Describe(), &lAnswer)) {
    return QDialog::exec();
  }
  // Shown, so that an action finds the widgets laid out as a user would; not modal, so that no
  // event loop waits for a click that will never come.
  setResult(QDialog::Rejected);
  show();
  if (lAnswer.mType != PtModalScript::Answer::A_CANCEL) {
    Answer(lAnswer);
  }
  if (isVisible()) {
    reject();
  }
  return result();
}

int PtDialog::ActiveCount()
{
  return sActiveCount;
}

PtModalScript::Interaction PtDialog::Describe() const
{
  PtModalScript::Interaction lInteraction;
  lInteraction.mKind = PtModalScript::K_DIALOG;
  lInteraction.mTitle = windowTitle();
  lInteraction.mText = QString::fromLatin1(metaObject()->className());
  return lInteraction;
}

void PtDialog::Answer(const PtModalScript::Answer& aAnswer)
{
  if (aAnswer.mAction) {
    aAnswer.mAction(this);
  }
}
