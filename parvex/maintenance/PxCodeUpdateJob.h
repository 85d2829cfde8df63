#pragma once

#include "ParvexExport.h"

#include <QObject>
#include <QString>

// One firmware update as a device driver carries it out: which image goes to which component, how
// it is sent, and how the device is told to install it. The firmware update dialog runs it on the
// GUI thread; the job reports its progress between the pieces it sends and lets the window process
// events there, so the dialog stays responsive and its Cancel button is heard.
class PX_EXPORT PxCodeUpdateJob : public QObject
{
  Q_OBJECT

public:
  // The code of the error Run throws when the user cancelled.
  enum : unsigned int { ERROR_CANCELLED = 50 };

  explicit PxCodeUpdateJob(QObject* aParent = nullptr);
  ~PxCodeUpdateJob() override;

  // What is being installed, for the dialog ("Software version 2.12 for the Parvex 16").
  virtual QString Description() const = 0;
  // Sends the image and has the device install it. Throws on failure, and with ERROR_CANCELLED
  // when the user cancelled; a device must keep its previous firmware in both cases.
  virtual void Run() = 0;

  // Asks a running job to stop at its next progress report.
  void Cancel() { mCancelled = true; }
  bool IsCancelled() const { return mCancelled; }

Q_SIGNALS:
  void Progress(qint64 aDone, qint64 aTotal);

protected:
  // Announces progress, lets pending events run and throws ERROR_CANCELLED once the user has
  // cancelled. Jobs call it between the pieces they send, never in the middle of an exchange.
  void Report(qint64 aDone, qint64 aTotal);

private:
  bool mCancelled = false;
};
