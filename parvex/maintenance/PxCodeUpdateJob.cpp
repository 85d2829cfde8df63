#include "PxCodeUpdateJob.h"

#include "PtException.h"

#include <QCoreApplication>

#include <stdexcept>

PxCodeUpdateJob::PxCodeUpdateJob(QObject* aParent)
    : QObject(aParent)
{
}

PxCodeUpdateJob::~PxCodeUpdateJob() = default;

void PxCodeUpdateJob::Report(qint64 aDone, qint64 aTotal)
{
  Q_EMIT Progress(aDone, aTotal);
  // Between two pieces the link is idle, so whatever the events start (an acquisition on the host's
  // tick) exchanges whole requests and answers and cannot split one of ours.
  QCoreApplication::processEvents();
  if (mCancelled) {
    PtThrow<std::runtime_error>(ERROR_CANCELLED, tr("The update was cancelled."));
  }
}
