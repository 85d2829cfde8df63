#include "ConfigWindow.h"
#include "DeviceSession.h"
#include "PxEntry.h"
#include "PxSimDriver.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QStandardPaths>
#include <cstdio>

int main(int argc, char** argv)
{
  QApplication lApp(argc, argv);
  // One place for every setting of the product: units, recorder, dock layouts, window geometry.
  QCoreApplication::setOrganizationName(QStringLiteral("Parvex"));
  QCoreApplication::setOrganizationDomain(QStringLiteral("parvex.example"));
  QCoreApplication::setApplicationName(QStringLiteral("parvex-config"));
  QCoreApplication::setApplicationVersion(QString::fromLatin1(PtGetVersion()));

  QCommandLineParser lParser;
  lParser.setApplicationDescription(QCoreApplication::translate("main", "Configure and monitor Parvex range-finding sensors."));
  lParser.addHelpOption();
  lParser.addVersionOption();
  const QCommandLineOption lConnect(QStringLiteral("connect"),
                                    QCoreApplication::translate("main", "The sensor to connect to at start: sim (the built-in simulated sensor, the default), tcp://HOST:PORT, or none."),
                                    QStringLiteral("target"), QStringLiteral("sim"));
  lParser.addOption(lConnect);
  lParser.process(lApp);

  int lResult = 1;
  {
    ConfigWindow lWindow;
    if (!PxInit(&lWindow)) {
      std::fprintf(stderr, "parvex-config: the framework library could not be initialised.\n");
      return 1;
    }
    PxSimDriver::Register(&lWindow);
    lWindow.RestoreWindowSettings();
    lWindow.show();

    DeviceSession lSession(lWindow);
    const QString lTarget = lParser.value(lConnect);
    if (lTarget != QLatin1String("none")) {
      lSession.Open(lTarget, QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/simulator"));
    }
    lResult = lApp.exec();
    lSession.Close();
    PxShutdown();
  }
  return lResult;
}
