#include "PtDocumentWriter.h"

#include "PtAssert.h"
#include "PtDocumentFormat_p.h"
#include "PtException.h"
#include "PtFile.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <unistd.h>
#include <vector>

using namespace PtDocumentFormat;

namespace {
// Large enough that writing a frame costs one memcpy and a write every few dozen frames, small
// enough to be irrelevant next to the application.
constexpr size_t BUFFER_SIZE = 1u << 20;

// A writer that hands every frame to the system on its own (Flush) keeps the file extended with
// zeros this far ahead of its data. A frame-sized write that lengthens a file costs about twice one
// that lands on bytes already in the page cache (on ext4: block reservation and small page-cache
// folios per write), so the zeros go out in large steps and the frames land on them. Larger steps
// measured slower: the zeros then no longer sit in the cache when the frames arrive.
constexpr PtU64 EXTEND_STEP = 256u << 10;

// Copies aCount items of a fixed size with constant-size moves, which the compiler turns into
// plain loads and stores: one field of every echo travels without a per-item memcpy call.
template <size_t N>
void Gather(char* aOut, const char* aIn, size_t aCount, size_t aStride)
{
  for (size_t i = 0; i < aCount; ++i, aOut += N, aIn += aStride) {
    std::memcpy(aOut, aIn, N);
  }
}
} // namespace

class PtDocumentWriter::Private
{
public:
  struct OpenSection
  {
    PtU64 mOffset = 0;
    PtU32 mId = 0;
    PtU32 mFlag = 0;
  };

  explicit Private(const QString& aFileName)
      : mFileName(aFileName)
      , mFile(aFileName)
  {
  }

  PtU64 Size() const { return mFlushed + mUsed; }

  [[noreturn]] void WriteError(unsigned int aCode, const QString& aReason)
  {
    PtThrow<std::runtime_error>(aCode, QCoreApplication::translate("PtDocumentWriter", "Cannot write %1: %2")
                                           .arg(mFile.fileName(), aReason));
  }

  [[noreturn]] void WriteError()
  {
    const auto lError = mFile.error() != QFileDevice::NoError ? mFile.error() : QFileDevice::WriteError;
    WriteError(static_cast<unsigned int>(lError), mFile.errorString());
  }

  void WriteToFile(const char* aData, PtU64 aSize)
  {
    if (aSize == 0) {
      return;
    }
    if (mDurable) {
      WriteDurably(aData, aSize);
      return;
    }
    if (mFile.write(aData, static_cast<qint64>(aSize)) != static_cast<qint64>(aSize)) {
      WriteError();
    }
    mFlushed += aSize;
  }

  // Writes beside QFile's own position, which a flushing writer no longer uses: every durable write
  // says where it goes, so the reserve, the data and the header flags never depend on a file position.
  bool WriteAt(const char* aData, PtU64 aSize, PtU64 aOffset, int* aErrno)
  {
    while (aSize > 0) {
      const ssize_t lDone = ::pwrite(mFile.handle(), aData, static_cast<size_t>(aSize), static_cast<off_t>(aOffset));
      if (lDone < 0 && errno == EINTR) {
        continue;
      }
      if (lDone <= 0) {
        *aErrno = lDone < 0 ? errno : ENOSPC;
        return false;
      }
      aData += lDone;
      aSize -= static_cast<PtU64>(lDone);
      aOffset += static_cast<PtU64>(lDone);
    }
    return true;
  }

  void Place(const char* aData, PtU64 aSize, PtU64 aOffset)
  {
    int lErrno = 0;
    if (!WriteAt(aData, aSize, aOffset, &lErrno)) {
      WriteError(static_cast<unsigned int>(QFileDevice::WriteError), QString::fromLocal8Bit(std::strerror(lErrno)));
    }
  }

  void WriteDurably(const char* aData, PtU64 aSize)
  {
    Reserve(mFlushed + aSize);
    Place(aData, aSize, mFlushed);
    mFlushed += aSize;
  }

  // Makes sure zeros reach at least aEnd. When the disk (or the process's file size limit) will not
  // take them, the file goes back to its data and is from then on written without reserve; the
  // data write that follows then reports the real error if there is one.
  void Reserve(PtU64 aEnd)
  {
    if (mReserved >= aEnd || mReserveFailed) {
      return;
    }
    const PtU64 lStart = std::max(mReserved, mFlushed);
    const PtU64 lTarget = (aEnd + EXTEND_STEP - 1) / EXTEND_STEP * EXTEND_STEP;
    if (mZeros.empty()) {
      mZeros.resize(EXTEND_STEP);
    }
    int lErrno = 0;
    for (PtU64 lAt = lStart; lAt < lTarget; lAt += EXTEND_STEP) {
      if (!WriteAt(mZeros.data(), std::min(EXTEND_STEP, lTarget - lAt), lAt, &lErrno)) {
        mReserveFailed = true;
        mReserved = mFlushed;
        (void)::ftruncate(mFile.handle(), static_cast<off_t>(mFlushed));
        return;
      }
    }
    mReserved = lTarget;
  }

