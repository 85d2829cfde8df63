#include "PtModbus.h"

#include "PtException.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QModbusDataUnit>
#include <QModbusReply>
#include <QModbusRtuSerialMaster>
#include <QPointer>
#include <QVariant>

namespace {
Q_LOGGING_CATEGORY(lcModbus, "parvex.modbus")

[[noreturn]] void Fail(QModbusDevice::Error aError, const QString& aText)
{
  PtThrow<std::runtime_error>(PtModbus::ERROR_BASE + static_cast<unsigned int>(aError), aText);
}
} // namespace

class PtModbus::Private
{
public:
  QModbusRtuSerialMaster mMaster;
  QPointer<QModbusReply> mReply;
  // What the last finished read gave: its values, or its failure.
  std::vector<PtU16> mValues;
  unsigned int mErrorCode = 0;
  QString mErrorText;
  bool mOpen = false;
};

PtModbus::PtModbus(QObject* aParent)
    : QObject(aParent)
    , d(std::make_unique<Private>())
{
  connect(&d->mMaster, &QModbusDevice::stateChanged, this,
          [this](QModbusDevice::State aState) { StateChanged(static_cast<int>(aState)); });
  connect(&d->mMaster, &QModbusDevice::errorOccurred, this, [this](QModbusDevice::Error aError) {
    // The port failing under the master (its ResourceError) arrives as a connection error.
    if (aError == QModbusDevice::ConnectionError) {
      Lost(d->mMaster.errorString());
    }
  });
}

PtModbus::~PtModbus()
{
  Close();
}

void PtModbus::Open()
{
  if (IsOpen()) {
    return;
  }
  QModbusRtuSerialMaster& lMaster = d->mMaster;
  lMaster.setConnectionParameter(QModbusDevice::SerialPortNameParameter, mPort);
  lMaster.setConnectionParameter(QModbusDevice::SerialBaudRateParameter, mBaudRate);
  lMaster.setConnectionParameter(QModbusDevice::SerialParityParameter, mParity);
  lMaster.setConnectionParameter(QModbusDevice::SerialDataBitsParameter, mDataBits);
  lMaster.setConnectionParameter(QModbusDevice::SerialStopBitsParameter, mStopBits);
  lMaster.setTimeout(mTimeout);
  lMaster.setNumberOfRetries(mRetries);
  if (!lMaster.connectDevice() || lMaster.state() != QModbusDevice::ConnectedState) {
    const QString lReason = lMaster.errorString();
    lMaster.disconnectDevice();
    Fail(QModbusDevice::ConnectionError, PtModbus::tr("Cannot open the serial port %1: %2").arg(mPort, lReason));
  }
  d->mOpen = true;
  qCDebug(lcModbus).noquote() << "opened" << mPort << mBaudRate << "baud";
}

void PtModbus::Close()
{
  if (!d->mOpen) {
    return;
  }
  d->mOpen = false;
  Abort();
  d->mMaster.disconnectDevice();
  qCDebug(lcModbus).noquote() << "closed" << mPort;
}

bool PtModbus::IsOpen() const
{
  return d->mOpen;
}

bool PtModbus::IsBusy() const
{
  return !d->mReply.isNull();
}

void PtModbus::StartReadHoldingRegisters(int aAddress, int aCount)
{
  if (!IsOpen()) {
    Fail(QModbusDevice::ConnectionError, PtModbus::tr("The serial port is not open."));
  }
  if (IsBusy()) {
    Fail(QModbusDevice::WriteError, PtModbus::tr("A read is already under way."));
  }
  if (aCount < 1 || aCount > MAX_REGISTERS || aAddress < 0 || aAddress + aCount > 65536) {
    PtInvalidArgument(QStringLiteral("aCount"), QString::number(aCount), 1);
  }
  d->mValues.clear();
  d->mErrorCode = 0;
  d->mErrorText.clear();
  QModbusReply* lReply = d->mMaster.sendReadRequest(
      QModbusDataUnit(QModbusDataUnit::HoldingRegisters, aAddress, static_cast<quint16>(aCount)), mSlaveAddress);
  if (!lReply) {
    Fail(d->mMaster.error(), PtModbus::tr("The request could not be sent: %1").arg(d->mMaster.errorString()));
  }
  d->mReply = lReply;
  if (lReply->isFinished()) {
    // Queued like any other answer, so that callers see the same order of events.
    QMetaObject::invokeMethod(this, &PtModbus::ReplyFinished, Qt::QueuedConnection);
  } else {
    connect(lReply, &QModbusReply::finished, this, &PtModbus::ReplyFinished);
  }
}

