#include "PxSimInProcessWidget.h"

#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PxControlConnection.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"

#include <QLabel>
#include <QVBoxLayout>

PxSimInProcessWidget::PxSimInProcessWidget(QWidget* aParent)
    : PxConnectionWidget(aParent)
{
  auto* lLayout = new QVBoxLayout(this);
  lLayout->setContentsMargins(0, 0, 0, 0);
  auto* lInfo = new QLabel(tr("A simulated Parvex 16 runs inside this application: no network and nothing to "
                              "set up. It behaves like a real sensor, with a synthetic scene."),
                           this);
  lInfo->setWordWrap(true);
  lLayout->addWidget(lInfo);
  mStatus = new QLabel(this);
  mStatus->setWordWrap(true);
  mStatus->setStyleSheet(QStringLiteral("color: #b00020"));
  mStatus->hide();
  lLayout->addWidget(mStatus);
}

QString PxSimInProcessWidget::StatusText() const
{
  return mStatus->text();
}

void PxSimInProcessWidget::Connect()
{
  if (mUi) {
    Q_EMIT ConnectionCompleted();
    return;
  }
  PxControlConnection* lConnection = PxSimConnectionTypes::CreateSimulatorConnection();
  try {
    lConnection->Connect();
    mUi = PxSimConnectionTypes::CreateDeviceUi(lConnection);
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    QString lText;
    PtExtractException(e, nullptr, &lText);
    mStatus->setText(tr("The simulated sensor could not be started: %1").arg(lText));
    mStatus->show();
    return;
  }
  mStatus->hide();
  Q_EMIT ConnectionCompleted();
}
