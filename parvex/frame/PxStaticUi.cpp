#include "PxStaticUi.h"

#include "PtAssert.h"
#include "PtDialog.h"
#include "PtMessageBox.h"
#include "PxCodeUpdateDialog.h"
#include "PxCodeUpdateJob.h"
#include "PxConnection.h"
#include "PxConnectionDialog.h"
#include "PxDevice.h"
#include "PxDeviceUi.h"
#include "PxDockWidget.h"
#include "PxDocumentManager.h"
#include "PxHost.h"
#include "PxIntegerProperty.h"
#include "PxRecordPlayerForm.h"
#include "PxSerialPortForm.h"

#include <QLoggingCategory>
#include <QMenu>

#include <memory>

namespace {
Q_LOGGING_CATEGORY(lcFrame, "parvex.frame")

// Firmware at this version or above is a special build that no software version describes.
constexpr int NON_STANDARD_VERSION = 0x0A00;
// The two top bits of the software version word are flags (factory image, upgraded), not version.
constexpr int VERSION_FLAGS = 0xC000;
} // namespace

PxStaticUi* PxStaticUi::sSingleton = nullptr;

bool PxStaticUi::Initialize(PxHost* aHost)
{
  if (sSingleton) {
    return false;
  }
  sSingleton = new PxStaticUi(aHost);
  sSingleton->UpdateControls();
  return true;
}

void PxStaticUi::Shutdown()
{
  delete sSingleton;
  sSingleton = nullptr;
}

PxHost* PxStaticUi::Host()
{
  return sSingleton ? sSingleton->mHost : nullptr;
}

PxDeviceUi* PxStaticUi::Ui()
{
  return sSingleton ? sSingleton->mUi : nullptr;
}

PxDeviceUi* PxStaticUi::ReplayUi()
{
  return sSingleton && sSingleton->mReplayForm ? sSingleton->mReplayForm->Ui() : nullptr;
}

PxStaticUi::PxStaticUi(PxHost* aHost)
    : mConnectIcon(QStringLiteral(":/icons/Connect.png"))
    , mDisconnectIcon(QStringLiteral(":/icons/Disconnect.png"))
    , mHost(aHost)
{
  mDeviceMenu = aHost->AddMenu(tr("Device"));
  mReplay.setText(tr("Replay..."));
  mConnect.setIcon(mConnectIcon);
  mConnect.setText(tr("Connect..."));
  mUserGuide.setText(tr("User Guide..."));

  mReplay.setCheckable(true);
  aHost->AddFileAction(&mReplay);
  aHost->AddHelpAction(&mUserGuide);
  mDeviceMenu->addAction(&mConnect);
  aHost->AddToolBarAction(&mConnect);
  aHost->AddStatusWidget(&mStatus);

  connect(aHost, &PxHost::Tick, this, &PxStaticUi::HostTick);
  connect(aHost, &PxHost::QuitRequested, this, &PxStaticUi::HostQuitRequested);
  connect(&mReplay, &QAction::triggered, this, &PxStaticUi::MIFileReplayTriggered);
  connect(&mConnect, &QAction::triggered, this, &PxStaticUi::MIConnectTriggered);
  connect(&mUserGuide, &QAction::triggered, this, &PxStaticUi::MIHelpUserGuideTriggered);
}

PxStaticUi::~PxStaticUi()
{
  delete mSerialPort;
  mSerialPort = nullptr;
  delete mSerialPortForm;
  mSerialPortForm = nullptr;
  // Forgotten before it goes: its replay ends while it is deleted, and those who rebuild on
  // UiChanged must find no replay UI then.
  PxRecordPlayerForm* lReplayForm = mReplayForm;
  mReplayForm = nullptr;
  delete lReplayForm;
  PxDeviceUi* lUi = mUi;
  mUi = nullptr;
  delete lUi;
  // The status label is the host's child too; leaving the status bar first keeps it from being
  // deleted twice.
  mStatus.setParent(nullptr);
}

void PxStaticUi::AddDeviceMenu(QMenu* aMenu)
{
  PT_ASSERT(aMenu);
  sSingleton->mDeviceMenu->addMenu(aMenu);
}

void PxStaticUi::AddDeviceAction(QAction* aAction)
{
  PT_ASSERT(aAction);
  sSingleton->mDeviceMenu->addAction(aAction);
}

void PxStaticUi::AddViewAction(QAction* aAction)
{
  PT_ASSERT(aAction);
  if (!sSingleton->mMIView) {
    sSingleton->mMIView = sSingleton->mHost->AddMenu(tr("View"));
  }
  sSingleton->mMIView->addAction(aAction);
}

void PxStaticUi::AddViewMenu(QMenu* aMenu)
{
  PT_ASSERT(aMenu);
  PT_ASSERT(sSingleton->mMIView);
  sSingleton->mMIView->addMenu(aMenu);
}

void PxStaticUi::RemoveViewAction(QAction* aAction)
{
  PT_ASSERT(aAction);
  PT_ASSERT(sSingleton->mMIView);
  sSingleton->mMIView->removeAction(aAction);
}

