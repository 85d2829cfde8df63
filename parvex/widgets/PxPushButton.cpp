#include "PxPushButton.h"

#include "PtAssert.h"
#include "PtErrorLogForm.h"
#include "PtMessageBox.h"
#include "PxCommand.h"
#include "PxDevice.h"

#include <QApplication>

#include <stdexcept>

namespace {
// The wait cursor for the length of a command, whatever way the command ends.
class WaitCursor
{
public:
  WaitCursor()
  {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    // Once, so that the cursor shows before the device is busy.
    QCoreApplication::processEvents();
  }
  ~WaitCursor() { QApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};
} // namespace

PxPushButton::PxPushButton(QWidget* aParent)
    : QPushButton(aParent)
{
}

void PxPushButton::SetCommand(PxDevice* aDevice, PtU32 aId)
{
  PT_ASSERT(mDevice == nullptr);
  PT_ASSERT(aDevice);
  PxCommand* lCommand = aDevice->FindCommand(aId);
  if (!lCommand) {
    throw std::out_of_range("no command " + std::to_string(aId));
  }
  mDevice = aDevice;
  mCommand = lCommand;
  setText(lCommand->Name());
  CommandEnabledChanged();
  connect(lCommand, &PxCommand::EnabledChanged, this, &PxPushButton::CommandEnabledChanged);
  connect(lCommand, &PxCommand::Triggered, this, &PxPushButton::ThisClicked);
  connect(this, &QPushButton::clicked, this, &PxPushButton::ThisClicked);
}

void PxPushButton::SetHideOnDisabled(bool aHide)
{
  mHideOnDisabled = aHide;
  if (mCommand) {
    CommandEnabledChanged();
  }
}

void PxPushButton::CommandEnabledChanged()
{
  const bool lEnabled = mCommand->Enabled();
  setEnabled(lEnabled);
  if (mHideOnDisabled && parentWidget()) {
    setVisible(lEnabled);
  }
}

void PxPushButton::ThisClicked()
{
  if (!mCommand->Confirmation().isEmpty() && !PtMessageBox::Question(window(), mCommand->Confirmation())) {
    mCommand->SetState(PxCommand::STATE_DECLINED);
    return;
  }
  try {
    {
      const WaitCursor lCursor;
      mDevice->ExecuteCommand(mCommand->Id());
    }
    if (!mCommand->Completion().isEmpty()) {
      PtMessageBox::ShowInfo(window(), mCommand->Completion());
    }
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    PtMessageBox::ShowError(window(), e);
  }
}
