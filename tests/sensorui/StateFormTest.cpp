#include "PxIntegerProperty.h"
#include "PxResultState.h"
#include "PxSystemStateForm.h"
#include "PxTestSensor.h"
#include "PxTestTransport.h"

#include <QLabel>

#include <gtest/gtest.h>

namespace {
// A sensor with the property the state form keeps current, counting how often it is read again.
class RefreshingSensor : public PxTestSensor
{
public:
  using PxTestSensor::PxTestSensor;
  void RefreshProperty(PtU32 aId) override { mRefreshed << aId; }
  QList<PtU32> mRefreshed;
  PxIntegerProperty mRefreshedProperty{CAT_STATE, PxSystemStateForm::ID_REFRESHED_PROPERTY, 0x0777, 4};
};

TEST(SystemStateForm, IdentityLinesAsTheDeviceReportsThem)
{
  // The software version word, and the version line it gives.
  for (const auto& [lSoftware, lVersion] : {std::pair{0xC005, "Version: FPGA: 1.3  Software: 5 (Factory)  CRC: 4660"},
                                            {0x8005, "Version: FPGA: 1.3  Software: 5 (Upgrade)  CRC: 4660"},
                                            {0x4ABC, "Version: FPGA: 1.3  Software: 2748 (Factory)  CRC: 4660"},
                                            {0x00D4, "Version: FPGA: 1.3  Software: 212 ()  CRC: 4660"}}) {
    PxTestSensor lSensor;
    lSensor.SetSerialNumber("PX16-000042");
    lSensor.SetFpgaVersion(0x0103);
    lSensor.SetSoftwareVersion(static_cast<PtU16>(lSoftware));
    lSensor.SetSoftwareCRC(0x1234);
    const char lPart[] = "74E0016-2";
    lSensor.SetSoftwarePartNumber(lPart, sizeof(lPart) - 1);
    PxSystemStateForm lForm;
    lForm.SetSensor(&lSensor);
    EXPECT_EQ(lForm.VersionLabel()->text(), QLatin1String(lVersion));
    EXPECT_EQ(lForm.SerialNumberLabel()->text(), QStringLiteral("Serial Number: PX16-000042"));
    // This sensor reports no hardware part number: its place stays empty.
    EXPECT_EQ(lForm.PartNumbersLabel()->text(), QStringLiteral("Part Numbers: Hardware:   Software: 74E0016-2"));
  }
}

TEST(SystemStateForm, RefreshesItsPropertyOnlyWhileTheSensorIsLive)
{
  for (bool lLive : {false, true}) {
    SCOPED_TRACE(lLive);
    auto* lLink = new PxTestTransport;
    ASSERT_TRUE(lLink->Connect());
    RefreshingSensor lSensor(lLive ? lLink : nullptr);
    lLink->setParent(&lSensor);
    lSensor.AddProperty(&lSensor.mRefreshedProperty);
    PxSystemStateForm lForm;
    lForm.SetSensor(&lSensor);
    auto* lState = lSensor.StateProvider();
    Q_EMIT lState->NewData();
    Q_EMIT lState->NewData();
    EXPECT_EQ(lSensor.mRefreshed.size(), lLive ? 2 : 0);
    if (lLive) {
      // A link that drops stops the refresh at once.
      lLink->Disconnect();
      Q_EMIT lState->NewData();
      EXPECT_EQ(lSensor.mRefreshed.size(), 2);
      EXPECT_EQ(lSensor.mRefreshed.at(0), PxSystemStateForm::ID_REFRESHED_PROPERTY);
    }
  }
}

} // namespace
