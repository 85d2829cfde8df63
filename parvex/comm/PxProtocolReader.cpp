#include "PxProtocolReader.h"

#include "PtAssert.h"
#include "PtException.h"
#include "PxPtComConnection.h"
#include "PxStridedCopy_p.h"

#include <QCoreApplication>
#include <cstring>

namespace
{
template <class T> T Load(const PtByte* aAt)
{
  T lValue;
  std::memcpy(&lValue, aAt, sizeof(T));
  return lValue;
}
} // namespace

PxProtocolReader::PxProtocolReader(PxPtComConnection& aConnection)
  : mBuffer(INITIAL_BUFFER_SIZE, 0)
  , mConnection(aConnection)
{
}

void PxProtocolReader::Fail(unsigned int aCode)
{
  PtThrow<Exception>(aCode, QCoreApplication::translate("PxProtocolReader", "Protocol error"));
}

void PxProtocolReader::CheckPayloadLength(PtU32 aMessageSize, PtU32 aHeaderSize)
{
  // A size field below the header or beyond the limit is a corrupt stream, not a message to wait for.
  if (aMessageSize < aHeaderSize || aMessageSize - aHeaderSize > mMaxPayload) {
    Fail(E_PAYLOAD_SIZE);
  }
}

void PxProtocolReader::ReadAnswerHeader(unsigned short aRequestCode)
{
  mCurrent = NO_ELEMENT;
  mNext = 0;
  PtByte lHeader[16];
  mConnection.Read(lHeader, sizeof lHeader);
  if (Load<PtU16>(lHeader) != mProtocolId || Load<PtU16>(lHeader + 8) != aRequestCode) {
    Fail(E_ANSWER_HEADER);
  }
  const PtU32 lSize = Load<PtU32>(lHeader + 4);
  CheckPayloadLength(lSize, sizeof lHeader);
  mAnswerCode = Load<PtU16>(lHeader + 2);
  mPayloadLength = lSize - static_cast<PtU32>(sizeof lHeader);
  // The consumed length stays as the last payload left it; streaming users reset it themselves.
}

void PxProtocolReader::ReadRequestHeader()
{
  mCurrent = NO_ELEMENT;
  mNext = 0;
  PtByte lHeader[8];
  mConnection.Read(lHeader, sizeof lHeader);
  if (Load<PtU16>(lHeader) != mProtocolId) {
    Fail(E_REQUEST_HEADER);
  }
  const PtU32 lSize = Load<PtU32>(lHeader + 4);
  CheckPayloadLength(lSize, sizeof lHeader);
  mConsumedLength = 0;
  mAnswerCode = 0;
  mRequestCode = Load<PtU16>(lHeader + 2);
  mPayloadLength = lSize - static_cast<PtU32>(sizeof lHeader);
}

void PxProtocolReader::ReadPayload()
{
  mNext = 0;
  if (mPayloadLength > mBuffer.size()) {
    mBuffer.resize(mPayloadLength);
  }
  if (mPayloadLength > 0) {
    mConnection.Read(mBuffer.data(), mPayloadLength);
  }
  // The payload is read even for an error answer, so the stream stays in step for the next one.
  if (mAnswerCode != 0) {
    Fail(mAnswerCode);
  }
  mConsumedLength = mPayloadLength;
}

