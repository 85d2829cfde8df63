#pragma once

#include "ParvexExport.h"
#include "PtDialog.h"

#include <QPointer>

class PxCodeUpdateJob;
class PxConnection;
class QLabel;
class QProgressBar;
class QPushButton;

// Runs one firmware update: the job starts as soon as the dialog is shown, a progress bar follows
// it, Cancel stops it between two pieces, and the outcome is told to the user in words before the
// dialog closes (accepted on success, rejected otherwise).
class PX_EXPORT PxCodeUpdateDialog : public PtDialog
{
  Q_OBJECT

public:
  explicit PxCodeUpdateDialog(QWidget* aParent);
  ~PxCodeUpdateDialog() override;

  // The device's link (watched, so a lost link is named as the cause of a failure) and the job to
  // run; neither is owned.
  void SetLinks(PxConnection* aConnection, PxCodeUpdateJob* aJob);

  bool IsRunning() const { return mRunning; }

public Q_SLOTS:
  // While the job runs, closing the dialog cancels the job; the dialog closes once it has stopped.
  void reject() override;

protected:
  void showEvent(QShowEvent* aEvent) override;

private Q_SLOTS:
  void PBCancelClicked();
  void JobProgress(qint64 aDone, qint64 aTotal);

private:
  void RunJob();

  QPointer<PxConnection> mConnection;
  PxCodeUpdateJob* mJob = nullptr;
  QLabel* mDescription = nullptr;
  QProgressBar* mProgress = nullptr;
  QPushButton* mCancel = nullptr;
  bool mStarted = false;
  bool mRunning = false;
};
