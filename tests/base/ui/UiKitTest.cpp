#include "PtErrorLogForm.h"
#include "PtException.h"
#include "PtFileChooser.h"
#include "PtMessageBox.h"
#include "PtModalScript.h"
#include "PtPreferencesDialog.h"
#include "PtRadioPrompt.h"
#include "PtTextPrompt.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestUi.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace {
// Acts on the modal window as soon as its event loop runs: the way a user would answer a real,
// unscripted box.
void WhenModal(std::function<void(QWidget*)> aAction)
{
  QTimer::singleShot(0, qApp, [aAction] {
    QWidget* lModal = QApplication::activeModalWidget();
    ASSERT_NE(lModal, nullptr) << "no window waits for the user";
    aAction(lModal);
  });
}

void Save(QWidget* aWidget, const char* aName)
{
  EXPECT_TRUE(PxTest::SaveToGallery(aWidget, QLatin1String(aName))) << aName;
}

TEST(ModalScript, QueuedAnswersAreTakenInOrderAndEveryInteractionIsReadBack)
{
  PtModalScript lScript;
  lScript.Queue(QMessageBox::Yes);
  lScript.Queue(QStringLiteral("first light"));
  lScript.QueueValue(20);
  lScript.Queue(QStringLiteral("/tmp/a.pto"));
  lScript.Queue(QMessageBox::No);

  EXPECT_TRUE(PtMessageBox::Question(nullptr, QStringLiteral("Do you really want to reset?")));
  // An error box in between has only OK and must not eat the next answer.
  PtMessageBox::ShowError(nullptr, QStringLiteral("Timeout"), QStringLiteral("Sensor"));
  QString lComment;
  EXPECT_TRUE(
      PtTextPrompt::Ask(nullptr, QStringLiteral("Enter comment"), QStringLiteral("Comment (optional):"), &lComment));
  EXPECT_EQ(lComment, QStringLiteral("first light"));
  PtRadioPrompt lRadio(nullptr, QStringLiteral("Guides"), QStringLiteral("Pick one:"));
  lRadio.AddItem(QStringLiteral("A"), 10);
  lRadio.AddItem(QStringLiteral("B"), 20);
  EXPECT_EQ(lRadio.exec(), QDialog::Accepted);
  EXPECT_EQ(lRadio.Value(), 20);
  EXPECT_EQ(PtFileChooser::OpenFile(nullptr, QString(), QStringLiteral("/tmp"),
                                    QStringLiteral("Configuration Files (*.pto);;All Files (*.*)")),
            QStringLiteral("/tmp/a.pto"));
  PtMessageBox::ShowInfo(nullptr, QStringLiteral("Done."));
  EXPECT_FALSE(PtMessageBox::Question(nullptr, QStringLiteral("Quit?")));
  EXPECT_EQ(lScript.Pending(), 0);

  struct Expected
  {
    PtModalScript::Kind mKind;
    const char* mTitle;
    const char* mText;
    QStringList mOptions;
  };
  const QString lApp = QGuiApplication::applicationDisplayName();
  const Expected lExpected[] = {
      {PtModalScript::K_QUESTION, nullptr, "Do you really want to reset?", {}},
      {PtModalScript::K_ERROR, "Sensor", "Timeout", {}},
      {PtModalScript::K_TEXT_PROMPT, "Enter comment", "Comment (optional):", {}},
      {PtModalScript::K_RADIO_PROMPT, "Guides", "Pick one:", {QStringLiteral("A"), QStringLiteral("B")}},
      {PtModalScript::K_OPEN_FILE,
       "",
       "/tmp",
       {QStringLiteral("Configuration Files (*.pto)"), QStringLiteral("All Files (*.*)")}},
      {PtModalScript::K_INFORMATION, nullptr, "Done.", {}},
      {PtModalScript::K_QUESTION, nullptr, "Quit?", {}},
  };
  ASSERT_EQ(lScript.Interactions().size(), int(std::size(lExpected)));
  for (int i = 0; i < lScript.Interactions().size(); ++i) {
    const PtModalScript::Interaction& lGot = lScript.Interactions().at(i);
    SCOPED_TRACE(i);
    EXPECT_EQ(lGot.mKind, lExpected[i].mKind) << PtModalScript::KindName(lGot.mKind).toStdString();
    // Boxes without a title of their own carry the application's name.
    EXPECT_EQ(lGot.mTitle, lExpected[i].mTitle ? QString::fromUtf8(lExpected[i].mTitle) : lApp);
    EXPECT_EQ(lGot.mText, QString::fromUtf8(lExpected[i].mText));
    EXPECT_EQ(lGot.mOptions, lExpected[i].mOptions);
  }
}

