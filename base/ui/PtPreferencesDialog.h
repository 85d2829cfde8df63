#pragma once

#include "ParvexTechExport.h"
#include "PtDialog.h"

#include <QHash>
#include <QList>
#include <QPointer>

class PtPreferencesDialog;
class QDialogButtonBox;
class QLabel;
class QStackedWidget;
class QTreeWidget;
class QTreeWidgetItem;

// Announces every opening of a preferences dialog, so that each part of the product adds its own
// pages without the dialog knowing them. There is one per process: PtPreferencesDialog::Signaler().
class PT_EXPORT PtPreferencesSignaler : public QObject
{
  Q_OBJECT

Q_SIGNALS:
  // Emitted by exec() before the dialog shows; receivers add their pages with AddPage and
  // connect to the dialog's Closed to read them back.
  void Open(PtPreferencesDialog* aDialog);

private:
  friend class PtPreferencesDialog;
  PtPreferencesSignaler() = default;
};

// The preferences dialog: a tree of page titles beside the selected page, OK and Cancel.
class PT_EXPORT PtPreferencesDialog : public PtDialog
{
  Q_OBJECT

public:
  explicit PtPreferencesDialog(QWidget* aParent = nullptr);
  ~PtPreferencesDialog() override;

  static PtPreferencesSignaler* Signaler();

  // Adds aPage (the dialog takes it over) under the page titled aParent; an empty aParent adds a
  // top-level page. A parent title that does not exist yet becomes a heading of its own that shows
  // its first sub-page.
  void AddPage(const QString& aParent, const QString& aTitle, QWidget* aPage);
  int PageCount() const;
  // The first page with this title, or null.
  QWidget* Page(const QString& aTitle) const;
  QWidget* CurrentPage() const;
  void SetCurrentPage(QWidget* aPage);

  // Emits the signaler's Open, then runs the dialog. Pages added in answer to Open belong to this
  // run: opening the same dialog again replaces them with fresh ones.
  int exec() override;

Q_SIGNALS:
  // Once per run, when it ends: aCancel is false for OK, true for Cancel, Escape or closing.
  void Closed(bool aCancel);

public Q_SLOTS:
  void done(int aResult) override;

private Q_SLOTS:
  void TreeCurrentItemChanged(QTreeWidgetItem* aCurrent);

private:
  QTreeWidgetItem* FindItem(const QString& aTitle) const;
  void RemovePage(QWidget* aPage);

  QTreeWidget* mTree = nullptr;
  QLabel* mHeader = nullptr;
  QStackedWidget* mStack = nullptr;
  QDialogButtonBox* mButtons = nullptr;
  QHash<QTreeWidgetItem*, QWidget*> mPages;
  QList<QPointer<QWidget>> mRunPages;
  bool mOpening = false;
  bool mClosedSent = true;
};
