#pragma once

#include "PtDocumentReader.h"

#include "PtTypes.h"

#include <QtEndian>

#include <cstring>

// On-disk layout shared by the document writer and reader; docs/document-format.md is the
// reference. All header fields are little-endian; element data is stored as the caller gave it.
namespace PtDocumentFormat {
// Record tags read as text in a hex dump ("PXDC", "SECT", ...).
constexpr PtU32 SIGNATURE = PtDocumentReader::FORMAT_SIGNATURE; // "PXDC": first word of every document
constexpr PtU32 FORMAT_VERSION = 1;
constexpr PtU32 TAG_SECTION = 0x54434553u; // "SECT"
constexpr PtU32 TAG_ELEMENT = 0x4D454C45u; // "ELEM"
constexpr PtU32 TAG_INDEX = 0x58444E49u;   // "INDX": a chunk of the main-section index
constexpr PtU32 TAG_TRAILER = 0x444E4558u; // "XEND": last record of a closed document
constexpr PtU32 TAG_COMMIT = 0x54494D43u;  // "CMIT": what a flushing writer wrote so far is whole

constexpr PtU64 FILE_HEADER_SIZE = 16;
constexpr PtU64 SECTION_HEADER_SIZE = 24;
constexpr PtU64 ELEMENT_HEADER_SIZE = 16;
constexpr PtU64 INDEX_HEADER_SIZE = 24;
constexpr PtU64 INDEX_ENTRY_SIZE = 16;
constexpr PtU64 TRAILER_SIZE = 24;
constexpr PtU64 COMMIT_SIZE = 24;
// Offset of the flags word in the file header, and its flag for documents written frame by frame:
// in a cut one, only the main sections followed by a commit record count.
constexpr PtU64 FILE_FLAGS_FIELD = 12;
constexpr PtU32 FLAG_COMMITS = 1;
// Offset of the content length inside a section record.
constexpr PtU64 SECTION_LENGTH_FIELD = 16;

// Content length of a section that has not been ended yet: a reader treats it as cut.
constexpr PtU64 OPEN_LENGTH = ~PtU64(0);

// Sections nest at most this deep, main sections included. Real documents use four levels;
// the bound keeps a crafted file from driving the reader's stack without limit.
constexpr size_t MAX_DEPTH = 32;

// Main sections per index chunk: the writer keeps at most this many entries in memory.
constexpr size_t INDEX_CHUNK_ENTRIES = 4096;

inline PtU32 Load32(const char* aData)
{
  PtU32 lValue;
  std::memcpy(&lValue, aData, 4);
  return qFromLittleEndian(lValue);
}

inline PtU64 Load64(const char* aData)
{
  PtU64 lValue;
  std::memcpy(&lValue, aData, 8);
  return qFromLittleEndian(lValue);
}

inline void Store32(char* aData, PtU32 aValue)
{
  aValue = qToLittleEndian(aValue);
  std::memcpy(aData, &aValue, 4);
}

inline void Store64(char* aData, PtU64 aValue)
{
  aValue = qToLittleEndian(aValue);
  std::memcpy(aData, &aValue, 8);
}

// FNV-1a over 64-bit words (the tail byte by byte): cheap enough for a 360 000-entry index and
// enough to tell a real index from bytes that happen to sit at the end of a cut file.
inline PtU32 Checksum(const char* aData, size_t aSize, PtU64 aSeed = 0xcbf29ce484222325ull)
{
  constexpr PtU64 PRIME = 0x100000001b3ull;
  PtU64 lHash = aSeed;
  size_t i = 0;
  for (; i + 8 <= aSize; i += 8) {
    PtU64 lWord;
    std::memcpy(&lWord, aData + i, 8);
    lHash = (lHash ^ lWord) * PRIME;
  }
  for (; i < aSize; ++i) {
    lHash = (lHash ^ static_cast<unsigned char>(aData[i])) * PRIME;
  }
  return static_cast<PtU32>(lHash ^ (lHash >> 32));
}

// Format error codes of the document layer (messages in PtFileFormatMessage).
enum Error {
  ERROR_SIGNATURE = 20,  // not a document
  ERROR_TYPE = 21,       // a document of another type than expected
  ERROR_RECORD = 22,     // a record of unknown kind or impossible fields
  ERROR_OVERRUN = 23,    // a record runs past the section that holds it
  ERROR_DEPTH = 24,      // sections nested too deeply
  ERROR_SHORT = 25,      // an element holds fewer bytes than asked for
  ERROR_VERSION = 26,    // a newer format version
  ERROR_INDEX = 27,      // the main-section index does not match the sections
  ERROR_NOT_ELEMENT = 28 // element data asked for where there is no element
};
} // namespace PtDocumentFormat
