#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class PxSimDevice;
class QModbusRtuSerialSlave;

// Serves the simulated sensor's live registers (PxSimModbusMap) as a Modbus RTU slave on a serial
// port, the way the sensor's service port does. The device runs on its own here: the frame clock
// advances at the measurement rate, whoever reads.
class PxSimModbusSlave : public QObject
{
  Q_OBJECT

public:
  explicit PxSimModbusSlave(PxSimDevice& aDevice, QObject* aParent = nullptr);
  ~PxSimModbusSlave() override;

  // Opens aPort (8 data bits, even parity, one stop bit, as Modbus RTU asks) and answers as
  // aAddress. False, with the reason in ErrorString(), when the port does not open.
  bool Open(const QString& aPort, int aBaudRate, int aAddress);
  void Close();
  QString ErrorString() const;

private:
  void Refresh();

  PxSimDevice& mDevice;
  std::unique_ptr<QModbusRtuSerialSlave> mSlave;
  QTimer mClock;
};
