#include "PxSerialPortForm.h"

#include "PtErrorLogForm.h"
#include "PtMessageBox.h"
#include "PtModbus.h"
#include "PxConnection.h"
#include "PxHost.h"
#include "PxSerialPortListener.h"
#include "PxStaticUi.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLoggingCategory>
#include <QPushButton>
#include <QSerialPortInfo>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {
Q_LOGGING_CATEGORY(lcSerial, "parvex.frame.serial")

const char* const SETTINGS_GROUP = "SerialPortViewer";

QWidget* MessageParent(QWidget* aFallback)
{
  QWidget* lHost = PxStaticUi::Host();
  return lHost ? lHost : aFallback;
}
} // namespace

PxSerialPortForm::PxSerialPortForm(PtModbus* aModbus, QWidget* aParent)
    : PxDockWidget(aParent)
{
  if (!aModbus) {
    mOwnModbus = std::make_unique<PtModbus>();
    aModbus = mOwnModbus.get();
  }
  mModbus = aModbus;
  connect(mModbus, &PtModbus::PortLost, this, &PxSerialPortForm::PortLost);
  setObjectName(QStringLiteral("PxSerialPortForm"));
  setWindowTitle(tr("Serial Port Viewer"));
  BuildUi();
  PBRefreshClicked();
  UpdateControls();
}

PxSerialPortForm::~PxSerialPortForm()
{
  ClosePort();
}

void PxSerialPortForm::BuildUi()
{
  auto* lRoot = new QWidget(this);
  auto* lLayout = new QVBoxLayout(lRoot);
  auto* lGrid = new QGridLayout;
  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));

  mPort = new QComboBox(lRoot);
  // Editable: pseudo-terminals and ports the system does not enumerate are typed in.
  mPort->setEditable(true);
  mPort->setMinimumContentsLength(14);
  mRefresh = new QPushButton(tr("Refresh"), lRoot);
  mRefresh->setToolTip(tr("List the serial ports again"));
  connect(mRefresh, &QPushButton::clicked, this, &PxSerialPortForm::PBRefreshClicked);

  mBaudRate = new QComboBox(lRoot);
  for (int lRate : {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200}) {
    mBaudRate->addItem(QString::number(lRate), lRate);
  }
  mBaudRate->setCurrentIndex(mBaudRate->findData(lSettings.value(QStringLiteral("BaudRate"), 19200).toInt()));
  mParity = new QComboBox(lRoot);
  mParity->addItem(tr("None"), QSerialPort::NoParity);
  mParity->addItem(tr("Even"), QSerialPort::EvenParity);
  mParity->addItem(tr("Odd"), QSerialPort::OddParity);
  mParity->setCurrentIndex(
      mParity->findData(lSettings.value(QStringLiteral("Parity"), QSerialPort::EvenParity).toInt()));
  mDataBits = new QComboBox(lRoot);
  mDataBits->addItem(QStringLiteral("8"), QSerialPort::Data8);
  mDataBits->addItem(QStringLiteral("7"), QSerialPort::Data7);
  mStopBits = new QComboBox(lRoot);
  mStopBits->addItem(QStringLiteral("1"), QSerialPort::OneStop);
  mStopBits->addItem(QStringLiteral("2"), QSerialPort::TwoStop);
  mSlave = new QSpinBox(lRoot);
  mSlave->setRange(1, 247);
  mSlave->setValue(lSettings.value(QStringLiteral("Slave"), 1).toInt());
  mTimeout = new QSpinBox(lRoot);
  mTimeout->setRange(10, 10000);
  mTimeout->setSuffix(tr(" ms"));
  mTimeout->setValue(lSettings.value(QStringLiteral("Timeout"), 200).toInt());
  mRetries = new QSpinBox(lRoot);
  mRetries->setRange(0, 10);
  mRetries->setValue(lSettings.value(QStringLiteral("Retries"), 1).toInt());

  mTypes = new QComboBox(lRoot);
  mTypes->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  connect(mTypes, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
          &PxSerialPortForm::CBTypesCurrentIndexChanged);
  mRate = new QDoubleSpinBox(lRoot);
  mRate->setRange(0.1, 50.0);
  mRate->setDecimals(1);
  mRate->setSuffix(tr(" Hz"));
  mRate->setValue(lSettings.value(QStringLiteral("Rate"), 10.0).toDouble());

  int lRow = 0;
  auto lAdd = [&](const QString& aLabel, QWidget* aWidget, int aColumn) {
    lGrid->addWidget(new QLabel(aLabel, lRoot), lRow, aColumn);
    lGrid->addWidget(aWidget, lRow, aColumn + 1);
  };
  lAdd(tr("Port:"), mPort, 0);
  lGrid->addWidget(mRefresh, lRow, 2);
  lAdd(tr("Device:"), mTypes, 3);
  ++lRow;
  lAdd(tr("Baud rate:"), mBaudRate, 0);
  lAdd(tr("Parity:"), mParity, 3);
  ++lRow;
  lAdd(tr("Data bits:"), mDataBits, 0);
  lAdd(tr("Stop bits:"), mStopBits, 3);
  ++lRow;
  lAdd(tr("Slave address:"), mSlave, 0);
  lAdd(tr("Time-out:"), mTimeout, 3);
  ++lRow;
  lAdd(tr("Retries:"), mRetries, 0);
  lAdd(tr("Poll rate:"), mRate, 3);
  lLayout->addLayout(lGrid);

  auto* lButtons = new QHBoxLayout;
  mOpen = new QPushButton(tr("Open"), lRoot);
  connect(mOpen, &QPushButton::clicked, this, &PxSerialPortForm::PBOpenClicked);
  mStatus = new QLabel(lRoot);
  mStatus->setWordWrap(true);
  lButtons->addWidget(mOpen);
  lButtons->addWidget(mStatus, 1);
  lLayout->addLayout(lButtons);

  mTable = new QTableWidget(lRoot);
  mTable->setMinimumHeight(200);
  lLayout->addWidget(mTable, 1);
  setWidget(lRoot);
}

