#include "PtModalScript.h"
#include "PxConnection.h"
#include "PxConnectionDialog.h"
#include "PxConnectionWidget.h"
#include "PxDeviceUi.h"
#include "PxDockWidget.h"
#include "PxStaticUi.h"
#include "PxTest.h"
#include "PxTestDevice.h"
#include "PxTestGallery.h"
#include "PxTestHost.h"
#include "PxTestTransport.h"
#include "PxTestUi.h"
#include "PxTextProperty.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QRegularExpression>
#include <QSettings>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {
class TestForm : public PxDockWidget
{
public:
  TestForm(QWidget* aParent, unsigned int aKind)
      : PxDockWidget(aParent)
      , mKind(aKind)
  {
    setWindowTitle(QStringLiteral("Form %1").arg(aKind));
    setWidget(new QLabel(windowTitle()));
  }
  unsigned int PermanentId() const override { return mKind; }
  unsigned int mKind;
};

class TestUi : public PxDeviceUi
{
public:
  using PxDeviceUi::PxDeviceUi;
  QString Name() const override { return QStringLiteral("Test UI"); }
  PxDockWidget* RequestWindow(unsigned int aId, unsigned int aFlags) override
  {
    auto* lForm = new TestForm(PxStaticUi::Host(), aId);
    lForm->SetFlags(aFlags);
    AddFloatingWindow(lForm, 0);
    return lForm;
  }
  QList<PxUpdateSelectDialog::FirmwareFile> FirmwareFiles() const override
  {
    return {{QStringLiteral("/fw/new.ptb"), 2, QStringLiteral("Software 1.02")}};
  }
  PxTestDevice* Test() const { return static_cast<PxTestDevice*>(Device()); }
};

// What the next connection brings: the device's version words, or a failure.
struct NextDevice
{
  int mVersion = 0x0102;
  int mBuild = 0x0203;
  bool mFail = false;
  bool mLimited = false;
  int mWidgets = 0;
} sNext;

class LimitedLink : public PxTestTransport
{
public:
  bool IsLimitedMode() const override { return sNext.mLimited; }
};

class TestWidget : public PxConnectionWidget
{
public:
  explicit TestWidget(QWidget* aParent)
      : PxConnectionWidget(aParent)
  {
    ++sNext.mWidgets;
  }
  PxDeviceUi* Ui() const override { return mUi; }
  void Connect() override
  {
    if (sNext.mFail) {
      return; // a real widget says why in itself
    }
    auto* lLink = new LimitedLink;
    auto* lDevice = new PxTestDevice(lLink);
    lLink->setParent(lDevice);
    lDevice->SetSoftwareVersion(static_cast<PtU16>(sNext.mVersion));
    lDevice->SetFpgaVersion(static_cast<PtU16>(sNext.mBuild));
    mUi = new TestUi(lDevice);
    Q_EMIT ConnectionCompleted();
  }
  PxDeviceUi* mUi = nullptr;
};

// A host with the application UI around it and aTypes registered connection types.
class Shell : public ::testing::Test
{
protected:
  void SetUp() override
  {
    mSavedTypes.swap(PxConnection::sTypes);
    SetTypes(1);
    QSettings().remove(QStringLiteral("ConnectionDialog"));
    QSettings().remove(QStringLiteral("Test UI"));
    sNext = NextDevice();
    ASSERT_TRUE(PxStaticUi::Initialize(&mHost));
    mUi = PxStaticUi::Singleton();
  }
  void TearDown() override
  {
    PxStaticUi::Shutdown();
    PxConnection::sTypes.swap(mSavedTypes);
  }
  void SetTypes(int aCount)
  {
    PxConnection::sTypes.clear();
    for (int i = 0; i < aCount; ++i) {
      PxConnection::sTypes.push_back({QStringLiteral("t%1").arg(i), QStringLiteral("Type %1").arg(i),
                                      []() -> PxConnection* { return nullptr; },
                                      [](QWidget* aParent) -> PxConnectionWidget* { return new TestWidget(aParent); }});
    }
  }
  // Connects through "Connect..." with the dialog's Connect button, as a user would; whether a
  // device UI is up afterwards.
  bool ConnectThroughDialog(PtModalScript& aScript, const QList<int>& aThenAnswers = {})
  {
    aScript.Queue([](QDialog* aDialog) { PxTest::Button(aDialog, QStringLiteral("Connect"))->click(); });
    for (int a : aThenAnswers) {
      aScript.Queue(a);
    }
    mUi->ConnectAction()->trigger();
    return Ui() != nullptr;
  }
  TestUi* Ui() const { return static_cast<TestUi*>(PxStaticUi::Ui()); }

