#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QPushButton>

class PxCommand;
class PxDevice;

// Offers one of a device's commands: captioned with its name, enabled while the command is, and
// running it (with its confirmation question and completion note) when clicked or when the
// command is triggered from elsewhere, such as a menu.
class PX_EXPORT PxPushButton : public QPushButton
{
  Q_OBJECT

public:
  explicit PxPushButton(QWidget* aParent = nullptr);

  // Throws std::out_of_range when the device has no command aId.
  void SetCommand(PxDevice* aDevice, PtU32 aId);
  // Hides the button while its command is disabled, for commands the connected model lacks.
  void SetHideOnDisabled(bool aHide);

  PxCommand* Command() const { return mCommand; }

public Q_SLOTS:
  void CommandEnabledChanged();
  void ThisClicked();

private:
  PxDevice* mDevice = nullptr;
  PxCommand* mCommand = nullptr;
  bool mHideOnDisabled = false;
};
