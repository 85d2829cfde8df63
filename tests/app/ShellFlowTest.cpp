#include "ConfigWindow.h"
#include "PtModalScript.h"
#include "PxCodeUpdateDialog.h"
#include "PxCodeUpdateJob.h"
#include "PxConnectionDialog.h"
#include "PxDeviceUi.h"
#include "PxEntry.h"
#include "PxInProcessConnection.h"
#include "PxIntegerProperty.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDevice.h"
#include "PxSimDriver.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxSimTcpWidget.h"
#include "PxSimUpdateJob.h"
#include "PxStaticUi.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestUi.h"
#include "SimProcess.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {
using PxTest::Button;

// The application as a user starts it, on a simulated sensor kept in its own folder.
class ShellFlow : public ::testing::Test
{
protected:
  void SetUp() override
  {
    ASSERT_TRUE(PxInit(&mWindow));
    PxSimDriver::Register(&mWindow);
    PxSimConnectionTypes::SetSimulatorStateDir(mState.path());
    PxSimConnectionTypes::SetSimulatorOnOlderFirmware(false);
    PxSimUpdateJob::SetFirmwareDirectory(mState.filePath(QStringLiteral("firmware")));
    mWindow.show();
  }
  void TearDown() override
  {
    PxShutdown();
    PxSimConnectionTypes::SetSimulatorOnOlderFirmware(false);
  }
  // Answers "Connect..." with the type chosen in the dialog and aPrepare run on its widget before
  // Connect is clicked. Answers for the questions that follow are queued after it.
  void QueueConnect(PtModalScript& aScript, const QString& aType, const std::function<void(QWidget*)>& aPrepare = {})
  {
    aScript.Queue([=](QDialog* aDialog) {
      auto* lTypes = aDialog->findChild<QComboBox*>();
      lTypes->setCurrentIndex(lTypes->findText(aType));
      if (aPrepare) {
        aPrepare(static_cast<PxConnectionDialog*>(aDialog)->CurrentWidget());
      }
      Button(aDialog, QStringLiteral("Connect"))->click();
      if (aDialog->isVisible()) { // a TCP connect finishes in the background
        QSignalSpy lDone(aDialog, &QDialog::finished);
        lDone.wait(PxTest::WAIT_MS);
      }
    });
  }
  // "Connect..." on aType, with aThen answering the questions that follow.
  template <class... A>
  void Connect(PtModalScript& aScript, const QString& aType, const A&... aThen)
  {
    QueueConnect(aScript, aType);
    (aScript.Queue(aThen), ...);
    PxStaticUi::Singleton()->ConnectAction()->trigger();
  }
  int SoftwareVersion() const { return PxStaticUi::Ui()->Device()->SoftwareVersion().Value(0) & 0x3FFF; }
  // Waits for a torn-down device UI to go, as the host's ticks make it.
  void WaitForTeardown()
  {
    QSignalSpy lChanged(PxStaticUi::Singleton(), &PxStaticUi::UiChanged);
    if (PxStaticUi::Ui()) {
      lChanged.wait(PxTest::WAIT_MS);
    }
  }

  QTemporaryDir mState;
  ConfigWindow mWindow;
};

// Runs an update dialog until it has finished on its own.
const PtModalScript::Action RUN_UPDATE = [](QDialog* aDialog) {
  QSignalSpy lDone(aDialog, &QDialog::finished);
  lDone.wait(PxTest::WAIT_MS);
};

