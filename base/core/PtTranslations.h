#pragma once

#include "ParvexTechExport.h"

#include <QLocale>
#include <QStringList>

// Puts the user's language on every text of the product: Qt's own catalogue (standard buttons,
// file dialogs) and every catalogue of the product's libraries, application and drivers. Programs
// call it once, with the system locale, right after the application object exists and before any
// window, because texts made at construction (property names of a device, menu titles) are
// translated only then.
class PT_EXPORT PtTranslations
{
public:
  // Where the product's catalogues are looked for: ../share/parvex/translations next to the
  // program, which is both the installed layout and the build tree's.
  static QStringList CatalogueDirs();

  // Installs Qt's catalogue for aLocale and, from the first of aDirs that has any, every product
  // catalogue for it (a vendor's driver adds its own by dropping <name>_<language>.qm beside
  // ours). Returns the base names of the catalogues installed ("qt", "parvexbase", ...); an
  // English or C locale finds none and leaves every text as it is.
  static QStringList Install(const QLocale& aLocale, const QStringList& aDirs = CatalogueDirs());

  // Takes every catalogue Install put in back out again.
  static void Remove();
};
