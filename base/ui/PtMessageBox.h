#pragma once

#include "ParvexTechExport.h"

#include <QCoreApplication>
#include <QString>

#include <exception>

class QWidget;

// The product's message boxes: modal over the given parent (the host window), titled with the
// application's name unless a title is given. Each run counts as an active modal dialog.
class PT_EXPORT PtMessageBox
{
  Q_DECLARE_TR_FUNCTIONS(PtMessageBox)

public:
  static void ShowError(QWidget* aParent, const QString& aText, const QString& aTitle = QString());
  // The exception's message; its code, when it carries one, on a line of its own below.
  static void ShowError(QWidget* aParent, const std::exception& aException, const QString& aTitle = QString());
  static void ShowWarning(QWidget* aParent, const QString& aText, const QString& aTitle = QString());
  static void ShowInfo(QWidget* aParent, const QString& aText, const QString& aTitle = QString());

  // A yes/no question. Enter answers yes, Escape and closing the box answer no; true means yes.
  static bool Question(QWidget* aParent, const QString& aText, const QString& aTitle = QString());

  // The text ShowError(const std::exception&) shows.
  static QString ExceptionText(const std::exception& aException);
};
