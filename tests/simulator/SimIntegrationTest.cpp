// A driver's view of the simulated sensor, in-process and over TCP to a parvex-sim started by the
// test: connecting, configuration round trips, acquisition, reset, and every injected fault.

#include "PxInProcessConnection.h"
#include "PxTcpConnection.h"
#include "PxTest.h"
#include "SimProcess.h"
#include "SimTestClient.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

using namespace PxSimProtocol;

namespace {
constexpr int TIMEOUT_MS = 300;

enum class Transport { IN_PROCESS, TCP };

class SimLink : public ::testing::TestWithParam<Transport>
{
protected:
  void SetUp() override
  {
    if (GetParam() == Transport::TCP) {
      mProcess = std::make_unique<SimProcess>();
      ASSERT_NE(mProcess->Port(), 0) << "parvex-sim did not start";
    }
    ASSERT_TRUE(Reconnect());
  }

  // A fresh link to the same sensor, as the connection dialog makes one. The in-process link owns
  // its sensor, so it is reconnected rather than replaced.
  bool Reconnect()
  {
    mClient.reset();
    if (GetParam() == Transport::TCP) {
      mTcp = std::make_unique<PxTcpConnection>(QStringLiteral("127.0.0.1"), mProcess->Port());
      mTcp->SetTimeout(TIMEOUT_MS);
      mLink = mTcp.get();
    } else {
      if (!mInProcess) {
        mInProcess = std::make_unique<PxInProcessConnection>();
        mInProcess->SetTimeout(TIMEOUT_MS);
      }
      mLink = mInProcess.get();
    }
    mClient = std::make_unique<SimTestClient>(*mLink);
    return mLink->Connect();
  }
  PxControlConnection& Link() { return *mLink; }

  std::unique_ptr<SimProcess> mProcess;
  std::unique_ptr<PxInProcessConnection> mInProcess;
  std::unique_ptr<PxTcpConnection> mTcp;
  PxControlConnection* mLink = nullptr;
  std::unique_ptr<SimTestClient> mClient;
};

// The measurement rate as the state provider derives it: 15 intervals over the last 16 timestamps.
class RateRing
{
public:
  void Add(PtU32 aTimestamp)
  {
    mRing[mIndex] = aTimestamp;
    mIndex = (mIndex + 1) % 16;
  }
  float Rate() const { return 15.0f / static_cast<float>(mRing[(mIndex + 15) % 16] - mRing[mIndex]) * 1000.0f; }

private:
  PtU32 mRing[16] = {};
  size_t mIndex = 0;
};
} // namespace

TEST_P(SimLink, ReadsIdentityAndConfigurationAndAppliesAChange)
{
  SimTestClient::Answer lIdentity = mClient->Exchange(REQ_IDENTITY);
  EXPECT_EQ(lIdentity.at(ID_DEVICE_TYPE).At<PtU16>(), DEVICE_TYPE);
  EXPECT_EQ(mClient->Exchange(REQ_READ_CONFIG).at(ID_CHANNEL_COUNT).At<PtU32>(), 16u);

  mClient->Write<float>(ID_DETECTION_THRESHOLD, 12.5f);
  mClient->Write<std::int8_t>(ID_SMOOTHING, -5);
  EXPECT_EQ(mClient->Read(ID_DETECTION_THRESHOLD).At<float>(), 12.5f);
  EXPECT_EQ(mClient->Read(ID_SMOOTHING).At<std::int8_t>(), -5) << "narrow signed values keep their sign";
}

