#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <stdexcept>
#include <vector>

class PxPtComConnection;

// Takes one PtCom message from its connection, checks the header and hands the elements to the
// objects that decode them (properties, results). It never opens, sends or times anything: bytes
// come through the connection's Read, which blocks until it has them or throws.
//
// Messages: a header (8 bytes for a request, 16 for an answer) and a payload of elements, each an
// 8-byte header {u16 id, u16 count, u32 item size} and count x item size bytes, little-endian.
class PX_EXPORT PxProtocolReader
{
public:
  // Text: the code in decimal, a blank, "Protocol error". Codes of 1000 and more mean the stream
  // can no longer be trusted; smaller ones are the device's answer codes.
  class PX_EXPORT Exception : public std::runtime_error
  {
  public:
    using std::runtime_error::runtime_error;
  };

  enum : unsigned int {
    E_ANSWER_HEADER = 1000,   // wrong protocol id or answer to another request
    E_REQUEST_HEADER = 1001,  // wrong protocol id in a request
    E_ELEMENT = 1002,         // element count or item size not what the decoder expects
    E_PULLED_ELEMENT = 1003,  // the same, while streaming
    E_PAYLOAD_SIZE = 1004,    // message size beyond the payload limit or smaller than its header
    E_ELEMENT_OVERRUN = 1005, // an element's declared data runs past the end of the payload
  };

  static constexpr PtU32 INITIAL_BUFFER_SIZE = 16384;
  // Far above any real answer (a full trace group is about 130 KiB), low enough that a corrupt size
  // field cannot make the application allocate gigabytes.
  static constexpr PtU32 DEFAULT_MAX_PAYLOAD = 8u * 1024u * 1024u;

  explicit PxProtocolReader(PxPtComConnection& aConnection);
  PxProtocolReader(const PxProtocolReader&) = delete;
  PxProtocolReader& operator=(const PxProtocolReader&) = delete;

  void SetProtocolId(PtU16 aId) { mProtocolId = aId; }
  PtU16 ProtocolId() const { return mProtocolId; }

  // The largest payload a header may announce; a larger one fails with E_PAYLOAD_SIZE.
  void SetMaxPayload(PtU32 aBytes) { mMaxPayload = aBytes; }
  PtU32 MaxPayload() const { return mMaxPayload; }

  // Reads and checks a 16-byte answer header for aRequestCode; leaves the consumed length alone.
  void ReadAnswerHeader(unsigned short aRequestCode);
  // Reads and checks an 8-byte request header (the device side); consumed length and answer code 0.
  void ReadRequestHeader();
  // Reads the whole payload, then fails with the answer code if the device reported an error.
  void ReadPayload();
  // Steps to the next element of a read payload; false past the last one.
  bool Advance();
  // Copies the current element's items, item i to aDest + i x aStride.
  void ReadElement(void* aDest, unsigned short aCount, unsigned int aSize, unsigned long aStride);
  // Streaming: takes the next element header from the connection; false when the payload is done.
  bool PullHeader();
  // Streaming: takes the current element's data from the connection into aDest in one block, or,
  // with aDest null, into the start of the buffer (Data()), which is resized to exactly the data.
  void PullElement(void* aDest, unsigned int aSize, unsigned int aCount);

  // The current element, read straight from its header. Valid after Advance or PullHeader.
  PtU16 Id() const;
  PtU16 Count() const;
  PtU32 UnitSize() const;
  bool HasElement() const { return mCurrent != NO_ELEMENT; }

  // An answer header leaves the consumed length as the previous payload left it; a decoder that
  // streams an answer (PullHeader/PullElement) calls this after the header.
  void ResetConsumedLength() { mConsumedLength = 0; }

  PtU16 AnswerCode() const { return mAnswerCode; }
  PtU16 RequestCode() const { return mRequestCode; }
  PtU32 PayloadLength() const { return mPayloadLength; }
  PtU32 ConsumedLength() const { return mConsumedLength; }

  // The message buffer: the payload after ReadPayload, pulled data after PullElement(nullptr).
  const PtByte* Data() const { return mBuffer.data(); }
  size_t BufferSize() const { return mBuffer.size(); }

private:
  static constexpr size_t NO_ELEMENT = static_cast<size_t>(-1);
  static constexpr PtU32 ELEMENT_HEADER = 8;

  [[noreturn]] static void Fail(unsigned int aCode);
  void CheckPayloadLength(PtU32 aMessageSize, PtU32 aHeaderSize);
  // The current element's header, null without one or once the buffer no longer holds all of it.
  // Inline so the reader's own hot paths do not call the exported accessors once per field.
  const PtByte* Header() const
  {
    return mCurrent != NO_ELEMENT && mCurrent + ELEMENT_HEADER <= mBuffer.size() ? mBuffer.data() + mCurrent : nullptr;
  }

  std::vector<PtByte> mBuffer;
  PtU16 mProtocolId = 0;
  PtU16 mAnswerCode = 0;
  PtU16 mRequestCode = 0;
  size_t mCurrent = NO_ELEMENT; // offset of the current element in mBuffer
  PtU32 mPayloadLength = 0;
  PtU32 mConsumedLength = 0;
  PxPtComConnection& mConnection;
  PtU32 mMaxPayload = DEFAULT_MAX_PAYLOAD;
  // Where the element after mCurrent starts, as Advance found it; 0 (never an element's end) once
  // anything else moved mCurrent or rewrote the buffer. Advance then needs not reread the current
  // header. Last, in what was padding: drivers built against earlier 3.x headers embed this class
  // in their connections, so its size and the offsets of the members above must not change.
  PtU32 mNext = 0;
};