  std::vector<PxConnection::Type> mSavedTypes;
  PxTest::Host mHost;
  PxStaticUi* mUi = nullptr;
};

TEST_F(Shell, ConnectionDialogChoosesTypesAndRemembersTheOneThatConnected)
{
  {
    PxConnectionDialog lOne(&mHost);
    EXPECT_TRUE(lOne.findChild<QComboBox*>()->isHidden()) << "one type: nothing to choose";
    EXPECT_NE(lOne.CurrentWidget(), nullptr);
    EXPECT_EQ(lOne.windowTitle(), QStringLiteral("Connection"));
  }
  SetTypes(3);
  QSettings().setValue(QStringLiteral("ConnectionDialog/Type"), 5);
  PxConnectionDialog lDialog(&mHost);
  auto* lTypes = lDialog.findChild<QComboBox*>();
  EXPECT_FALSE(lTypes->isHidden());
  EXPECT_EQ(lTypes->currentIndex(), 2) << "a stored index past the list selects the last type";
  EXPECT_EQ(lDialog.findChild<QLabel*>()->text(), QStringLiteral("Select a connection type:"));
  lDialog.show();
  PxTest::SaveToGallery(&lDialog, QStringLiteral("connection-dialog-types"));

  const int lBefore = sNext.mWidgets;
  QPointer<PxConnectionWidget> lFirst = lDialog.CurrentWidget();
  lTypes->setCurrentIndex(0);
  lTypes->setCurrentIndex(2);
  EXPECT_EQ(sNext.mWidgets, lBefore + 2) << "every switch makes a fresh widget";
  EXPECT_TRUE(lFirst.isNull()) << "the previous widget goes with what was typed in it";

  sNext.mFail = true;
  lTypes->setCurrentIndex(1);
  QMetaObject::invokeMethod(&lDialog, "PBConnectClicked");
  EXPECT_TRUE(lDialog.isVisible()) << "a failed attempt leaves the dialog open";
  EXPECT_EQ(QSettings().value(QStringLiteral("ConnectionDialog/Type")).toInt(), 5);
  sNext.mFail = false;
  QMetaObject::invokeMethod(&lDialog, "PBConnectClicked");
  EXPECT_EQ(lDialog.result(), QDialog::Accepted);
  EXPECT_EQ(QSettings().value(QStringLiteral("ConnectionDialog/Type")).toInt(), 1);
  delete lDialog.Ui(); // handed over: the dialog must not delete it
}

