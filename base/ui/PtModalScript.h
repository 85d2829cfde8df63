#pragma once

#include "ParvexTechExport.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QDialog;

// The one place where a modal interaction of the UI kit can be answered without a person in
// front of the screen. While a script is in scope, every message box, prompt, chooser and kit
// dialog records what it asked and takes the next queued answer instead of waiting for the user;
// with nothing queued it takes its safe default (no, cancel, empty) at once, so nothing blocks.
//
//   PtModalScript lScript;                       // active until it goes out of scope
//   lScript.Queue(QMessageBox::Yes);            // answers the next question
//   lScript.Queue(QStringLiteral("a comment")); // answers the next text prompt or chooser
//   RunTheFlow();
//   EXPECT_EQ(lScript.Interactions().at(0).mText, ...);
//
// Information boxes (error, warning, information) are recorded but consume no answer: they only
// have an OK button. A queued answer that does not fit the interaction that takes it is a broken
// script and stops the program with an assertion.
class PT_EXPORT PtModalScript
{
public:
  enum Kind : int {
    K_ERROR,
    K_WARNING,
    K_INFORMATION,
    K_QUESTION,
    K_TEXT_PROMPT,
    K_RADIO_PROMPT,
    K_OPEN_FILE,
    K_SAVE_FILE,
    K_DIRECTORY,
    K_DIALOG
  };

  // What one interaction asked. For prompts mText is the prompt's label, for choosers the start
  // directory or file, for dialogs the dialog's class name. mOptions lists the radio items of a
  // radio prompt and the filters of a file chooser.
  struct Interaction
  {
    Kind mKind = K_DIALOG;
    QString mTitle;
    QString mText;
    QStringList mOptions;
  };

  // Drives a shown dialog the way a user would (check boxes, click buttons). A dialog that is
  // still open when the action returns is closed as if the user had pressed Escape.
  using Action = std::function<void(QDialog* aDialog)>;

  struct Answer
  {
    enum Type : int { A_BUTTON, A_TEXT, A_VALUE, A_CANCEL, A_ACTION };
    Type mType = A_CANCEL;
    int mButton = 0;
    QString mText;
    int mValue = 0;
    Action mAction;
  };

  PtModalScript();
  ~PtModalScript();
  PtModalScript(const PtModalScript&) = delete;
  PtModalScript& operator=(const PtModalScript&) = delete;

  // A button of a question box (QMessageBox::Yes or QMessageBox::No).
  void Queue(int aStandardButton);
  // The text of a text prompt, or the path a file or directory chooser returns.
  void Queue(const QString& aText);
  // The value of the radio item that a radio prompt selects before it is accepted.
  void QueueValue(int aValue);
  // A way to drive the next kit dialog (preferences, or any dialog derived from PtDialog).
  void Queue(const Action& aAction);
  // The user cancels the next question, prompt, chooser or dialog.
  void QueueCancel();

  const QList<Interaction>& Interactions() const { return mInteractions; }
  // Answers queued but not taken yet; a test usually expects 0 at its end.
  int Pending() const { return mAnswers.size(); }

  // Whether a script is in scope; at most one is.
  static bool IsActive();

  // Used by the kit: records the interaction and hands out the answer for it. Returns false when
  // no script is active (the caller then asks the user). With nothing queued, or for information
  // boxes, aAnswer is a cancel.
  static bool Intercept(const Interaction& aInteraction, Answer* aAnswer);

  // Text for a kind, for test messages ("question", "text prompt", ...).
  static QString KindName(Kind aKind);

private:
  QList<Interaction> mInteractions;
  QList<Answer> mAnswers;
};
