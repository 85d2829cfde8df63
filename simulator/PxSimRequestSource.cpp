#include "PxSimRequestSource.h"

#include <cstring>

PxSimRequestSource::PxSimRequestSource(QObject* aParent)
    : PxPtComConnection(aParent)
{
  mReader.SetProtocolId(2);
}

void PxSimRequestSource::SetMessage(const QByteArray& aMessage)
{
  mMessage = aMessage;
  mPosition = 0;
}

void PxSimRequestSource::Read(void* aData, unsigned int aSize)
{
  if (aSize > static_cast<unsigned int>(mMessage.size() - mPosition)) {
    PtCommunicationError(1, 0);
  }
  std::memcpy(aData, mMessage.constData() + mPosition, aSize);
  mPosition += static_cast<int>(aSize);
}

void PxSimRequestSource::Write(const void*, unsigned int)
{
  PtCommunicationError(2, 0);
}
