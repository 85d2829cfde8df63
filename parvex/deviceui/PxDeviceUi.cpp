#include "PxDeviceUi.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtErrorLogForm.h"
#include "PtFileChooser.h"
#include "PtMessageBox.h"
#include "PtPreferencesDialog.h"
#include "PtTextPrompt.h"
#include "PxCodeUpdateDialog.h"
#include "PxCodeUpdateJob.h"
#include "PxConnection.h"
#include "PxDevice.h"
#include "PxDockWidget.h"
#include "PxHost.h"
#include "PxStaticUi.h"

#include <QSettings>

#include <memory>

PxDeviceUi::PxDeviceUi(PxDevice* aDevice)
    : mLoad(tr("Load Configuration..."))
    , mSave(tr("Save Configuration..."))
    , mConfigurationMenu(tr("Configuration"))
    , mActionMenu(tr("Action"))
    , mApply(QIcon(QStringLiteral(":/icons/Apply.png")), tr("Apply"))
    , mUndo(QIcon(QStringLiteral(":/icons/Undo.png")), tr("Undo"))
    , mReset(tr("Reset..."))
    , mUpdate(tr("Update..."))
    , mDevice(aDevice)
{
  PT_ASSERT(aDevice);
  PxHost* lHost = PxStaticUi::Host();
  PT_ASSERT(lHost);
  lHost->AddFileAction(&mSave);
  PxStaticUi::AddDeviceMenu(&mConfigurationMenu);
  PxStaticUi::AddDeviceMenu(&mActionMenu);

  connect(&mSave, &QAction::triggered, this, &PxDeviceUi::MIFileSaveConfigTriggered);
  connect(PtPreferencesDialog::Signaler(), &PtPreferencesSignaler::Open, this, &PxDeviceUi::PreferencesDialogOpen);
  if (aDevice->IsLive()) {
    connect(aDevice->Connection(), &PxConnection::Disconnected, this, &PxDeviceUi::ConnectionDisconnected);
  }

  // What the host shows per connection: a replayed device has none.
  if (aDevice->IsLive()) {
    mHostObject = lHost->CreateDeviceContext();
  }
  lHost->AddToolBarAction(&mApply);
  lHost->AddToolBarAction(&mUndo);
  lHost->AddFileAction(&mLoad);
  mActionMenu.addAction(&mReset);
  mActionMenu.addAction(&mUpdate);

  connect(&mApply, &QAction::triggered, this, &PxDeviceUi::ApplyTriggered);
  connect(&mUndo, &QAction::triggered, this, &PxDeviceUi::UndoTriggered);
  connect(&mLoad, &QAction::triggered, this, &PxDeviceUi::MIFileLoadConfigTriggered);
  connect(&mUpdate, &QAction::triggered, this, &PxDeviceUi::MIDeviceActionUpdateTriggered);
  connect(&mReset, &QAction::triggered, this, &PxDeviceUi::MIDeviceActionResetTriggered);
}

PxDeviceUi::~PxDeviceUi()
{
  const QHash<int, PxDockWidget*> lWindows = mWindows;
  mWindows.clear();
  qDeleteAll(lWindows);
  // The device goes before the host's object: whatever the host shows per connection may watch it.
  delete mDevice;
  mDevice = nullptr;
  delete mHostObject;
}

void PxDeviceUi::Setup()
{
  UpdateControls();
}

void PxDeviceUi::UpdateControls()
{
  mLoad.setEnabled(mDevice->CanModifyConfiguration());
  mReset.setVisible(true);
  mUpdate.setVisible(true);
  // A replayed device has no link to write, reset or update through. Saving its configuration
  // to a file stays: it is the configuration the record was made with.
  const bool lLive = mDevice->IsLive();
  mApply.setEnabled(lLive);
  mUndo.setEnabled(lLive);
  mReset.setEnabled(lLive);
  mUpdate.setEnabled(lLive);
}

void PxDeviceUi::PreferencesDialogOpen(PtPreferencesDialog* aDialog)
{
  connect(aDialog, &PtPreferencesDialog::Closed, this, &PxDeviceUi::PreferencesDialogClosed);
}

void PxDeviceUi::PreferencesDialogClosed(bool)
{
}

void PxDeviceUi::AddConfigurationAction(QAction* aAction)
{
  PT_ASSERT(aAction);
  mConfigurationMenu.addAction(aAction);
}

