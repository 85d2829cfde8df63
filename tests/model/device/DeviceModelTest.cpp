// The device model as drivers and the device UI use it: the type registry, the built-in
// properties, lookups, the modified state, undo, editability and the identity setters.
#include "PtException.h"
#include "PxCommand.h"
#include "PxDevice.h"
#include "PxTestDevice.h"
#include "PxTestTransport.h"

#include <gtest/gtest.h>
#include <stdexcept>

TEST(DeviceRegistry, FindsTheFirstEntryOfATypeAndListsAllInOrder)
{
  constexpr PtU16 A = 0x7101, B = 0x7102, UNKNOWN = 0x7199;
  EXPECT_EQ(PxDevice::TypeToName(UNKNOWN), QStringLiteral("??"));
  EXPECT_EQ(PxDevice::Create(UNKNOWN, nullptr), nullptr);

  const size_t lBefore = PxDevice::RegisteredTypeCount();
  PxDevice::RegisterType(A, QStringLiteral("Unit A"), [](PxConnection* aConnection) -> PxDevice* {
    auto* lDevice = new PxTestDevice(aConnection);
    lDevice->mCalls << QStringLiteral("made as A");
    return lDevice;
  });
  PxDevice::RegisterType(B, QStringLiteral("Unit B"), &PxTestDevice::Make);
  PxDevice::RegisterType(A, QStringLiteral("Unit A, again"), &PxTestDevice::Make);

  ASSERT_EQ(PxDevice::RegisteredTypeCount(), lBefore + 3);
  const std::pair<PtU16, const char*> lExpected[] = {{A, "Unit A"}, {B, "Unit B"}, {A, "Unit A, again"}};
  for (size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(PxDevice::RegisteredType(lBefore + i), lExpected[i].first);
    EXPECT_EQ(PxDevice::RegisteredName(lBefore + i), QLatin1String(lExpected[i].second));
  }
  EXPECT_EQ(PxDevice::TypeToName(A), QStringLiteral("Unit A"));
  EXPECT_EQ(PxDevice::TypeToName(B), QStringLiteral("Unit B"));

  PxTestTransport lTransport;
  std::unique_ptr<PxDevice> lDevice(PxDevice::Create(A, &lTransport));
  ASSERT_NE(lDevice, nullptr);
  EXPECT_EQ(lDevice->Connection(), &lTransport);
  EXPECT_EQ(static_cast<PxTestDevice*>(lDevice.get())->mCalls, QStringList{QStringLiteral("made as A")});
}

TEST(Device, HasTheSixBuiltInPropertiesWithTheirIdentifiers)
{
  struct Expected
  {
    PtU32 mId;
    PtU16 mDeviceId;
    PtU32 mFlags;
    PtU32 mUnitSize;
    int mTextType; // 0: an integer property
  };
  const Expected lTable[] = {
      {4351, 1, 8, 2, 0},                            // FPGA version
      {4349, 1, 8, 4, 0},                            // software version
      {4350, 1, 8, 4, 0},                            // software CRC
      {4348, 1, 8, 11, PxTextProperty::TYPE_ASCII},  // software part number
      {34, 320, 15, 64, PxTextProperty::TYPE_UTF16}, // device name
      {2097154, 0, 8, 2, 0},                         // product type
  };
  PxTestDevice lDevice(nullptr, false);
  EXPECT_EQ(lDevice.Properties().size(), 6);
  for (const Expected& lRow : lTable) {
    SCOPED_TRACE(lRow.mId);
    const PxProperty* lProperty = lDevice.FindProperty(lRow.mId);
    ASSERT_NE(lProperty, nullptr);
    EXPECT_EQ(lProperty->DeviceId(), lRow.mDeviceId);
    EXPECT_EQ(lProperty->Flags(), lRow.mFlags);
    EXPECT_EQ(lProperty->UnitSize(), lRow.mUnitSize);
    EXPECT_EQ(lProperty->Count(), 0u) << "a device's values come from the device or a file";
    const auto* lText = qobject_cast<const PxTextProperty*>(lProperty);
    if (lRow.mTextType) {
      ASSERT_NE(lText, nullptr);
      EXPECT_EQ(int(lText->Type()), lRow.mTextType);
    } else {
      EXPECT_NE(qobject_cast<const PxIntegerProperty*>(lProperty), nullptr);
    }
  }
  // Four built-ins share device id 1; the part number, added last of them, answers for it.
  EXPECT_EQ(lDevice.FindPropertyByDeviceId(1), &lDevice.SoftwarePartNumber());
  EXPECT_EQ(lDevice.FindPropertyByDeviceId(320), &lDevice.DeviceName());
  EXPECT_EQ(lDevice.FindPropertyByDeviceId(0), &lDevice.ProductType());
}

TEST(Device, IdentitySettersGiveOneValue)
{
  PxTestDevice lDevice;
  lDevice.SetSoftwareCRC(0xDEADBEEF); // beyond the signed range of the value
  lDevice.SetSoftwarePartNumber("PN-1234567890", 6);
  ASSERT_EQ(lDevice.SoftwareCRC().Count(), 1u);
  EXPECT_EQ(static_cast<PtU32>(lDevice.SoftwareCRC().Value(0)), 0xDEADBEEF);
  EXPECT_EQ(lDevice.SoftwarePartNumber().TextValue(0), QStringLiteral("PN-123"));
  lDevice.SetSoftwarePartNumber("AB", PT_ALL);
  EXPECT_EQ(lDevice.SoftwarePartNumber().TextValue(0), QStringLiteral("AB")) << "the old text is cleared";
}

