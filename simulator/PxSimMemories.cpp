#include "PxSimMemories.h"

#include "PxProtocolWriter.h"
#include "PxSimConfiguration.h"
#include "PxSimDataGroups.h"
#include "PxSimError.h"
#include "PxSimFirmware.h"
#include "PxSimProtocol.h"
#include "PxSimRequest.h"

#include <algorithm>

using namespace PxSimProtocol;

PxSimMemories::PxSimMemories(const PxSimConfiguration& aConfiguration, const PxSimDataGroups& aGroups,
                             const PxSimFirmware& aFirmware)
    : mConfiguration(aConfiguration)
    , mGroups(aGroups)
    , mFirmware(aFirmware)
    , mRam(RAM_SIZE, 0)
{
}

void PxSimMemories::Restart()
{
  std::fill(mRam.begin(), mRam.end(), 0);
}

std::vector<PtByte> PxSimMemories::Area(PtByte aArea) const
{
  switch (aArea) {
  case MEMORY_RAM:
    return mRam;
  case MEMORY_REGISTERS:
    return mGroups.Registers();
  case MEMORY_NVM: {
    const QByteArray lImage = mConfiguration.NvmImage();
    return std::vector<PtByte>(lImage.begin(), lImage.end());
  }
  case MEMORY_FIRMWARE:
    return mFirmware.Image();
  default:
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_MEMORY_AREA};
  }
}

void PxSimMemories::Read(const PxSimRequest& aRequest, PxProtocolWriter& aWriter) const
{
  aRequest.CheckOnly({ID_MEMORY_AREA, ID_MEMORY_ADDRESS, ID_MEMORY_LENGTH});
  const PtByte lArea = aRequest.Scalar<PtByte>(ID_MEMORY_AREA);
  const PtU32 lAddress = aRequest.Scalar<PtU32>(ID_MEMORY_ADDRESS);
  const PtU32 lLength = aRequest.Scalar<PtU32>(ID_MEMORY_LENGTH);
  if (lLength == 0 || lLength > MAX_MEMORY_TRANSFER) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_MEMORY_LENGTH};
  }
  const std::vector<PtByte> lMemory = lArea == MEMORY_RAM ? std::vector<PtByte>() : Area(lArea);
  const std::vector<PtByte>& lSource = lArea == MEMORY_RAM ? mRam : lMemory;
  if (static_cast<PtU64>(lAddress) + lLength > lSource.size()) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_MEMORY_ADDRESS};
  }
  aWriter.AddElement(ID_MEMORY_DATA, static_cast<PtU16>(lLength), 1, lSource.data() + lAddress, 1);
}

void PxSimMemories::Write(const PxSimRequest& aRequest)
{
  aRequest.CheckOnly({ID_MEMORY_AREA, ID_MEMORY_ADDRESS, ID_MEMORY_DATA});
  const PtByte lArea = aRequest.Scalar<PtByte>(ID_MEMORY_AREA);
  const PtU32 lAddress = aRequest.Scalar<PtU32>(ID_MEMORY_ADDRESS);
  const PxSimRequest::Element* lData = aRequest.Find(ID_MEMORY_DATA);
  if (!lData) {
    throw PxSimError{ANSWER_MISSING_ELEMENT, ID_MEMORY_DATA};
  }
  if (lData->mSize != 1 || lData->mCount == 0 || lData->mCount > MAX_MEMORY_TRANSFER) {
    throw PxSimError{ANSWER_BAD_ELEMENT, ID_MEMORY_DATA};
  }
  if (lArea != MEMORY_RAM) {
    Area(lArea); // an unknown area is out of range before it is read-only
    throw PxSimError{ANSWER_READ_ONLY, ID_MEMORY_AREA};
  }
  if (static_cast<PtU64>(lAddress) + lData->mCount > mRam.size()) {
    throw PxSimError{ANSWER_OUT_OF_RANGE, ID_MEMORY_ADDRESS};
  }
  std::copy(lData->mData.begin(), lData->mData.end(), mRam.begin() + lAddress);
}
