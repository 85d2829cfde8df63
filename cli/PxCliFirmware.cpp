// The firmware verb: a firmware file sent to the device in chunks, with a progress line.

#include "PxCli.h"
#include "PxCliVerbs.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"

#include <QFileInfo>
#include <QJsonObject>

namespace PxCli {

int RunFirmware(const QStringList& aArguments)
{
  Parser lParser(QStringLiteral("firmware"),
                 Tr("Installs a firmware file (*.ptb) on the device: the file is checked, sent in chunks, "
                    "verified and installed by the device, which then restarts on it."));
  lParser.AddPositional(QStringLiteral("file"), Tr("The firmware file."), QStringLiteral("FILE.ptb"));
  const QCommandLineOption lQuiet(QStringLiteral("quiet"), Tr("No progress line."));
  lParser.AddOption(lQuiet);
  lParser.AddConnect();
  lParser.AddJson();
  if (!lParser.Parse(aArguments, 1, 1)) {
    return EXIT_OK;
  }
  const QString lFile = lParser.Positional().front();
  if (!QFileInfo(lFile).isFile()) {
    Fail(Tr("no file %1").arg(lFile));
  }
  // A damaged or foreign file is refused before the device is touched.
  const PxSimSensor::FirmwareImage lImage = PxSimSensor::ReadFirmwareFile(lFile);
  const QString lComponent = lImage.mComponent == PxSimProtocol::COMPONENT_FPGA ? Tr("FPGA") : Tr("software");

  Session lSession(lParser.Address(), lParser.TimeoutMs());
  PxSimSensor& lSensor = lSession.Sensor();
  const int lBefore = lImage.mComponent == PxSimProtocol::COMPONENT_FPGA ? lSensor.FpgaVersion().Value(0)
                                                                         : lSensor.SoftwareVersion().Value(0);
  Progress lProgress(!lParser.Qt().isSet(lQuiet));
  lProgress.Show(Tr("firmware: %1 version 0x%2 to %3")
                     .arg(lComponent)
                     .arg(lImage.mVersion, 4, 16, QLatin1Char('0'))
                     .arg(lSensor.SerialNumber()),
                 true);
  lSensor.UpdateFirmware(lImage, [&](PtU32 aReceived, PtU32 aTotal) {
    lProgress.Show(Tr("firmware: %1% (%2 of %3)")
                       .arg(static_cast<qint64>(aReceived) * 100 / aTotal)
                       .arg(FormatBytes(aReceived), FormatBytes(aTotal)),
                   aReceived == aTotal);
  });
  lProgress.Done();
  const int lAfter = lImage.mComponent == PxSimProtocol::COMPONENT_FPGA ? lSensor.FpgaVersion().Value(0)
                                                                        : lSensor.SoftwareVersion().Value(0);
  if (lParser.Json()) {
    PrintJson(QJsonObject{{QStringLiteral("file"), lFile},
                          {QStringLiteral("component"), lComponent},
                          {QStringLiteral("bytes"), lImage.mData.size()},
                          {QStringLiteral("versionBefore"), lBefore},
                          {QStringLiteral("versionAfter"), lAfter}});
  } else {
    Print(Tr("installed %1 firmware on %2: version 0x%3, was 0x%4")
              .arg(lComponent, lSensor.SerialNumber())
              .arg(lAfter, 4, 16, QLatin1Char('0'))
              .arg(lBefore, 4, 16, QLatin1Char('0')));
  }
  return EXIT_OK;
}

} // namespace PxCli