TEST_F(Shell, VersionCheckOnConnect)
{
  const QString lNewer = QStringLiteral("The device you are connecting to has a more recent firmware\nversion than the "
                                        "configuration software on your computer.\n\nDo you still want to connect?");
  const QString lOld = QStringLiteral("The software in your test device device is not up to date.\n\nDo you want to "
                                      "update to the latest version?");
  const QString lSpecial = QStringLiteral("The device you are connecting to has a non-standard firmware version.\n\n"
                                          "Please contact technical support if you encounter problems.");
  // The software expects version 0x102 and build 0x203.
  struct Case
  {
    int mVersion, mBuild;
    QList<int> mAnswers;
    QStringList mAsked;
    bool mSetUp;
    QStringList mJobs;
  } lCases[] = {
      {0x0102, 0x0203, {}, {}, true, {}},
      {0xC102, 0x0203, {}, {}, true, {}}, // the two flag bits are not version
      {2559, 0x0203, {QMessageBox::No}, {lNewer}, false, {}},
      {2559, 0x0203, {QMessageBox::Yes}, {lNewer}, true, {}},
      {2560, 0x0203, {}, {lSpecial}, true, {}},
      {0x0101, 0x0203, {QMessageBox::No}, {lOld}, true, {}},
      {0x0101, 0x0202, {QMessageBox::Yes}, {lOld}, false, {"CreateComponentUpdateJob 2", "CreateComponentUpdateJob 1"}},
      {0x0102, 0x0202, {QMessageBox::Yes}, {lOld}, true, {"CreateComponentUpdateJob 2"}},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(QStringLiteral("version %1 build %2").arg(c.mVersion, 0, 16).arg(c.mBuild, 0, 16).toStdString());
    sNext.mVersion = c.mVersion;
    sNext.mBuild = c.mBuild;
    PtModalScript lScript;
    QSignalSpy lSetUp(mUi, &PxStaticUi::UiChanged);
    ASSERT_TRUE(ConnectThroughDialog(lScript, c.mAnswers));
    QStringList lAsked;
    for (const PtModalScript::Interaction& i : lScript.Interactions()) {
      if (i.mKind != PtModalScript::K_DIALOG) {
        lAsked << i.mText;
      }
    }
    // The job-less update dialogs report that nothing is available: not part of the check itself.
    lAsked.removeAll(QStringLiteral("No firmware update is available for this device."));
    EXPECT_EQ(lAsked, c.mAsked);
    EXPECT_EQ(Ui()->Test()->mCalls.filter(QStringLiteral("CreateComponentUpdateJob")), c.mJobs);
    EXPECT_EQ(mHost.mTitle, QStringLiteral("test device"));
    EXPECT_EQ(lSetUp.count(), c.mSetUp ? 1 : 0);
    EXPECT_EQ(mUi->ConnectAction()->text(), QStringLiteral("Disconnect..."));
    mUi->ConnectAction()->trigger(); // nothing modified: no question
    EXPECT_EQ(PxStaticUi::Ui(), nullptr);
    EXPECT_EQ(mUi->ConnectionStatus(), QStringLiteral(" Not connected "));
  }
}

TEST_F(Shell, QuitAndDisconnectAskOnlyWithModifiedProperties)
{
  PtModalScript lScript;
  sNext.mLimited = true;
  ASSERT_TRUE(ConnectThroughDialog(lScript));
  EXPECT_EQ(lScript.Interactions().last().mText,
            QStringLiteral("This device is currently working in limited mode. Some features are not available."));
  EXPECT_EQ(mUi->ConnectionStatus(), QStringLiteral(" Test UI "));
  PxTextProperty& lName = Ui()->Test()->DeviceName();
  lName.SetCount(1);
  lName.SetTextValue(0, QStringLiteral("before"));
  lName.PostRead();
  lName.SetTextValue(0, QStringLiteral("edited"));
  ASSERT_TRUE(Ui()->Device()->PropertyModified());

  bool lAccept = true;
  lScript.Queue(QMessageBox::No);
  Q_EMIT mHost.QuitRequested(lAccept);
  EXPECT_FALSE(lAccept);
  ASSERT_NE(Ui(), nullptr);
  EXPECT_EQ(lName.TextValue(0), QStringLiteral("edited")) << "a refused quit keeps the edits";
  EXPECT_EQ(lScript.Interactions().last().mText,
            QStringLiteral("Some properties are modified.\n\nDo you really want to close the application?"));

  lScript.Queue(QMessageBox::No);
  mUi->ConnectAction()->trigger();
  EXPECT_EQ(lScript.Interactions().last().mText,
            QStringLiteral("Some properties are modified.\n\nDo you really want to disconnect?"));
  ASSERT_NE(Ui(), nullptr);

  const int lAsked = lScript.Interactions().size();
  lScript.Queue(QMessageBox::Yes);
  Q_EMIT mHost.QuitRequested(lAccept = true);
  EXPECT_TRUE(lAccept);
  EXPECT_EQ(lScript.Interactions().size(), lAsked + 1) << "one question, not a second one for the disconnect";
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_EQ(mHost.mTitle, QString());
}

