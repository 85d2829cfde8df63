// parvex-cli: the Parvex suite from a terminal. One program, one verb per task; results on
// standard output (text, or JSON with --json), progress and errors on standard error, and the
// exit codes of PxCli::ExitCode.

#include "PtException.h"
#include "PxCli.h"
#include "PxCliVerbs.h"
#include "PxConnection.h"
#include "PxSimDriver.h"
#include "PxUnits.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace PxCli {
const std::vector<Verb>& Verbs()
{
  static const std::vector<Verb> sVerbs{
      {"connections", "list the kinds of connection and the devices reachable", &RunConnections},
      {"info", "print the device's identity and every property", &RunInfo},
      {"config", "get, set, save or load the configuration", &RunConfig},
      {"reset", "restart the device on its saved configuration", &RunReset},
      {"firmware", "install a firmware file", &RunFirmware},
      {"record", "record the device's results into record files", &RunRecord},
      {"log", "write the device's echoes to a text log", &RunLog},
      {"inspect", "show what a record file holds", &RunInspect},
      {"extract", "copy a range of frames into a new record file", &RunExtract},
      {"export", "write one group of a record file as CSV or JSON", &RunExport},
  };
  return sVerbs;
}
} // namespace PxCli

namespace {
using namespace PxCli;

void PrintError(const QString& aVerb, const QString& aMessage)
{
  const QByteArray lLine = (QStringLiteral("parvex-cli") + (aVerb.isEmpty() ? QString() : QLatin1Char(' ') + aVerb) +
                            QStringLiteral(": ") + aMessage + QLatin1Char('\n'))
                               .toUtf8();
  std::fwrite(lLine.constData(), 1, static_cast<size_t>(lLine.size()), stderr);
}

QString Overview()
{
  QString lText = Tr("Usage: parvex-cli [--verbose] VERB [options] [arguments]\n\n"
                     "Configure and record Parvex sensors from a terminal. Verbs:\n");
  for (const Verb& lVerb : Verbs()) {
    lText += QStringLiteral("  %1 %2\n").arg(QString::fromLatin1(lVerb.mName), -12).arg(Tr(lVerb.mSummary));
  }
  lText += Tr("\nparvex-cli VERB --help describes a verb. Exit codes: 0 done, 1 refused or failed, "
              "2 bad command line, 3 device unreachable or link lost.");
  return lText;
}

// The text of a library error without its leading code, and the code in brackets.
QString Message(const std::exception& aError)
{
  unsigned int lCode = 0;
  QString lText;
  PtExtractException(aError, &lCode, &lText);
  return lCode == 0 ? lText : QStringLiteral("%1 (error %2)").arg(lText).arg(lCode);
}
} // namespace

int main(int argc, char** argv)
{
  QCoreApplication lApp(argc, argv);
  // Settings of its own: what the command line chooses never changes the application's.
  QCoreApplication::setOrganizationName(QStringLiteral("Parvex"));
  QCoreApplication::setApplicationName(QStringLiteral("parvex-cli"));
  QCoreApplication::setApplicationVersion(QStringLiteral("3.2.1.23"));

  QStringList lArguments = QCoreApplication::arguments();
  lArguments.removeFirst();
  bool lVerbose = false;
  if (!lArguments.isEmpty() &&
      (lArguments.front() == QLatin1String("-v") || lArguments.front() == QLatin1String("--verbose"))) {
    lVerbose = true;
    lArguments.removeFirst();
  }
  // The library's own diagnostics repeat what the verb reports; --verbose shows them.
  if (!lVerbose && qEnvironmentVariableIsEmpty("QT_LOGGING_RULES")) {
    QLoggingCategory::setFilterRules(QStringLiteral("parvex.*=false\nparvex.*.critical=true"));
  }
  if (lArguments.isEmpty() || lArguments.front() == QLatin1String("--help") ||
      lArguments.front() == QLatin1String("-h") || lArguments.front() == QLatin1String("help")) {
    if (lArguments.size() > 1) {
      // "help VERB" is "VERB --help".
      lArguments = QStringList{lArguments.at(1), QStringLiteral("--help")};
    } else {
      Print(Overview());
      return lArguments.isEmpty() ? EXIT_USAGE : EXIT_OK;
    }
  }
  if (lArguments.front() == QLatin1String("--version")) {
    Print(QStringLiteral("parvex-cli %1").arg(QCoreApplication::applicationVersion()));
    return EXIT_OK;
  }

  const QString lVerbName = lArguments.front();
  const Verb* lVerb = nullptr;
  for (const Verb& lCandidate : Verbs()) {
    if (lVerbName == QLatin1String(lCandidate.mName)) {
      lVerb = &lCandidate;
    }
  }
  if (!lVerb) {
    PrintError(QString(), Tr("unknown verb \"%1\"; parvex-cli --help lists them").arg(lVerbName));
    return EXIT_USAGE;
  }

  // Values in the units the device works in (metres, degrees Celsius), whatever the application's
  // preferences say: scripts must not depend on a choice made in a window.
  PxUnits::Initialize();
  PxUnits::SetUnit(UT_DISTANCE, 1);
  PxUnits::SetUnit(UT_TEMPERATURE, 1);
  PxUnits::SetUnit(UT_SPEED, 1);
  PxUnits::SetUnit(UT_ANGLE, 2);
  PxSimDriver::Register();

  try {
    return lVerb->mRun(lArguments);
  } catch (const Error& e) {
    PrintError(lVerbName, QString::fromUtf8(e.what()));
    return e.ExitCode();
  } catch (const PxConnection::Exception& e) {
    PrintError(lVerbName, Tr("the device does not answer: %1").arg(Message(e)));
    return EXIT_UNREACHABLE;
  } catch (const std::exception& e) {
    PrintError(lVerbName, Message(e));
    return EXIT_FAILED;
  }
}
