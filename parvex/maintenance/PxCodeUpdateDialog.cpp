#include "PxCodeUpdateDialog.h"

#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PtMessageBox.h"
#include "PxCodeUpdateJob.h"
#include "PxConnection.h"

#include <QLabel>
#include <QLoggingCategory>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
Q_LOGGING_CATEGORY(lcMaintenance, "parvex.maintenance")
}

PxCodeUpdateDialog::PxCodeUpdateDialog(QWidget* aParent)
    : PtDialog(aParent)
{
  setWindowTitle(tr("Firmware Update"));
  auto* lLayout = new QVBoxLayout(this);
  mDescription = new QLabel(this);
  mDescription->setWordWrap(true);
  lLayout->addWidget(mDescription);
  lLayout->addWidget(new QLabel(tr("Do not switch the device off until the update has finished."), this));
  mProgress = new QProgressBar(this);
  mProgress->setRange(0, 100);
  mProgress->setValue(0);
  mProgress->setMinimumWidth(380);
  lLayout->addWidget(mProgress);
  mCancel = new QPushButton(tr("Cancel"), this);
  lLayout->addWidget(mCancel, 0, Qt::AlignRight);
  connect(mCancel, &QPushButton::clicked, this, &PxCodeUpdateDialog::PBCancelClicked);
}

PxCodeUpdateDialog::~PxCodeUpdateDialog() = default;

void PxCodeUpdateDialog::SetLinks(PxConnection* aConnection, PxCodeUpdateJob* aJob)
{
  mConnection = aConnection;
  mJob = aJob;
  mDescription->setText(aJob ? aJob->Description() : QString());
  if (aJob) {
    connect(aJob, &PxCodeUpdateJob::Progress, this, &PxCodeUpdateDialog::JobProgress);
  }
}

void PxCodeUpdateDialog::showEvent(QShowEvent* aEvent)
{
  PtDialog::showEvent(aEvent);
  if (!mStarted) {
    mStarted = true;
    // After the dialog has been painted and its event loop runs.
    QTimer::singleShot(0, this, &PxCodeUpdateDialog::RunJob);
  }
}

void PxCodeUpdateDialog::PBCancelClicked()
{
  reject();
}

void PxCodeUpdateDialog::reject()
{
  if (mRunning) {
    mJob->Cancel();
    mCancel->setEnabled(false);
    mCancel->setText(tr("Cancelling..."));
    return;
  }
  PtDialog::reject();
}

void PxCodeUpdateDialog::JobProgress(qint64 aDone, qint64 aTotal)
{
  mProgress->setValue(aTotal > 0 ? static_cast<int>(aDone * 100 / aTotal) : 0);
}

void PxCodeUpdateDialog::RunJob()
{
  if (!isVisible()) {
    return; // closed before it started
  }
  if (!mJob) {
    PtMessageBox::ShowError(this, tr("No firmware update is available for this device."));
    PtDialog::reject();
    return;
  }
  mRunning = true;
  bool lDone = false;
  try {
    mJob->Run();
    lDone = true;
  } catch (const std::exception& e) {
    mRunning = false;
    unsigned int lCode = 0;
    QString lText;
    PtExtractException(e, &lCode, &lText);
    if (lCode == PxCodeUpdateJob::ERROR_CANCELLED && mJob->IsCancelled()) {
      qCInfo(lcMaintenance) << "firmware update cancelled";
      PtMessageBox::ShowInfo(this, tr("The update was cancelled. The device keeps its previous firmware."));
    } else if (!mConnection || !mConnection->Connected()) {
      PtErrorLogForm::LogError(e);
      PtMessageBox::ShowError(this, tr("The connection to the device was lost during the update. The device "
                                       "keeps its previous firmware; connect to it again and repeat the update."));
    } else {
      PtErrorLogForm::LogError(e);
      PtMessageBox::ShowError(this, tr("The firmware update failed: %1\n\nThe device keeps its previous firmware.")
                                        .arg(lText.isEmpty() ? QString::fromLocal8Bit(e.what()) : lText));
    }
  }
  mRunning = false;
  if (lDone) {
    mProgress->setValue(100);
    PtMessageBox::ShowInfo(this, tr("The firmware was updated. The device has restarted on it."));
    accept();
  } else {
    PtDialog::reject();
  }
}
