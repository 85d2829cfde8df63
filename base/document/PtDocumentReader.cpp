#include "PtDocumentReader.h"

#include "PtAssert.h"
#include "PtDocumentFormat_p.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PtFile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLoggingCategory>

#include <algorithm>
#include <climits>
#include <vector>

using namespace PtDocumentFormat;

Q_LOGGING_CATEGORY(lcDocument, "parvex.document")

namespace {
// Read window: record headers and small element data are served from it.
constexpr size_t WINDOW_SIZE = 256u << 10;
// When the main-section list is rebuilt by hopping from record to record, a hop far beyond the
// window reads only this much: large frames are then not read whole just for their header.
constexpr size_t HOP_READ_SIZE = 4096;
// Block size for Extract.
constexpr size_t COPY_BLOCK_SIZE = 4u << 20;

template <size_t N>
void Scatter(char* aOut, const char* aIn, size_t aCount, size_t aStride)
{
  for (size_t i = 0; i < aCount; ++i, aOut += aStride, aIn += N) {
    std::memcpy(aOut, aIn, N);
  }
}

struct MainHeader
{
  PtU64 mSize = 0; // whole record
  PtU32 mId = 0;
  PtU32 mVersion = 0;
  PtU32 mFlag = 0;
};

struct MainSection
{
  PtU64 mOffset;
  PtU32 mId;
  PtU32 mFlag;
};

MainSection DecodeEntry(const char* aEntry)
{
  return {Load64(aEntry), Load32(aEntry + 8), Load32(aEntry + 12)};
}

// Bytes of an index chunk that lists INDEX_CHUNK_ENTRIES main sections: every chunk but the last.
constexpr PtU64 FULL_CHUNK_SIZE = INDEX_HEADER_SIZE + INDEX_CHUNK_ENTRIES * INDEX_ENTRY_SIZE;

enum class Kind { NONE, SECTION, ELEMENT };
} // namespace

class PtDocumentReader::Private
{
public:
  explicit Private(const QString& aFileName)
      : mFileName(aFileName)
      , mFile(aFileName)
  {
  }

  [[noreturn]] void Fail(int aCode, PtU64 aOffset) const
  {
    PtThrow<PtFileFormatException>(
        static_cast<unsigned int>(aCode),
        PtFileFormatMessage(aCode) + QLatin1Char(' ') +
            QCoreApplication::translate("PtDocumentReader", "(%1, offset %2)").arg(mFileName).arg(aOffset));
  }

  void ReadAt(PtU64 aOffset, char* aBuffer, PtU64 aSize)
  {
    if (!mFile.seek(static_cast<qint64>(aOffset))) {
      PtThrow<std::runtime_error>(
          static_cast<unsigned int>(mFile.error() != QFileDevice::NoError ? mFile.error() : QFileDevice::PositionError),
          QCoreApplication::translate("PtDocumentReader", "Cannot read %1: %2").arg(mFileName, mFile.errorString()));
    }
    mFile.Read(aBuffer, static_cast<qint64>(aSize));
  }

  // Makes [aOffset, aOffset + aSize) available in the window and returns it. Callers have checked
  // that the range lies inside the file and aSize is at most a record header.
  const char* Peek(PtU64 aOffset, size_t aSize, size_t aReadSize = WINDOW_SIZE)
  {
    if (aOffset < mWindowStart || aOffset + aSize > mWindowStart + mWindowUsed) {
      mWindowStart = aOffset;
      mWindowUsed = static_cast<size_t>(std::min<PtU64>(std::max(aReadSize, aSize), mFileSize - aOffset));
      ReadAt(aOffset, mWindow.data(), mWindowUsed);
    }
    return mWindow.data() + (aOffset - mWindowStart);
  }

  void ReadBytes(PtU64 aOffset, char* aBuffer, PtU64 aSize)
  {
    if (aOffset >= mWindowStart && aOffset + aSize <= mWindowStart + mWindowUsed) {
      std::memcpy(aBuffer, mWindow.data() + (aOffset - mWindowStart), aSize);
    } else if (aSize >= WINDOW_SIZE / 2) {
      ReadAt(aOffset, aBuffer, aSize);
    } else {
      std::memcpy(aBuffer, Peek(aOffset, static_cast<size_t>(aSize)), aSize);
    }
  }

