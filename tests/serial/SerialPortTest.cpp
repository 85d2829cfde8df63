#include "PtModalScript.h"
#include "PtModbus.h"
#include "PxSerialPortForm.h"
#include "PxSerialPortListener.h"
#include "PxSimDevice.h"
#include "PxSimDriver.h"
#include "PxSimModbusMap.h"
#include "PxSimModbusSlave.h"
#include "PxTest.h"
#include "PxTestGallery.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {
// Two pseudo-terminals joined by socat: what one side writes the other reads, through the kernel's
// serial line discipline, as over a null-modem cable.
class PtyPair
{
public:
  bool Start(const QString& aDirectory)
  {
    mA = aDirectory + QStringLiteral("/viewer");
    mB = aDirectory + QStringLiteral("/device");
    mSocat.start(QStringLiteral("socat"),
                 {QStringLiteral("pty,raw,echo=0,link=") + mA, QStringLiteral("pty,raw,echo=0,link=") + mB});
    if (!mSocat.waitForStarted(PxTest::WAIT_MS)) {
      return false;
    }
    // socat makes the links once both ends exist; nothing signals that, so look for them.
    for (int i = 0; i < 500 && !(QFileInfo::exists(mA) && QFileInfo::exists(mB)); ++i) {
      QThread::msleep(10);
    }
    return QFileInfo::exists(mA) && QFileInfo::exists(mB);
  }
  // The cable is pulled: both pseudo-terminals go away.
  void Stop()
  {
    mSocat.terminate();
    mSocat.waitForFinished(PxTest::WAIT_MS);
  }
  ~PtyPair() { Stop(); }

  QString mA;
  QString mB;
  QProcess mSocat;
};

QString Row(QTableWidget* aTable, const QString& aName)
{
  for (int i = 0; i < aTable->rowCount(); ++i) {
    if (aTable->item(i, 1) && aTable->item(i, 1)->text() == aName) {
      return aTable->item(i, 2)->text();
    }
  }
  return QString();
}

class SerialViewer : public ::testing::Test
{
protected:
  void SetUp() override
  {
    if (QStandardPaths::findExecutable(QStringLiteral("socat")).isEmpty()) {
      GTEST_SKIP() << "socat is not installed (scripts/setup.sh installs it): no pseudo-terminal pair to test on";
    }
    PxSimDriver::Register();
    ASSERT_TRUE(mPair.Start(mDir.path()));
    ASSERT_TRUE(mSlave.Open(mPair.mB, 115200, PxSimModbusMap::DEFAULT_SLAVE_ADDRESS))
        << mSlave.ErrorString().toStdString();
    mForm = std::make_unique<PxSerialPortForm>(nullptr, nullptr);
    mForm->SetPort(mPair.mA);
    mForm->SetBaudRate(115200);
    mForm->SetSlaveAddress(PxSimModbusMap::DEFAULT_SLAVE_ADDRESS);
    mForm->SetListenerType(PxSimModbusMap::LISTENER_TYPE);
    mForm->SetRate(20);
    mForm->resize(620, 520);
    mForm->show();
  }

  QTemporaryDir mDir;
  PtyPair mPair;
  PxSimDevice mDevice;
  PxSimModbusSlave mSlave{mDevice};
  std::unique_ptr<PxSerialPortForm> mForm;
};
} // namespace