TEST_F(Shell, LinkLostUnderAModalDialogIsTornDownOnTheFirstTickAfterIt)
{
  PtModalScript lScript;
  ASSERT_TRUE(ConnectThroughDialog(lScript));
  bool lHeldDuringDialog = false;
  lScript.Queue([&](QDialog*) {
    Ui()->Device()->Disconnect(); // the sensor drops the link while the firmware list is open
    QCoreApplication::processEvents();
    Q_EMIT mHost.Tick();
    lHeldDuringDialog = PxStaticUi::Ui() != nullptr && mUi->TeardownPending();
  });
  Ui()->UpdateAction()->trigger();
  EXPECT_TRUE(lHeldDuringDialog) << "the device UI must outlive the dialog that runs over it";
  ASSERT_NE(PxStaticUi::Ui(), nullptr) << "nothing is torn down before a tick";
  Q_EMIT mHost.Tick();
  EXPECT_EQ(PxStaticUi::Ui(), nullptr);
  EXPECT_FALSE(mUi->TeardownPending());
  EXPECT_EQ(mUi->ConnectAction()->text(), QStringLiteral("Connect..."));
}

TEST_F(Shell, ViewMenuAndReplayExcludingConnect)
{
  EXPECT_EQ(PxTest::MenuTitles(mHost), QStringList({"File", "Help", "Device", "View"}));
  QAction* lSerial = mUi->SerialPortAction();
  PxStaticUi::RemoveViewAction(lSerial);
  EXPECT_NE(mUi->ViewMenu(), nullptr) << "the menu goes at the next update, not at once";

  mUi->ReplayAction()->trigger();
  EXPECT_EQ(mUi->ViewMenu(), nullptr) << "an empty View menu goes";
  QAction lExtra(QStringLiteral("Traces"));
  PxStaticUi::AddViewAction(&lExtra);
  ASSERT_NE(mUi->ViewMenu(), nullptr) << "and comes back with the next action";
  ASSERT_NE(mUi->ReplayForm(), nullptr);
  // How each way of ending a replay gives Connect back is the replay suite's; here the action only.
  EXPECT_TRUE(mUi->ReplayAction()->isChecked());
  mUi->ReplayAction()->trigger();
  EXPECT_EQ(mUi->ReplayForm(), nullptr);

  PtModalScript lScript;
  ConnectThroughDialog(lScript);
  EXPECT_FALSE(mUi->ReplayAction()->isEnabled()) << "no replay while a device is connected";
}

TEST_F(Shell, DeviceUiConfigurationFilesResetAndErrors)
{
  PtModalScript lScript;
  ASSERT_TRUE(ConnectThroughDialog(lScript));
  PxTestDevice* lDevice = Ui()->Test();
  lDevice->SetSerialNumber("SN-7");
  const QString lFile = PxTest::ScratchDir() + QStringLiteral("/shell.pto");
  QFile::remove(lFile);

  lScript.Queue(lFile);
  lScript.QueueCancel();
  Ui()->SaveAction()->trigger();
  EXPECT_FALSE(QFile::exists(lFile)) << "a cancelled comment writes nothing";
  const PtModalScript::Interaction lPrompt = lScript.Interactions().last();
  EXPECT_EQ(lPrompt.mTitle, QStringLiteral("Enter comment"));
  EXPECT_EQ(lPrompt.mText, QStringLiteral("Comment (optional):"));

  lScript.Queue(lFile);
  lScript.Queue(QString());
  Ui()->SaveAction()->trigger();
  ASSERT_TRUE(QFile::exists(lFile));

  lScript.Queue(lFile);
  lScript.Queue(QMessageBox::No);
  lDevice->mCalls.clear();
  Ui()->LoadAction()->trigger();
  const QString lAsked = lScript.Interactions().last().mText;
  const QRegularExpression lExpected(QStringLiteral(
      "^This file was saved with the following information:\n\nName: \nSerial number: SN-7\nDate: .+\n"
      "Comment: \n\nAre you sure you want to load this file to the currently connected test device\\?$"));
  EXPECT_TRUE(lExpected.match(lAsked).hasMatch()) << lAsked.toStdString();
  EXPECT_FALSE(lDevice->mCalls.contains(QStringLiteral("WriteConfiguration"))) << "a no loads nothing";
  EXPECT_EQ(lScript.Interactions().at(lScript.Interactions().size() - 2).mOptions.value(0),
            QStringLiteral("Parvex\u2122 Configuration Files (*.pto)"));

  lScript.Queue(lFile);
  lScript.Queue(QMessageBox::Yes);
  Ui()->LoadAction()->trigger();
  EXPECT_EQ(lDevice->mCalls.filter(QRegularExpression("Configuration$")),
            QStringList({"WriteConfiguration", "ApplyConfiguration"}));

  // A file of another device type is refused with an error, and the UI goes on.
  lDevice->mConfigurationDocument = 0x12345678;
  lScript.Queue(lFile);
  const int lBefore = lScript.Interactions().size();
  Ui()->LoadAction()->trigger();
  ASSERT_EQ(lScript.Interactions().size(), lBefore + 2);
  EXPECT_EQ(lScript.Interactions().last().mKind, PtModalScript::K_ERROR);
  EXPECT_TRUE(Ui()->LoadAction()->isEnabled());

  lScript.Queue(QMessageBox::Yes);
  Ui()->ResetAction()->trigger();
  EXPECT_EQ(lScript.Interactions().last().mText, QStringLiteral("Do you really want to reset?"));
  EXPECT_TRUE(lDevice->mCalls.contains(QStringLiteral("Reset")));
  EXPECT_EQ(lScript.Pending(), 0);
}

