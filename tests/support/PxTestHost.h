#pragma once

#include "PxHost.h"

#include <QLabel>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

namespace PxTest {
// A host window that places what the library hands it where the application would: File and Help
// menus, one tool bar, status widgets. It remembers the device title and counts device contexts.
class Host : public PxHost
{
public:
  explicit Host(bool aUseSavedLayout = false)
      : mUseSavedLayout(aUseSavedLayout)
  {
    mFile = menuBar()->addMenu(QStringLiteral("File"));
    mHelp = menuBar()->addMenu(QStringLiteral("Help"));
    mToolBar = addToolBar(QStringLiteral("Tools"));
    mToolBar->setObjectName(QStringLiteral("Tools"));
    setCentralWidget(new QLabel(QStringLiteral("host")));
    resize(900, 600);
  }
  bool UseSavedLayout() override { return mUseSavedLayout; }
  void SetDeviceTitle(const QString& aTitle) override { mTitle = aTitle; }
  void AddToolBarAction(QAction* aAction) override { mToolBar->addAction(aAction); }
  QObject* CreateDeviceContext() override
  {
    ++mDeviceContexts;
    return new QObject;
  }
  QMenu* AddMenu(const QString& aTitle) override { return menuBar()->addMenu(aTitle); }
  void AddFileAction(QAction* aAction) override { mFile->addAction(aAction); }
  void AddSettingsAction(QAction*) override {}
  void AddHelpAction(QAction* aAction) override { mHelp->addAction(aAction); }
  void AddStatusWidget(QWidget* aWidget) override { statusBar()->addPermanentWidget(aWidget); }
  void ShowStatusMessage(const QString&, int) override {}

  bool mUseSavedLayout;
  int mDeviceContexts = 0;
  QString mTitle;
  QMenu* mFile = nullptr;
  QMenu* mHelp = nullptr;
  QToolBar* mToolBar = nullptr;
};
} // namespace PxTest
