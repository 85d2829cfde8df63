#pragma once

#include "PxProtocolWriter.h"
#include "PxPtComConnection.h"

// Request code 0 never names a real request: "no request outstanding".
constexpr unsigned short PT_COMM_CFGSRV_REQUEST_INVALID = 0;
// The protocol identifier of the device's configuration server.
constexpr unsigned short PT_COMM_CONTROL_PROTOCOL_ID = 2;

// The request/answer discipline of a device's configuration server: one request outstanding at a
// time, its answer matched by the echoed request code, and the link dropped whenever the byte
// stream can no longer be trusted.
class PX_EXPORT PxControlConnection : public PxPtComConnection
{
  Q_OBJECT

public:
  explicit PxControlConnection(QObject* aParent = nullptr);

  // Begins a new request; an unsent one is discarded. Elements then go into Writer().
  void StartRequest(unsigned short aRequestCode);
  // Closes and sends the request. A failed send disconnects and rethrows.
  void SendRequest();
  // Reads the answer to the outstanding request, payload included, and returns the reader before
  // its first element. Device answer codes below 1000 are thrown with the link kept; framing
  // errors and transport failures disconnect first.
  PxProtocolReader* ReadAnswer();

  PxProtocolWriter& Writer() { return mWriter; }
  unsigned short LastRequest() const { return mLastRequest; }

protected:
  PxProtocolWriter mWriter;
  unsigned short mLastRequest = PT_COMM_CFGSRV_REQUEST_INVALID;

private:
  void CheckCanSend() const;
  void CheckCanRead() const;
};
