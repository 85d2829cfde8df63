#include "PtPreferencesDialog.h"

#include "PtAssert.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>

namespace {
constexpr int MIN_TREE_WIDTH = 170;
}

PtPreferencesDialog::PtPreferencesDialog(QWidget* aParent)
    : PtDialog(aParent)
    , mTree(new QTreeWidget(this))
    , mHeader(new QLabel(this))
    , mStack(new QStackedWidget(this))
    , mButtons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this))
{
  setWindowTitle(tr("Preferences"));

  mTree->setHeaderHidden(true);
  // Expand markers only once some page has sub-pages; a flat list stays flush left.
  mTree->setRootIsDecorated(false);
  mTree->setFixedWidth(MIN_TREE_WIDTH);
  mTree->header()->setStretchLastSection(true);

  QFont lFont = mHeader->font();
  lFont.setBold(true);
  lFont.setPointSizeF(lFont.pointSizeF() * 1.2);
  mHeader->setFont(lFont);
  auto* lLine = new QFrame(this);
  lLine->setFrameShape(QFrame::HLine);
  lLine->setFrameShadow(QFrame::Sunken);
  mStack->setMinimumSize(340, 240);

  auto* lPageSide = new QVBoxLayout();
  lPageSide->addWidget(mHeader);
  lPageSide->addWidget(lLine);
  lPageSide->addWidget(mStack, 1);

  auto* lBody = new QHBoxLayout();
  lBody->addWidget(mTree);
  lBody->addLayout(lPageSide, 1);

  auto* lLayout = new QVBoxLayout(this);
  lLayout->addLayout(lBody, 1);
  lLayout->addWidget(mButtons);

  connect(mButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(mButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(mTree, &QTreeWidget::currentItemChanged, this, &PtPreferencesDialog::TreeCurrentItemChanged);
}

PtPreferencesDialog::~PtPreferencesDialog() = default;

PtPreferencesSignaler* PtPreferencesDialog::Signaler()
{
  static PtPreferencesSignaler sSignaler;
  return &sSignaler;
}

void PtPreferencesDialog::AddPage(const QString& aParent, const QString& aTitle, QWidget* aPage)
{
  PT_ASSERT(aPage);
  QTreeWidgetItem* lItem = nullptr;
  if (aParent.isEmpty()) {
    lItem = new QTreeWidgetItem(mTree, QStringList(aTitle));
  } else {
    QTreeWidgetItem* lParent = FindItem(aParent);
    if (!lParent) {
      lParent = new QTreeWidgetItem(mTree, QStringList(aParent));
    }
    lItem = new QTreeWidgetItem(lParent, QStringList(aTitle));
    lParent->setExpanded(true);
    mTree->setRootIsDecorated(true);
  }
  mPages.insert(lItem, aPage);
  mStack->addWidget(aPage);
  if (mOpening) {
    mRunPages.append(aPage);
  }
  if (!mTree->currentItem()) {
    mTree->setCurrentItem(lItem);
  }
  // Wide enough for every title, translated ones included: a cut page name leaves the user
  // guessing. The page side takes whatever the list does not need.
  int lWanted = 0;
  for (QTreeWidgetItemIterator lIt(mTree); *lIt; ++lIt) {
    int lDepth = mTree->rootIsDecorated() ? 1 : 0;
    for (QTreeWidgetItem* lUp = (*lIt)->parent(); lUp; lUp = lUp->parent()) {
      ++lDepth;
    }
    lWanted =
        std::max(lWanted, mTree->fontMetrics().horizontalAdvance((*lIt)->text(0)) + lDepth * mTree->indentation());
  }
  // The item's own padding and the frame.
  lWanted += 2 * mTree->frameWidth() + 16;
  mTree->setFixedWidth(std::max(MIN_TREE_WIDTH, lWanted));
}

int PtPreferencesDialog::PageCount() const
{
  return mPages.size();
}

QWidget* PtPreferencesDialog::Page(const QString& aTitle) const
{
  QTreeWidgetItem* lItem = FindItem(aTitle);
  return lItem ? mPages.value(lItem) : nullptr;
}

QWidget* PtPreferencesDialog::CurrentPage() const
{
  return mPages.isEmpty() ? nullptr : mStack->currentWidget();
}

void PtPreferencesDialog::SetCurrentPage(QWidget* aPage)
{
  for (auto i = mPages.constBegin(); i != mPages.constEnd(); ++i) {
    if (i.value() == aPage) {
      mTree->setCurrentItem(i.key());
      return;
    }
  }
}

int PtPreferencesDialog::exec()
{
  // The pages of the previous run hold that run's values; their owners build new ones below.
  for (const QPointer<QWidget>& lPage : qAsConst(mRunPages)) {
    if (lPage) {
      RemovePage(lPage);
    }
  }
  mRunPages.clear();

  mOpening = true;
  Q_EMIT Signaler()->Open(this);
  mOpening = false;

  mTree->expandAll();
  if (mTree->topLevelItemCount() > 0) {
    mTree->setCurrentItem(mTree->topLevelItem(0));
  }
  mClosedSent = false;
  return PtDialog::exec();
}

void PtPreferencesDialog::done(int aResult)
{
  if (!mClosedSent) {
    mClosedSent = true;
    Q_EMIT Closed(aResult != QDialog::Accepted);
  }
  PtDialog::done(aResult);
}

void PtPreferencesDialog::TreeCurrentItemChanged(QTreeWidgetItem* aCurrent)
{
  // A heading made up for a missing parent has no page of its own: it shows its first child's.
  QTreeWidgetItem* lItem = aCurrent;
  while (lItem && !mPages.contains(lItem) && lItem->childCount() > 0) {
    lItem = lItem->child(0);
  }
  QWidget* lPage = lItem ? mPages.value(lItem) : nullptr;
  if (lPage) {
    mStack->setCurrentWidget(lPage);
  }
  mHeader->setText(aCurrent ? aCurrent->text(0) : QString());
}

QTreeWidgetItem* PtPreferencesDialog::FindItem(const QString& aTitle) const
{
  const QList<QTreeWidgetItem*> lFound = mTree->findItems(aTitle, Qt::MatchExactly | Qt::MatchRecursive);
  return lFound.isEmpty() ? nullptr : lFound.first();
}

void PtPreferencesDialog::RemovePage(QWidget* aPage)
{
  for (auto i = mPages.begin(); i != mPages.end(); ++i) {
    if (i.value() != aPage) {
      continue;
    }
    QTreeWidgetItem* lItem = i.key();
    mPages.erase(i);
    // Sub-pages of the removed page move up to where it was, rather than disappearing with it.
    QTreeWidgetItem* lParent = lItem->parent();
    const QList<QTreeWidgetItem*> lChildren = lItem->takeChildren();
    if (lParent) {
      lParent->addChildren(lChildren);
    } else {
      mTree->addTopLevelItems(lChildren);
    }
    delete lItem;
    if (lParent && lParent->childCount() == 0 && !mPages.contains(lParent)) {
      delete lParent; // a made-up heading with nothing left under it
    }
    break;
  }
  mStack->removeWidget(aPage);
  delete aPage;
}