  // Reads bytes used once (index chunks) without replacing the window the cursor reads from.
  void ReadAside(PtU64 aOffset, char* aBuffer, PtU64 aSize)
  {
    if (aOffset >= mWindowStart && aOffset + aSize <= mWindowStart + mWindowUsed) {
      std::memcpy(aBuffer, mWindow.data() + (aOffset - mWindowStart), aSize);
    } else {
      ReadAt(aOffset, aBuffer, aSize);
    }
  }

  // The limit of the main-section area: the trailer of a closed document, else the file's end.
  PtU64 MainLimit() const { return mClosed ? mDataEnd : mFileSize; }

  enum class MainRecord { SECTION, INDEX, COMMIT, END };

  // Reads the top-level record at aOffset. In a closed document everything must fit before the
  // trailer. In a cut one, a record that is incomplete (short, still open, or running past the end
  // of the file) is where the writer stopped: the document ends there. A complete record of an
  // unknown kind is damage in both.
  MainRecord ReadMainRecord(PtU64 aOffset, MainHeader& aHeader, size_t aReadSize = WINDOW_SIZE)
  {
    const PtU64 lLimit = MainLimit();
    if (aOffset >= lLimit) {
      return MainRecord::END;
    }
    const PtU64 lLeft = lLimit - aOffset;
    if (lLeft < SECTION_HEADER_SIZE) {
      if (mClosed) {
        Fail(ERROR_OVERRUN, aOffset);
      }
      return MainRecord::END;
    }
    const char* lRecord = Peek(aOffset, SECTION_HEADER_SIZE, aReadSize);
    const PtU32 lTag = Load32(lRecord);
    if (lTag == TAG_SECTION) {
      const PtU64 lLength = Load64(lRecord + SECTION_LENGTH_FIELD);
      if (lLength > lLeft - SECTION_HEADER_SIZE) { // also a section still open
        if (mClosed) {
          Fail(ERROR_OVERRUN, aOffset);
        }
        return MainRecord::END;
      }
      aHeader.mSize = SECTION_HEADER_SIZE + lLength;
      aHeader.mId = Load32(lRecord + 4);
      aHeader.mVersion = Load32(lRecord + 8);
      aHeader.mFlag = Load32(lRecord + 12);
      return MainRecord::SECTION;
    }
    if (lTag == TAG_INDEX) {
      const PtU64 lSize = INDEX_HEADER_SIZE + PtU64(Load32(lRecord + 4)) * INDEX_ENTRY_SIZE;
      if (lSize > lLeft) {
        if (mClosed) {
          Fail(ERROR_OVERRUN, aOffset);
        }
        return MainRecord::END;
      }
      aHeader.mSize = lSize;
      return MainRecord::INDEX;
    }
    if (lTag == TAG_TRAILER && !mClosed) {
      return MainRecord::END; // a trailer followed by more bytes: what follows is not ours
    }
    if (lTag == TAG_COMMIT && Load64(lRecord + 8) == aOffset) {
      aHeader.mSize = COMMIT_SIZE;
      return MainRecord::COMMIT;
    }
    // A document written frame by frame keeps zeros ahead of its data; whatever follows its last
    // commit (a write cut short, those zeros) is dropped anyway.
    if (!mClosed && mCommits) {
      return MainRecord::END;
    }
    Fail(ERROR_RECORD, aOffset);
  }

  // Reads the record at aOffset inside a section whose content ends at aEnd.
  void ReadInnerRecord(PtU64 aOffset, PtU64 aEnd)
  {
    const PtU64 lLeft = aEnd - aOffset;
    if (lLeft < ELEMENT_HEADER_SIZE) {
      Fail(ERROR_OVERRUN, aOffset);
    }
    const char* lRecord = Peek(aOffset, lLeft < SECTION_HEADER_SIZE ? ELEMENT_HEADER_SIZE : SECTION_HEADER_SIZE);
    const PtU32 lTag = Load32(lRecord);
    mId = Load32(lRecord + 4);
    if (lTag == TAG_ELEMENT) {
      mUnitSize = Load32(lRecord + 8);
      mCount = Load32(lRecord + 12);
      if (mUnitSize == 0 && mCount != 0) {
        Fail(ERROR_RECORD, aOffset); // a count that costs nothing to claim is not believed
      }
      const PtU64 lSize = PtU64(mUnitSize) * mCount; // at most (2^32 - 1)^2: no overflow
      if (lSize > lLeft - ELEMENT_HEADER_SIZE) {
        Fail(ERROR_OVERRUN, aOffset);
      }
      mKind = Kind::ELEMENT;
      mVersion = mFlag = 0;
      mDataOffset = aOffset + ELEMENT_HEADER_SIZE;
      mItemEnd = mDataOffset + lSize;
      return;
    }
    if (lTag == TAG_SECTION) {
      if (lLeft < SECTION_HEADER_SIZE || Load64(lRecord + SECTION_LENGTH_FIELD) > lLeft - SECTION_HEADER_SIZE) {
        Fail(ERROR_OVERRUN, aOffset);
      }
      if (mEnds.size() >= MAX_DEPTH) {
        Fail(ERROR_DEPTH, aOffset);
      }
      SetSection(aOffset, mId, Load32(lRecord + 8), Load32(lRecord + 12), Load64(lRecord + SECTION_LENGTH_FIELD));
      return;
    }
    Fail(ERROR_RECORD, aOffset);
  }