void PxDeviceUi::AddConfigurationMenu(QMenu* aMenu)
{
  PT_ASSERT(aMenu);
  mConfigurationMenu.addMenu(aMenu);
}

void PxDeviceUi::AddActionAction(QAction* aAction, bool aSorted)
{
  PT_ASSERT(aAction);
  if (aSorted) {
    for (QAction* lBefore : mActionMenu.actions()) {
      if (lBefore->text() > aAction->text()) {
        mActionMenu.insertAction(lBefore, aAction);
        return;
      }
    }
  }
  mActionMenu.addAction(aAction);
}

void PxDeviceUi::AddFloatingWindow(PxDockWidget* aWindow, int aAction)
{
  PT_ASSERT(aWindow);
  mWindows.insert(static_cast<int>(aWindow->Id()), aWindow);
  if (QAction* lAction = aWindow->LinkedAction(aAction)) {
    lAction->setCheckable(true);
    lAction->setChecked(true);
  }
  connect(aWindow, &PxDockWidget::Closed, this, &PxDeviceUi::DockWidgetClosed, Qt::UniqueConnection);
  // The host's saved state finds the window again by this name.
  aWindow->setObjectName(QString::number(aWindow->PermanentId()));
  aWindow->setAttribute(Qt::WA_DeleteOnClose);
  aWindow->setFloating(true);
  aWindow->show();
  Q_EMIT WindowAdded(aWindow);
}

PxDockWidget* PxDeviceUi::FindWindow(int aId) const
{
  return mWindows.value(aId, nullptr);
}

bool PxDeviceUi::CloseWindow(int aId)
{
  PxDockWidget* lWindow = FindWindow(aId);
  if (!lWindow) {
    return false;
  }
  lWindow->close();
  return true;
}

void PxDeviceUi::DockWidgetClosed(PxDockWidget* aWindow)
{
  mWindows.remove(static_cast<int>(aWindow->Id()));
}

bool PxDeviceUi::Question(const QString& aText)
{
  return PtMessageBox::Question(PxStaticUi::Host(), aText);
}

void PxDeviceUi::ShowInfo(const QString& aText)
{
  PtMessageBox::ShowInfo(PxStaticUi::Host(), aText);
}

QString PxDeviceUi::GenerateFileFilter()
{
  return tr("Parvex") + QStringLiteral("\u2122") + tr(" Configuration Files (*.pto)") + QStringLiteral(";;") +
         tr("All Files (*.*)");
}

void PxDeviceUi::ReportError(const std::exception& aError)
{
  PtErrorLogForm::LogError(aError);
  PtMessageBox::ShowError(PxStaticUi::Host(), aError);
}

