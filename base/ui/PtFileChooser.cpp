#include "PtFileChooser.h"

#include "PtDialog.h"
#include "PtModalScript.h"

#include <QFileDialog>

namespace {
// Records the chooser with a script, or runs the real one. A script's cancel gives "".
template <class F>
QString Choose(PtModalScript::Kind aKind, const QString& aCaption, const QString& aDirectory, const QString& aFilter,
               F aRun)
{
  PtDialog::ModalGuard lGuard;
  PtModalScript::Interaction lInteraction;
  lInteraction.mKind = aKind;
  lInteraction.mTitle = aCaption;
  lInteraction.mText = aDirectory;
  if (!aFilter.isEmpty()) {
    lInteraction.mOptions = aFilter.split(QStringLiteral(";;"));
  }
  PtModalScript::Answer lAnswer;
  if (PtModalScript::Intercept(lInteraction, &lAnswer)) {
    return lAnswer.mType == PtModalScript::Answer::A_TEXT ? lAnswer.mText : QString();
  }
  return aRun();
}
} // namespace

QString PtFileChooser::OpenFile(QWidget* aParent, const QString& aCaption, const QString& aDirectory,
                                const QString& aFilter)
{
  return Choose(PtModalScript::K_OPEN_FILE, aCaption, aDirectory, aFilter,
                [&] { return QFileDialog::getOpenFileName(aParent, aCaption, aDirectory, aFilter); });
}

QString PtFileChooser::SaveFile(QWidget* aParent, const QString& aCaption, const QString& aDirectory,
                                const QString& aFilter)
{
  return Choose(PtModalScript::K_SAVE_FILE, aCaption, aDirectory, aFilter,
                [&] { return QFileDialog::getSaveFileName(aParent, aCaption, aDirectory, aFilter); });
}

QString PtFileChooser::ExistingDirectory(QWidget* aParent, const QString& aCaption, const QString& aDirectory)
{
  return Choose(PtModalScript::K_DIRECTORY, aCaption, aDirectory, QString(),
                [&] { return QFileDialog::getExistingDirectory(aParent, aCaption, aDirectory); });
}
