#include "PxSimRequest.h"

#include "PxProtocolReader.h"
#include "PxSimError.h"
#include "PxSimProtocol.h"

PxSimRequest::PxSimRequest(PxProtocolReader& aReader)
{
  while (aReader.Advance()) {
    Element lElement;
    lElement.mId = aReader.Id();
    lElement.mCount = aReader.Count();
    lElement.mSize = aReader.UnitSize();
    lElement.mData.resize(static_cast<size_t>(lElement.mCount) * lElement.mSize);
    aReader.ReadElement(lElement.mData.data(), lElement.mCount, lElement.mSize, lElement.mSize);
    mElements.push_back(std::move(lElement));
  }
}

const PxSimRequest::Element* PxSimRequest::Find(PtU16 aId) const
{
  for (const Element& lElement : mElements) {
    if (lElement.mId == aId) {
      return &lElement;
    }
  }
  return nullptr;
}

void PxSimRequest::CheckOnly(std::initializer_list<PtU16> aAllowed) const
{
  for (const Element& lElement : mElements) {
    bool lKnown = false;
    for (PtU16 lId : aAllowed) {
      lKnown = lKnown || lId == lElement.mId;
    }
    if (!lKnown) {
      Bad(lElement.mId);
    }
  }
}

void PxSimRequest::Missing(PtU16 aId)
{
  throw PxSimError{PxSimProtocol::ANSWER_MISSING_ELEMENT, aId};
}

void PxSimRequest::Bad(PtU16 aId)
{
  throw PxSimError{PxSimProtocol::ANSWER_BAD_ELEMENT, aId};
}