TEST(Device, MapsReplaceEntriesAndSortByCategory)
{
  PxTestDevice lDevice;
  PxIntegerProperty lFirst(CAT_CALIBRATION, 5000, 77, 4);
  PxIntegerProperty lSecond(CAT_USER_CALIBRATION, 5000, 78, 4);
  lDevice.AddProperty(&lFirst);
  lDevice.AddProperty(&lSecond);
  EXPECT_EQ(lDevice.FindProperty(5000), &lSecond);
  EXPECT_EQ(lDevice.FindPropertyByDeviceId(78), &lSecond);
  EXPECT_THROW(lDevice.Property(5001), std::out_of_range);

  EXPECT_EQ(lDevice.GetPropertiesByCategory(CAT_CONFIGURATION).size(), 5u); // versions, CRC, part number, type
  EXPECT_EQ(lDevice.GetPropertiesByCategory(CAT_CALIBRATION).size(), 0u);   // replaced
  EXPECT_EQ(lDevice.GetPropertiesByCategory(CAT_USER_CALIBRATION), std::vector<PxProperty*>{&lSecond});
  EXPECT_EQ(lDevice.GetPropertiesByCategory(CAT_STATE).size(), 2u); // name, serial number

  PxCommand lCommand(5242878, 4);
  lDevice.AddCommand(&lCommand);
  EXPECT_EQ(lDevice.FindCommand(5242878), &lCommand);
}

TEST(DeviceDeathTest, RefusesANullProperty)
{
  PxTestDevice lDevice;
  EXPECT_DEATH(lDevice.AddProperty(nullptr), "aProperty");
}

TEST(Device, BaseDeviceHasNoCommands)
{
  PxTestDevice lDevice;
  try {
    lDevice.ExecuteCommand(77);
    ADD_FAILURE() << "executed";
  } catch (const PtInvalidArgumentException& e) {
    unsigned int lCode = 0;
    QString lText;
    PtExtractException(e, &lCode, &lText);
    EXPECT_EQ(lCode, 17u);
    EXPECT_TRUE(lText.contains(QStringLiteral("aId")) && lText.contains(QStringLiteral("77"))) << lText.toStdString();
  }
}

TEST(Device, ModifiedMeansUnappliedEditsOfExchangedEditableProperties)
{
  struct Case
  {
    const char* mWhat;
    PtU32 mFlags;
    PtU16 mDeviceId;
    bool mEdited;
    bool mModified;
  };
  const Case lCases[] = {
      {"edited", F_EDITABLE, 40, true, true},
      {"read, not edited", F_EDITABLE, 40, false, false},
      {"not exchanged with the device", F_EDITABLE, 0, true, false},
      {"not editable", 0, 40, true, false},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    PxTestDevice lDevice;
    PxIntegerProperty lProperty(c.mFlags, 5000, c.mDeviceId, 4);
    lDevice.AddProperty(&lProperty);
    lProperty.SetCount(2);
    lProperty.PostRead(); // as read from the device: zeros
    if (c.mEdited) {
      lProperty.SetValue(1, 9);
    }
    EXPECT_EQ(lDevice.PropertyModified(), c.mModified);
    lDevice.RestoreProperties();
    EXPECT_FALSE(lDevice.PropertyModified());
    // Undo only reaches what Apply would have sent.
    EXPECT_EQ(lProperty.Value(1), c.mModified || !c.mEdited ? 0 : 9);
  }
}

TEST(Device, EditabilityFollowsTheLink)
{
  PxTestTransport lTransport;
  struct Case
  {
    const char* mWhat;
    PxConnection* mConnection;
    bool mDisconnect;
    bool mLive;
  };
  const Case lCases[] = {
      {"no connection", nullptr, false, false},
      {"connected", &lTransport, false, true},
      {"disconnected", &lTransport, true, false},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    PxTestDevice lDevice(c.mConnection);
    PxIntegerProperty lEditable(CAT_CONFIGURATION | F_EDITABLE, 5000, 40, 4);
    PxIntegerProperty lReadOnly(CAT_CONFIGURATION, 5001, 41, 4);
    for (PxIntegerProperty* lProperty : {&lEditable, &lReadOnly}) {
      lDevice.AddProperty(lProperty);
      lProperty->SetCount(1);
    }
    lEditable.SetEditable(!c.mLive);
    if (c.mDisconnect) {
      lDevice.Disconnect();
    }
    EXPECT_EQ(lDevice.IsLive(), c.mLive);
    EXPECT_EQ(lDevice.CanModifyConfiguration(), c.mLive);
    lDevice.UpdateEditables();
    EXPECT_EQ(lEditable.Editable(0), c.mLive);
    EXPECT_FALSE(lReadOnly.Editable(0));
  }
  EXPECT_EQ(lTransport.DisconnectCount(), 1);
  PxTestDevice lUnlinked;
  lUnlinked.Disconnect(); // nothing to close, nothing to fail

  // Teardown may delete the link first; the device must not reach for it then.
  auto* lGone = new PxTestTransport;
  PxTestDevice lOrphan(lGone);
  delete lGone;
  EXPECT_FALSE(lOrphan.IsLive());
  lOrphan.Disconnect();
}

TEST(Device, SerialNumberIsTheRawTextUpToItsEnd)
{
  PxTestDevice lDevice;
  lDevice.SetSerialNumber("0123456789ABCDEF"); // fills the property: no NUL at all
  EXPECT_EQ(lDevice.SerialNumber(), QStringLiteral("0123456789ABCDEF"));

  PxTestDevice lWithout(nullptr, false);
  EXPECT_THROW(lWithout.SerialNumber(), std::out_of_range);
}
