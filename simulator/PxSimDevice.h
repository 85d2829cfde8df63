#pragma once

#include "PxProtocolWriter.h"
#include "PxSimConfiguration.h"
#include "PxSimDataGroups.h"
#include "PxSimFaultInjector.h"
#include "PxSimFirmware.h"
#include "PxSimMemories.h"
#include "PxSimRequestSource.h"

#include <QByteArray>
#include <QString>

// What a transport does with one request: send these bytes, possibly late, or drop the link.
struct PxSimReply
{
  QByteArray mBytes;
  int mDelayMs = 0;
  bool mDropLink = false;
};

// The simulated sensor: takes one complete request message and gives the reply, the way the
// device's configuration server would. It reads requests with the framework's own protocol reader
// and answers with its writer; the protocol areas (identity and configuration, data groups,
// memories, firmware) each have their own class. A bad request gets a device answer code; only a
// request header that cannot be trusted (wrong protocol id or size) drops the link.
class PxSimDevice
{
public:
  // With a state directory the non-volatile memory and the installed software image are files in
  // it; without, they last as long as the object.
  explicit PxSimDevice(const QString& aStateDir = QString());
  PxSimDevice(const PxSimDevice&) = delete;
  PxSimDevice& operator=(const PxSimDevice&) = delete;

  PxSimReply Handle(const QByteArray& aMessage);

  // Cuts a request stream: the length of the complete message at the start of aData, 0 when more
  // bytes are needed, -1 when the header cannot be a request of ours (the link must then go).
  static qint64 MessageLength(const char* aData, qint64 aSize);

  // A restart as after power-up: configuration from non-volatile memory (or factory defaults),
  // frame clock and RAM cleared, an update in progress abandoned. Armed faults stay armed: they
  // belong to the test bench, not to the device.
  void Restart(bool aFactory);

  PxSimFaultInjector& Faults() { return mFaults; }
  PxSimConfiguration& Configuration() { return mConfiguration; }
  PxSimDataGroups& Groups() { return mGroups; }
  PtU64 RequestCount() const { return mRequestCount; }

  static constexpr PtU16 CORRUPT_PROTOCOL_ID = 0x5A5A;

private:
  void Dispatch(PtU16 aRequest, class PxSimRequest& aElements);
  void DebugFault(const PxSimRequest& aRequest);
  void DebugScene(const PxSimRequest& aRequest);

  PxSimConfiguration mConfiguration;
  PxSimDataGroups mGroups;
  PxSimFirmware mFirmware;
  PxSimMemories mMemories;
  PxSimFaultInjector mFaults;
  PxSimRequestSource mSource;
  PxProtocolWriter mWriter;
  PtU64 mRequestCount = 0;
};
