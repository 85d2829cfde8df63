// The verbs that talk to a device's configuration: connections, info, config, reset.

#include "PtDocumentReader.h"
#include "PxCli.h"
#include "PxCliVerbs.h"
#include "PxConnection.h"
#include "PxControlConnection.h"
#include "PxInProcessConnection.h"
#include "PxSimConnectionTypes.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QRegularExpression>

#include <limits>

namespace PxCli {

namespace {
// Who answers at an address: "Parvex 16 PX16-SIM-000042", or an empty text when nothing does.
QString Probe(const QString& aAddress, int aTimeoutMs, QJsonArray& aDevices)
{
  try {
    Session lSession(aAddress, aTimeoutMs);
    const QString lText = lSession.Sensor().Name() + QLatin1Char(' ') + lSession.Sensor().SerialNumber();
    aDevices.append(QJsonObject{{QStringLiteral("address"), aAddress},
                                {QStringLiteral("device"), lSession.Sensor().Name()},
                                {QStringLiteral("serialNumber"), lSession.Sensor().SerialNumber()},
                                {QStringLiteral("name"), lSession.Sensor().DeviceName().TextValue(0)}});
    return lText;
  } catch (const std::exception&) {
    // Nothing there, or something that does not speak our protocol: not a device to list.
    return QString();
  }
}

void PrintProperties(const std::vector<PxProperty*>& aProperties)
{
  Print(QStringLiteral("%1 %2 %3 %4").arg(Tr("KEY"), -26).arg(Tr("ID"), -10).arg(Tr("EM"), -2).arg(Tr("VALUE")));
  for (const PxProperty* lProperty : aProperties) {
    bool lEditable = false;
    for (size_t i = 0; i < lProperty->Count(); ++i) {
      lEditable = lEditable || lProperty->Editable(i);
    }
    QString lValue = ValuesText(*lProperty);
    if (const QString lUnit = Unit(*lProperty); !lUnit.isEmpty()) {
      lValue += QLatin1Char(' ') + lUnit;
    }
    Print(QStringLiteral("%1 %2 %3%4 %5")
              .arg(Key(*lProperty), -26)
              .arg(lProperty->Id(), -10)
              .arg(lEditable ? QLatin1Char('e') : QLatin1Char('-'))
              .arg(Modified(*lProperty) ? QLatin1Char('m') : QLatin1Char('-'))
              .arg(lValue));
  }
}

QJsonObject IdentityJson(Session& aSession)
{
  PxSimSensor& lSensor = aSession.Sensor();
  return QJsonObject{
      {QStringLiteral("address"), aSession.Address()},
      {QStringLiteral("device"), lSensor.Name()},
      {QStringLiteral("type"), PxSimSensor::TYPE},
      {QStringLiteral("serialNumber"), lSensor.SerialNumber()},
      {QStringLiteral("name"), lSensor.DeviceName().TextValue(0)},
      {QStringLiteral("softwareVersion"), lSensor.SoftwareVersion().Value(0)},
      {QStringLiteral("fpgaVersion"), lSensor.FpgaVersion().Value(0)},
      {QStringLiteral("softwarePartNumber"), lSensor.SoftwarePartNumber().TextValue(0)},
      {QStringLiteral("hardwarePartNumber"), lSensor.HardwarePartNumber().TextValue(0)},
  };
}

void PrintIdentity(Session& aSession)
{
  PxSimSensor& lSensor = aSession.Sensor();
  Print(Tr("device: %1 (type 0x%2) at %3")
            .arg(lSensor.Name())
            .arg(PxSimSensor::TYPE, 4, 16, QLatin1Char('0'))
            .arg(aSession.Address()));
  Print(Tr("serial number: %1").arg(lSensor.SerialNumber()));
  Print(Tr("name: %1").arg(lSensor.DeviceName().TextValue(0)));
  Print(Tr("software: version 0x%1, part number %2")
            .arg(lSensor.SoftwareVersion().Value(0), 4, 16, QLatin1Char('0'))
            .arg(lSensor.SoftwarePartNumber().TextValue(0)));
  Print(Tr("hardware: FPGA version 0x%1, part number %2")
            .arg(lSensor.FpgaVersion().Value(0), 4, 16, QLatin1Char('0'))
            .arg(lSensor.HardwarePartNumber().TextValue(0)));
}

// NAME or NAME[INDEX].
PxProperty& Target(Session& aSession, const QString& aName, size_t& aIndex)
{
  aIndex = std::numeric_limits<size_t>::max();
  static const QRegularExpression sIndexed(QStringLiteral("^(.*)\\[(\\d+)\\]$"));
  const QRegularExpressionMatch lMatch = sIndexed.match(aName);
  if (lMatch.hasMatch()) {
    aIndex = lMatch.captured(2).toULongLong();
    return FindProperty(aSession.Sensor(), lMatch.captured(1));
  }
  return FindProperty(aSession.Sensor(), aName);
}

int Get(Parser& aParser, Session& aSession, const QStringList& aArguments)
{
  size_t lIndex = 0;
  const PxProperty& lProperty = Target(aSession, aArguments.value(1), lIndex);
  const bool lOne = lIndex != std::numeric_limits<size_t>::max();
  if (lOne && lIndex >= lProperty.Count()) {
    Usage(Tr("%1 has %2 values; there is no value %3").arg(Key(lProperty)).arg(lProperty.Count()).arg(lIndex));
  }
  if (aParser.Json()) {
    PrintJson(PropertyJson(lProperty));
  } else {
    Print(lOne ? ValueText(lProperty, lIndex) : ValuesText(lProperty));
  }
  return EXIT_OK;
}

int Set(Parser& aParser, Session& aSession, const QStringList& aArguments)
{
  size_t lIndex = 0;
  PxProperty& lProperty = Target(aSession, aArguments.value(1), lIndex);
  SetFromText(lProperty, lIndex, aArguments.value(2));
  // "Apply", as the configuration form has it: send, save, read back what the device took.
  PxSimSensor& lSensor = aSession.Sensor();
  lSensor.WriteConfiguration();
  lSensor.ApplyConfiguration();
  if (aParser.Json()) {
    PrintJson(PropertyJson(lProperty));
  } else {
    QString lValue = ValuesText(lProperty);
    if (const QString lUnit = Unit(lProperty); !lUnit.isEmpty()) {
      lValue += QLatin1Char(' ') + lUnit;
    }
    Print(Tr("%1 = %2 (applied)").arg(Key(lProperty), lValue));
  }
  return EXIT_OK;
}

int Save(Parser& aParser, Session& aSession, const QStringList& aArguments, const QString& aComment)
{
  const QString lFile = aArguments.value(1);
  aSession.Sensor().SaveConfiguration(lFile, aComment);
  if (aParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("file"), lFile},
                          {QStringLiteral("serialNumber"), aSession.Sensor().SerialNumber()},
                          {QStringLiteral("bytes"), QFileInfo(lFile).size()}});
  } else {
    Print(Tr("saved the configuration of %1 to %2").arg(aSession.Sensor().SerialNumber(), lFile));
  }
  return EXIT_OK;
}