TEST_F(ShellFlow, TcpWidgetChecksWhatIsTypedAndExplainsFailures)
{
  PxSimTcpWidget lWidget;
  // What is typed in the host and port fields, and what the widget says then. "sensor one": the
  // blank is refused as it is typed; "4801a6": letters never reach the port field.
  for (const auto& [lHost, lPort, lStatus] :
       {std::tuple{"", "48016", "Enter the host name or IP address of the sensor."},
        {"sensor one", "48016", ""},
        {"-sensor", "48016", "\"-sensor\" is not a valid host name or IP address."},
        {"10.0.0.7", "0", "Enter a port number between 1 and 65535."},
        {"10.0.0.7", "70000", "Enter a port number between 1 and 65535."},
        {"fe80::1", "4801a6", ""}}) {
    lWidget.HostEdit()->clear();
    lWidget.PortEdit()->clear();
    QTest::keyClicks(lWidget.HostEdit(), QLatin1String(lHost));
    QTest::keyClicks(lWidget.PortEdit(), QLatin1String(lPort));
    EXPECT_EQ(lWidget.StatusText(), QLatin1String(lStatus)) << lHost << " " << lPort;
  }
  EXPECT_EQ(lWidget.HostEdit()->text(), QStringLiteral("fe80::1"));
  EXPECT_EQ(lWidget.PortEdit()->text(), QStringLiteral("48016"));

  // A port nobody listens on, and a name that does not resolve.
  quint16 lClosedPort = 0;
  {
    QTcpServer lServer;
    ASSERT_TRUE(lServer.listen(QHostAddress::LocalHost));
    lClosedPort = lServer.serverPort();
  }
  for (const auto& [lHost, lPort, lWords] : {std::tuple{"127.0.0.1", lClosedPort, "refused the connection on port"},
                                             {"no-such-sensor.invalid", quint16(48016), "could not be found"}}) {
    lWidget.HostEdit()->setText(QLatin1String(lHost));
    lWidget.PortEdit()->setText(QString::number(lPort));
    QSignalSpy lFailed(&lWidget, &PxSimTcpWidget::ConnectionFailed);
    lWidget.Connect();
    ASSERT_TRUE(lFailed.count() > 0 || lFailed.wait(PxTest::WAIT_MS)) << lHost;
    EXPECT_TRUE(lWidget.StatusText().contains(QLatin1String(lWords))) << lWidget.StatusText().toStdString();
    EXPECT_TRUE(lWidget.HostEdit()->isEnabled()) << "the user can correct the address";
  }
  PxTest::SaveToGallery(&lWidget, QStringLiteral("tcp-widget-refused"));
}

// A listening socket whose backlog is full: the host is there but never completes a connect.
class SilentPeer
{
public:
  SilentPeer()
  {
    mListener = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in lAddress{};
    lAddress.sin_family = AF_INET;
    lAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t lLength = sizeof(lAddress);
    ::bind(mListener, reinterpret_cast<sockaddr*>(&lAddress), sizeof(lAddress));
    ::listen(mListener, 0);
    ::getsockname(mListener, reinterpret_cast<sockaddr*>(&lAddress), &lLength);
    mPort = ntohs(lAddress.sin_port);
    for (int& lFiller : mFillers) {
      lFiller = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
      ::connect(lFiller, reinterpret_cast<sockaddr*>(&lAddress), sizeof(lAddress));
    }
  }
  ~SilentPeer()
  {
    for (int lFiller : mFillers) {
      ::close(lFiller);
    }
    ::close(mListener);
  }
  quint16 mPort = 0;

private:
  int mListener = -1;
  int mFillers[4] = {-1, -1, -1, -1};
};

