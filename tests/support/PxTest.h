#pragma once

#include "PtException.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <functional>
#include <gtest/gtest.h>
#include <ostream>

// QStrings in failure messages as their text, not as bytes.
inline void PrintTo(const QString& aText, std::ostream* aStream)
{
  *aStream << '"' << aText.toStdString() << '"';
}

namespace PxTest {
// The one time-out every QSignalSpy::wait in the suites uses: long enough for a sanitizer build on
// a busy two-core machine, short enough that a lost signal fails the test instead of hanging it.
constexpr int WAIT_MS = 10000;

// A directory that exists for the whole test program and is removed at exit; settings written by
// the code under test land in it instead of the user's real configuration.
QString ScratchDir();

// aName inside ScratchDir().
inline QString ScratchFile(const QString& aName)
{
  return ScratchDir() + QLatin1Char('/') + aName;
}

// Whole files, for tests that build or damage their bytes by hand: what aFile holds (nothing when
// it cannot be read), and aFile made to hold exactly aBytes.
inline QByteArray ReadFile(const QString& aFile)
{
  QFile lFile(aFile);
  return lFile.open(QIODevice::ReadOnly) ? lFile.readAll() : QByteArray();
}
inline bool WriteFile(const QString& aFile, const QByteArray& aBytes)
{
  QFile lFile(aFile);
  return lFile.open(QIODevice::WriteOnly | QIODevice::Truncate) && lFile.write(aBytes) == aBytes.size();
}

// The code carried by the exception aCall throws ("code message"); a call that does not throw gives
// 0, and fails the test unless aMayPass.
inline unsigned int ErrorCode(const std::function<void()>& aCall, bool aMayPass = false)
{
  try {
    aCall();
  } catch (const std::exception& e) {
    unsigned int lCode = 0;
    PtExtractException(e, &lCode, nullptr);
    return lCode;
  }
  if (!aMayPass) {
    ADD_FAILURE() << "no exception";
  }
  return 0;
}

// The message, without its code, of the exception aCall throws; a call that does not throw fails
// the test and gives an empty text.
inline QString ErrorText(const std::function<void()>& aCall)
{
  QString lText;
  try {
    aCall();
    ADD_FAILURE() << "no exception";
  } catch (const std::exception& e) {
    PtExtractException(e, nullptr, &lText);
  }
  return lText;
}
} // namespace PxTest
