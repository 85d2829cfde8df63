#include "ConfigWindow.h"
#include "PxEntry.h"

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv)
{
  QApplication lApp(argc, argv);
  // One place for every setting of the product: units, recorder, dock layouts, window geometry.
  QCoreApplication::setOrganizationName(QStringLiteral("Parvex"));
  QCoreApplication::setOrganizationDomain(QStringLiteral("parvex.example"));
  QCoreApplication::setApplicationName(QStringLiteral("parvex-config"));
  QCoreApplication::setApplicationVersion(QString::fromLatin1(PtGetVersion()));

  int lResult = 1;
  {
    ConfigWindow lWindow;
    if (!PxInit(&lWindow)) {
      std::fprintf(stderr, "parvex-config: the framework library could not be initialised.\n");
      return 1;
    }
    lWindow.RestoreWindowSettings();
    lWindow.show();
    lResult = lApp.exec();
    PxShutdown();
  }
  return lResult;
}
