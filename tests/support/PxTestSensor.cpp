#include "PxTestSensor.h"

PxTestSensor::PxTestSensor(PxConnection* aConnection)
  : PxSensor(aConnection)
{
  AddProperty(&mSerialNumber);
}

void PxTestSensor::DebugCommand1(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue)
{
  mCommandStateDuringRun = FindCommand(COMMAND_DEBUG_1)->State();
  Note(QStringLiteral("Debug1 %1 %2 %3 %4").arg(aAddress).arg(aLength).arg(aMode).arg(aValue));
}

void PxTestSensor::DebugCommand2(PtU64 aAddress, PtU32 aLength, PtByte aMode, PtU64 aValue)
{
  mCommandStateDuringRun = FindCommand(COMMAND_DEBUG_2)->State();
  Note(QStringLiteral("Debug2 %1 %2 %3 %4").arg(aAddress).arg(aLength).arg(aMode).arg(aValue));
}