  // aCommit (only between main sections): the bytes go out followed by a commit record, in the
  // same write. The file is extended with zeros beyond its data, so a write cut short (the process
  // killed in the middle of it) does not end the file where it stopped; a reader of a cut document
  // then keeps only what a complete commit record vouches for.
  void Flush(bool aCommit = false)
  {
    if (aCommit) {
      PT_ASSERT(mDurable && mOpen.empty());
      if (BUFFER_SIZE - mUsed < COMMIT_SIZE) {
        Flush();
      }
      char* lRecord = mBuffer.data() + mUsed;
      std::memset(lRecord, 0, COMMIT_SIZE);
      Store32(lRecord, TAG_COMMIT);
      Store64(lRecord + 8, Size()); // where it stands: bytes that merely look like one do not count
      mUsed += COMMIT_SIZE;
    }
    const size_t lUsed = mUsed;
    mUsed = 0; // a failed write must not be retried from the destructor
    WriteToFile(mBuffer.data(), lUsed);
  }

  // Gives the file back the zeros beyond its data.
  void TrimReserve()
  {
    if (mReserved > mFlushed && ::ftruncate(mFile.handle(), static_cast<off_t>(mFlushed)) == 0) {
      mReserved = mFlushed;
    }
  }

  // Room for aSize bytes at the end of the buffer, or null when it must go out first. Record
  // headers are then stored in place: a frame has over a hundred of them, and a copy through a
  // temporary costs a store-forwarding stall and a library call each.
  char* Room(size_t aSize) { return aSize <= BUFFER_SIZE - mUsed ? mBuffer.data() + mUsed : nullptr; }

  void Append(const void* aData, size_t aSize)
  {
    if (aSize <= BUFFER_SIZE - mUsed) {
      std::memcpy(mBuffer.data() + mUsed, aData, aSize);
      mUsed += aSize;
      return;
    }
    Flush();
    if (aSize >= BUFFER_SIZE) {
      WriteToFile(static_cast<const char*>(aData), aSize);
    } else {
      std::memcpy(mBuffer.data(), aData, aSize);
      mUsed = aSize;
    }
  }

  void AppendGather(const char* aData, PtU32 aUnitSize, PtU32 aCount, size_t aStride)
  {
    if (aUnitSize > BUFFER_SIZE / 4) {
      for (PtU32 i = 0; i < aCount; ++i) {
        Append(aData + i * aStride, aUnitSize);
      }
      return;
    }
    size_t lDone = 0;
    while (lDone < aCount) {
      if (BUFFER_SIZE - mUsed < aUnitSize) {
        Flush();
      }
      const size_t lCount = std::min<size_t>(aCount - lDone, (BUFFER_SIZE - mUsed) / aUnitSize);
      char* lOut = mBuffer.data() + mUsed;
      const char* lIn = aData + lDone * aStride;
      switch (aUnitSize) {
      case 1:
        Gather<1>(lOut, lIn, lCount, aStride);
        break;
      case 2:
        Gather<2>(lOut, lIn, lCount, aStride);
        break;
      case 4:
        Gather<4>(lOut, lIn, lCount, aStride);
        break;
      case 8:
        Gather<8>(lOut, lIn, lCount, aStride);
        break;
      default:
        for (size_t i = 0; i < lCount; ++i) {
          std::memcpy(lOut + i * aUnitSize, lIn + i * aStride, aUnitSize);
        }
      }
      mUsed += lCount * aUnitSize;
      lDone += lCount;
    }
  }

  // Sets the content length of a section once it has ended. While the section record is still
  // buffered this is a store; otherwise everything buffered goes out first, so that the file
  // never claims a length whose bytes are not on disk before it.
  void PatchLength(PtU64 aRecordOffset, PtU64 aLength)
  {
    const PtU64 lField = aRecordOffset + SECTION_LENGTH_FIELD;
    if (lField >= mFlushed) {
      Store64(mBuffer.data() + (lField - mFlushed), aLength);
      return;
    }
    Flush();
    char lBytes[8];
    Store64(lBytes, aLength);
    if (mDurable) {
      Place(lBytes, sizeof lBytes, lField);
      return;
    }
    if (!mFile.seek(static_cast<qint64>(lField)) || mFile.write(lBytes, 8) != 8 ||
        !mFile.seek(static_cast<qint64>(mFlushed))) {
      WriteError();
    }
  }