void PxStaticUi::SetConnectionStatus(const QString& aStatus)
{
  sSingleton->mStatus.setText(QLatin1Char(' ') + aStatus + QLatin1Char(' '));
}

PxDockWidget* PxStaticUi::ReplayForm() const
{
  return mReplayForm;
}

void PxStaticUi::UpdateControls()
{
  mReplay.setEnabled(!mUi);
  mReplay.setChecked(mReplayForm != nullptr);
  // One cannot connect to a device while a record is being replayed.
  mConnect.setEnabled(!mReplayForm);
  if (mSerialPort) {
    mSerialPort->setChecked(mSerialPortForm != nullptr);
  }
  if (mMIView && mMIView->actions().isEmpty()) {
    delete mMIView;
    mMIView = nullptr;
  }
  if (mUi) {
    mConnect.setIcon(mDisconnectIcon);
    mConnect.setText(tr("Disconnect..."));
    mHost->SetDeviceTitle(mUi->Device()->Name());
    SetConnectionStatus(mUi->Name());
  } else {
    mConnect.setIcon(mConnectIcon);
    mConnect.setText(tr("Connect..."));
    if (!mReplayForm) {
      SetConnectionStatus(tr("Not connected"));
      mHost->SetDeviceTitle(QString());
    }
  }
  if (!mSerialPort) {
    mSerialPort = new QAction(tr("Serial Port Viewer"));
    mSerialPort->setCheckable(true);
    AddViewAction(mSerialPort);
    connect(mSerialPort, &QAction::triggered, this, &PxStaticUi::MISerialPortViewerTriggered);
  }
}

void PxStaticUi::MIConnectTriggered()
{
  if (mUi) {
    if (CanDisconnect(tr("disconnect"))) {
      Teardown();
    }
    return;
  }
  PxDeviceUi* lUi = nullptr;
  {
    PxConnectionDialog lDialog(mHost);
    lDialog.exec();
    lUi = lDialog.Ui();
  }
  InstallUi(lUi);
}

void PxStaticUi::InstallUi(PxDeviceUi* aUi)
{
  if (aUi != mUi) {
    delete mUi;
    mUi = aUi;
    mUiSetUp = false;
  }
  if (mUi) {
    // Never tear down inside the device's own disconnect processing.
    connect(mUi, &PxDeviceUi::Disconnected, this, &PxStaticUi::UiDisconnected, Qt::QueuedConnection);
    VerifyLimitedMode();
    if (VerifyVersions()) {
      mUi->Setup();
      mUiSetUp = true;
      if (mHost->UseSavedLayout()) {
        mUi->RestoreLayout();
      }
      Q_EMIT UiChanged();
    }
    // Otherwise the device is going away (refused, or restarting on new firmware): its
    // Disconnected brings the teardown.
  }
  UpdateControls();
}

bool PxStaticUi::CanDisconnect(const QString& aAction)
{
  PT_ASSERT(mUi);
  PxDevice* lDevice = mUi->Device();
  if (lDevice->PropertyModified() &&
      !PtMessageBox::Question(mHost, tr("Some properties are modified.") + QStringLiteral("\n\n") +
                                         tr("Do you really want to %1?").arg(aAction))) {
    return false;
  }
  lDevice->RestoreProperties();
  return true;
}

void PxStaticUi::Teardown()
{
  PT_ASSERT(mUi);
  if (mHost->UseSavedLayout() && mUiSetUp) {
    mUi->SaveLayout();
  }
  PxDeviceUi* lUi = mUi;
  mUi = nullptr;
  mUiSetUp = false;
  delete lUi;
  Q_EMIT UiChanged();
  UpdateControls();
}

void PxStaticUi::UiDisconnected()
{
  if (!mUi) {
    return;
  }
  if (PtDialog::ActiveCount() == 0) {
    Teardown();
  } else {
    // A dialog still runs over the device UI; pulling it away now would crash it.
    qCInfo(lcFrame) << "device gone while a dialog is open; teardown deferred";
    mPendingTeardown = true;
  }
}

void PxStaticUi::HostTick()
{
  if (mPendingTeardown && PtDialog::ActiveCount() == 0) {
    mPendingTeardown = false;
    if (mUi) {
      Teardown();
    }
  }
}

void PxStaticUi::HostQuitRequested(bool& aAccept)
{
  if (!mUi) {
    // A replay ends as a disconnect does: its layout saved while the window still stands.
    if (mReplayForm) {
      mReplayForm->CloseFile();
    }
    return;
  }
  if (!CanDisconnect(tr("close the application"))) {
    aAccept = false;
    return;
  }
  // The properties were just restored, so the disconnect asks nothing more.
  MIConnectTriggered();
}