TEST(Prompts, ReturnTheValueOfTheItemTheUserPickedAndShowTheirQuestion)
{
  PtRadioPrompt lPrompt(nullptr, QStringLiteral("Parvex Configuration"),
                        QStringLiteral("Please select the document you want to display:"));
  lPrompt.AddItem(QStringLiteral("PX-16 User Guide"), 0);
  lPrompt.AddItem(QStringLiteral("Parvex Configuration Software Guide"), 2);
  // Unscripted: the user clicks the second item and OK.
  WhenModal([&](QWidget* aPrompt) {
    Save(aPrompt, "radio_prompt");
    EXPECT_EQ(lPrompt.Value(), 0) << "the first item is the choice until the user picks another";
    PxTest::ByText<QRadioButton>(aPrompt, QStringLiteral("Parvex Configuration Software Guide"))->click();
    PxTest::Button(aPrompt, QStringLiteral("OK"))->click();
  });
  EXPECT_EQ(lPrompt.exec(), QDialog::Accepted);
  EXPECT_EQ(lPrompt.Value(), 2) << "the item's value, not its row";

  PtModalScript lScript;
  lScript.Queue([](QDialog* aDialog) { Save(aDialog, "text_prompt"); });
  QString lComment = QStringLiteral("mounted on the north gate");
  PtTextPrompt::Ask(nullptr, QStringLiteral("Enter comment"), QStringLiteral("Comment (optional):"), &lComment);
}

TEST(PreferencesDialog, OpenComesBeforeShowingAndClosedTellsOkFromCancel)
{
  QObject lReceiver; // ends the connection to the process-wide signaler with the test
  QList<bool> lVisibleAtOpen;
  QObject::connect(
      PtPreferencesDialog::Signaler(), &PtPreferencesSignaler::Open, &lReceiver, [&](PtPreferencesDialog* aDialog) {
        lVisibleAtOpen.append(aDialog->isVisible());
        aDialog->AddPage(QString(), QStringLiteral("Display"), new QLabel(QStringLiteral("display")));
        aDialog->AddPage(QStringLiteral("Display"), QStringLiteral("Colours"), new QLabel(QStringLiteral("c")));
      });

  PtPreferencesDialog lDialog;
  QSignalSpy lClosed(&lDialog, &PtPreferencesDialog::Closed);
  QWidget* lCurrentWhenShown = nullptr;
  PtModalScript lScript;
  lScript.Queue([&](QDialog* aDialog) {
    lCurrentWhenShown = lDialog.CurrentPage();
    PxTest::Button(aDialog, QStringLiteral("OK"))->click();
  });
  lScript.Queue([](QDialog* aDialog) { PxTest::Button(aDialog, QStringLiteral("Cancel"))->click(); });

  EXPECT_EQ(lDialog.exec(), QDialog::Accepted);
  EXPECT_EQ(lCurrentWhenShown, lDialog.Page(QStringLiteral("Display")));
  EXPECT_EQ(lDialog.exec(), QDialog::Rejected);
  EXPECT_EQ(lDialog.exec(), QDialog::Rejected); // nothing queued: closed as cancelled

  EXPECT_EQ(lVisibleAtOpen, (QList<bool>{false, false, false}));
  ASSERT_EQ(lClosed.count(), 3); // exactly once per run
  EXPECT_EQ(lClosed.at(0).at(0).toBool(), false);
  EXPECT_EQ(lClosed.at(1).at(0).toBool(), true);
  EXPECT_EQ(lClosed.at(2).at(0).toBool(), true);
  // Every opening rebuilt the pages instead of piling up copies.
  EXPECT_EQ(lDialog.PageCount(), 2);
  EXPECT_EQ(lScript.Interactions().at(0).mTitle, QStringLiteral("Preferences"));
}

