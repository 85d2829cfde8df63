#include "PxCommand.h"

#include "PtAssert.h"

PxCommand::PxCommand(PtU32 aId, size_t aParameterCount)
    : mParameters(aParameterCount)
    , mId(aId)
{
  // ParameterChanged carries a size_t, which the meta-type system does not know by that name;
  // without it a queued connection or a signal spy cannot carry the index.
  static const int sIndexType = qRegisterMetaType<size_t>("size_t");
  Q_UNUSED(sIndexType);
}

const QVariant& PxCommand::Parameter(size_t aIndex) const
{
  PT_ASSERT(aIndex < mParameters.size());
  return mParameters[aIndex];
}

void PxCommand::SetParameter(size_t aIndex, const QVariant& aValue)
{
  PT_ASSERT(aIndex < mParameters.size());
  QVariant& lStored = mParameters[aIndex];
  if (lStored.isValid() == aValue.isValid() && lStored.userType() == aValue.userType() && lStored == aValue) {
    return;
  }
  lStored = aValue;
  Q_EMIT ParameterChanged(aIndex);
}

void PxCommand::SetEnabled(bool aEnabled)
{
  if (mEnabled == aEnabled) {
    return;
  }
  mEnabled = aEnabled;
  Q_EMIT EnabledChanged();
}
