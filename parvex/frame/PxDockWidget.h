#pragma once

#include "ParvexExport.h"

#include <QDockWidget>

class QAction;

// Base of every tool window (traces, echoes, state, replay, serial viewer, debug). It carries a
// run-time id unique in this process, a word of flags its owner chooses and saves with the layout,
// and up to two menu actions that mirror its visibility. Owners learn of its closing through
// Closed and decide there whether to delete it.
class PX_EXPORT PxDockWidget : public QDockWidget
{
  Q_OBJECT

public:
  explicit PxDockWidget(QWidget* aParent);

  // Identifies the kind of window from one run to the next; the key of a saved layout entry.
  virtual unsigned int PermanentId() const = 0;
  // Forms override it to reconfigure themselves, and call this to store the flags.
  virtual void SetFlags(unsigned int aFlags);

  unsigned int Flags() const { return mFlags; }
  unsigned int Id() const { return mId; }

  // Menu actions that show this window; unchecked when it closes. Not owned; null for none.
  void SetLinkedActions(QAction* aFirst, QAction* aSecond = nullptr);
  QAction* LinkedAction(int aIndex) const { return aIndex == 0 ? mAction1 : mAction2; }

Q_SIGNALS:
  void Closed(PxDockWidget* aWindow);

protected:
  void closeEvent(QCloseEvent* aEvent) override;

private:
  QAction* mAction1 = nullptr;
  QAction* mAction2 = nullptr;
  unsigned int mId = 0;
  unsigned int mFlags = 0;

  static unsigned int sNextId;
};