TEST_P(SimLink, TwoHundredFramesArriveAtTheConfiguredRate)
{
  mClient->Write<float>(ID_REFRESH_RATE, 100.0f);
  RateRing lRing;
  PtU32 lLast = 0;
  for (int lFrame = 0; lFrame < 200; ++lFrame) {
    SimTestClient::Answer lState = mClient->Exchange(REQ_STATE);
    const PtU32 lTimestamp = lState.at(ID_TIMESTAMP).At<PtU32>();
    if (lFrame > 0) {
      ASSERT_GT(lTimestamp, lLast) << "frame " << lFrame;
    }
    lLast = lTimestamp;
    lRing.Add(lTimestamp);
    EXPECT_EQ(lState.at(ID_TEMPERATURES).mCount, 2);
    SimTestClient::Answer lEchoes = mClient->Exchange(REQ_ECHOES);
    ASSERT_LE(lEchoes.at(ID_ECHO_DISTANCE).mCount, MAX_ECHOES);
    EXPECT_EQ(lEchoes.at(ID_ECHO_FRAME).At<PtU32>(), lState.at(ID_FRAME_COUNTER).At<PtU32>()) << "one frame";
    SimTestClient::Traces lTraces = mClient->ReadTraces(false);
    ASSERT_EQ(lTraces.mLength, 512u);
    ASSERT_EQ(lTraces.mFrame, lState.at(ID_FRAME_COUNTER).At<PtU32>());
  }
  // Within the ±10 % the state display accepts before it shows the rate in red.
  EXPECT_NEAR(lRing.Rate(), 100.0f, 10.0f);
  SimTestClient::Traces lFiltered = mClient->ReadTraces(true);
  EXPECT_EQ(lFiltered.mItemSize, 512u * 4u) << "the 32-bit kind";
}

TEST_P(SimLink, ResetRevertsUnsavedChangesAndRestartsTheClock)
{
  mClient->Write<PtByte>(ID_LIGHT_POWER, 20);
  for (int i = 0; i < 5; ++i) {
    mClient->Exchange(REQ_STATE);
  }
  mClient->Exchange(REQ_RESET);
  EXPECT_TRUE(Link().Connected());
  EXPECT_EQ(mClient->Read(ID_LIGHT_POWER).At<PtByte>(), 100);
  SimTestClient::Answer lState = mClient->Exchange(REQ_STATE);
  EXPECT_EQ(lState.at(ID_TIMESTAMP).At<PtU32>(), 0u);
  EXPECT_EQ(lState.at(ID_ACQUISITION_STATE).At<PtU16>(), ACQUISITION_STARTING);
}

TEST_P(SimLink, EveryInjectedFaultEndsAsDocumented)
{
  struct Case
  {
    const char* mWhat;
    Fault mFault;
    PtU32 mParameter;
    unsigned int mCode; // what ReadAnswer throws: an answer code, 1000, or 0 for a transport error
    bool mKeepsLink;
  } const lCases[] = {
      {"error answer", FAULT_ERROR_ANSWER, 42, 42, true},
      {"late answer", FAULT_LATE_ANSWER, 4 * TIMEOUT_MS, 0, false},
      {"dropped link", FAULT_DROP_LINK, 0, 0, false},
      {"corrupt header", FAULT_CORRUPT_HEADER, 0, PxProtocolReader::E_ANSWER_HEADER, false},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    mClient->ArmFault(c.mFault, REQ_STATE, c.mParameter, 1);
    mClient->Exchange(REQ_IDENTITY); // another request passes untouched
    QSignalSpy lLost(&Link(), &PxConnection::Disconnected);
    QElapsedTimer lClock;
    lClock.start();
    try {
      mClient->Exchange(REQ_STATE);
      ADD_FAILURE() << "no failure";
    } catch (const PxProtocolReader::Exception& e) {
      EXPECT_EQ(std::strtoul(e.what(), nullptr, 10), c.mCode);
    } catch (const PxConnection::Exception& e) {
      EXPECT_EQ(c.mCode, 0u) << e.what();
    }
    EXPECT_LT(lClock.elapsed(), TIMEOUT_MS + 1500) << "a dead link ends within the time-out";
    EXPECT_EQ(Link().Connected(), c.mKeepsLink);
    QCoreApplication::processEvents(); // a late signal from the socket must not make it twice
    EXPECT_EQ(lLost.count(), c.mKeepsLink ? 0 : 1);
    if (!c.mKeepsLink) {
      ASSERT_TRUE(Reconnect());
    }
    EXPECT_EQ(mClient->Exchange(REQ_STATE).count(ID_TIMESTAMP), 1u) << "the fault hit once";
  }
}

