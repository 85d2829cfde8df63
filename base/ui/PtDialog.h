#pragma once

#include "ParvexTechExport.h"
#include "PtModalScript.h"

#include <QDialog>

// Base of the product's modal dialogs. It keeps the number of modal interactions that are running
// right now (its own runs, and those of message boxes, prompts and choosers), because work that
// would pull objects from under a running dialog (tearing down a device that went away) has to
// wait until the count is back to zero.
//
// Run it with exec(). While a PtModalScript is active, exec() does not wait for a user: it shows
// the dialog, lets the queued action drive it, and closes it as cancelled if the action did not.
class PT_EXPORT PtDialog : public QDialog
{
  Q_OBJECT

public:
  explicit PtDialog(QWidget* aParent = nullptr, Qt::WindowFlags aFlags = Qt::WindowFlags());
  ~PtDialog() override;

  int exec() override;

  // Modal interactions running at this moment, nested ones included.
  static int ActiveCount();

  // Counts one modal interaction for as long as it lives. The kit uses it around every modal run;
  // code that runs a modal loop of its own (a QProgressDialog, say) uses it too.
  class PT_EXPORT ModalGuard
  {
  public:
    ModalGuard();
    ~ModalGuard();
    ModalGuard(const ModalGuard&) = delete;
    ModalGuard& operator=(const ModalGuard&) = delete;
  };

protected:
  // What a scripted run records for this dialog: by default its window title and class name.
  virtual PtModalScript::Interaction Describe() const;
  // Applies a scripted answer while the dialog is shown. The base runs an action; the prompts
  // take their text or value and accept.
  virtual void Answer(const PtModalScript::Answer& aAnswer);
};
