#include "PxResultProvider.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PxProtocolReader.h"
#include "PxResult.h"

namespace {
// The state provider writes the device timestamp as the frame's wall-clock time instead.
constexpr PtU32 STATE_TIMESTAMP_ID = 6673;
} // namespace

PxResultProvider::PxResultProvider(PtU32 aId)
    : mId(aId)
{
  CheckId(aId);
}

void PxResultProvider::StartUpdate()
{
  mUpdating = true;
}

void PxResultProvider::EndUpdate()
{
  mUpdating = false;
  Q_EMIT NewData();
}

void PxResultProvider::SetMaps(Map* aResults, Map* aDeviceResults)
{
  CheckMaps(aResults, aDeviceResults);
  mResults = aResults;
  mDeviceResults = aDeviceResults;
}

void PxResultProvider::WriteElementsToFile(PtDocumentWriter& aWriter)
{
  if (!mResults) {
    return;
  }
  for (const auto& lEntry : *mResults) {
    if (lEntry.first != STATE_TIMESTAMP_ID) {
      lEntry.second->WriteToFile(aWriter);
    }
  }
}

void PxResultProvider::ReadElementFromFile(PtDocumentReader& aReader)
{
  if (!mResults) {
    return;
  }
  const auto lFound = mResults->find(aReader.Id());
  if (lFound != mResults->end()) {
    lFound->second->ReadFromFile(aReader);
  }
}

void PxResultProvider::ReadElementFromPtProtocol(PxProtocolReader& aReader)
{
  if (!mDeviceResults) {
    return;
  }
  const auto lFound = mDeviceResults->find(aReader.Id());
  if (lFound != mDeviceResults->end()) {
    lFound->second->ReadFromPtProtocol(aReader);
  }
}

void PxResultProvider::EnterResult(PxResult* aResult)
{
  PT_ASSERT(mResults && mDeviceResults);
  (*mResults)[aResult->Id()] = aResult;
  (*mDeviceResults)[aResult->DeviceId()] = aResult;
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxResultProvider::CheckId(PtU32 aId)
{
#line 43
  PT_ASSERT(aId);
}

void PxResultProvider::CheckMaps(Map* aResults, Map* aDeviceResults)
{
#line 129
  PT_ASSERT(aResults);
  PT_ASSERT(aDeviceResults);
}
