#include "PtMessageBox.h"

#include "PtDialog.h"
#include "PtException.h"
#include "PtModalScript.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPointer>

namespace {
QString TitleOr(const QString& aTitle)
{
  return aTitle.isEmpty() ? QGuiApplication::applicationDisplayName() : aTitle;
}

// Runs one box and returns the button that closed it, or aDefault when a script answered.
int Run(PtModalScript::Kind aKind, QMessageBox::Icon aIcon, QWidget* aParent, const QString& aTitle,
        const QString& aText, QMessageBox::StandardButtons aButtons, QMessageBox::StandardButton aDefault,
        QMessageBox::StandardButton aEscape)
{
  PtDialog::ModalGuard lGuard;
  PtModalScript::Interaction lInteraction;
  lInteraction.mKind = aKind;
  lInteraction.mTitle = TitleOr(aTitle);
  lInteraction.mText = aText;
  PtModalScript::Answer lAnswer;
  if (PtModalScript::Intercept(lInteraction, &lAnswer)) {
    return lAnswer.mType == PtModalScript::Answer::A_BUTTON ? lAnswer.mButton : aEscape;
  }

  // On the heap under a guard: the parent may be destroyed while the box runs (a device window
  // closing under an error box), and it takes its children with it.
  QPointer<QMessageBox> lBox = new QMessageBox(aIcon, TitleOr(aTitle), aText, aButtons, aParent);
  lBox->setDefaultButton(aDefault);
  lBox->setEscapeButton(aEscape);
  lBox->setTextFormat(Qt::PlainText);
  const int lResult = lBox->exec();
  delete lBox.data();
  return lResult;
}
} // namespace

void PtMessageBox::ShowError(QWidget* aParent, const QString& aText, const QString& aTitle)
{
  Run(PtModalScript::K_ERROR, QMessageBox::Critical, aParent, aTitle, aText, QMessageBox::Ok, QMessageBox::Ok,
      QMessageBox::Ok);
}

void PtMessageBox::ShowError(QWidget* aParent, const std::exception& aException, const QString& aTitle)
{
  ShowError(aParent, ExceptionText(aException), aTitle);
}

void PtMessageBox::ShowWarning(QWidget* aParent, const QString& aText, const QString& aTitle)
{
  Run(PtModalScript::K_WARNING, QMessageBox::Warning, aParent, aTitle, aText, QMessageBox::Ok, QMessageBox::Ok,
      QMessageBox::Ok);
}

void PtMessageBox::ShowInfo(QWidget* aParent, const QString& aText, const QString& aTitle)
{
  Run(PtModalScript::K_INFORMATION, QMessageBox::Information, aParent, aTitle, aText, QMessageBox::Ok, QMessageBox::Ok,
      QMessageBox::Ok);
}

bool PtMessageBox::Question(QWidget* aParent, const QString& aText, const QString& aTitle)
{
  return Run(PtModalScript::K_QUESTION, QMessageBox::Question, aParent, aTitle, aText,
             QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes, QMessageBox::No) == QMessageBox::Yes;
}

QString PtMessageBox::ExceptionText(const std::exception& aException)
{
  unsigned int lCode = 0;
  QString lText;
  PtExtractException(aException, &lCode, &lText);
  if (lCode == 0) {
    return lText;
  }
  return lText + QStringLiteral("\n\n") + tr("Error code: %1").arg(lCode);
}
