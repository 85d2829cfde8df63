// The device model as drivers and the device UI use it: the type registry, the modified state,
// undo and editability.
#include "PxDevice.h"
#include "PxTestDevice.h"
#include "PxTestTransport.h"

#include <gtest/gtest.h>

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

TEST(Device, ModifiedMeansUnappliedEditsOfExchangedEditableProperties)
{
  struct Case
  {
    const char* mWhat;
    PtU32 mFlags;
    PtU16 mDeviceId;
    bool mEdited;
    bool mModified;
  } const lCases[] = {
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
  } const lCases[] = {
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
