#include "PxSimModbusSlave.h"

#include "PxSimDevice.h"
#include "PxSimLog.h"
#include "PxSimModbusMap.h"

#include <QModbusRtuSerialSlave>
#include <QSerialPort>
#include <QVariant>

#include <algorithm>
#include <cmath>

PxSimModbusSlave::PxSimModbusSlave(PxSimDevice& aDevice, QObject* aParent)
    : QObject(aParent)
    , mDevice(aDevice)
    , mSlave(std::make_unique<QModbusRtuSerialSlave>())
{
  QModbusDataUnitMap lMap;
  lMap.insert(QModbusDataUnit::HoldingRegisters,
              QModbusDataUnit(QModbusDataUnit::HoldingRegisters, 0, PxSimModbusMap::REGISTER_COUNT));
  mSlave->setMap(lMap);
  connect(&mClock, &QTimer::timeout, this, [this] {
    mDevice.Groups().NextFrame();
    Refresh();
  });
}

PxSimModbusSlave::~PxSimModbusSlave()
{
  Close();
}

bool PxSimModbusSlave::Open(const QString& aPort, int aBaudRate, int aAddress)
{
  Close();
  mSlave->setConnectionParameter(QModbusDevice::SerialPortNameParameter, aPort);
  mSlave->setConnectionParameter(QModbusDevice::SerialBaudRateParameter, aBaudRate);
  mSlave->setConnectionParameter(QModbusDevice::SerialParityParameter, QSerialPort::EvenParity);
  mSlave->setConnectionParameter(QModbusDevice::SerialDataBitsParameter, QSerialPort::Data8);
  mSlave->setConnectionParameter(QModbusDevice::SerialStopBitsParameter, QSerialPort::OneStop);
  mSlave->setServerAddress(aAddress);
  if (!mSlave->connectDevice()) {
    return false;
  }
  Refresh();
  const double lRate = std::max(1.0, mDevice.Groups().EffectiveRate());
  mClock.start(static_cast<int>(std::lround(1000.0 / lRate)));
  qCInfo(lcSim).noquote() << "Modbus slave" << aAddress << "on" << aPort << aBaudRate << "baud";
  return true;
}

void PxSimModbusSlave::Close()
{
  mClock.stop();
  if (mSlave->state() != QModbusDevice::UnconnectedState) {
    mSlave->disconnectDevice();
  }
}

QString PxSimModbusSlave::ErrorString() const
{
  return mSlave->errorString();
}

void PxSimModbusSlave::Refresh()
{
  const std::vector<PtByte> lBytes = mDevice.Groups().Registers();
  QVector<quint16> lWords(PxSimModbusMap::REGISTER_COUNT, 0);
  for (int i = 0; i < PxSimModbusMap::REGISTER_COUNT && static_cast<size_t>(2 * i + 1) < lBytes.size(); ++i) {
    lWords[i] = static_cast<quint16>(lBytes[2 * i] | (lBytes[2 * i + 1] << 8));
  }
  mSlave->setData(QModbusDataUnit(QModbusDataUnit::HoldingRegisters, 0, lWords));
}