INSTANTIATE_TEST_SUITE_P(Transports, SimLink, ::testing::Values(Transport::IN_PROCESS, Transport::TCP),
                         [](const ::testing::TestParamInfo<Transport>& aInfo) {
                           return aInfo.param == Transport::TCP ? std::string("Tcp") : std::string("InProcess");
                         });

TEST(SimServer, ServesOneClientAtATimeLogsEachAndStopsCleanly)
{
  SimProcess lSim;
  ASSERT_NE(lSim.Port(), 0);
  PxTcpConnection lFirst(QStringLiteral("127.0.0.1"), lSim.Port());
  lFirst.SetTimeout(TIMEOUT_MS);
  ASSERT_TRUE(lFirst.Connect());
  SimTestClient lFirstClient(lFirst);
  lFirstClient.Exchange(REQ_IDENTITY);

  PxTcpConnection lSecond(QStringLiteral("127.0.0.1"), lSim.Port());
  lSecond.SetTimeout(TIMEOUT_MS);
  QSignalSpy lSecondLost(&lSecond, &PxConnection::Disconnected);
  SimTestClient lSecondClient(lSecond);
  if (lSecond.Connect()) { // the handshake may complete before the server turns it away
    EXPECT_THROW(lSecondClient.Exchange(REQ_IDENTITY), PxConnection::Exception);
    EXPECT_EQ(lSecondLost.count(), 1);
  }
  EXPECT_NO_THROW(lFirstClient.Exchange(REQ_STATE)) << "the first client is still served";
  lFirst.Disconnect();

  EXPECT_TRUE(lSim.Stop(SIGINT)) << "a clean exit on SIGINT";
  EXPECT_TRUE(lSim.Log().contains("client 127.0.0.1:")) << lSim.Log().constData();
  EXPECT_TRUE(lSim.Log().contains("refused")) << lSim.Log().constData();
  EXPECT_TRUE(lSim.Log().contains("disconnected after")) << lSim.Log().constData();

  // Connecting to a server that is gone fails within the time-out instead of hanging.
  PxTcpConnection lLate(QStringLiteral("127.0.0.1"), lSim.Port());
  lLate.SetTimeout(TIMEOUT_MS);
  EXPECT_FALSE(lLate.Connect());
  EXPECT_FALSE(lLate.ErrorString().isEmpty());
}

TEST(SimServer, RemembersASavedConfigurationAcrossRuns)
{
  QTemporaryDir lState;
  const QStringList lArguments{QStringLiteral("--state-dir"), lState.path()};
  {
    SimProcess lSim(lArguments);
    PxTcpConnection lLink(QStringLiteral("127.0.0.1"), lSim.Port());
    ASSERT_TRUE(lLink.Connect());
    SimTestClient lClient(lLink);
    lClient.Write<PtU32>(ID_BAUD_RATE, 38400);
    lClient.Exchange(REQ_SAVE_CONFIG);
    // The sensor goes away while the application sits idle: the loss is noticed without a request.
    QSignalSpy lLost(&lLink, &PxConnection::Disconnected);
    EXPECT_TRUE(lSim.Stop(SIGTERM)) << "a clean exit on SIGTERM";
    EXPECT_TRUE(lLost.count() == 1 || lLost.wait(PxTest::WAIT_MS));
    QCoreApplication::processEvents();
    EXPECT_EQ(lLost.count(), 1);
    EXPECT_FALSE(lLink.Connected());
  }
  SimProcess lSim(lArguments);
  PxTcpConnection lLink(QStringLiteral("127.0.0.1"), lSim.Port());
  ASSERT_TRUE(lLink.Connect());
  EXPECT_EQ(SimTestClient(lLink).Read(ID_BAUD_RATE).At<PtU32>(), 38400u);
}
