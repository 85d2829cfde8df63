#include "PtTranslations.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QPointer>
#include <QRegularExpression>
#include <QSet>
#include <QTranslator>

namespace {
Q_LOGGING_CATEGORY(lcTranslations, "parvex.translations")

QList<QPointer<QTranslator>>& Installed()
{
  static QList<QPointer<QTranslator>> sInstalled;
  return sInstalled;
}

// Loads aName_<language>.qm from aDir (QTranslator falls back from de_CH to de) and installs it.
// The application object owns it, so nothing outlives the application.
bool Load(const QLocale& aLocale, const QString& aName, const QString& aDir)
{
  auto* lTranslator = new QTranslator(QCoreApplication::instance());
  if (!lTranslator->load(aLocale, aName, QStringLiteral("_"), aDir) ||
      !QCoreApplication::installTranslator(lTranslator)) {
    delete lTranslator;
    return false;
  }
  Installed().append(lTranslator);
  qCDebug(lcTranslations).noquote() << "installed" << aName << "for" << aLocale.name() << "from" << aDir;
  return true;
}
} // namespace

QStringList PtTranslations::CatalogueDirs()
{
  return {QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/parvex/translations"))};
}

QStringList PtTranslations::Install(const QLocale& aLocale, const QStringList& aDirs)
{
  QStringList lLoaded;
  // qt_ is a meta catalogue that pulls in qtbase_ and the other modules' where they are
  // installed; a distribution that ships only qtbase_ still translates the standard buttons.
  const QString lQtDir = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
  for (const QString& lName : {QStringLiteral("qt"), QStringLiteral("qtbase")}) {
    if (Load(aLocale, lName, lQtDir)) {
      lLoaded << lName;
      break;
    }
  }

  // Every catalogue in the folder is a candidate: its base name is what comes before _<language>.
  static const QRegularExpression sCatalogueName(QStringLiteral("^(.+)_[a-z]{2,3}(_[A-Za-z]+)?\\.qm$"));
  for (const QString& lDir : aDirs) {
    QSet<QString> lNames;
    for (const QString& lFile : QDir(lDir).entryList({QStringLiteral("*.qm")}, QDir::Files, QDir::Name)) {
      const QRegularExpressionMatch lMatch = sCatalogueName.match(lFile);
      if (lMatch.hasMatch()) {
        lNames.insert(lMatch.captured(1));
      }
    }
    QStringList lSorted = lNames.values();
    lSorted.sort();
    bool lAny = false;
    for (const QString& lName : qAsConst(lSorted)) {
      if (Load(aLocale, lName, lDir)) {
        lLoaded << lName;
        lAny = true;
      }
    }
    if (lAny) {
      break;
    }
  }
  return lLoaded;
}

void PtTranslations::Remove()
{
  for (const QPointer<QTranslator>& lTranslator : qAsConst(Installed())) {
    if (lTranslator) {
      QCoreApplication::removeTranslator(lTranslator);
      delete lTranslator.data();
    }
  }
  Installed().clear();
}