int Load(Parser& aParser, Session& aSession, const QStringList& aArguments)
{
  const QString lFile = aArguments.value(1);
  PxSimSensor& lSensor = aSession.Sensor();
  PtDocumentReader lReader(lFile);
  PxDevice::FileHeader lHeader;
  lSensor.PreLoadFile(lReader, lHeader);
  const QJsonObject lHeaderJson{{QStringLiteral("file"), lFile},
                                {QStringLiteral("name"), lHeader.mName},
                                {QStringLiteral("serialNumber"), lHeader.mSerialNumber},
                                {QStringLiteral("date"), lHeader.mDate.toString(Qt::ISODateWithMs)},
                                {QStringLiteral("comment"), lHeader.mComment}};
  if (!aParser.Json()) {
    // What the application asks the user to confirm; here it is shown before the load.
    Print(Tr("This file was saved with the following information:"));
    Print(Tr("Name: %1").arg(lHeader.mName));
    Print(Tr("Serial number: %1").arg(lHeader.mSerialNumber));
    Print(Tr("Date: %1").arg(lHeader.mDate.toString(Qt::TextDate)));
    Print(Tr("Comment: %1").arg(lHeader.mComment));
  }
  // Loads, then runs the two apply steps itself.
  lSensor.LoadConfiguration(lReader);
  if (aParser.Json()) {
    QJsonObject lResult = lHeaderJson;
    lResult.insert(QStringLiteral("applied"), true);
    PrintJson(lResult);
  } else {
    Print(Tr("loaded and applied to %1").arg(lSensor.SerialNumber()));
  }
  return EXIT_OK;
}
} // namespace