void PtModbus::ReplyFinished()
{
  QModbusReply* lReply = d->mReply.data();
  if (!lReply) {
    return;
  }
  d->mReply.clear();
  if (lReply->error() == QModbusDevice::NoError) {
    const QVector<quint16> lValues = lReply->result().values();
    d->mValues.assign(lValues.begin(), lValues.end());
  } else if (lReply->error() == QModbusDevice::ProtocolError) {
    const int lException = static_cast<int>(lReply->rawResult().exceptionCode());
    d->mErrorCode = ERROR_EXCEPTION + static_cast<unsigned int>(lException);
    d->mErrorText = PtModbus::tr("The device refused the read (Modbus exception %1).").arg(lException);
  } else if (lReply->error() == QModbusDevice::TimeoutError) {
    d->mErrorCode = ERROR_BASE + QModbusDevice::TimeoutError;
    d->mErrorText = PtModbus::tr("The device at address %1 did not answer on %2.").arg(mSlaveAddress).arg(mPort);
  } else {
    d->mErrorCode = ERROR_BASE + static_cast<unsigned int>(lReply->error());
    d->mErrorText = lReply->errorString();
  }
  lReply->deleteLater();
  const QModbusDevice::Error lError = lReply->error();
  emit ReadFinished();
  // A vanished device node (an unplugged USB adapter, a closed pseudo-terminal) often shows only
  // as reads that fail or time out.
  if (lError != QModbusDevice::NoError && lError != QModbusDevice::ProtocolError && !QFileInfo::exists(mPort)) {
    Lost(PtModbus::tr("The serial port %1 went away.").arg(mPort));
  }
}

void PtModbus::Abort()
{
  QModbusReply* lReply = d->mReply.data();
  if (!lReply) {
    return;
  }
  d->mReply.clear();
  disconnect(lReply, nullptr, this, nullptr);
  lReply->deleteLater();
  d->mValues.clear();
  d->mErrorCode = ERROR_BASE + QModbusDevice::ReplyAbortedError;
  d->mErrorText = PtModbus::tr("The read was aborted.");
  emit ReadFinished();
}

std::vector<PtU16> PtModbus::TakeValues()
{
  if (d->mErrorCode != 0) {
    PtThrow<std::runtime_error>(d->mErrorCode, d->mErrorText);
  }
  return std::move(d->mValues);
}

std::vector<PtU16> PtModbus::ReadHoldingRegisters(int aAddress, int aCount)
{
  StartReadHoldingRegisters(aAddress, aCount);
  QEventLoop lLoop;
  connect(this, &PtModbus::ReadFinished, &lLoop, &QEventLoop::quit);
  if (IsBusy()) {
    // The master's own time-out and retries end every read.
    lLoop.exec(QEventLoop::ExcludeUserInputEvents);
  }
  return TakeValues();
}

void PtModbus::StateChanged(int aState)
{
  if (aState == QModbusDevice::UnconnectedState) {
    // The master closed the port by itself: the port failed under it.
    Lost(d->mMaster.errorString());
  }
}

void PtModbus::Lost(const QString& aReason)
{
  if (!d->mOpen) {
    return;
  }
  qCWarning(lcModbus).noquote() << "lost" << mPort << aReason;
  d->mOpen = false;
  Abort();
  d->mMaster.disconnectDevice();
  emit PortLost(aReason.isEmpty() ? PtModbus::tr("The serial port %1 went away.").arg(mPort) : aReason);
}
