#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <vector>

// An action the device performs on request (reset, a calibration step, saving to its memory).
// The owning device executes it by id; a push button or menu action offers it to the user.
class PX_EXPORT PxCommand : public QObject
{
  Q_OBJECT

public:
  // The state after the user declined the confirmation question.
  static constexpr PtU32 STATE_DECLINED = 2;

  PxCommand(PtU32 aId, size_t aParameterCount);

  PtU32 Id() const { return mId; }

  PtU32 State() const { return mState; }
  void SetState(PtU32 aState) { mState = aState; }

  const QString& Name() const { return mName; }
  void SetName(const QString& aName) { mName = aName; }

  // Asked before executing when not empty.
  const QString& Confirmation() const { return mConfirmation; }
  void SetConfirmation(const QString& aText) { mConfirmation = aText; }

  // Shown after a successful execution when not empty.
  const QString& Completion() const { return mCompletion; }
  void SetCompletion(const QString& aText) { mCompletion = aText; }

  const std::vector<QVariant>& Parameters() const { return mParameters; }
  size_t ParameterCount() const { return mParameters.size(); }
  const QVariant& Parameter(size_t aIndex) const;
  // Stores parameter aIndex and emits ParameterChanged(aIndex) when it really changed.
  void SetParameter(size_t aIndex, const QVariant& aValue);

  bool Enabled() const { return mEnabled; }
  void SetEnabled(bool aEnabled);

  // Whether the command is offered at all.
  bool Available() const { return true; }

Q_SIGNALS:
  // Whoever holds the command (a button, a menu action) is to execute it now.
  void Triggered();
  void ParameterChanged(size_t aIndex);
  void EnabledChanged();

private:
  std::vector<QVariant> mParameters;
  PtU32 mId = 0;
  PtU32 mState = 0;
  QString mName;
  QString mConfirmation;
  QString mCompletion;
  bool mEnabled = true;
};
