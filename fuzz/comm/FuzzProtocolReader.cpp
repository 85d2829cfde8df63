// Feeds arbitrary bytes as a stream of answers to a protocol reader and walks every answer both
// ways a decoder does: the whole payload element by element, and streamed element by element.
// Any crash, sanitizer report, hang or outsized allocation here is a bug a corrupt link could hit.
#include "PxProtocolReader.h"
#include "PxPtComConnection.h"

#include <cstring>
#include <vector>

namespace
{
class FuzzConnection : public PxPtComConnection
{
public:
  FuzzConnection(const uint8_t* aData, size_t aSize)
    : mData(aData)
    , mSize(aSize)
  {
    // Small enough that every allowed payload is cheap, large enough for real answers.
    mReader.SetMaxPayload(1u << 20);
  }
  bool Connected() const override { return true; }
  bool Connect() override { return true; }
  void Disconnect() override {}
  void Write(const void*, unsigned int) override {}
  void Read(void* aData, unsigned int aSize) override
  {
    if (aSize > mSize - mPosition) {
      PtCommunicationError(1, 0);
    }
    std::memcpy(aData, mData + mPosition, aSize);
    mPosition += aSize;
  }
  size_t Remaining() const { return mSize - mPosition; }
  // Peeks at the next answer's protocol id and request code so most inputs pass the header check.
  bool PeekHeader(uint16_t* aProtocol, uint16_t* aRequest) const
  {
    if (Remaining() < 16) {
      return false;
    }
    std::memcpy(aProtocol, mData + mPosition, 2);
    std::memcpy(aRequest, mData + mPosition + 8, 2);
    return true;
  }

private:
  const uint8_t* mData;
  size_t mSize;
  size_t mPosition = 0;
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
  if (aSize < 1) {
    return 0;
  }
  const uint8_t lMode = aData[0];
  FuzzConnection lConnection(aData + 1, aSize - 1);
  PxProtocolReader& lReader = lConnection.Reader();
  std::vector<uint8_t> lDest;
  try {
    for (int lMessage = 0; lMessage < 64; ++lMessage) {
      uint16_t lProtocol = 0;
      uint16_t lRequest = 0;
      if (!lConnection.PeekHeader(&lProtocol, &lRequest)) {
        break;
      }
      lReader.SetProtocolId((lMode & 1) ? lProtocol : 2);
      lReader.ReadAnswerHeader(lRequest);
      if (((lMode >> 1) + lMessage) & 1) {
        lReader.ResetConsumedLength();
        while (lReader.PullHeader()) {
          const size_t lBytes = static_cast<size_t>(lReader.Count()) * lReader.UnitSize();
          if (lReader.Id() & 1) {
            lReader.PullElement(nullptr, lReader.UnitSize(), lReader.Count());
          } else if (lBytes <= lReader.PayloadLength()) {
            lDest.resize(lBytes);
            lReader.PullElement(lDest.data(), lReader.UnitSize(), lReader.Count());
          } else {
            break;
          }
        }
      } else {
        lReader.ReadPayload();
        while (lReader.Advance()) {
          const unsigned int lSize = lReader.UnitSize();
          const unsigned long lStride = lSize + (lReader.Id() % 3);
          lDest.assign(static_cast<size_t>(lReader.Count()) * lStride, 0);
          lReader.ReadElement(lDest.data(), lReader.Count(), lSize, lStride);
        }
      }
    }
  } catch (const std::exception&) {
    // Every malformed input must end here, as an exception the control connection turns into a
    // clear error and a disconnect.
  }
  return 0;
}
