#pragma once

#include "PxSensor.h"
#include "PxTextProperty.h"

#include <QDateTime>
#include <QString>

// File names of the recorder and the data logger: the device's name (without the characters that
// would make a subdirectory or an invalid name), a dash, the local time to the millisecond.
namespace PxRecordingFiles {
inline QString Name(const QString& aDirectory, const PxSensor& aSensor, const QDateTime& aNow,
                    const QString& aExtension)
{
  QString lName = aSensor.DeviceName().TextValue(0);
  lName.replace(QLatin1Char('/'), QLatin1Char('_'))
      .replace(QLatin1Char(':'), QLatin1Char('_'))
      .replace(QLatin1Char('\\'), QLatin1Char('_'));
  return aDirectory + QLatin1Char('/') + lName + QLatin1Char('-') +
         aNow.toString(QStringLiteral("yyyy-MM-dd-HH-mm-ss-zzz")) + aExtension;
}
} // namespace PxRecordingFiles