int RunConnections(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("connections"),
                 Tr("Lists the connection types the drivers register and the devices reachable through each.\n\n"
                    "The reference driver registers sim (the simulated sensor in this process, always there) "
                    "and tcp (a sensor or parvex-sim on the network: the last address the application "
                    "connected to and 127.0.0.1:%1, or the addresses --probe names).")
                     .arg(PxTcpConnection::DEFAULT_PORT));
  const QCommandLineOption lProbe(QStringLiteral("probe"),
                                  Tr("A tcp address to look for a device at (HOST:PORT); may be repeated."),
                                  QStringLiteral("host:port"));
  const QCommandLineOption lTimeout(QStringLiteral("timeout"),
                                    Tr("Milliseconds to wait for each device (default 500)."), QStringLiteral("ms"),
                                    QStringLiteral("500"));
  lParser.AddOption(lProbe);
  lParser.AddOption(lTimeout);
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 0, 0)) {
    return EXIT_OK;
  }
  const int lTimeoutMs = static_cast<int>(lParser.Number(lTimeout, 1));
  QStringList lProbes = lParser.Qt().values(lProbe);
  if (lProbes.isEmpty()) {
    lProbes << QStringLiteral("127.0.0.1:%1").arg(PxTcpConnection::DEFAULT_PORT);
  }

  QJsonArray lTypes;
  QStringList lLines;
  auto lAdd = [&](const QString& aName, const QString& aDescription, const QJsonArray& aDevices,
                  const QStringList& aFound) {
    lTypes.append(QJsonObject{{QStringLiteral("type"), aName},
                              {QStringLiteral("description"), aDescription},
                              {QStringLiteral("devices"), aDevices}});
    lLines << QStringLiteral("%1 %2").arg(aName, -6).arg(aDescription);
    for (const QString& lFound : aFound) {
      lLines << QStringLiteral("       %1").arg(lFound);
    }
  };

  // Every type the drivers registered, with the devices its lister finds. The reference driver's
  // two are probed for who answers; --probe names the tcp addresses to look at instead of its
  // lister's guesses.
  for (const PxConnection::Type& lType : PxConnection::sTypes) {
    QStringList lAddresses = PxConnection::ListDevices(lType.mName);
    const bool lTcp = lType.mName == QLatin1String(PxSimConnectionTypes::TCP);
    const bool lOurs = lTcp || lType.mName == QLatin1String(PxSimConnectionTypes::SIM);
    if (lTcp && lParser.Qt().isSet(lProbe)) {
      lAddresses.clear();
      for (const QString& lAddress : lProbes) {
        lAddresses << QStringLiteral("tcp://") + lAddress;
      }
    }
    QJsonArray lDevices;
    QStringList lFound;
    for (const QString& lAddress : lAddresses) {
      if (!lOurs) {
        lDevices.append(QJsonObject{{QStringLiteral("address"), lAddress}});
        lFound << lAddress;
        continue;
      }
      const QString lDevice = Probe(lAddress, lTimeoutMs, lDevices);
      lFound << (lDevice.isEmpty() ? Tr("%1: no device answers").arg(lAddress)
                                   : QStringLiteral("%1: %2").arg(lAddress, lDevice));
    }
    if (lTcp && lAddresses.isEmpty()) {
      lFound << Tr("no device answers at %1").arg(lProbes.join(QStringLiteral(", ")));
    }
    lAdd(lType.mName, lType.mDescription, lDevices, lFound);
  }
  if (lParser.Json()) {
    PrintJson(lTypes);
  } else {
    Print(lLines.join(QLatin1Char('\n')));
  }
  return EXIT_OK;
}

