#include "ConfigWindow.h"
#include "LiveStatus.h"
#include "PtTranslations.h"
#include "PxDocumentManager.h"
#include "PxEntry.h"
#include "PxRecorder.h"
#include "PxSimConnectionTypes.h"
#include "PxSimDriver.h"
#include "SensorView.h"
#include "StartupConnection.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <cstdio>

namespace
{
// The user guide: installed beside the program (share/doc/parvex), or in the source tree of a
// build that was never installed.
QString UserGuidePath()
{
  const QString lInstalled =
    QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../share/doc/parvex-config/user-guide.html"));
  if (QFileInfo::exists(lInstalled)) {
    return QFileInfo(lInstalled).canonicalFilePath();
  }
  return QStringLiteral(PARVEX_SOURCE_DOCS "/user-guide.html");
}
} // namespace

int main(int argc, char** argv)
{
  QApplication lApp(argc, argv);
  // One place for every setting of the product: units, recorder, dock layouts, window geometry.
  QCoreApplication::setOrganizationName(QStringLiteral("Parvex"));
  QCoreApplication::setOrganizationDomain(QStringLiteral("parvex.example"));
  QCoreApplication::setApplicationName(QStringLiteral("parvex-config"));
  QCoreApplication::setApplicationVersion(QString::fromLatin1(PtGetVersion()));
  // Before anything makes a text: the help below, the menus, and the device's property names
  // that are named when the device is made.
  PtTranslations::Install(QLocale::system());

  QCommandLineParser lParser;
  lParser.setApplicationDescription(QCoreApplication::translate("main", "Configure and monitor Parvex range-finding sensors."));
  lParser.addHelpOption();
  lParser.addVersionOption();
  const QCommandLineOption lConnect(QStringLiteral("connect"),
                                    QCoreApplication::translate("main", "The sensor to connect to at start: sim (the built-in simulated sensor, the default), tcp://HOST:PORT, or none."),
                                    QStringLiteral("target"), QStringLiteral("sim"));
  const QCommandLineOption lOlder(QStringLiteral("old-firmware"),
                                  QCoreApplication::translate("main", "Start the built-in simulated sensor on the previous firmware release, to try the update."));
  lParser.addOption(lConnect);
  lParser.addOption(lOlder);
  lParser.process(lApp);

  // A new user's first recording and log land in their documents folder, not in the library's
  // built-in default; settings the user already has are kept.
  PxRecorder::SeedDefaultDirectories(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                                     QStringLiteral("/Parvex"));

  int lResult = 1;
  {
    ConfigWindow lWindow;
    if (!PxInit(&lWindow)) {
      std::fprintf(stderr, "parvex-config: the framework library could not be initialised.\n");
      return 1;
    }
    PxSimDriver::Register(&lWindow);
    PxSimConnectionTypes::SetSimulatorStateDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) +
                                               QStringLiteral("/simulator"));
    PxSimConnectionTypes::SetSimulatorOnOlderFirmware(lParser.isSet(lOlder));
    // Product type 0: the guide covers every sensor this application configures.
    PxDocumentManager::RegisterDocument(0, UserGuidePath(), QCoreApplication::translate("main", "Parvex Configuration User Guide"));

    LiveStatus lStatus(lWindow);
    SensorView lView(lWindow);
    lWindow.RestoreWindowSettings();
    lWindow.show();
    ConnectAtStart(lWindow, lParser.value(lConnect));
    lResult = lApp.exec();
    PxShutdown();
  }
  return lResult;
}