void PxSerialPortForm::PBRefreshClicked()
{
  // Drivers may register their listener types after the viewer opened.
  const QVariant lType = mTypes->currentData();
  {
    QSignalBlocker lBlock(mTypes);
    mTypes->clear();
    for (const PxConnection::SerialConnection& lConnection : PxConnection::sSerialConnections) {
      if (mTypes->findData(lConnection.mType) < 0) {
        mTypes->addItem(PxSerialPortListener::TypeName(lConnection.mType), lConnection.mType);
      }
    }
    if (lType.isValid()) {
      mTypes->setCurrentIndex(std::max(0, mTypes->findData(lType)));
    }
  }

  const QString lCurrent = mPort->currentText();
  mPort->clear();
  for (const QSerialPortInfo& lInfo : QSerialPortInfo::availablePorts()) {
    mPort->addItem(lInfo.systemLocation(), lInfo.systemLocation());
    mPort->setItemData(mPort->count() - 1, lInfo.description(), Qt::ToolTipRole);
  }
  if (!lCurrent.isEmpty()) {
    mPort->setCurrentText(lCurrent);
  } else {
    QSettings lSettings;
    lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
    const QString lStored = lSettings.value(QStringLiteral("Port")).toString();
    if (!lStored.isEmpty()) {
      mPort->setCurrentText(lStored);
    }
  }
}

void PxSerialPortForm::SetPort(const QString& aPort)
{
  mPort->setCurrentText(aPort);
}

void PxSerialPortForm::SetListenerType(int aType)
{
  mTypes->setCurrentIndex(mTypes->findData(aType));
}

void PxSerialPortForm::SetBaudRate(int aBaudRate)
{
  mBaudRate->setCurrentIndex(mBaudRate->findData(aBaudRate));
}

void PxSerialPortForm::SetSlaveAddress(int aAddress)
{
  mSlave->setValue(aAddress);
}

void PxSerialPortForm::SetRate(double aRate)
{
  mRate->setValue(aRate);
}

bool PxSerialPortForm::IsPortOpen() const
{
  return mModbus->IsOpen();
}

void PxSerialPortForm::PBOpenClicked()
{
  if (IsPortOpen()) {
    ClosePort();
  } else {
    OpenPort();
  }
}