  void SetSection(PtU64 aOffset, PtU32 aId, PtU32 aVersion, PtU32 aFlag, PtU64 aLength)
  {
    mKind = Kind::SECTION;
    mId = aId;
    mVersion = aVersion;
    mFlag = aFlag;
    mUnitSize = mCount = 0;
    mDataOffset = aOffset + SECTION_HEADER_SIZE;
    mItemEnd = mDataOffset + aLength;
  }

  void ClearItem()
  {
    mKind = Kind::NONE;
    mId = PT_NONE32;
    mUnitSize = mCount = mVersion = mFlag = 0;
  }

  bool Advance()
  {
    if (mKind == Kind::SECTION) {
      mEnds.push_back(mItemEnd);
      mPosition = mDataOffset;
    } else if (mKind == Kind::ELEMENT) {
      mPosition = mItemEnd;
    }
    ClearItem();
    if (!mEnds.empty()) {
      if (mPosition == mEnds.back()) {
        mEnds.pop_back();
        return false;
      }
      ReadInnerRecord(mPosition, mEnds.back());
      return true;
    }
    if (mCommits && !mClosed) {
      BuildList(); // only committed sections are read
    }
    for (;;) {
      MainHeader lHeader;
      if (mListBuilt && mPosition >= mListEnd) {
        return false;
      }
      switch (ReadMainRecord(mPosition, lHeader)) {
      case MainRecord::END:
        return false;
      case MainRecord::INDEX:
      case MainRecord::COMMIT:
        mPosition += lHeader.mSize;
        continue;
      case MainRecord::SECTION:
        break;
      }
      const size_t lIndex = mMain == PT_ALL ? 0 : mMain + 1;
      if (mListBuilt && (lIndex >= MainCount() || Entry(lIndex).mOffset != mPosition)) {
        Fail(ERROR_INDEX, mPosition);
      }
      SetSection(mPosition, lHeader.mId, lHeader.mVersion, lHeader.mFlag, lHeader.mSize - SECTION_HEADER_SIZE);
      mMain = lIndex;
      return true;
    }
  }

  size_t MainCount() const { return mChunked + mTail.size(); }

  // Main section aIndex (< MainCount()). Walking forwards or backwards stays inside the loaded
  // chunk for 4096 sections; any other index costs one chunk read.
  MainSection Entry(size_t aIndex)
  {
    if (aIndex >= mChunked) {
      return mTail[aIndex - mChunked];
    }
    const size_t lChunk = aIndex / INDEX_CHUNK_ENTRIES;
    if (lChunk != mLoadedChunk) {
      LoadChunk(lChunk);
    }
    return DecodeEntry(mChunk.data() + INDEX_HEADER_SIZE + (aIndex % INDEX_CHUNK_ENTRIES) * INDEX_ENTRY_SIZE);
  }

  // Exactly: growing by the vector's own steps would keep up to twice a chunk.
  void SizeChunkBuffer(size_t aSize)
  {
    mChunk.reserve(aSize);
    mChunk.resize(aSize);
  }

