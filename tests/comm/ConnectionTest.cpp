#include "PxConnection.h"
#include "PxTest.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {
int sCreated = 0;
template <char NAME>
PxConnection* Create()
{
  ++sCreated;
  auto* c = new PxTestTransport;
  c->setObjectName(QString(QLatin1Char(NAME)));
  return c;
}
QStringList ListTwo()
{
  return {QStringLiteral("sensor-1"), QStringLiteral("sensor-2")};
}

TEST(ConnectionRegistry, LookupsTakeTheFirstRegistrationAndUnknownNamesGiveNothing)
{
  const PxConnection::WidgetCreator lNoWidget = [](QWidget*) -> PxConnectionWidget* { return nullptr; };
  PxConnection::sTypes.clear();
  PxConnection::RegisterType(QStringLiteral("tcp"), QStringLiteral("TCP/IP"), Create<'A'>, lNoWidget, ListTwo);
  PxConnection::RegisterType(QStringLiteral("tcp"), QStringLiteral("again"), Create<'B'>, lNoWidget, nullptr);
  PxConnection::RegisterType(QStringLiteral("usb"), QStringLiteral("USB"), Create<'B'>, lNoWidget, nullptr);

  sCreated = 0;
  EXPECT_EQ(PxConnection::CreateConnection(QStringLiteral("serial")), nullptr);
  EXPECT_EQ(sCreated, 0) << "an unknown name must create nothing";
  std::unique_ptr<PxConnection> lTcp(PxConnection::CreateConnection(QStringLiteral("tcp")));
  ASSERT_NE(lTcp, nullptr);
  EXPECT_EQ(lTcp->objectName(), QStringLiteral("A"));

  EXPECT_EQ(PxConnection::ListDevices(QStringLiteral("tcp")), ListTwo());
  EXPECT_TRUE(PxConnection::ListDevices(QStringLiteral("usb")).isEmpty()) << "no lister, no devices";
  EXPECT_TRUE(PxConnection::ListDevices(QStringLiteral("nope")).isEmpty());
  PxConnection::sTypes.clear();

  PxConnection::RegisterSerialListener(
      7, [](PtModbus*, QTableWidget*) { return reinterpret_cast<PxSerialPortListener*>(1); });
  PxConnection::RegisterSerialListener(
      7, [](PtModbus*, QTableWidget*) { return reinterpret_cast<PxSerialPortListener*>(2); });
  EXPECT_EQ(PxConnection::CreateSerialPortListener(7, nullptr, nullptr), reinterpret_cast<PxSerialPortListener*>(1));
  EXPECT_EQ(PxConnection::CreateSerialPortListener(8, nullptr, nullptr), nullptr);
  PxConnection::sSerialConnections.clear();
}

// --- the request/answer discipline ---------------------------------------------------------------

TEST(ControlConnection, AnswerOutcomesDecideWhetherTheLinkSurvives)
{
  struct Case
  {
    const char* mName;
    QByteArray mAnswer;
    unsigned int mCode; // 0 = success
    bool mDisconnects;
    bool mKeepsRequest;
  } const lCases[] = {
      {"success", PxTestBytes().AnswerHeader(2, 0, 12, 9).ElementHeader(1, 1, 4).U32(7), 0, false, false},
      {"device code 999 keeps the link", PxTestBytes().AnswerHeader(2, 999, 0, 9), 999, false, true},
      {"device code 1000 drops it", PxTestBytes().AnswerHeader(2, 1000, 0, 9), 1000, true, true},
      {"answer to another request", PxTestBytes().AnswerHeader(2, 0, 0, 10), 1000, true, true},
      {"other protocol", PxTestBytes().AnswerHeader(3, 0, 0, 9), 1000, true, true},
      {"size below header", PxTestBytes().U16(2).U16(0).U32(4).U16(9).Zeros(6), 1004, true, true},
      {"silent device", PxTestBytes().U16(2).U16(0), 1, true, true},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    PxTestTransport lLink;
    QSignalSpy lLost(&lLink, &PxConnection::Disconnected);
    lLink.StartRequest(9);
    lLink.SendRequest();
    ASSERT_EQ(lLink.Written().size(), 1u);
    EXPECT_EQ(lLink.Written()[0], QByteArray(PxTestBytes().RequestHeader(2, 9, 0)));
    lLink.Queue(c.mAnswer);
    if (c.mCode == 0) {
      PxProtocolReader* lReader = lLink.ReadAnswer();
      ASSERT_EQ(lReader, &lLink.Reader());
      ASSERT_TRUE(lReader->Advance());
      EXPECT_EQ(lReader->Id(), 1);
    } else {
      EXPECT_EQ(PxTest::ErrorCode([&] { lLink.ReadAnswer(); }), c.mCode);
    }
    EXPECT_EQ(lLink.DisconnectCount(), c.mDisconnects ? 1 : 0);
    EXPECT_EQ(lLost.count(), c.mDisconnects ? 1 : 0);
    EXPECT_EQ(lLink.Connected(), !c.mDisconnects);
    EXPECT_EQ(lLink.LastRequest(), c.mKeepsRequest ? 9 : 0);
    if (!c.mDisconnects) {
      EXPECT_EQ(lLink.Pending(), 0) << "an answer is read whole, so the next one is in step";
    }
  }
}

TEST(ControlConnection, FailedWriteDisconnectsAndKeepsThePreviousState)
{
  PxTestTransport lLink;
  lLink.FailNextWrite();
  lLink.StartRequest(6);
  EXPECT_EQ(PxTest::ErrorCode([&] { lLink.SendRequest(); }), 2u);
  EXPECT_EQ(lLink.DisconnectCount(), 1);
  EXPECT_EQ(lLink.LastRequest(), PT_COMM_CFGSRV_REQUEST_INVALID);
}

} // namespace
