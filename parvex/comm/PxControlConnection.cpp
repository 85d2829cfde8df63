#include "PxControlConnection.h"

#include "PtAssert.h"
#include "PtException.h"

#include <cstring>

PxControlConnection::PxControlConnection(QObject* aParent)
  : PxPtComConnection(aParent)
{
  mReader.SetProtocolId(PT_COMM_CONTROL_PROTOCOL_ID);
  mWriter.SetProtocolId(PT_COMM_CONTROL_PROTOCOL_ID);
}

void PxControlConnection::StartRequest(unsigned short aRequestCode)
{
  mWriter.StartRequest(aRequestCode);
}

void PxControlConnection::SendRequest()
{
  CheckCanSend();
  mWriter.CloseRequest();
  try {
    Write(mWriter.Data(), mWriter.Size());
  } catch (const std::exception&) {
    // Half a request may have gone out: the device's stream is no longer in step with ours.
    Disconnect();
    throw;
  }
  unsigned short lCode = 0;
  std::memcpy(&lCode, mWriter.Data() + 2, sizeof lCode);
  mLastRequest = lCode;
}

PxProtocolReader* PxControlConnection::ReadAnswer()
{
  CheckCanRead();
  try {
    mReader.ReadAnswerHeader(mLastRequest);
    mReader.ReadPayload();
  } catch (const PxProtocolReader::Exception& e) {
    unsigned int lCode = 0;
    PtExtractException(e, &lCode, nullptr);
    // Codes below 1000 are the device's answer codes: the answer was read whole and the link is
    // fine. Anything above is a framing error and the rest of the stream cannot be trusted.
    if (lCode > 999) {
      Disconnect();
    }
    throw;
  } catch (const std::exception&) {
    Disconnect();
    throw;
  }
  mLastRequest = PT_COMM_CFGSRV_REQUEST_INVALID;
  return &mReader;
}

// The precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxControlConnection::CheckCanSend() const
{
#line 69
  PT_ASSERT(Connected());
}

void PxControlConnection::CheckCanRead() const
{
#line 101
  PT_ASSERT(Connected());
  PT_ASSERT(mLastRequest != PT_COMM_CFGSRV_REQUEST_INVALID);
}
