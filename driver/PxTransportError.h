#pragma once

// Codes of the transports' failures, thrown through PxConnection::PtCommunicationError as
// (transport << 16) | reason, so "65537 Communication error" reads: TCP, time-out.
namespace PxTransportError {
enum Transport : unsigned short {
  TRANSPORT_TCP = 1,
  TRANSPORT_IN_PROCESS = 2,
};

enum Reason : unsigned short {
  REASON_TIMEOUT = 1,       // the device stayed silent for longer than the time-out
  REASON_LINK_LOST = 2,     // the peer closed the link or it broke
  REASON_NOT_CONNECTED = 3, // an exchange on a link that is down
  REASON_WRITE_FAILED = 4,  // the request could not be handed to the link
};
} // namespace PxTransportError
