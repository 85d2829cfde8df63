#pragma once

#include <QByteArray>
#include <cstdint>

// Hand-built little-endian byte vectors, so that wire-format tests do not build their expected
// bytes with the code they test.
class PxTestBytes
{
public:
  PxTestBytes& U8(std::uint8_t aValue) { return Raw(&aValue, 1); }
  PxTestBytes& U16(std::uint16_t aValue) { return Raw(&aValue, 2); }
  PxTestBytes& U32(std::uint32_t aValue) { return Raw(&aValue, 4); }
  PxTestBytes& U64(std::uint64_t aValue) { return Raw(&aValue, 8); }
  PxTestBytes& F32(float aValue) { return Raw(&aValue, 4); }
  PxTestBytes& Zeros(int aCount) { mBytes.append(QByteArray(aCount, '\0')); return *this; }
  PxTestBytes& Bytes(const QByteArray& aBytes) { mBytes.append(aBytes); return *this; }

  // An answer header: protocol id, answer code, total size, echoed request code, 6 reserved zeros.
  PxTestBytes& AnswerHeader(std::uint16_t aProtocol, std::uint16_t aAnswerCode, std::uint32_t aPayload, std::uint16_t aRequest)
  {
    return U16(aProtocol).U16(aAnswerCode).U32(16 + aPayload).U16(aRequest).Zeros(6);
  }
  PxTestBytes& RequestHeader(std::uint16_t aProtocol, std::uint16_t aRequest, std::uint32_t aPayload)
  {
    return U16(aProtocol).U16(aRequest).U32(8 + aPayload);
  }
  PxTestBytes& ElementHeader(std::uint16_t aId, std::uint16_t aCount, std::uint32_t aSize)
  {
    return U16(aId).U16(aCount).U32(aSize);
  }

  int Size() const { return mBytes.size(); }
  operator QByteArray() const { return mBytes; }
  const QByteArray& Get() const { return mBytes; }

private:
  PxTestBytes& Raw(const void* aData, int aSize)
  {
    mBytes.append(static_cast<const char*>(aData), aSize);
    return *this;
  }
  QByteArray mBytes;
};
