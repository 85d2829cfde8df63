#include "SimTestClient.h"

using namespace PxSimProtocol;

SimTestClient::Answer SimTestClient::Collect(PxProtocolReader& aReader)
{
  Answer lAnswer;
  while (aReader.Advance()) {
    Element lElement;
    lElement.mCount = aReader.Count();
    lElement.mSize = aReader.UnitSize();
    lElement.mData.resize(static_cast<int>(lElement.mCount * lElement.mSize));
    aReader.ReadElement(lElement.mData.data(), lElement.mCount, lElement.mSize, lElement.mSize);
    lAnswer[aReader.Id()] = lElement;
  }
  return lAnswer;
}

SimTestClient::Element SimTestClient::Read(PtU16 aId)
{
  Answer lAnswer = Exchange(REQ_READ_CONFIG, [&](PxProtocolWriter& w) { w.AddElement(ID_SELECT, 1, 2, &aId, 2); });
  return lAnswer.at(aId);
}

void SimTestClient::Scene(PtU64 aSeed, PtU32 aFlags)
{
  Exchange(REQ_DEBUG_SCENE, [&](PxProtocolWriter& w) {
    w.AddElement(ID_DEBUG_P1, 1, 8, &aSeed, 8);
    w.AddElement(ID_DEBUG_P2, 1, 4, &aFlags, 4);
  });
}
