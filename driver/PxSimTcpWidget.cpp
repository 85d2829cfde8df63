#include "PxSimTcpWidget.h"

#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDeviceUi.h"
#include "PxTcpConnection.h"

#include <QFormLayout>
#include <QHostAddress>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>

namespace {
// Host names (letters, digits, hyphens and dots) and IPv4 or IPv6 addresses.
const QRegularExpression HOST_CHARACTERS(QStringLiteral("[A-Za-z0-9.:\\-]{0,253}"));
const QRegularExpression HOST_NAME(QStringLiteral(
    "^[A-Za-z0-9]([A-Za-z0-9\\-]{0,61}[A-Za-z0-9])?(\\.[A-Za-z0-9]([A-Za-z0-9\\-]{0,61}[A-Za-z0-9])?)*$"));
} // namespace

PxSimTcpWidget::PxSimTcpWidget(QWidget* aParent)
    : PxConnectionWidget(aParent)
    , mTimeoutMs(PxTcpConnection::DEFAULT_CONNECT_TIMEOUT_MS)
{
  auto* lLayout = new QFormLayout(this);
  lLayout->setContentsMargins(0, 0, 0, 0);
  mHost = new QLineEdit(PxSimConnectionTypes::LastTcpHost(), this);
  mHost->setValidator(new QRegularExpressionValidator(HOST_CHARACTERS, mHost));
  mHost->setPlaceholderText(tr("host name or IP address"));
  mPort = new QLineEdit(QString::number(PxSimConnectionTypes::LastTcpPort()), this);
  mPort->setValidator(new QIntValidator(0, 99999, mPort));
  mPort->setPlaceholderText(QString::number(PxTcpConnection::DEFAULT_PORT));
  lLayout->addRow(tr("Host:"), mHost);
  lLayout->addRow(tr("Port:"), mPort);
  mStatus = new QLabel(this);
  mStatus->setWordWrap(true);
  mStatus->setMinimumWidth(360);
  // Room for the longest explanation, so the dialog does not jump or cut it off when one appears.
  mStatus->setMinimumHeight(mStatus->fontMetrics().lineSpacing() * 4);
  mStatus->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  lLayout->addRow(mStatus);
  connect(mHost, &QLineEdit::textChanged, this, &PxSimTcpWidget::LEAddressTextChanged);
  connect(mPort, &QLineEdit::textChanged, this, &PxSimTcpWidget::LEAddressTextChanged);
  LEAddressTextChanged();
}

PxSimTcpWidget::~PxSimTcpWidget()
{
  // A connect still running when the dialog is cancelled is abandoned with the widget.
  delete mConnection;
}

QString PxSimTcpWidget::StatusText() const
{
  return mStatus->text();
}

QString PxSimTcpWidget::Problem() const
{
  const QString lHost = mHost->text().trimmed();
  if (lHost.isEmpty()) {
    return tr("Enter the host name or IP address of the sensor.");
  }
  if (QHostAddress(lHost).isNull() && !HOST_NAME.match(lHost).hasMatch()) {
    return tr("\"%1\" is not a valid host name or IP address.").arg(lHost);
  }
  bool lOk = false;
  const int lPort = mPort->text().toInt(&lOk);
  if (!lOk || lPort < 1 || lPort > 65535) {
    return tr("Enter a port number between 1 and 65535.");
  }
  return QString();
}

void PxSimTcpWidget::ShowStatus(const QString& aText, bool aError)
{
  mStatus->setStyleSheet(aError ? QStringLiteral("color: #b00020") : QString());
  mStatus->setText(aText);
}

void PxSimTcpWidget::LEAddressTextChanged()
{
  if (mConnection) {
    return;
  }
  const QString lProblem = Problem();
  ShowStatus(lProblem, true);
  // Marks the field to correct; the other keeps its normal look.
  const bool lHostBad = !lProblem.isEmpty() && lProblem != tr("Enter a port number between 1 and 65535.");
  mHost->setStyleSheet(lHostBad ? QStringLiteral("border: 1px solid #b00020") : QString());
  mPort->setStyleSheet(!lProblem.isEmpty() && !lHostBad ? QStringLiteral("border: 1px solid #b00020") : QString());
}

void PxSimTcpWidget::Connect()
{
  if (mConnection) {
    return; // already on its way
  }
  if (mUi) {
    Q_EMIT ConnectionCompleted();
    return;
  }
  const QString lProblem = Problem();
  if (!lProblem.isEmpty()) {
    ShowStatus(lProblem, true);
    Q_EMIT ConnectionFailed();
    return;
  }
  const QString lHost = mHost->text().trimmed();
  const auto lPort = static_cast<quint16>(mPort->text().toUInt());
  mConnection = new PxTcpConnection(lHost, lPort);
  // Queued: the outcome is handled once the socket has finished emitting, since handling it may
  // delete the connection and its socket.
  connect(mConnection, &PxTcpConnection::ConnectFinished, this, &PxSimTcpWidget::ConnectFinished, Qt::QueuedConnection);
  mHost->setEnabled(false);
  mPort->setEnabled(false);
  ShowStatus(tr("Connecting to %1, port %2... (Cancel stops it)").arg(lHost).arg(lPort), false);
  mConnection->StartConnect(mTimeoutMs);
}

void PxSimTcpWidget::Fail(const QString& aText)
{
  mHost->setEnabled(true);
  mPort->setEnabled(true);
  ShowStatus(aText, true);
  Q_EMIT ConnectionFailed();
}

void PxSimTcpWidget::ConnectFinished(bool aConnected)
{
  PxTcpConnection* lConnection = mConnection;
  mConnection = nullptr;
  lConnection->disconnect(this);
  const QString lHost = lConnection->Host();
  const quint16 lPort = lConnection->Port();
  if (!aConnected) {
    QString lText;
    switch (lConnection->Failure()) {
    case PxTcpConnection::CONNECT_REFUSED:
      lText = tr("%1 refused the connection on port %2. Check that the sensor (or parvex-sim) is running and "
                 "that the port is right.")
                  .arg(lHost)
                  .arg(lPort);
      break;
    case PxTcpConnection::CONNECT_HOST_NOT_FOUND:
      lText = tr("The host \"%1\" could not be found. Check the spelling of the name, or enter the sensor's IP "
                 "address.")
                  .arg(lHost);
      break;
    case PxTcpConnection::CONNECT_UNREACHABLE:
      lText = tr("The network cannot reach %1. Check the address and that this computer is on the sensor's "
                 "network.")
                  .arg(lHost);
      break;
    case PxTcpConnection::CONNECT_TIMED_OUT:
      lText = tr("%1 did not answer within %2 seconds. Check the address, the network cable, and that the sensor "
                 "is switched on.")
                  .arg(lHost)
                  .arg(mTimeoutMs / 1000.0, 0, 'g', 3);
      break;
    default:
      lText = tr("Could not connect to %1, port %2: %3").arg(lHost).arg(lPort).arg(lConnection->ErrorString());
      break;
    }
    lConnection->deleteLater(); // it is still emitting
    Fail(lText);
    return;
  }
  try {
    mUi = PxSimConnectionTypes::CreateDeviceUi(lConnection);
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    QString lText;
    PtExtractException(e, nullptr, &lText);
    Fail(tr("%1, port %2 accepted the connection, but no Parvex sensor answered there: %3")
             .arg(lHost)
             .arg(lPort)
             .arg(lText));
    return;
  }
  PxSimConnectionTypes::StoreTcpAddress(lHost, lPort);
  ShowStatus(QString(), false);
  Q_EMIT ConnectionCompleted();
}