TEST_F(Shell, LayoutOfTwoDockedAndOneFloatingWindowComesBack)
{
  mHost.mUseSavedLayout = true;
  mHost.show();
  PtModalScript lScript;
  ASSERT_TRUE(ConnectThroughDialog(lScript));
  PxDockWidget* lLeft = Ui()->RequestWindow(11, 0x1);
  PxDockWidget* lRight = Ui()->RequestWindow(12, 0x2);
  PxDockWidget* lFloat = Ui()->RequestWindow(13, 0x4);
  mHost.addDockWidget(Qt::LeftDockWidgetArea, lLeft);
  mHost.addDockWidget(Qt::RightDockWidgetArea, lRight);
  lLeft->setFloating(false);
  lRight->setFloating(false);
  lFloat->setGeometry(120, 140, 333, 222);
  QCoreApplication::processEvents();
  PxTest::SaveToGallery(&mHost, QStringLiteral("shell-two-docked"));
  const QRect lFloatRect = lFloat->geometry();
  mUi->ConnectAction()->trigger(); // saves the layout at teardown
  ASSERT_EQ(PxStaticUi::Ui(), nullptr);
  sNext.mVersion = 2559; // a newer device the user does not connect leaves the layout alone
  ConnectThroughDialog(lScript, {QMessageBox::No});
  Q_EMIT mHost.Tick();
  QCoreApplication::processEvents();
  ASSERT_EQ(PxStaticUi::Ui(), nullptr);
  sNext.mVersion = 0x0102;

  ASSERT_TRUE(ConnectThroughDialog(lScript)); // restores it
  ASSERT_EQ(Ui()->Windows().size(), 3);
  QMap<unsigned int, PxDockWidget*> lByKind;
  for (PxDockWidget* w : Ui()->Windows()) {
    lByKind[w->PermanentId()] = w;
  }
  ASSERT_EQ(lByKind.keys(), QList<unsigned int>({11, 12, 13}));
  EXPECT_FALSE(lByKind[11]->isFloating());
  EXPECT_EQ(mHost.dockWidgetArea(lByKind[11]), Qt::LeftDockWidgetArea);
  EXPECT_EQ(mHost.dockWidgetArea(lByKind[12]), Qt::RightDockWidgetArea);
  EXPECT_EQ(lByKind[12]->Flags(), 0x2u);
  EXPECT_TRUE(lByKind[13]->isFloating());
  EXPECT_EQ(lByKind[13]->geometry(), lFloatRect);
}
} // namespace
