#pragma once

#include "ParvexTechExport.h"

#include <QString>

class QWidget;

// The file and directory choosers of the product, modal over the given parent. Each returns the
// chosen path, or an empty string when the user cancelled. aFilter uses Qt's syntax
// ("Configuration Files (*.pto);;All Files (*.*)").
class PT_EXPORT PtFileChooser
{
public:
  static QString OpenFile(QWidget* aParent, const QString& aCaption, const QString& aDirectory, const QString& aFilter);
  static QString SaveFile(QWidget* aParent, const QString& aCaption, const QString& aDirectory, const QString& aFilter);
  static QString ExistingDirectory(QWidget* aParent, const QString& aCaption, const QString& aDirectory);
};
