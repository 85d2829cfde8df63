#pragma once

#include "ParvexTechExport.h"
#include "PtTypes.h"

#include <QObject>
#include <QSerialPort>
#include <QString>

#include <memory>
#include <vector>

// Modbus RTU master on a serial port: the link of the serial-port viewer to a device that serves
// its registers over RS-485 or RS-232. Settings are taken when the port opens.
//
// Reads are asynchronous so that a slow or silent slave never freezes the window: StartRead...
// sends the request, ReadFinished reports its end, TakeValues gives the values or throws the
// failure as the product's exception. ReadHoldingRegisters does the same and waits, for callers
// without a window. Error codes:
//   ERROR_BASE + 1 to 8  the transport's failure (read, write, connection, configuration, time-out
//                        after the retries, protocol, aborted, unknown), with its text;
//   ERROR_EXCEPTION + n  the slave answered with Modbus exception code n (2: illegal address).
class PT_EXPORT PtModbus : public QObject
{
  Q_OBJECT

public:
  static constexpr unsigned int ERROR_BASE = 700;
  static constexpr unsigned int ERROR_EXCEPTION = 720;
  // Offset of a read dropped by Abort or Close (QModbusDevice::ReplyAbortedError).
  static constexpr unsigned int ERROR_ABORTED = 7;
  // Holding registers one request may read (the protocol's limit).
  static constexpr int MAX_REGISTERS = 125;

  explicit PtModbus(QObject* aParent = nullptr);
  ~PtModbus() override;

  void SetPort(const QString& aPort) { mPort = aPort; }
  const QString& Port() const { return mPort; }
  void SetBaudRate(int aBaudRate) { mBaudRate = aBaudRate; }
  int BaudRate() const { return mBaudRate; }
  void SetParity(QSerialPort::Parity aParity) { mParity = aParity; }
  QSerialPort::Parity Parity() const { return mParity; }
  void SetDataBits(QSerialPort::DataBits aDataBits) { mDataBits = aDataBits; }
  QSerialPort::DataBits DataBits() const { return mDataBits; }
  void SetStopBits(QSerialPort::StopBits aStopBits) { mStopBits = aStopBits; }
  QSerialPort::StopBits StopBits() const { return mStopBits; }
  // The slave's address on the bus, 1 to 247.
  void SetSlaveAddress(int aAddress) { mSlaveAddress = aAddress; }
  int SlaveAddress() const { return mSlaveAddress; }
  // How long one attempt waits for the answer, and how many times a request is sent again.
  void SetTimeout(int aMilliseconds) { mTimeout = aMilliseconds; }
  int Timeout() const { return mTimeout; }
  void SetRetries(int aRetries) { mRetries = aRetries; }
  int Retries() const { return mRetries; }

  // Opens the port with the settings above; throws when it cannot be opened.
  void Open();
  // Closes the port; a read under way ends as aborted. Nothing when closed.
  void Close();
  bool IsOpen() const;

  // Sends a read of aCount holding registers from aAddress. Throws when the port is closed, a
  // read is already under way, or the request cannot be sent.
  void StartReadHoldingRegisters(int aAddress, int aCount);
  bool IsBusy() const;
  // Drops the read under way; ReadFinished follows with the read aborted.
  void Abort();
  // The values of the read that finished; throws its failure.
  std::vector<PtU16> TakeValues();

  // Reads and waits (for callers without a window to keep alive).
  std::vector<PtU16> ReadHoldingRegisters(int aAddress, int aCount);

Q_SIGNALS:
  void ReadFinished();
  // The port went away under the link (unplugged adapter, closed pseudo-terminal); it is closed.
  void PortLost(const QString& aReason);

private:
  void ReplyFinished();
  void StateChanged(int aState);
  void Lost(const QString& aReason);

  class Private;
  std::unique_ptr<Private> d;
  QString mPort;
  int mBaudRate = 19200;
  QSerialPort::Parity mParity = QSerialPort::EvenParity;
  QSerialPort::DataBits mDataBits = QSerialPort::Data8;
  QSerialPort::StopBits mStopBits = QSerialPort::OneStop;
  int mSlaveAddress = 1;
  int mTimeout = 1000;
  int mRetries = 3;
};