  // Reads chunk aChunk of the directory and checks what can be checked without the sections: it
  // is the chunk the chain promised, its checksum holds, and its offsets increase between the end
  // of the chunk before and this chunk. That keeps the cursor inside the main-section area
  // whatever a crafted entry says; Advance() then checks that a section starts where it points.
  void LoadChunk(size_t aChunk)
  {
    mLoadedChunk = PT_ALL; // until the new one has passed
    const PtU64 lChunk = mChunks[aChunk];
    const PtU64 lPrevious = aChunk == 0 ? 0 : mChunks[aChunk - 1];
    const size_t lCount = aChunk + 1 < mChunks.size() ? INDEX_CHUNK_ENTRIES : mChunked - aChunk * INDEX_CHUNK_ENTRIES;
    // The directory holds chunks whose header and size were checked against the file.
    SizeChunkBuffer(INDEX_HEADER_SIZE + lCount * INDEX_ENTRY_SIZE);
    ReadAside(lChunk, mChunk.data(), mChunk.size());
    const char* lEntries = mChunk.data() + INDEX_HEADER_SIZE;
    if (Load32(mChunk.data()) != TAG_INDEX || Load32(mChunk.data() + 4) != lCount ||
        Load64(mChunk.data() + 8) != lPrevious ||
        Checksum(lEntries, lCount * INDEX_ENTRY_SIZE, lPrevious ^ lCount) != Load32(mChunk.data() + 16)) {
      Fail(ERROR_INDEX, lChunk);
    }
    PtU64 lFloor = aChunk == 0 ? FILE_HEADER_SIZE : lPrevious + FULL_CHUNK_SIZE;
    for (size_t i = 0; i < lCount; ++i) {
      const PtU64 lOffset = Load64(lEntries + i * INDEX_ENTRY_SIZE);
      if (lOffset < lFloor || lOffset > lChunk || lChunk - lOffset < SECTION_HEADER_SIZE) {
        Fail(ERROR_INDEX, lChunk);
      }
      lFloor = lOffset + SECTION_HEADER_SIZE;
    }
    mLoadedChunk = aChunk;
  }

  // Only the chunk headers are read, walking the chain back from the trailer: the directory costs
  // 8 bytes per 4096 main sections, and a chunk's entries are read when a section it lists is
  // first asked for.
  void BuildFromIndex()
  {
    // mIndexedCount was checked against the file size when the trailer was read.
    const size_t lCount = static_cast<size_t>(mIndexedCount);
    std::vector<PtU64> lChunks((lCount + INDEX_CHUNK_ENTRIES - 1) / INDEX_CHUNK_ENTRIES);
    PtU64 lChunk = mLastChunk;
    for (size_t c = lChunks.size(); c-- > 0;) {
      // The writer fills every chunk but the last, so chunk c lists main sections from 4096c on.
      const PtU64 lEntries = c + 1 < lChunks.size() ? INDEX_CHUNK_ENTRIES : lCount - c * INDEX_CHUNK_ENTRIES;
      if (lChunk < FILE_HEADER_SIZE || lChunk > mDataEnd ||
          INDEX_HEADER_SIZE + lEntries * INDEX_ENTRY_SIZE > mDataEnd - lChunk) {
        Fail(ERROR_INDEX, lChunk);
      }
      const char* lHeader = Peek(lChunk, INDEX_HEADER_SIZE, INDEX_HEADER_SIZE);
      const PtU64 lPrevious = Load64(lHeader + 8);
      const bool lChained = c == 0 ? lPrevious == 0 : lPrevious < lChunk && lChunk - lPrevious >= FULL_CHUNK_SIZE;
      if (Load32(lHeader) != TAG_INDEX || Load32(lHeader + 4) != lEntries || !lChained) {
        Fail(ERROR_INDEX, lChunk);
      }
      lChunks[c] = lChunk;
      lChunk = lPrevious;
    }
    mChunks.swap(lChunks);
    mChunked = lCount;
    mListEnd = mDataEnd;
  }

  // Whether the index chunk at aOffset lists exactly aSections, the main sections met since the
  // chunk at aPrevious (0: since the start), as our writer leaves it.
  bool ChunkLists(PtU64 aOffset, PtU64 aPrevious, const std::vector<MainSection>& aSections)
  {
    const char* lHeader = Peek(aOffset, INDEX_HEADER_SIZE);
    const size_t lCount = Load32(lHeader + 4);
    const PtU32 lChecksum = Load32(lHeader + 16);
    if (lCount == 0 || lCount > INDEX_CHUNK_ENTRIES || lCount != aSections.size() || Load64(lHeader + 8) != aPrevious) {
      return false;
    }
    // ReadMainRecord found the whole chunk inside the file.
    SizeChunkBuffer(INDEX_HEADER_SIZE + lCount * INDEX_ENTRY_SIZE);
    ReadBytes(aOffset, mChunk.data(), mChunk.size());
    const char* lEntries = mChunk.data() + INDEX_HEADER_SIZE;
    if (Checksum(lEntries, lCount * INDEX_ENTRY_SIZE, aPrevious ^ lCount) != lChecksum) {
      return false;
    }
    for (size_t i = 0; i < lCount; ++i) {
      const MainSection lEntry = DecodeEntry(lEntries + i * INDEX_ENTRY_SIZE);
      const MainSection& lSeen = aSections[i];
      if (lEntry.mOffset != lSeen.mOffset || lEntry.mId != lSeen.mId || lEntry.mFlag != lSeen.mFlag) {
        return false;
      }
    }
    return true;
  }

