#pragma once

#include "ParvexTechExport.h"
#include "PtTypes.h"

#include <QDateTime>
#include <QString>

// The 8-byte date-time form stored in documents: milliseconds since 1970-01-01T00:00:00 UTC as a
// signed 64-bit number. It keeps every QDateTime to the millisecond (the toolkit's own resolution)
// and reads back as local time. An invalid date-time is stored as the smallest 64-bit number.
PT_EXPORT Pt64 PtToPersistence(const QDateTime& aDateTime);
PT_EXPORT QDateTime PtFromPersistence(Pt64 aValue);

// Windows FILETIME (100 ns intervals since 1601-01-01 UTC), as older files and sensors store it.
// Values beyond the toolkit's date range give an invalid QDateTime.
PT_EXPORT QDateTime PtFromFiletime(PtU64 aFiletime);

// Elapsed milliseconds as "H:MM:SS" (hours are not wrapped at 24, so a 30-hour recording reads
// "30:00:00").
PT_EXPORT QString PtToElapsedTimeString(PtU32 aMilliseconds);
