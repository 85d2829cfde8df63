#include "PxProtocolWriter.h"

#include "PtAssert.h"
#include "PxStridedCopy_p.h"

#include <cstring>
#include <limits>

namespace
{
template <class T> void Store(PtByte* aAt, T aValue)
{
  std::memcpy(aAt, &aValue, sizeof(T));
}
} // namespace

PxProtocolWriter::PxProtocolWriter()
  : mBuffer(INITIAL_BUFFER_SIZE, 0)
{
}

void PxProtocolWriter::StartMessage(PtU32 aHeaderSize)
{
  Store<PtU16>(mBuffer.data(), mProtocolId);
  mWritePosition = aHeaderSize;
  mSize = aHeaderSize;
}

void PxProtocolWriter::StartRequest(unsigned short aRequestCode)
{
  StartMessage(REQUEST_HEADER_SIZE);
  Store<PtU16>(mBuffer.data() + 2, aRequestCode);
}

void PxProtocolWriter::StartAnswer(unsigned short aRequestCode)
{
  StartMessage(ANSWER_HEADER_SIZE);
  Store<PtU16>(mBuffer.data() + 8, aRequestCode);
  std::memset(mBuffer.data() + 10, 0, 6);
}

void PxProtocolWriter::AddElement(unsigned short aId, unsigned short aCount, unsigned int aSize, const void* aData,
                                  unsigned long aStride)
{
  const PtU64 lBytes = static_cast<PtU64>(aCount) * aSize;
  // A message is sized by a 32-bit field; a caller asking for more has a bug, not a big message.
  PT_ASSERT(lBytes + 8 + mSize <= std::numeric_limits<PtU32>::max());
  const PtU32 lElementLength = static_cast<PtU32>(lBytes) + 8;
  const PtU32 lNewSize = mSize + lElementLength;
  if (lNewSize > mBuffer.size()) {
    mBuffer.resize(mBuffer.size() + lElementLength);
  }
  mWritePosition = mSize;
  PtByte* lAt = mBuffer.data() + mWritePosition;
  Store<PtU16>(lAt, aId);
  Store<PtU16>(lAt + 2, aCount);
  Store<PtU32>(lAt + 4, aSize);
  mSize = lNewSize;
  mWritePosition += lElementLength;
  if (lBytes == 0) {
    return;
  }
  PT_ASSERT(aData);
  if (aSize == aStride) {
    std::memcpy(lAt + 8, aData, static_cast<size_t>(lBytes));
  } else {
    PxStridedCopy::Gather(lAt + 8, aData, aCount, aSize, aStride);
  }
}

void PxProtocolWriter::CloseRequest()
{
  Store<PtU32>(mBuffer.data() + 4, mSize);
}

void PxProtocolWriter::CloseAnswer(unsigned short aAnswerCode)
{
  Store<PtU16>(mBuffer.data() + 2, aAnswerCode);
  Store<PtU32>(mBuffer.data() + 4, mSize);
}