void PxDeviceUi::ApplyTriggered()
{
  try {
    mDevice->WriteConfiguration();
    mDevice->ApplyConfiguration();
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxDeviceUi::UndoTriggered()
{
  try {
    mDevice->RestoreProperties();
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxDeviceUi::MIDeviceActionResetTriggered()
{
  if (!Question(tr("Do you really want to reset?"))) {
    return;
  }
  try {
    mDevice->Reset();
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxDeviceUi::MIFileLoadConfigTriggered()
{
  const QString lFile = PtFileChooser::OpenFile(PxStaticUi::Host(), QString(), QString(), GenerateFileFilter());
  if (lFile.isEmpty()) {
    return;
  }
  try {
    // The reader refuses a file of another device type before anything is asked.
    PtDocumentReader lReader(lFile, mDevice->ConfigurationDocumentType(lFile, QString()));
    PxDevice::FileHeader lHeader;
    mDevice->PreLoadFile(lReader, lHeader);
    const QString lQuestion =
        tr("This file was saved with the following information:\n\nName: %1\nSerial number: %2\nDate: %3\n"
           "Comment: %4\n\nAre you sure you want to load this file to the currently connected %5?")
            .arg(lHeader.mName, lHeader.mSerialNumber, lHeader.mDate.toString(Qt::TextDate), lHeader.mComment,
                 mDevice->Name());
    if (Question(lQuestion)) {
      mDevice->LoadConfiguration(lReader);
    }
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxDeviceUi::MIFileSaveConfigTriggered()
{
  const QString lFile = PtFileChooser::SaveFile(PxStaticUi::Host(), QString(), QString(), GenerateFileFilter());
  if (lFile.isEmpty()) {
    return;
  }
  QString lComment;
  if (!PtTextPrompt::Ask(PxStaticUi::Host(), tr("Enter comment"), tr("Comment (optional):"), &lComment)) {
    return;
  }
  try {
    mDevice->SaveConfiguration(lFile, lComment);
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxDeviceUi::MIDeviceActionUpdateTriggered()
{
  QString lFile;
  unsigned char lKind = 0;
  {
    PxUpdateSelectDialog lSelect(PxStaticUi::Host(), FirmwareFiles());
    if (lSelect.exec() != QDialog::Accepted || lSelect.SelectedFile().isEmpty()) {
      return;
    }
    lFile = lSelect.SelectedFile();
    lKind = lSelect.SelectedKind();
  }
  Update(lFile, lKind, 0);
}

void PxDeviceUi::Update(const QString& aFile, unsigned char aKind, int aOption)
{
  std::unique_ptr<PxCodeUpdateJob> lJob;
  try {
    lJob.reset(mDevice->CreateFileUpdateJob(aFile, aKind, aOption));
  } catch (const std::exception& e) {
    ReportError(e); // a damaged or foreign file is refused before the device is touched
    return;
  }
  PxCodeUpdateDialog lDialog(PxStaticUi::Host());
  lDialog.SetLinks(mDevice->Connection(), lJob.get());
  lDialog.exec();
}

void PxDeviceUi::ConnectionDisconnected()
{
  Q_EMIT Disconnected();
}

void PxDeviceUi::SaveLayout()
{
  PxHost* lHost = PxStaticUi::Host();
  QSettings lSettings;
  lSettings.beginGroup(Name());
  lSettings.beginGroup(QStringLiteral("Layout"));
  lSettings.beginWriteArray(QStringLiteral("Windows"), mWindows.size());
  int lIndex = 0;
  for (PxDockWidget* lWindow : qAsConst(mWindows)) {
    lSettings.setArrayIndex(lIndex++);
    lSettings.setValue(QStringLiteral("Id"), lWindow->PermanentId());
    lSettings.setValue(QStringLiteral("Floating"), lWindow->isFloating());
    lSettings.setValue(QStringLiteral("Flags"), lWindow->Flags());
    if (lWindow->isFloating()) {
      lSettings.setValue(QStringLiteral("Left"), lWindow->x());
      lSettings.setValue(QStringLiteral("Top"), lWindow->y());
      lSettings.setValue(QStringLiteral("Width"), lWindow->width());
      lSettings.setValue(QStringLiteral("Height"), lWindow->height());
    }
  }
  lSettings.endArray();
  lSettings.setValue(QStringLiteral("Geometry"), lHost->saveGeometry());
  lSettings.setValue(QStringLiteral("State"), lHost->saveState(0));
}

void PxDeviceUi::RestoreLayout()
{
  PxHost* lHost = PxStaticUi::Host();
  QSettings lSettings;
  lSettings.beginGroup(Name());
  lSettings.beginGroup(QStringLiteral("Layout"));
  // Docked windows must exist before the host's state is restored: the state only places windows
  // it finds.
  const int lCount = lSettings.beginReadArray(QStringLiteral("Windows"));
  for (int i = 0; i < lCount; ++i) {
    lSettings.setArrayIndex(i);
    if (!lSettings.value(QStringLiteral("Floating")).toBool()) {
      RequestWindow(lSettings.value(QStringLiteral("Id")).toUInt(), lSettings.value(QStringLiteral("Flags")).toUInt());
    }
  }
  lSettings.endArray();
  lHost->restoreGeometry(lSettings.value(QStringLiteral("Geometry")).toByteArray());
  lHost->restoreState(lSettings.value(QStringLiteral("State")).toByteArray(), 0);
  lSettings.beginReadArray(QStringLiteral("Windows"));
  for (int i = 0; i < lCount; ++i) {
    lSettings.setArrayIndex(i);
    if (!lSettings.value(QStringLiteral("Floating")).toBool()) {
      continue;
    }
    PxDockWidget* lWindow = RequestWindow(lSettings.value(QStringLiteral("Id")).toUInt(),
                                          lSettings.value(QStringLiteral("Flags")).toUInt());
    if (lWindow) {
      lWindow->move(lSettings.value(QStringLiteral("Left")).toInt(), lSettings.value(QStringLiteral("Top")).toInt());
      lWindow->resize(lSettings.value(QStringLiteral("Width")).toInt(),
                      lSettings.value(QStringLiteral("Height")).toInt());
    }
  }
  lSettings.endArray();
}