  // Hops from record to record to find where the file was cut. Sections are listed as they are
  // met; an index chunk that lists exactly the sections met since the chunk before takes them
  // over, so only those after the last chunk stay in memory (at most 4096 with our writer). From a
  // missing or mismatching chunk on (a crafted file: our writer writes one every 4096 sections)
  // every section stays listed in memory, 16 bytes per section of at least 24: less than the file.
  void BuildByScan()
  {
    std::vector<PtU64> lChunks;
    size_t lChunked = 0;
    std::vector<MainSection> lTail;
    bool lChunksFit = true; // every chunk taken so far listed 4096 sections
    PtU64 lPosition = FILE_HEADER_SIZE;
    // A document written frame by frame counts only what its last commit vouches for: a chunk is
    // taken on when a commit follows it, and at the end the sections after the last commit go.
    PtU64 lPendingChunk = 0;
    size_t lPendingCount = 0; // sections the pending chunk lists: the first ones of the tail
    size_t lCommittedTail = 0;
    PtU64 lCommittedEnd = FILE_HEADER_SIZE;
    auto lTakeChunk = [&](PtU64 aChunk, size_t aCount) {
      lChunks.push_back(aChunk);
      lChunked += aCount;
      lChunksFit = aCount == INDEX_CHUNK_ENTRIES;
      lTail.erase(lTail.begin(), lTail.begin() + static_cast<std::ptrdiff_t>(aCount));
    };
    for (;;) {
      MainHeader lHeader;
      const bool lFar = lPosition >= mWindowStart + mWindowUsed + WINDOW_SIZE;
      const MainRecord lRecord = ReadMainRecord(lPosition, lHeader, lFar ? HOP_READ_SIZE : WINDOW_SIZE);
      if (lRecord == MainRecord::END) {
        break;
      }
      if (lRecord == MainRecord::SECTION) {
        lTail.push_back({lPosition, lHeader.mId, lHeader.mFlag});
      } else if (lRecord == MainRecord::COMMIT) {
        if (lPendingChunk != 0) {
          lTakeChunk(lPendingChunk, lPendingCount);
          lPendingChunk = 0;
        }
        lCommittedTail = lTail.size();
        lCommittedEnd = lPosition + lHeader.mSize;
      } else if (lChunksFit && lPendingChunk == 0 &&
                 ChunkLists(lPosition, lChunks.empty() ? 0 : lChunks.back(), lTail)) {
        if (mCommits) {
          lPendingChunk = lPosition;
          lPendingCount = lTail.size();
        } else {
          lTakeChunk(lPosition, lTail.size());
        }
      } else {
        lChunksFit = false;
      }
      lPosition += lHeader.mSize;
    }
    if (mCommits) {
      lTail.resize(std::min(lTail.size(), lCommittedTail));
      lPosition = lCommittedEnd;
    }
    if (lPosition < mFileSize) {
      qCDebug(lcDocument) << mFileName << "ends in an incomplete section at" << lPosition << "of" << mFileSize
                          << "bytes; the document is read up to there";
    }
    lTail.shrink_to_fit(); // it held up to 4096 sections between chunks
    mChunks.swap(lChunks);
    mChunked = lChunked;
    mTail.swap(lTail);
    mListEnd = std::max<PtU64>(lPosition, FILE_HEADER_SIZE);
  }

  void BuildList()
  {
    if (mListBuilt) {
      return;
    }
    if (mClosed) {
      BuildFromIndex();
    } else {
      BuildByScan();
    }
    mLoadedChunk = PT_ALL; // the scan used the chunk buffer to read the chunks it met
    mListBuilt = true;
  }