  void MainSectionEnded(PtU64 aOffset, PtU32 aId, PtU32 aFlag)
  {
    char lEntry[INDEX_ENTRY_SIZE];
    Store64(lEntry, aOffset);
    Store32(lEntry + 8, aId);
    Store32(lEntry + 12, aFlag);
    mPendingIndex.insert(mPendingIndex.end(), lEntry, lEntry + INDEX_ENTRY_SIZE);
    ++mMainSectionCount;
    if (mPendingIndex.size() == INDEX_CHUNK_ENTRIES * INDEX_ENTRY_SIZE) {
      WriteIndexChunk();
    }
  }

  // Index chunks sit between main sections, each pointing to the one before, so the writer never
  // holds more than one chunk of the index however long the recording runs.
  void WriteIndexChunk()
  {
    const PtU64 lOffset = Size();
    const PtU32 lCount = static_cast<PtU32>(mPendingIndex.size() / INDEX_ENTRY_SIZE);
    char lHeader[INDEX_HEADER_SIZE] = {};
    Store32(lHeader, TAG_INDEX);
    Store32(lHeader + 4, lCount);
    Store64(lHeader + 8, mLastChunk);
    Store32(lHeader + 16, Checksum(mPendingIndex.data(), mPendingIndex.size(), mLastChunk ^ lCount));
    Append(lHeader, sizeof lHeader);
    Append(mPendingIndex.data(), mPendingIndex.size());
    mPendingIndex.clear();
    mLastChunk = lOffset;
  }

  QString mFileName;
  PtFile mFile;
  std::vector<char> mBuffer = std::vector<char>(BUFFER_SIZE);
  size_t mUsed = 0;
  PtU64 mFlushed = 0;
  std::vector<OpenSection> mOpen;
  std::vector<char> mPendingIndex;
  PtU64 mLastChunk = 0;
  PtU64 mMainSectionCount = 0;
  bool mClosed = false;
  // Set by the first Flush(): the owner wants every main section in the file as it ends.
  bool mDurable = false;
  PtU64 mReserved = 0; // the file's zeros reach this far
  bool mReserveFailed = false;
  std::vector<char> mZeros;
};

