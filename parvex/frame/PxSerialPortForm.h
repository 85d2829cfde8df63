#pragma once

#include "ParvexExport.h"
#include "PxDockWidget.h"

#include <memory>

class PtModbus;
class PxSerialPortListener;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class QSpinBox;
class QTableWidget;

// The serial-port viewer: the user picks a serial port, its line settings and the Modbus slave,
// and the kind of device on it; the listener registered for that kind polls its registers into
// the table. The listener is stopped before the port closes, and a port that goes away (an
// unplugged adapter) is reported while the viewer stays open for the next one.
class PX_EXPORT PxSerialPortForm : public PxDockWidget
{
  Q_OBJECT

public:
  static constexpr unsigned int PERMANENT_ID = 901;

  // aModbus: the link to use, not owned; null for one of the form's own.
  PxSerialPortForm(PtModbus* aModbus, QWidget* aParent);
  ~PxSerialPortForm() override;

  unsigned int PermanentId() const override { return PERMANENT_ID; }

  // Chooses the port (one listed, or any device path such as a pseudo-terminal) and the kind.
  void SetPort(const QString& aPort);
  void SetListenerType(int aType);
  void SetBaudRate(int aBaudRate);
  void SetSlaveAddress(int aAddress);
  void SetRate(double aRate);

  // Opens the port and starts the listener; false, reported to the user, when either fails.
  bool OpenPort();
  // Stops the listener, then closes the port.
  void ClosePort();
  bool IsPortOpen() const;

  PtModbus* Modbus() const { return mModbus; }
  PxSerialPortListener* Listener() const { return mListener.get(); }
  QTableWidget* Table() const { return mTable; }

public Q_SLOTS:
  void PBOpenClicked();
  void PBRefreshClicked();

protected:
  void closeEvent(QCloseEvent* aEvent) override;

private Q_SLOTS:
  void CBTypesCurrentIndexChanged(int aIndex);

private:
  void BuildUi();
  void UpdateControls();
  void ShowCounts();
  void PortLost(const QString& aReason);

  std::unique_ptr<PtModbus> mOwnModbus;
  PtModbus* mModbus = nullptr;
  std::unique_ptr<PxSerialPortListener> mListener;
  QString mLastFailure;

  QComboBox* mPort = nullptr;
  QPushButton* mRefresh = nullptr;
  QComboBox* mBaudRate = nullptr;
  QComboBox* mParity = nullptr;
  QComboBox* mDataBits = nullptr;
  QComboBox* mStopBits = nullptr;
  QSpinBox* mSlave = nullptr;
  QSpinBox* mTimeout = nullptr;
  QSpinBox* mRetries = nullptr;
  QComboBox* mTypes = nullptr;
  QDoubleSpinBox* mRate = nullptr;
  QPushButton* mOpen = nullptr;
  QLabel* mStatus = nullptr;
  QTableWidget* mTable = nullptr;
};