  void GetElement(char* aBuffer, PtU32 aUnitSize, PtU32 aCount, size_t aStride)
  {
    if (mKind != Kind::ELEMENT) {
      Fail(ERROR_NOT_ELEMENT, mPosition);
    }
    const PtU64 lSize = PtU64(aUnitSize) * aCount;
    if (lSize > mItemEnd - mDataOffset) {
      Fail(ERROR_SHORT, mDataOffset);
    }
    if (lSize == 0) {
      return;
    }
    if (aStride == aUnitSize || aCount == 1) {
      ReadBytes(mDataOffset, aBuffer, lSize);
      return;
    }
    if (aUnitSize > WINDOW_SIZE / 4) {
      for (PtU32 i = 0; i < aCount; ++i) {
        ReadBytes(mDataOffset + PtU64(i) * aUnitSize, aBuffer + i * aStride, aUnitSize);
      }
      return;
    }
    PtU64 lOffset = mDataOffset;
    size_t lDone = 0;
    while (lDone < aCount) {
      const char* lIn = Peek(lOffset, aUnitSize);
      const size_t lAvailable = static_cast<size_t>((mWindowStart + mWindowUsed - lOffset) / aUnitSize);
      const size_t lCount = std::min<size_t>(aCount - lDone, lAvailable);
      char* lOut = aBuffer + lDone * aStride;
      switch (aUnitSize) {
      case 1:
        Scatter<1>(lOut, lIn, lCount, aStride);
        break;
      case 2:
        Scatter<2>(lOut, lIn, lCount, aStride);
        break;
      case 4:
        Scatter<4>(lOut, lIn, lCount, aStride);
        break;
      case 8:
        Scatter<8>(lOut, lIn, lCount, aStride);
        break;
      default:
        for (size_t i = 0; i < lCount; ++i) {
          std::memcpy(lOut + i * aStride, lIn + i * aUnitSize, aUnitSize);
        }
      }
      lDone += lCount;
      lOffset += PtU64(lCount) * aUnitSize;
    }
  }

  QString mFileName;
  PtFile mFile;
  PtU64 mFileSize = 0;
  PtU32 mType = 0;
  bool mClosed = false;    // the document ends with a valid trailer
  bool mCommits = false;   // written frame by frame: a cut copy counts only committed sections
  PtU64 mDataEnd = 0;      // start of the trailer of a closed document
  PtU64 mLastChunk = 0;    // from the trailer
  PtU64 mIndexedCount = 0; // from the trailer

  std::vector<char> mWindow; // sized at open: a small document needs no large window
  PtU64 mWindowStart = 0;
  size_t mWindowUsed = 0;

  // Cursor.
  std::vector<PtU64> mEnds;           // content end of every entered section, outermost first
  PtU64 mPosition = FILE_HEADER_SIZE; // next record when the cursor stands on nothing
  Kind mKind = Kind::NONE;
  PtU32 mId = PT_NONE32;
  PtU32 mUnitSize = 0;
  PtU32 mCount = 0;
  PtU32 mVersion = 0;
  PtU32 mFlag = 0;
  PtU64 mDataOffset = 0; // element data, or section content
  PtU64 mItemEnd = 0;    // end of the current element or section
  size_t mMain = PT_ALL;

  // Main-section list. Index chunk c lists main sections 4096c to 4096c + 4095; the list keeps
  // where the chunks are and the entries of one of them, so that its memory does not grow with
  // the file. A cut document lists the sections after its last chunk in mTail.
  bool mListBuilt = false;
  std::vector<PtU64> mChunks;     // offset of every chunk, in file order
  size_t mChunked = 0;            // main sections listed by mChunks
  std::vector<MainSection> mTail; // main sections mChunked and up
  size_t mLoadedChunk = PT_ALL;
  std::vector<char> mChunk;          // header and entries of chunk mLoadedChunk
  PtU64 mListEnd = FILE_HEADER_SIZE; // where the main area ends: trailer or cut
};