TEST_F(ShellFlow, SilentHostKeepsTheDialogResponsiveAndCancellable)
{
  SilentPeer lPeer;
  // The GUI thread's longest gap between 10 ms timer ticks while the dialog waits.
  QTimer lPulse;
  QElapsedTimer lClock;
  qint64 lLast = 0;
  qint64 lLongest = 0;
  QObject::connect(&lPulse, &QTimer::timeout, [&] {
    lLongest = std::max(lLongest, lClock.elapsed() - lLast);
    lLast = lClock.elapsed();
  });
  PtModalScript lScript;
  QString lStatus;
  lScript.Queue([&](QDialog* aDialog) {
    auto* lTypes = aDialog->findChild<QComboBox*>();
    lTypes->setCurrentIndex(lTypes->findText(QStringLiteral("TCP")));
    auto* lWidget = static_cast<PxSimTcpWidget*>(static_cast<PxConnectionDialog*>(aDialog)->CurrentWidget());
    lWidget->HostEdit()->setText(QStringLiteral("127.0.0.1"));
    lWidget->PortEdit()->setText(QString::number(lPeer.mPort));
    lWidget->SetTimeout(1500);
    QSignalSpy lFailed(lWidget, &PxSimTcpWidget::ConnectionFailed);
    lClock.start();
    lPulse.start(10);
    Button(aDialog, QStringLiteral("Connect"))->click();
    EXPECT_TRUE(lWidget->IsConnecting());
    PxTest::SaveToGallery(aDialog, QStringLiteral("connection-dialog-tcp-connecting"));
    // Encoding the picture is the test's own work on this thread, not the dialog's: measure from here.
    lLast = lClock.elapsed();
    ASSERT_TRUE(lFailed.wait(PxTest::WAIT_MS));
    lPulse.stop();
    lStatus = lWidget->StatusText();
    PxTest::SaveToGallery(aDialog, QStringLiteral("connection-dialog-tcp-timed-out"));
    // Another try, cancelled half-way: the dialog closes at once and nothing is connected.
    Button(aDialog, QStringLiteral("Connect"))->click();
    QTimer lLater;
    QSignalSpy lHalfWay(&lLater, &QTimer::timeout);
    lLater.start(200);
    lHalfWay.wait(PxTest::WAIT_MS);
    EXPECT_TRUE(lWidget->IsConnecting());
    Button(aDialog, QStringLiteral("Cancel"))->click();
    EXPECT_FALSE(aDialog->isVisible());
  });
  PxStaticUi::Singleton()->ConnectAction()->trigger();
  std::printf("longest GUI-thread gap during a TCP connect to a silent host: %lld ms\n",
              static_cast<long long>(lLongest));
  RecordProperty("tcp_connect_longest_stall_ms", static_cast<int>(lLongest));
  EXPECT_LT(lLongest, 100);
  EXPECT_TRUE(lStatus.contains(QStringLiteral("did not answer within 1.5 seconds"))) << lStatus.toStdString();
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(PxStaticUi::Singleton()->ConnectionStatus(), QStringLiteral(" Not connected "));
}

