#pragma once

#include "ParvexSimDriverExport.h"
#include "PxSerialPortListener.h"

// The serial-port viewer's listener for the Parvex 16's Modbus service port: the live registers
// (PxSimModbusMap), named and decoded into device units.
class PXSIMDRIVER_EXPORT PxSimModbusListener : public PxSerialPortListener
{
  Q_OBJECT

public:
  PxSimModbusListener(PtModbus* aModbus, QTableWidget* aTable);

  // The factory the driver registers for PxSimModbusMap::LISTENER_TYPE.
  static PxSerialPortListener* Create(PtModbus* aModbus, QTableWidget* aTable);

protected:
  QString RegisterName(int aIndex) const override;
  QString ValueText(int aIndex, const std::vector<PtU16>& aValues) const override;
};