bool PxSerialPortForm::OpenPort()
{
  ClosePort();
  const QString lPort = mPort->currentText().trimmed();
  mModbus->SetPort(lPort);
  mModbus->SetBaudRate(mBaudRate->currentData().toInt());
  mModbus->SetParity(static_cast<QSerialPort::Parity>(mParity->currentData().toInt()));
  mModbus->SetDataBits(static_cast<QSerialPort::DataBits>(mDataBits->currentData().toInt()));
  mModbus->SetStopBits(static_cast<QSerialPort::StopBits>(mStopBits->currentData().toInt()));
  mModbus->SetSlaveAddress(mSlave->value());
  mModbus->SetTimeout(mTimeout->value());
  mModbus->SetRetries(mRetries->value());
  try {
    if (lPort.isEmpty()) {
      PtMessageBox::ShowError(MessageParent(this), tr("Choose the serial port first."));
      return false;
    }
    const int lType = mTypes->currentData().toInt();
    if (mTypes->currentIndex() < 0) {
      PtMessageBox::ShowError(MessageParent(this), tr("No installed driver offers a device for the serial port."));
      return false;
    }
    mModbus->Open();
    mListener.reset(PxConnection::CreateSerialPortListener(lType, mModbus, mTable));
    if (!mListener) {
      mModbus->Close();
      PtMessageBox::ShowError(MessageParent(this), tr("No installed driver offers a device for the serial port."));
      return false;
    }
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    PtMessageBox::ShowError(MessageParent(this), e);
    UpdateControls();
    return false;
  }
  connect(mListener.get(), &PxSerialPortListener::Polled, this, &PxSerialPortForm::ShowCounts);
  connect(mListener.get(), &PxSerialPortListener::PollFailed, this, [this](const QString& aText) {
    // One entry in the error log per run of failures, not one per poll.
    if (mLastFailure != aText) {
      PtErrorLogForm::LogError(tr("%1: %2").arg(mModbus->Port(), aText));
    }
    mLastFailure = aText;
    ShowCounts();
  });
  mLastFailure.clear();
  mListener->SetRate(mRate->value());
  mListener->Start();
  qCInfo(lcSerial).noquote() << "viewing" << lPort << "as" << mTypes->currentText();

  QSettings lSettings;
  lSettings.beginGroup(QLatin1String(SETTINGS_GROUP));
  lSettings.setValue(QStringLiteral("Port"), lPort);
  lSettings.setValue(QStringLiteral("BaudRate"), mBaudRate->currentData());
  lSettings.setValue(QStringLiteral("Parity"), mParity->currentData());
  lSettings.setValue(QStringLiteral("Slave"), mSlave->value());
  lSettings.setValue(QStringLiteral("Timeout"), mTimeout->value());
  lSettings.setValue(QStringLiteral("Retries"), mRetries->value());
  lSettings.setValue(QStringLiteral("Rate"), mRate->value());
  UpdateControls();
  ShowCounts();
  return true;
}

void PxSerialPortForm::ClosePort()
{
  // The listener stops first: no poll may reach a port that is closing.
  if (mListener) {
    mListener->Stop();
    mListener.reset();
  }
  mModbus->Close();
  UpdateControls();
}

void PxSerialPortForm::PortLost(const QString& aReason)
{
  const QString lText = tr("The serial port %1 is no longer available: %2").arg(mModbus->Port(), aReason);
  if (mListener) {
    mListener->Stop();
    mListener.reset();
  }
  mModbus->Close();
  UpdateControls();
  mStatus->setText(lText);
  PtErrorLogForm::LogError(lText);
  PBRefreshClicked();
  PtMessageBox::ShowError(MessageParent(this), lText);
}

void PxSerialPortForm::closeEvent(QCloseEvent* aEvent)
{
  ClosePort();
  PxDockWidget::closeEvent(aEvent);
}

void PxSerialPortForm::CBTypesCurrentIndexChanged(int)
{
  if (IsPortOpen()) {
    // Another kind of device reads another register map: start over on the same port.
    OpenPort();
  }
}

void PxSerialPortForm::UpdateControls()
{
  const bool lOpen = mModbus->IsOpen();
  for (QWidget* lWidget : std::initializer_list<QWidget*>{mPort, mRefresh, mBaudRate, mParity, mDataBits, mStopBits,
                                                          mSlave, mTimeout, mRetries, mRate}) {
    lWidget->setEnabled(!lOpen);
  }
  mOpen->setText(lOpen ? tr("Close") : tr("Open"));
  if (!lOpen) {
    mStatus->setText(tr("Closed"));
  }
}

void PxSerialPortForm::ShowCounts()
{
  if (!mListener) {
    return;
  }
  QString lText = tr("%1 at %2 Hz: %3 polls, %4 missed, %5 failed")
                      .arg(mModbus->Port())
                      .arg(mListener->Rate())
                      .arg(mListener->Polls())
                      .arg(mListener->MissedPolls())
                      .arg(mListener->FailedPolls());
  if (!mLastFailure.isEmpty()) {
    lText += QLatin1Char('\n') + tr("Last failure: %1").arg(mLastFailure);
  }
  mStatus->setText(lText);
}