int RunInfo(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("info"),
                 Tr("Prints the connected device's identity and every property: key, id, whether it is editable "
                    "(e) and modified (m), and its value with its unit."));
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 0, 0)) {
    return EXIT_OK;
  }
  Session lSession(lParser.Address(), lParser.TimeoutMs());
  const std::vector<PxProperty*> lProperties = SortedProperties(lSession.Sensor());
  if (lParser.Json()) {
    QJsonArray lArray;
    for (const PxProperty* lProperty : lProperties) {
      lArray.append(PropertyJson(*lProperty));
    }
    QJsonObject lResult = IdentityJson(lSession);
    lResult.insert(QStringLiteral("properties"), lArray);
    PrintJson(lResult);
  } else {
    PrintIdentity(lSession);
    Print(QString());
    PrintProperties(lProperties);
  }
  return EXIT_OK;
}

int RunConfig(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("config"),
                 Tr("Reads and changes the device's configuration.\n\n"
                    "  get NAME            prints a value (NAME[i] for one of several)\n"
                    "  set NAME VALUE      sets a value and applies it: the device saves it\n"
                    "  save FILE.pto       writes the configuration to a file\n"
                    "  load FILE.pto       shows the file's header, then loads and applies it\n\n"
                    "NAME is a key or id as parvex-cli info lists them, or the name as the application "
                    "shows it. A value of several takes one VALUE for all, or a comma-separated list."));
  lParser.AddPositional(QStringLiteral("action"), Tr("get, set, save or load."), QStringLiteral("get|set|save|load"));
  lParser.AddPositional(QStringLiteral("argument"), Tr("NAME, NAME VALUE, or FILE."), QStringLiteral("ARGUMENT..."));
  const QCommandLineOption lComment(QStringLiteral("comment"), Tr("The comment stored in a saved file."),
                                    QStringLiteral("text"));
  lParser.AddOption(lComment);
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 1, 3)) {
    return EXIT_OK;
  }
  const QStringList lArguments = lParser.Positional();
  const QString lAction = lArguments.front();
  const int lExpected = lAction == QLatin1String("set") ? 3 : 2;
  if (lAction != QLatin1String("get") && lAction != QLatin1String("set") && lAction != QLatin1String("save") &&
      lAction != QLatin1String("load")) {
    Usage(Tr("unknown action \"%1\": expected get, set, save or load").arg(lAction));
  }
  if (lArguments.size() != lExpected) {
    Usage(Tr("config %1 takes %2 argument(s); see parvex-cli config --help").arg(lAction).arg(lExpected - 1));
  }
  if (lAction == QLatin1String("load") && !QFileInfo(lArguments.at(1)).isFile()) {
    Fail(Tr("no file %1").arg(lArguments.at(1)));
  }
  Session lSession(lParser.Address(), lParser.TimeoutMs());
  if (lAction == QLatin1String("get")) {
    return Get(lParser, lSession, lArguments);
  }
  if (lAction == QLatin1String("set")) {
    return Set(lParser, lSession, lArguments);
  }
  if (lAction == QLatin1String("save")) {
    return Save(lParser, lSession, lArguments, lParser.Qt().value(lComment));
  }
  return Load(lParser, lSession, lArguments);
}

int RunReset(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("reset"),
                 Tr("Restarts the device on its saved configuration; changes that were not applied are lost."));
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 0, 0)) {
    return EXIT_OK;
  }
  Session lSession(lParser.Address(), lParser.TimeoutMs());
  lSession.Sensor().Reset();
  if (lParser.Json()) {
    QJsonObject lResult = IdentityJson(lSession);
    lResult.insert(QStringLiteral("reset"), true);
    PrintJson(lResult);
  } else {
    Print(Tr("%1 restarted on its saved configuration").arg(lSession.Sensor().SerialNumber()));
  }
  return EXIT_OK;
}

} // namespace PxCli
