#pragma once

#include <QAction>
#include <QMenu>
#include <QPushButton>

namespace PxTest {
// The push button labelled aText among aParent's children, '&' shortcut marks aside; null when
// there is none, so that a renamed button fails the test instead of crashing it.
inline QPushButton* Button(QWidget* aParent, const QString& aText)
{
  for (QPushButton* lButton : aParent->findChildren<QPushButton*>()) {
    if (lButton->text().remove(QLatin1Char('&')) == aText) {
      return lButton;
    }
  }
  return nullptr;
}

// The action labelled aText anywhere in aActions or their submenus, as a user finds it in a menu bar.
inline QAction* MenuAction(const QList<QAction*>& aActions, const QString& aText)
{
  for (QAction* lAction : aActions) {
    QAction* lFound = lAction->text().remove(QLatin1Char('&')) == aText ? lAction
                      : lAction->menu()                                 ? MenuAction(lAction->menu()->actions(), aText)
                                                                        : nullptr;
    if (lFound) {
      return lFound;
    }
  }
  return nullptr;
}
} // namespace PxTest
