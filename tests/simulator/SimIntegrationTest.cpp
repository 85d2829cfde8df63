// parvex-sim as a process: one client at a time, clean exits on signals, and a state directory
// that outlives a run. The driver's tests cover the flow over both transports.

#include "PxTcpConnection.h"
#include "PxTest.h"
#include "SimProcess.h"
#include "SimTestClient.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

using namespace PxSimProtocol;

namespace {
// A link to the simulator on aPort that gives up after 300 ms.
std::unique_ptr<PxTcpConnection> Link(quint16 aPort)
{
  auto lLink = std::make_unique<PxTcpConnection>(QStringLiteral("127.0.0.1"), aPort);
  lLink->SetTimeout(300);
  return lLink;
}
} // namespace

TEST(SimServer, ServesOneClientAtATimeAndStopsCleanly)
{
  SimProcess lSim;
  ASSERT_NE(lSim.Port(), 0);
  auto lFirst = Link(lSim.Port());
  ASSERT_TRUE(lFirst->Connect());
  SimTestClient lFirstClient(*lFirst);
  lFirstClient.Exchange(REQ_IDENTITY);

  auto lSecond = Link(lSim.Port());
  QSignalSpy lSecondLost(lSecond.get(), &PxConnection::Disconnected);
  SimTestClient lSecondClient(*lSecond);
  if (lSecond->Connect()) { // the handshake may complete before the server turns it away
    EXPECT_THROW(lSecondClient.Exchange(REQ_IDENTITY), PxConnection::Exception);
    EXPECT_EQ(lSecondLost.count(), 1);
  }
  EXPECT_NO_THROW(lFirstClient.Exchange(REQ_STATE)) << "the first client is still served";
  lFirst->Disconnect();

  EXPECT_TRUE(lSim.Stop(SIGINT)) << "a clean exit on SIGINT";

  // Connecting to a server that is gone fails within the time-out instead of hanging.
  auto lLate = Link(lSim.Port());
  EXPECT_FALSE(lLate->Connect());
  EXPECT_FALSE(lLate->ErrorString().isEmpty());
}

TEST(SimServer, RemembersASavedConfigurationAcrossRuns)
{
  QTemporaryDir lState;
  const QStringList lArguments{QStringLiteral("--state-dir"), lState.path()};
  {
    SimProcess lSim(lArguments);
    auto lLink = Link(lSim.Port());
    ASSERT_TRUE(lLink->Connect());
    SimTestClient lClient(*lLink);
    lClient.Write<PtU32>(ID_BAUD_RATE, 38400);
    lClient.Exchange(REQ_SAVE_CONFIG);
    // The sensor goes away while the application sits idle: the loss is noticed without a request.
    QSignalSpy lLost(lLink.get(), &PxConnection::Disconnected);
    EXPECT_TRUE(lSim.Stop(SIGTERM)) << "a clean exit on SIGTERM";
    EXPECT_TRUE(lLost.count() == 1 || lLost.wait(PxTest::WAIT_MS));
    QCoreApplication::processEvents();
    EXPECT_EQ(lLost.count(), 1);
    EXPECT_FALSE(lLink->Connected());
  }
  SimProcess lSim(lArguments);
  auto lLink = Link(lSim.Port());
  ASSERT_TRUE(lLink->Connect());
  EXPECT_EQ(SimTestClient(*lLink).Read(ID_BAUD_RATE).At<PtU32>(), 38400u);
}