PtDocumentWriter::PtDocumentWriter(const QString& aFileName, PtU32 aDocumentType)
    : d(new Private(aFileName))
{
  d->mOpen.reserve(MAX_DEPTH);
  d->mPendingIndex.reserve(INDEX_CHUNK_ENTRIES * INDEX_ENTRY_SIZE);
  d->mFile.OpenOrThrow(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
  char lHeader[FILE_HEADER_SIZE] = {};
  Store32(lHeader, SIGNATURE);
  Store32(lHeader + 4, aDocumentType);
  Store32(lHeader + 8, FORMAT_VERSION);
  d->WriteToFile(lHeader, sizeof lHeader);
}

PtDocumentWriter::~PtDocumentWriter()
{
  if (!d->mClosed) {
    try {
      d->Flush();
    } catch (const std::exception&) {
      // Nothing to report to: the writer's owner is being torn down. The file reads as cut.
    }
    d->TrimReserve();
  }
}

void PtDocumentWriter::StartSection(PtU32 aId, PtU32 aVersion, PtU32 aFlag)
{
  PT_ASSERT(!d->mClosed);
  PT_ASSERT(d->mOpen.size() < MAX_DEPTH);
  Private::OpenSection& lOpen = d->mOpen.emplace_back();
  lOpen.mOffset = d->Size();
  lOpen.mId = aId;
  lOpen.mFlag = aFlag;
  char lSpare[SECTION_HEADER_SIZE];
  char* lRecord = d->Room(sizeof lSpare);
  char* lAt = lRecord ? lRecord : lSpare;
  Store32(lAt, TAG_SECTION);
  Store32(lAt + 4, aId);
  Store32(lAt + 8, aVersion);
  Store32(lAt + 12, aFlag);
  Store64(lAt + SECTION_LENGTH_FIELD, OPEN_LENGTH);
  if (lRecord) {
    d->mUsed += sizeof lSpare;
  } else {
    d->Append(lSpare, sizeof lSpare);
  }
}

void PtDocumentWriter::AddElement(PtU32 aId, const void* aData, PtU32 aUnitSize, PtU32 aCount, size_t aStride)
{
  PT_ASSERT(!d->mClosed);
  PT_ASSERT(!d->mOpen.empty());
  PT_ASSERT(aStride >= aUnitSize);
  PT_ASSERT(aUnitSize > 0 || aCount == 0);
  PT_ASSERT(aData != nullptr || aCount == 0);
  const bool lBlock = aStride == aUnitSize || aCount == 1;
  const size_t lBytes = static_cast<size_t>(aUnitSize) * aCount;
  // Small elements (a channel number, a length) are most of a frame's elements: one check, the
  // header stored in place and the item moved with a single load and store.
  auto lStoreHeader = [&](char* aAt) {
    Store32(aAt, TAG_ELEMENT);
    Store32(aAt + 4, aId);
    Store32(aAt + 8, aUnitSize);
    Store32(aAt + 12, aCount);
  };
  if (char* lRecord = lBlock && lBytes <= 8 ? d->Room(ELEMENT_HEADER_SIZE + lBytes) : nullptr) {
    lStoreHeader(lRecord);
    switch (lBytes) {
    case 4:
      std::memcpy(lRecord + ELEMENT_HEADER_SIZE, aData, 4);
      break;
    case 8:
      std::memcpy(lRecord + ELEMENT_HEADER_SIZE, aData, 8);
      break;
    default:
      if (lBytes > 0) {
        std::memcpy(lRecord + ELEMENT_HEADER_SIZE, aData, lBytes);
      }
    }
    d->mUsed += ELEMENT_HEADER_SIZE + lBytes;
    return;
  }
  char lRecord[ELEMENT_HEADER_SIZE];
  lStoreHeader(lRecord);
  d->Append(lRecord, sizeof lRecord);
  if (aCount == 0) {
    return;
  }
  if (lBlock) {
    d->Append(aData, lBytes);
  } else {
    d->AppendGather(static_cast<const char*>(aData), aUnitSize, aCount, aStride);
  }
}

void PtDocumentWriter::AddElement(PtU32 aId, const QString& aText)
{
  const QByteArray lUtf8 = aText.toUtf8();
  AddElement(aId, lUtf8.constData(), 1, static_cast<PtU32>(lUtf8.size()), 1);
}

void PtDocumentWriter::EndSection()
{
  PT_ASSERT(!d->mClosed);
  PT_ASSERT(!d->mOpen.empty());
  const Private::OpenSection lSection = d->mOpen.back();
  d->mOpen.pop_back();
  d->PatchLength(lSection.mOffset, d->Size() - lSection.mOffset - SECTION_HEADER_SIZE);
  if (d->mOpen.empty()) {
    d->MainSectionEnded(lSection.mOffset, lSection.mId, lSection.mFlag);
  }
}

void PtDocumentWriter::EndLastSection()
{
  PT_ASSERT(!d->mClosed);
  while (!d->mOpen.empty()) {
    EndSection();
  }
  if (!d->mPendingIndex.empty()) {
    d->WriteIndexChunk();
  }
  char lTrailer[TRAILER_SIZE];
  Store32(lTrailer, TAG_TRAILER);
  Store64(lTrailer + 8, d->mLastChunk);
  Store64(lTrailer + 16, d->mMainSectionCount);
  Store32(lTrailer + 4, Checksum(lTrailer + 8, 16));
  d->Append(lTrailer, sizeof lTrailer);
  d->Flush();
  d->TrimReserve();
  d->mClosed = true;
  d->mFile.close();
}

void PtDocumentWriter::Flush()
{
  PT_ASSERT(!d->mClosed);
  if (!d->mDurable) {
    // From now on a cut copy of this file keeps only committed sections: say so in its header.
    char lFlags[4];
    Store32(lFlags, FLAG_COMMITS);
    d->Place(lFlags, sizeof lFlags, FILE_FLAGS_FIELD);
    d->mDurable = true;
  }
  d->Flush(d->mOpen.empty());
}

PtU64 PtDocumentWriter::FileSize() const
{
  return d->Size();
}

const QString& PtDocumentWriter::FileName() const
{
  return d->mFileName;
}

void PtDocumentWriter::CopyRaw(const char* aData, size_t aSize)
{
  PT_ASSERT(!d->mClosed && d->mOpen.empty());
  d->Append(aData, aSize);
}

void PtDocumentWriter::CopiedMainSection(PtU64 aOffset, PtU32 aId, PtU32 aFlag)
{
  d->MainSectionEnded(aOffset, aId, aFlag);
}