PtDocumentReader::PtDocumentReader(const QString& aFileName)
    : d(new Private(aFileName))
{
  d->mFile.OpenOrThrow(QIODevice::ReadOnly | QIODevice::Unbuffered);
  d->mFileSize = static_cast<PtU64>(std::max<qint64>(0, d->mFile.size()));
  d->mEnds.reserve(MAX_DEPTH);
  d->mWindow.resize(static_cast<size_t>(std::min<PtU64>(WINDOW_SIZE, d->mFileSize)));

  // A file shorter than its header is a writer stopped at once: an empty document, provided that
  // what is there is the start of a header.
  char lHeader[FILE_HEADER_SIZE] = {};
  const PtU64 lHeaderSize = std::min<PtU64>(FILE_HEADER_SIZE, d->mFileSize);
  d->ReadAt(0, lHeader, lHeaderSize);
  char lSignature[4];
  Store32(lSignature, SIGNATURE);
  if (std::memcmp(lHeader, lSignature, std::min<PtU64>(4, lHeaderSize)) != 0) {
    d->Fail(ERROR_SIGNATURE, 0);
  }
  d->mType = Load32(lHeader + 4);
  d->mCommits = lHeaderSize >= FILE_HEADER_SIZE && (Load32(lHeader + FILE_FLAGS_FIELD) & FLAG_COMMITS) != 0;
  if (lHeaderSize >= 12 && Load32(lHeader + 8) != FORMAT_VERSION) {
    d->Fail(ERROR_VERSION, 8);
  }

  if (d->mFileSize >= FILE_HEADER_SIZE + TRAILER_SIZE) {
    char lTrailer[TRAILER_SIZE];
    const PtU64 lOffset = d->mFileSize - TRAILER_SIZE;
    d->ReadAt(lOffset, lTrailer, TRAILER_SIZE);
    const PtU64 lLastChunk = Load64(lTrailer + 8);
    const PtU64 lCount = Load64(lTrailer + 16);
    if (Load32(lTrailer) == TAG_TRAILER && Load32(lTrailer + 4) == Checksum(lTrailer + 8, 16) &&
        lCount <= d->mFileSize / INDEX_ENTRY_SIZE && (lLastChunk == 0) == (lCount == 0) && lLastChunk < lOffset) {
      d->mClosed = true;
      d->mDataEnd = lOffset;
      d->mLastChunk = lLastChunk;
      d->mIndexedCount = lCount;
    }
  }
}

PtDocumentReader::PtDocumentReader(const QString& aFileName, PtU32 aDocumentType)
    : PtDocumentReader(aFileName)
{
  if (d->mType != aDocumentType) {
    d->Fail(ERROR_TYPE, 4);
  }
}

PtDocumentReader::~PtDocumentReader() = default;

PtU32 PtDocumentReader::DocumentType() const
{
  return d->mType;
}

bool PtDocumentReader::WasClosed() const
{
  return d->mClosed;
}

const QString& PtDocumentReader::FileName() const
{
  return d->mFileName;
}

bool PtDocumentReader::Advance()
{
  return d->Advance();
}

bool PtDocumentReader::IsSection() const
{
  return d->mKind == Kind::SECTION;
}

bool PtDocumentReader::IsElement() const
{
  return d->mKind == Kind::ELEMENT;
}

PtU32 PtDocumentReader::Id() const
{
  return d->mId;
}

PtU32 PtDocumentReader::Count() const
{
  return d->mCount;
}

PtU32 PtDocumentReader::UnitSize() const
{
  return d->mUnitSize;
}

PtU32 PtDocumentReader::Version() const
{
  return d->mVersion;
}

PtU32 PtDocumentReader::Flag() const
{
  return d->mFlag;
}

size_t PtDocumentReader::Depth() const
{
  return d->mEnds.size();
}

void PtDocumentReader::GetElement(void* aBuffer, PtU32 aUnitSize, PtU32 aCount, size_t aStride)
{
  PT_ASSERT(aStride >= aUnitSize);
  PT_ASSERT(aBuffer != nullptr || aCount == 0 || aUnitSize == 0);
  d->GetElement(static_cast<char*>(aBuffer), aUnitSize, aCount, aStride);
}

void PtDocumentReader::GetElement(QString& aText)
{
  if (d->mKind != Kind::ELEMENT) {
    d->Fail(ERROR_NOT_ELEMENT, d->mPosition);
  }
  const PtU64 lSize = d->mItemEnd - d->mDataOffset;
  if (lSize > PtU64(INT_MAX / 2)) {
    d->Fail(ERROR_RECORD, d->mDataOffset); // no text of the product comes near this
  }
  QByteArray lBytes(static_cast<int>(lSize), Qt::Uninitialized);
  d->ReadBytes(d->mDataOffset, lBytes.data(), lSize);
  const int lNul = lBytes.indexOf('\0');
  aText = QString::fromUtf8(lBytes.constData(), lNul < 0 ? lBytes.size() : lNul);
}

void PtDocumentReader::SkipCurrentSection()
{
  if (d->mKind == Kind::SECTION) {
    d->mPosition = d->mItemEnd;
    d->ClearItem();
  }
}

void PtDocumentReader::BuildMainSectionList()
{
  d->BuildList();
}

size_t PtDocumentReader::MainSectionCount()
{
  d->BuildList();
  return d->MainCount();
}

size_t PtDocumentReader::CurrentMainSection() const
{
  return d->mMain;
}

