#include "PtTime.h"

#include <limits>

namespace
{
constexpr Pt64 INVALID_PERSISTENCE = std::numeric_limits<Pt64>::min();
// 100 ns intervals between 1601-01-01 and 1970-01-01.
constexpr PtU64 FILETIME_UNIX_EPOCH = 116444736000000000ull;
} // namespace

Pt64 PtToPersistence(const QDateTime& aDateTime)
{
  return aDateTime.isValid() ? aDateTime.toMSecsSinceEpoch() : INVALID_PERSISTENCE;
}

QDateTime PtFromPersistence(Pt64 aValue)
{
  if (aValue == INVALID_PERSISTENCE) {
    return QDateTime();
  }
  return QDateTime::fromMSecsSinceEpoch(aValue, Qt::LocalTime);
}

QDateTime PtFromFiletime(PtU64 aFiletime)
{
  // Split before subtracting so that times before 1970 do not wrap the unsigned arithmetic.
  const Pt64 lMs = aFiletime >= FILETIME_UNIX_EPOCH
                     ? static_cast<Pt64>((aFiletime - FILETIME_UNIX_EPOCH) / 10000)
                     : -static_cast<Pt64>((FILETIME_UNIX_EPOCH - aFiletime) / 10000);
  return QDateTime::fromMSecsSinceEpoch(lMs, Qt::LocalTime);
}

QString PtToElapsedTimeString(PtU32 aMilliseconds)
{
  const PtU32 lSeconds = aMilliseconds / 1000;
  return QStringLiteral("%1:%2:%3")
    .arg(lSeconds / 3600)
    .arg((lSeconds / 60) % 60, 2, 10, QLatin1Char('0'))
    .arg(lSeconds % 60, 2, 10, QLatin1Char('0'));
}
