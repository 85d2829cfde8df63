#include "PtModalScript.h"
#include "PxDockWidget.h"
#include "PxDocumentManager.h"

#include <QAction>
#include <QDesktopServices>
#include <QMainWindow>
#include <QSignalSpy>
#include <QUrl>
#include <gtest/gtest.h>

namespace
{
class Form : public PxDockWidget
{
public:
  using PxDockWidget::PxDockWidget;
  unsigned int PermanentId() const override { return 7; }
};

TEST(DockWidget, IdsRiseAndClosingUnchecksLinkedActionsAndReportsOnce)
{
  QMainWindow lHost;
  Form lFirst(&lHost);
  Form lSecond(&lHost);
  EXPECT_GE(lFirst.Id(), 1u);
  EXPECT_EQ(lSecond.Id(), lFirst.Id() + 1);

  QAction lMenu(QStringLiteral("Traces"), nullptr);
  QAction lTool(QStringLiteral("Traces"), nullptr);
  for (QAction* a : {&lMenu, &lTool}) {
    a->setCheckable(true);
    a->setChecked(true);
  }
  lFirst.SetLinkedActions(&lMenu, &lTool);
  lFirst.show();
  QSignalSpy lClosed(&lFirst, &PxDockWidget::Closed);
  lFirst.close();
  EXPECT_FALSE(lMenu.isChecked());
  EXPECT_FALSE(lTool.isChecked());
  ASSERT_EQ(lClosed.count(), 1);
  EXPECT_EQ(lClosed.at(0).at(0).value<PxDockWidget*>(), &lFirst);
}

// Captures what the document manager asks the desktop to open.
class Opened : public QObject
{
  Q_OBJECT
public:
  QStringList mUrls;
public Q_SLOTS:
  void Open(const QUrl& aUrl) { mUrls << aUrl.toString(); }
};

TEST(DocumentManager, SlotsGuidesAndChoice)
{
  Opened lOpened;
  QDesktopServices::setUrlHandler(QStringLiteral("file"), &lOpened, "Open");
  PxDocumentManager::Clear();

  PxDocumentManager::ShowUserGuide(5, nullptr);
  EXPECT_TRUE(lOpened.mUrls.isEmpty()) << "nothing registered: nothing opens";

  // The same path takes three product types; a fourth changes nothing and reports slot 2.
  const int lSlots[] = {0, 1, 2, 2};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(PxDocumentManager::RegisterDocument(static_cast<unsigned short>(10 + i), "/g/a.html", "A"), lSlots[i]);
  }
  EXPECT_EQ(PxDocumentManager::DocumentCount(), 1u);
  PxDocumentManager::ShowUserGuide(99, nullptr);
  EXPECT_EQ(lOpened.mUrls.value(0), QStringLiteral("file:///g/a.html")) << "one guide opens whatever the type";

  PxDocumentManager::RegisterDocument(20, "/g/b.html", "B");
  PxDocumentManager::RegisterDocument(20, "/g/c.html", "C");
  lOpened.mUrls.clear();
  PxDocumentManager::ShowUserGuide(11, nullptr);
  PxDocumentManager::ShowUserGuide(77, nullptr);
  EXPECT_EQ(lOpened.mUrls, QStringList({"file:///g/a.html", "file:///g/a.html"}))
    << "a single match, and no match at all, open without a question";

  QMainWindow lParent;
  lParent.setWindowTitle(QStringLiteral("parvex-config"));
  PtModalScript lScript;
  lScript.QueueValue(2);
  lOpened.mUrls.clear();
  PxDocumentManager::ShowUserGuide(20, &lParent);
  ASSERT_EQ(lScript.Interactions().size(), 1);
  const PtModalScript::Interaction lAsked = lScript.Interactions().at(0);
  EXPECT_EQ(lAsked.mTitle, QStringLiteral("parvex-config"));
  EXPECT_EQ(lAsked.mText, QStringLiteral("Please select the document you want to display:"));
  EXPECT_EQ(lAsked.mOptions, QStringList({"B", "C"}));
  EXPECT_EQ(lOpened.mUrls, QStringList({"file:///g/c.html"}));

  PxDocumentManager::ShowUserGuide(0, &lParent); // type 0 matches all three; no answer = cancel
  EXPECT_EQ(lScript.Interactions().size(), 2);
  EXPECT_EQ(lOpened.mUrls.size(), 1);

  // Characters that mean something in a URL are part of the file name.
  PxDocumentManager::Clear();
  PxDocumentManager::RegisterDocument(0, "/g/Sensors #2/guide 100%.html", "D");
  lOpened.mUrls.clear();
  PxDocumentManager::ShowDocument(0);
  EXPECT_EQ(QUrl(lOpened.mUrls.value(0)).toLocalFile(), QStringLiteral("/g/Sensors #2/guide 100%.html"));
  QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
  PxDocumentManager::Clear();
}
} // namespace

#include "DockWidgetTest.moc"
