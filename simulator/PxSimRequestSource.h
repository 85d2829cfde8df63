#pragma once

#include "PxPtComConnection.h"

#include <QByteArray>

// The device side's byte source: one complete request message handed in by the transport, read
// by the framework's own PxProtocolReader exactly as the application reads answers. Reading past
// the message throws, so a request whose size field lies is refused instead of waited for.
class PxSimRequestSource : public PxPtComConnection
{
  Q_OBJECT

public:
  explicit PxSimRequestSource(QObject* aParent = nullptr);

  void SetMessage(const QByteArray& aMessage);

  bool Connected() const override { return true; }
  bool Connect() override { return true; }
  void Disconnect() override {}
  void Read(void* aData, unsigned int aSize) override;
  // The device never writes through its request source; answers go out through the transport.
  void Write(const void* aData, unsigned int aSize) override;

private:
  QByteArray mMessage;
  int mPosition = 0;
};
