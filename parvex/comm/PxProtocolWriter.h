#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

#include <vector>

// Builds one outgoing PtCom message in a reusable buffer: a request, or an answer when playing the
// device side. The finished message is the first Size() bytes of Data().
class PX_EXPORT PxProtocolWriter
{
public:
  static constexpr PtU32 INITIAL_BUFFER_SIZE = 1024;
  static constexpr PtU32 REQUEST_HEADER_SIZE = 8;
  static constexpr PtU32 ANSWER_HEADER_SIZE = 16;

  PxProtocolWriter();
  PxProtocolWriter(const PxProtocolWriter&) = delete;
  PxProtocolWriter& operator=(const PxProtocolWriter&) = delete;

  void SetProtocolId(PtU16 aId) { mProtocolId = aId; }
  PtU16 ProtocolId() const { return mProtocolId; }

  // Begin a new message over whatever the buffer held.
  void StartRequest(unsigned short aRequestCode);
  void StartAnswer(unsigned short aRequestCode);
  // Appends one element; item i is taken from aData + i x aStride.
  void AddElement(unsigned short aId, unsigned short aCount, unsigned int aSize, const void* aData,
                  unsigned long aStride);
  void CloseRequest();
  void CloseAnswer(unsigned short aAnswerCode);

  const PtByte* Data() const { return mBuffer.data(); }
  PtU32 Size() const { return mSize; }
  size_t BufferSize() const { return mBuffer.size(); }

private:
  void StartMessage(PtU32 aHeaderSize);

  std::vector<PtByte> mBuffer;
  size_t mWritePosition = 0;
  PtU32 mSize = 0;
  PtU16 mProtocolId = 0;
};