bool PxProtocolReader::Advance()
{
  PtU64 lNext = 0;
  if (mNext != 0) {
    lNext = mNext;
  } else if (mCurrent != NO_ELEMENT) {
    lNext = static_cast<PtU64>(mCurrent) + ELEMENT_HEADER;
    if (const PtByte* lHeader = Header()) {
      lNext += static_cast<PtU64>(Load<PtU16>(lHeader + 2)) * Load<PtU32>(lHeader + 4);
    }
  }
  if (lNext >= mPayloadLength) {
    mCurrent = static_cast<size_t>(std::min<PtU64>(lNext, mPayloadLength));
    mNext = 0;
    return false;
  }
  // A well-formed payload ends exactly behind its last element; anything that reaches past it
  // would make the decoders read bytes that were never received.
  if (lNext + ELEMENT_HEADER > mPayloadLength) {
    Fail(E_ELEMENT_OVERRUN);
  }
  const PtByte* lAt = mBuffer.data() + lNext;
  const PtU64 lEnd = lNext + ELEMENT_HEADER + static_cast<PtU64>(Load<PtU16>(lAt + 2)) * Load<PtU32>(lAt + 4);
  if (lEnd > mPayloadLength) {
    Fail(E_ELEMENT_OVERRUN);
  }
  mCurrent = static_cast<size_t>(lNext);
  mNext = static_cast<PtU32>(lEnd);
  return true;
}

PtU16 PxProtocolReader::Id() const
{
  const PtByte* lHeader = Header();
  return lHeader ? Load<PtU16>(lHeader) : 0;
}

PtU16 PxProtocolReader::Count() const
{
  const PtByte* lHeader = Header();
  return lHeader ? Load<PtU16>(lHeader + 2) : 0;
}

PtU32 PxProtocolReader::UnitSize() const
{
  const PtByte* lHeader = Header();
  return lHeader ? Load<PtU32>(lHeader + 4) : 0;
}

void PxProtocolReader::ReadElement(void* aDest, unsigned short aCount, unsigned int aSize, unsigned long aStride)
{
  const PtByte* lHeader = Header();
  if (mCurrent == NO_ELEMENT || mCurrent >= mPayloadLength || (lHeader ? Load<PtU16>(lHeader + 2) : 0) != aCount ||
      (lHeader ? Load<PtU32>(lHeader + 4) : 0) != aSize) {
    Fail(E_ELEMENT);
  }
  const PtByte* lData = mBuffer.data() + mCurrent + ELEMENT_HEADER;
  const size_t lBytes = static_cast<size_t>(aCount) * aSize;
  if (lBytes == 0) {
    return;
  }
  PT_ASSERT(aDest);
  if (aSize == aStride) {
    std::memcpy(aDest, lData, lBytes);
  } else {
    PxStridedCopy::Scatter(aDest, lData, aCount, aSize, aStride);
  }
}

bool PxProtocolReader::PullHeader()
{
  mNext = 0;
  if (mConsumedLength < mPayloadLength) {
    if (mPayloadLength - mConsumedLength < ELEMENT_HEADER) {
      Fail(E_ELEMENT_OVERRUN);
    }
    if (mBuffer.size() < ELEMENT_HEADER) {
      mBuffer.resize(ELEMENT_HEADER);
    }
    mConnection.Read(mBuffer.data(), ELEMENT_HEADER);
    mConsumedLength += ELEMENT_HEADER;
    mCurrent = 0;
    return true;
  }
  mCurrent = NO_ELEMENT;
  return false;
}

void PxProtocolReader::PullElement(void* aDest, unsigned int aSize, unsigned int aCount)
{
  mNext = 0;
  if (aDest && (UnitSize() != aSize || Count() != aCount)) {
    Fail(E_PULLED_ELEMENT);
  }
  const PtU64 lBytes = static_cast<PtU64>(aSize) * aCount;
  // Never read beyond this message: that would swallow the next one, or wait for bytes that do not come.
  if (lBytes > mPayloadLength - std::min(mConsumedLength, mPayloadLength)) {
    Fail(E_ELEMENT_OVERRUN);
  }
  if (aDest) {
    if (lBytes > 0) {
      mConnection.Read(aDest, static_cast<unsigned int>(lBytes));
    }
  } else {
    mBuffer.resize(static_cast<size_t>(lBytes));
    if (lBytes > 0) {
      mConnection.Read(mBuffer.data(), static_cast<unsigned int>(lBytes));
    }
  }
  mConsumedLength += static_cast<PtU32>(lBytes);
}
