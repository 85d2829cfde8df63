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

SimTestClient::Traces SimTestClient::ReadRawTraces()
{
  mConnection.StartRequest(REQ_RAW_TRACES);
  mConnection.SendRequest();
  PxProtocolReader& lReader = mConnection.Reader();
  lReader.ReadAnswerHeader(REQ_RAW_TRACES);
  lReader.ResetConsumedLength();
  Traces lTraces;
  while (lReader.PullHeader()) {
    switch (lReader.Id()) {
    case ID_TRACE_LENGTH_ELEMENT:
      lReader.PullElement(&lTraces.mLength, 4, 1);
      break;
    case ID_TRACE_FRAME:
      lReader.PullElement(&lTraces.mFrame, 4, 1);
      break;
    case ID_TRACE_ACTIVE:
      lReader.PullElement(&lTraces.mActive, 4, 1);
      break;
    case ID_TRACE_SAMPLES:
      // The provider knows its channel count, and the length from element 419 before this one.
      lTraces.mItemSize = 2 * lTraces.mLength;
      lTraces.mSamples.resize(static_cast<int>(lTraces.mItemSize * CHANNEL_COUNT));
      lReader.PullElement(lTraces.mSamples.data(), lTraces.mItemSize, CHANNEL_COUNT);
      break;
    case ID_TRACE_DELAYS:
      lTraces.mDelays.resize(CHANNEL_COUNT);
      lReader.PullElement(lTraces.mDelays.data(), 4, CHANNEL_COUNT);
      break;
    default:
      throw std::runtime_error("unexpected trace element " + std::to_string(lReader.Id()));
    }
  }
  return lTraces;
}

void SimTestClient::Scene(PtU64 aSeed, PtU32 aFlags)
{
  Exchange(REQ_DEBUG_SCENE, [&](PxProtocolWriter& w) {
    w.AddElement(ID_DEBUG_P1, 1, 8, &aSeed, 8);
    w.AddElement(ID_DEBUG_P2, 1, 4, &aFlags, 4);
  });
}