bool PtDocumentReader::MoveTo(size_t aIndex)
{
  d->BuildList();
  const size_t lCount = d->MainCount();
  if (aIndex > lCount) {
    return false;
  }
  const PtU64 lPosition = aIndex < lCount ? d->Entry(aIndex).mOffset : d->mListEnd; // before moving: may throw
  d->mEnds.clear();
  d->ClearItem();
  d->mPosition = lPosition;
  d->mMain = aIndex == 0 ? PT_ALL : aIndex - 1;
  return true;
}

bool PtDocumentReader::IsIndexSection(size_t aIndex)
{
  d->BuildList();
  return aIndex < d->MainCount() && d->Entry(aIndex).mFlag != 0;
}

bool PtDocumentReader::IsIndexSection() const
{
  // The current main section's flag: the one being read, or the one last left.
  if (d->mMain == PT_ALL) {
    return false;
  }
  if (d->mEnds.empty() && d->mKind == Kind::SECTION) {
    return d->mFlag != 0;
  }
  // Advance() and MoveTo() have just looked this entry up: it is in the loaded chunk, except after
  // MoveTo() to the first section of a chunk.
  return d->mListBuilt && d->mMain < d->MainCount() && d->Entry(d->mMain).mFlag != 0;
}

bool PtDocumentReader::Extract(size_t aLeading, size_t aFirst, size_t aLast, const QString& aFileName)
{
  d->BuildList();
  const size_t lCount = d->MainCount();
  if (!(aLeading <= aFirst && aFirst <= aLast && aLast < lCount)) {
    return false;
  }
  if (QFileInfo(aFileName).absoluteFilePath() == QFileInfo(d->mFileName).absoluteFilePath()) {
    PtInvalidArgument(QStringLiteral("aFileName"), aFileName, 1); // would truncate what we copy
  }
  // Sections are copied through one large block: small frames then cost a memcpy each, and a
  // section larger than the block streams through it.
  std::vector<char> lBlock(COPY_BLOCK_SIZE);
  PtU64 lBlockStart = 0;
  PtU64 lBlockUsed = 0;
  const PtU64 lLimit = d->MainLimit();
  auto lLoad = [&](PtU64 aAt) {
    if (aAt < lBlockStart || aAt + SECTION_HEADER_SIZE > lBlockStart + lBlockUsed) {
      lBlockStart = aAt;
      lBlockUsed = std::min<PtU64>(COPY_BLOCK_SIZE, lLimit - aAt);
      d->ReadAt(aAt, lBlock.data(), lBlockUsed);
    }
    return lBlock.data() + (aAt - lBlockStart);
  };
  try {
    PtDocumentWriter lWriter(aFileName, d->mType);
    auto lCopy = [&](size_t aIndex) {
      const PtU64 lStart = d->Entry(aIndex).mOffset; // at most lLimit - 24 (checked when listed or loaded)
      const char* lRecord = lLoad(lStart);
      const PtU64 lLength = Load64(lRecord + SECTION_LENGTH_FIELD);
      if (Load32(lRecord) != TAG_SECTION || lLength > lLimit - lStart - SECTION_HEADER_SIZE) {
        d->Fail(ERROR_INDEX, lStart);
      }
      const PtU32 lId = Load32(lRecord + 4);
      const PtU32 lFlag = Load32(lRecord + 12);
      const PtU64 lSize = SECTION_HEADER_SIZE + lLength;
      const PtU64 lOffset = lWriter.FileSize();
      PtU64 lDone = 0;
      while (lDone < lSize) {
        const PtU64 lAt = lStart + lDone;
        if (lAt >= lBlockStart + lBlockUsed) {
          lBlockStart = lAt;
          lBlockUsed = std::min<PtU64>(COPY_BLOCK_SIZE, lLimit - lAt);
          d->ReadAt(lAt, lBlock.data(), lBlockUsed);
        }
        const PtU64 lPart = std::min(lSize - lDone, lBlockStart + lBlockUsed - lAt);
        lWriter.CopyRaw(lBlock.data() + (lAt - lBlockStart), static_cast<size_t>(lPart));
        lDone += lPart;
      }
      lWriter.CopiedMainSection(lOffset, lId, lFlag);
    };
    for (size_t i = 0; i < aLeading; ++i) {
      lCopy(i);
    }
    for (size_t i = aFirst; i <= aLast; ++i) {
      lCopy(i);
    }
    // A finished document's last main section is its writer's closing one; a cut document has
    // none, its last main section is content like the others and goes only when asked for.
    if (d->mClosed && aLast + 1 < lCount) {
      lCopy(lCount - 1);
    }
    lWriter.EndLastSection();
  } catch (...) {
    QFile::remove(aFileName); // a half copy is worse than none
    throw;
  }
  return true;
}
