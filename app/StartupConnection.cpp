#include "StartupConnection.h"

#include "PtMessageBox.h"
#include "PxConnection.h"
#include "PxConnectionWidget.h"
#include "PxHost.h"
#include "PxSimConnectionTypes.h"
#include "PxSimInProcessWidget.h"
#include "PxSimTcpWidget.h"
#include "PxStaticUi.h"
#include "PxTcpConnection.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QUrl>

#include <memory>

namespace {
std::unique_ptr<PxConnectionWidget> CreateWidget(const QString& aType)
{
  for (const PxConnection::Type& lType : PxConnection::sTypes) {
    if (lType.mName == aType) {
      return std::unique_ptr<PxConnectionWidget>(lType.mWidgetCreator(nullptr));
    }
  }
  return nullptr;
}
} // namespace

bool ConnectAtStart(PxHost& aHost, const QString& aTarget)
{
  if (aTarget == QLatin1String("none")) {
    return false;
  }
  const QUrl lUrl(aTarget);
  const bool lTcp = lUrl.scheme() == QLatin1String(PxSimConnectionTypes::TCP);
  if (!lTcp && aTarget != QLatin1String(PxSimConnectionTypes::SIM)) {
    PtMessageBox::ShowError(
        &aHost, QCoreApplication::translate("StartupConnection",
                                            "\"%1\" is not a device address; use sim, tcp://HOST:PORT or none.")
                    .arg(aTarget));
    return false;
  }
  std::unique_ptr<PxConnectionWidget> lWidget =
      CreateWidget(QLatin1String(lTcp ? PxSimConnectionTypes::TCP : PxSimConnectionTypes::SIM));
  if (!lWidget) {
    return false;
  }
  QEventLoop lWait;
  QObject::connect(lWidget.get(), &PxConnectionWidget::ConnectionCompleted, &lWait, &QEventLoop::quit);
  auto* lTcpWidget = qobject_cast<PxSimTcpWidget*>(lWidget.get());
  if (lTcpWidget) {
    lTcpWidget->HostEdit()->setText(lUrl.host());
    lTcpWidget->PortEdit()->setText(QString::number(lUrl.port(PxTcpConnection::DEFAULT_PORT)));
    QObject::connect(lTcpWidget, &PxSimTcpWidget::ConnectionFailed, &lWait, &QEventLoop::quit);
  }
  lWidget->Connect();
  // A TCP connect runs in the background; the window is already up and keeps painting meanwhile.
  if (!lWidget->Ui() && lTcpWidget && lTcpWidget->IsConnecting()) {
    lWait.exec();
  }
  if (!lWidget->Ui()) {
    QString lReason;
    if (lTcpWidget) {
      lReason = lTcpWidget->StatusText();
    } else if (auto* lSim = qobject_cast<PxSimInProcessWidget*>(lWidget.get())) {
      lReason = lSim->StatusText();
    }
    PtMessageBox::ShowError(
        &aHost,
        QCoreApplication::translate("StartupConnection", "Could not connect to %1.\n\n%2").arg(aTarget, lReason));
    return false;
  }
  PxStaticUi::Singleton()->InstallUi(lWidget->Ui());
  return PxStaticUi::Ui() != nullptr;
}