TEST_F(SerialViewer, ReadsTheSimulatedRegistersOverASerialLine)
{
  PtModalScript lScript;
  // The slave address decides who answers: the sensor's, or nobody (a time-out, polling goes on).
  for (const auto& [lAddress, lAnswers] : {std::pair{5, false}, {PxSimModbusMap::DEFAULT_SLAVE_ADDRESS, true}}) {
    SCOPED_TRACE(lAddress);
    mForm->SetSlaveAddress(lAddress);
    ASSERT_TRUE(mForm->OpenPort());
    PxSerialPortListener* lListener = mForm->Listener();
    ASSERT_NE(lListener, nullptr);
    if (!lAnswers) {
      QSignalSpy lFailed(lListener, &PxSerialPortListener::PollFailed);
      ASSERT_TRUE(lFailed.wait(PxTest::WAIT_MS));
      EXPECT_TRUE(lFailed.at(0).at(0).toString().contains(QLatin1String("did not answer")))
          << lFailed.at(0).at(0).toString().toStdString();
      EXPECT_EQ(lListener->Polls(), 0u);
      mForm->ClosePort();
      continue;
    }
    QSignalSpy lPolled(lListener, &PxSerialPortListener::Polled);
    while (lPolled.size() < 3) {
      ASSERT_TRUE(lPolled.wait(PxTest::WAIT_MS));
    }
    QTableWidget* lTable = mForm->Table();
    EXPECT_EQ(lTable->rowCount(), PxSimModbusMap::REGISTER_COUNT);
    const quint64 lFrame = Row(lTable, QStringLiteral("Frame counter")).toULongLong();
    ASSERT_TRUE(lPolled.wait(PxTest::WAIT_MS));
    ASSERT_TRUE(lPolled.wait(PxTest::WAIT_MS));
    EXPECT_GT(Row(lTable, QStringLiteral("Frame counter")).toULongLong(), lFrame) << "the device runs on its own";
    EXPECT_EQ(Row(lTable, QStringLiteral("Measurement rate")), QStringLiteral("50.00 Hz"));
    EXPECT_TRUE(Row(lTable, QStringLiteral("Board temperature")).endsWith(QStringLiteral(" °C")));
  }
  EXPECT_TRUE(lScript.Interactions().isEmpty());
  QCoreApplication::processEvents(); // the labels' new sizes reach the layout
  PxTest::SaveToGallery(mForm.get(), QStringLiteral("serial_port_viewer"));

  // Closing: the listener stops while the port is still open, then the port closes.
  QSignalSpy lStopped(mForm->Listener(), &PxSerialPortListener::Stopped);
  bool lOpenAtStop = false;
  QObject::connect(mForm->Listener(), &PxSerialPortListener::Stopped, [&] { lOpenAtStop = mForm->Modbus()->IsOpen(); });
  mForm->close();
  EXPECT_EQ(lStopped.size(), 1);
  EXPECT_TRUE(lOpenAtStop);
  EXPECT_FALSE(mForm->IsPortOpen());
}

TEST_F(SerialViewer, APortThatVanishesIsReportedAndTheViewerGoesOn)
{
  ASSERT_TRUE(mForm->OpenPort());
  QSignalSpy lPolled(mForm->Listener(), &PxSerialPortListener::Polled);
  ASSERT_TRUE(lPolled.wait(PxTest::WAIT_MS));
  PtModalScript lScript;
  QSignalSpy lLost(mForm->Modbus(), &PtModbus::PortLost);
  mSlave.Close();
  mPair.Stop();
  ASSERT_TRUE(lLost.wait(PxTest::WAIT_MS));
  EXPECT_FALSE(mForm->IsPortOpen());
  EXPECT_EQ(mForm->Listener(), nullptr);
  ASSERT_EQ(lScript.Interactions().size(), 1);
  EXPECT_EQ(lScript.Interactions()[0].mKind, PtModalScript::K_ERROR);
  EXPECT_TRUE(lScript.Interactions()[0].mText.contains(QLatin1String("no longer available")));

  // Plugged in again: the same viewer opens it.
  ASSERT_TRUE(mPair.Start(mDir.path()));
  ASSERT_TRUE(mSlave.Open(mPair.mB, 115200, PxSimModbusMap::DEFAULT_SLAVE_ADDRESS));
  ASSERT_TRUE(mForm->OpenPort());
  QSignalSpy lAgain(mForm->Listener(), &PxSerialPortListener::Polled);
  EXPECT_TRUE(lAgain.wait(PxTest::WAIT_MS));
}