void PxStaticUi::MIFileReplayTriggered()
{
  if (mReplayForm) {
    mReplayForm->close();
    return;
  }
  mReplayForm = new PxRecordPlayerForm(mHost);
  connect(mReplayForm, &PxDockWidget::Closed, this, &PxStaticUi::RPFormClosed);
  connect(mReplayForm, &PxRecordPlayerForm::ReplayChanged, this, &PxStaticUi::UiChanged);
  mReplayForm->setFloating(true);
  mReplayForm->setAttribute(Qt::WA_DeleteOnClose);
  mReplayForm->show();
  SetConnectionStatus(tr("Replay"));
  UpdateControls();
}

void PxStaticUi::MISerialPortViewerTriggered()
{
  if (mSerialPortForm) {
    mSerialPortForm->close();
    return;
  }
  mSerialPortForm = new PxSerialPortForm(nullptr, mHost);
  connect(mSerialPortForm, &PxDockWidget::Closed, this, &PxStaticUi::SPFormClosed);
  mSerialPortForm->setFloating(true);
  mSerialPortForm->setAttribute(Qt::WA_DeleteOnClose);
  mSerialPortForm->show();
  UpdateControls();
}

void PxStaticUi::RPFormClosed(PxDockWidget*)
{
  // The form was opened with WA_DeleteOnClose and deletes itself once its close has finished;
  // deleting it here, inside its own close event, would pull it from under Qt.
  mReplayForm = nullptr;
  UpdateControls();
}

void PxStaticUi::SPFormClosed(PxDockWidget*)
{
  mSerialPortForm = nullptr;
  UpdateControls();
}

void PxStaticUi::MIHelpUserGuideTriggered()
{
  unsigned short lProductType = 0;
  if (mUi) {
    const auto& lType = mUi->Device()->ProductType();
    lProductType = lType.Count() > 0 ? static_cast<unsigned short>(lType.Value(0)) : 0;
  } else if (mReplayForm) {
    lProductType = static_cast<unsigned short>(mReplayForm->ProductType() & 0xFFFF);
  }
  PxDocumentManager::ShowUserGuide(lProductType, mHost);
}

void PxStaticUi::VerifyLimitedMode()
{
  PxConnection* lConnection = mUi->Device()->Connection();
  if (!lConnection || !lConnection->IsLimitedMode()) {
    return;
  }
  PtMessageBox::ShowError(mHost,
                          tr("This device is currently working in limited mode. Some features are not available."));
}

bool PxStaticUi::VerifyVersions()
{
  PxDevice* lDevice = mUi->Device();
  const auto& lVersionProperty =
      static_cast<const PxIntegerProperty&>(lDevice->Property(PxDevice::ID_SOFTWARE_VERSION));
  const auto& lBuildProperty = static_cast<const PxIntegerProperty&>(lDevice->Property(PxDevice::ID_FPGA_VERSION));
  const int lDeviceVersion = (lVersionProperty.Count() > 0 ? lVersionProperty.Value(0) : 0) & 0xFFFF & ~VERSION_FLAGS;
  const int lDeviceBuild = lBuildProperty.Count() > 0 ? lBuildProperty.Value(0) : 0;
  const int lSoftwareVersion = lDevice->ExpectedSoftwareVersion(1);
  const int lSoftwareBuild = lDevice->ExpectedSoftwareVersion(2);
  qCInfo(lcFrame) << "device version" << lDeviceVersion << "build" << lDeviceBuild << "software" << lSoftwareVersion
                  << lSoftwareBuild;

  if (lDeviceVersion >= NON_STANDARD_VERSION) {
    PtMessageBox::ShowWarning(mHost, tr("The device you are connecting to has a non-standard firmware version.") +
                                         QStringLiteral("\n\n") +
                                         tr("Please contact technical support if you encounter problems."));
    return true;
  }
  if (lDeviceVersion > lSoftwareVersion) {
    if (PtMessageBox::Question(mHost, tr("The device you are connecting to has a more recent firmware") +
                                          QLatin1Char('\n') +
                                          tr("version than the configuration software on your computer.") +
                                          QStringLiteral("\n\n") + tr("Do you still want to connect?"))) {
      return true;
    }
    lDevice->Disconnect();
    return false;
  }
  if (lDeviceVersion >= lSoftwareVersion && lSoftwareBuild <= lDeviceBuild) {
    return true;
  }
  if (!PtMessageBox::Question(mHost, tr("The software in your %1 device is not up to date.").arg(lDevice->Name()) +
                                         QStringLiteral("\n\n") + tr("Do you want to update to the latest version?"))) {
    return true;
  }
  auto lRunUpdate = [&](int aComponent) {
    std::unique_ptr<PxCodeUpdateJob> lJob(lDevice->CreateComponentUpdateJob(aComponent));
    PxCodeUpdateDialog lDialog(mHost);
    lDialog.SetLinks(lDevice->Connection(), lJob.get());
    lDialog.exec();
  };
  if (lSoftwareBuild > lDeviceBuild) {
    lRunUpdate(2);
  }
  if (lDeviceVersion < lSoftwareVersion) {
    lRunUpdate(1);
    return false;
  }
  return true;
}
