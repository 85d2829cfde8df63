#pragma once

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

namespace PxTest {
// The child of kind T (a button, a radio button...) labelled aText among aParent's children, '&'
// shortcut marks aside; null when there is none, so that a renamed control fails the test instead
// of crashing it.
template <class T>
T* ByText(QWidget* aParent, const QString& aText)
{
  for (T* lChild : aParent->findChildren<T*>()) {
    if (lChild->text().remove(QLatin1Char('&')) == aText) {
      return lChild;
    }
  }
  return nullptr;
}

// The push button labelled aText.
inline QPushButton* Button(QWidget* aParent, const QString& aText)
{
  return ByText<QPushButton>(aParent, aText);
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

// The titles of aWindow's menus, left to right.
inline QStringList MenuTitles(QMainWindow& aWindow)
{
  QStringList lTitles;
  for (QAction* lAction : aWindow.menuBar()->actions()) {
    lTitles << lAction->text();
  }
  return lTitles;
}
} // namespace PxTest
