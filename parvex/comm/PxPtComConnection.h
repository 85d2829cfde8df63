#pragma once

#include "PxConnection.h"
#include "PxProtocolReader.h"

// A connection that speaks PtCom: it owns the reader that decodes what arrives, and a transport
// supplies the two byte-level operations.
class PX_EXPORT PxPtComConnection : public PxConnection
{
  Q_OBJECT

public:
  explicit PxPtComConnection(QObject* aParent = nullptr);

  // Returns only once exactly aSize bytes are stored at aData; on a time-out, a lost link or any
  // other failure it throws an exception derived from std::exception. It must never block forever.
  virtual void Read(void* aData, unsigned int aSize) = 0;
  // Sends the aSize bytes as one message, or throws as Read does.
  virtual void Write(const void* aData, unsigned int aSize) = 0;

  PxProtocolReader& Reader() { return mReader; }

protected:
  PxProtocolReader mReader{*this};
};
