#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <vector>

class PtModbus;
class QTableWidget;

// Polls a block of holding registers of a Modbus device through PtModbus and shows them in a
// table, one row per register. Drivers derive one per register map, name the registers and
// decode the values, and register a factory by type (PxConnection::RegisterSerialListener) for
// the serial-port viewer, which creates it on the port the user opened.
//
// A poll that comes due while the previous read is still under way starts as soon as that read
// ends; one more coming due meanwhile is counted as missed and dropped: a link too slow for the
// rate shows fewer, not older, values.
class PX_EXPORT PxSerialPortListener : public QObject
{
  Q_OBJECT

public:
  // Neither aModbus nor aTable is owned; both must outlive the listener.
  PxSerialPortListener(PtModbus* aModbus, QTableWidget* aTable, int aFirstRegister, int aCount);
  ~PxSerialPortListener() override;

  // The names the serial-port viewer offers for the registered listener types.
  static void RegisterTypeName(int aType, const QString& aName);
  static QString TypeName(int aType);

  // Polls per second.
  void SetRate(double aRate);
  double Rate() const { return mRate; }
  // Sets the table up for the register map and polls at the rate.
  void Start();
  // Stops polling and drops a read under way; on return nothing of the listener touches the port.
  void Stop();
  bool IsRunning() const { return mRunning; }

  quint64 Polls() const { return mPolls; }
  quint64 MissedPolls() const { return mMissed; }
  quint64 FailedPolls() const { return mFailed; }
  int FirstRegister() const { return mFirst; }
  int RegisterCount() const { return mCount; }

Q_SIGNALS:
  // The values of a poll are in the table.
  void Polled();
  // A poll failed; polling goes on.
  void PollFailed(const QString& aText);
  void Stopped();

protected:
  // The name of register aIndex of the block (0 is FirstRegister()).
  virtual QString RegisterName(int aIndex) const;
  // What the value column shows for register aIndex; a value that spans several registers is
  // shown on its first one. The default is the register as an unsigned number.
  virtual QString ValueText(int aIndex, const std::vector<PtU16>& aValues) const;
  QTableWidget* Table() const { return mTable; }
  PtModbus* Modbus() const { return mModbus; }

private:
  void Tick();
  void ReadFinished();
  void SetUpTable();
  void ShowValues(const std::vector<PtU16>& aValues);

  PtModbus* mModbus = nullptr;
  QTableWidget* mTable = nullptr;
  int mFirst = 0;
  int mCount = 0;
  double mRate = 10.0;
  bool mRunning = false;
  bool mReading = false;
  // A poll came due during the read under way.
  bool mDue = false;
  QTimer mTimer;
  quint64 mPolls = 0;
  quint64 mMissed = 0;
  quint64 mFailed = 0;
};