TEST_F(ShellFlow, TcpConnectionKeepsTheAddressThatWorked)
{
  // The simulator in a process of its own: this thread blocks in each exchange, as it would with a
  // real sensor.
  SimProcess lSimulator;
  const QString lPort = QString::number(lSimulator.Port());
  PtModalScript lScript;
  QueueConnect(lScript, QStringLiteral("TCP"),
               [&](QWidget* aWidget) { static_cast<PxSimTcpWidget*>(aWidget)->PortEdit()->setText(lPort); });
  PxStaticUi::Singleton()->ConnectAction()->trigger();
  ASSERT_NE(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(mWindow.windowTitle(), QStringLiteral("Parvex 16 - Parvex Configuration"));
  PxStaticUi::Singleton()->ConnectAction()->trigger();
  PxSimTcpWidget lNext;
  EXPECT_EQ(lNext.PortEdit()->text(), lPort);
}

TEST_F(ShellFlow, OutOfDateSensorIsUpdatedAndConnectsAgainOnTheNewFirmware)
{
  PxSimConnectionTypes::SetSimulatorOnOlderFirmware(true);
  PtModalScript lScript;
  Connect(lScript, QStringLiteral("Simulated sensor"), int(QMessageBox::Yes), RUN_UPDATE, RUN_UPDATE); // FPGA, software
  QStringList lTold;
  for (const PtModalScript::Interaction& i : lScript.Interactions()) {
    lTold << i.mText;
  }
  EXPECT_EQ(lTold.filter(QStringLiteral("The firmware was updated")).size(), 2) << lTold.join('|').toStdString();
  EXPECT_TRUE(lTold.contains(QStringLiteral("The software in your Parvex 16 device is not up to date.\n\n"
                                            "Do you want to update to the latest version?")));
  WaitForTeardown(); // new software restarts the device: the link closes
  ASSERT_EQ(PxStaticUi::Ui(), nullptr);

  const int lAsked = lScript.Interactions().size();
  Connect(lScript, QStringLiteral("Simulated sensor"));
  ASSERT_NE(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(SoftwareVersion(), PxSimSensor::EXPECTED_SOFTWARE_VERSION);
  EXPECT_EQ(lScript.Interactions().size(), lAsked + 1) << "an up-to-date device connects without a question";
}

TEST_F(ShellFlow, CutOffOrDamagedUpdateLeavesTheOldFirmware)
{
  PxSimConnectionTypes::SetSimulatorOnOlderFirmware(true);
  PtModalScript lScript;
  Connect(lScript, QStringLiteral("Simulated sensor"), int(QMessageBox::No)); // keep the old firmware for now
  ASSERT_NE(PxStaticUi::Ui(), nullptr);
  const int lOld = SoftwareVersion();
  EXPECT_LT(lOld, PxSimSensor::EXPECTED_SOFTWARE_VERSION);

  // The firmware list offers the bundled releases; the software one is chosen.
  lScript.Queue([&](QDialog* aDialog) {
    auto* lList = aDialog->findChild<QListWidget*>();
    ASSERT_EQ(lList->count(), 2);
    EXPECT_TRUE(lList->item(0)->text().startsWith(QStringLiteral("Software 2.12")));
    PxTest::SaveToGallery(aDialog, QStringLiteral("update-select-dialog"));
    lList->setCurrentRow(0);
    Button(aDialog, QStringLiteral("Update"))->click();
  });
  // The link drops when the first chunk arrives.
  auto* lLink = qobject_cast<PxInProcessConnection*>(PxStaticUi::Ui()->Device()->Connection());
  lLink->Device().Faults().Arm(PxSimProtocol::FAULT_DROP_LINK, PxSimProtocol::REQ_FIRMWARE_CHUNK, 0, 1);
  lScript.Queue(RUN_UPDATE);
  PxStaticUi::Ui()->UpdateAction()->trigger();
  EXPECT_EQ(lScript.Interactions().last().mText,
            QStringLiteral("The connection to the device was lost during the update. The device keeps its previous "
                           "firmware; connect to it again and repeat the update."));
  WaitForTeardown();
  ASSERT_EQ(PxStaticUi::Ui(), nullptr);

  Connect(lScript, QStringLiteral("Simulated sensor"), int(QMessageBox::No));
  ASSERT_NE(PxStaticUi::Ui(), nullptr) << "still connectable";
  EXPECT_EQ(SoftwareVersion(), lOld);

  EXPECT_EQ(lScript.Pending(), 0);
}

TEST_F(ShellFlow, UpdateDialogShowsProgressAndCanBeCancelled)
{
  PtModalScript lScript;
  Connect(lScript, QStringLiteral("Simulated sensor"));
  ASSERT_NE(PxStaticUi::Ui(), nullptr);
  auto* lSensor = static_cast<PxSimSensor*>(PxStaticUi::Ui()->Device());
  PxSimUpdateJob lJob(*lSensor, PxSimUpdateJob::BundledImage(PxSimProtocol::COMPONENT_FPGA), false);
  PxCodeUpdateDialog lDialog(&mWindow);
  lDialog.SetLinks(lSensor->Connection(), &lJob);
  int lReports = 0;
  QObject::connect(&lJob, &PxCodeUpdateJob::Progress, [&](qint64 aDone, qint64 aTotal) {
    if (++lReports == 4) {
      PxTest::SaveToGallery(&lDialog, QStringLiteral("code-update-dialog-progress"));
      EXPECT_LT(aDone, aTotal);
      Button(&lDialog, QStringLiteral("Cancel"))->click();
    }
  });
  lScript.Queue(RUN_UPDATE);
  EXPECT_EQ(lDialog.exec(), QDialog::Rejected);
  EXPECT_EQ(lScript.Interactions().last().mText,
            QStringLiteral("The update was cancelled. The device keeps its previous firmware."));
  EXPECT_EQ(lSensor->FpgaVersion().Value(0), PxSimProtocol::FACTORY_FPGA_VERSION);
  EXPECT_TRUE(lSensor->IsLive());
}
} // namespace