TEST(ErrorLog, KeepsTimestampedEntriesThatTheFormShowsAndCopies)
{
  PtErrorLogForm::Clear();
  const QDateTime lBefore = QDateTime::currentDateTime().addSecs(-1);
  PtErrorLogForm::LogError(QStringLiteral("Cannot open serial port /dev/ttyUSB0: permission denied."));
  try {
    PtThrow<std::runtime_error>(1003, QStringLiteral("The answer to request 0x0112 came too late."));
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
  }
  const QList<PtErrorLogForm::Entry> lEntries = PtErrorLogForm::Entries();
  ASSERT_EQ(lEntries.size(), 2);
  EXPECT_EQ(lEntries.at(1).mCode, 1003u);
  EXPECT_EQ(lEntries.at(1).mText, QStringLiteral("The answer to request 0x0112 came too late."));
  EXPECT_GE(lEntries.at(1).mTime, lBefore);

  QWidget lHost;
  PtErrorLogForm* lForm = PtErrorLogForm::Open(&lHost);
  ASSERT_TRUE(lForm);
  EXPECT_EQ(PtErrorLogForm::Open(&lHost), lForm); // one window, brought to front
  // An error logged while the window is open appears in it.
  PtErrorLogForm::LogError(QStringLiteral("Link lost"));
  const QStringList lLines = lForm->Text().split(QLatin1Char('\n'));
  ASSERT_EQ(lLines.size(), 3);
  EXPECT_TRUE(lLines.at(1).contains(QStringLiteral("[1003]")));
  EXPECT_TRUE(lLines.at(2).endsWith(QStringLiteral("Link lost")));
  EXPECT_TRUE(lLines.at(0).startsWith(lEntries.at(0).mTime.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"))));
  Save(lForm, "error_log_form");

  PxTest::Button(lForm, QStringLiteral("Copy"))->click();
  EXPECT_EQ(QApplication::clipboard()->text(), lForm->Text());
  PxTest::Button(lForm, QStringLiteral("Clear"))->click();
  EXPECT_TRUE(PtErrorLogForm::Entries().isEmpty());
  EXPECT_TRUE(lForm->Text().isEmpty());
  lForm->close(); // deletes itself
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(PtErrorLogForm::Instance(), nullptr);
}

TEST(ErrorLog, AFailingDeviceCannotGrowTheLogWithoutEnd)
{
  PtErrorLogForm::Clear();
  QLoggingCategory::setFilterRules(QStringLiteral("parvex.errors.warning=false"));
  for (int i = 0; i < PtErrorLogForm::MAX_ENTRIES + 5; ++i) {
    PtErrorLogForm::LogError(QString::number(i));
  }
  const QList<PtErrorLogForm::Entry> lEntries = PtErrorLogForm::Entries();
  ASSERT_EQ(lEntries.size(), PtErrorLogForm::MAX_ENTRIES);
  EXPECT_EQ(lEntries.first().mText, QStringLiteral("5"));
  EXPECT_EQ(lEntries.last().mText, QString::number(PtErrorLogForm::MAX_ENTRIES + 4));
  PtErrorLogForm::Clear();
  QLoggingCategory::setFilterRules(QString());
}
} // namespace
