#pragma once

#include "PtTypes.h"

#include <cstring>
#include <vector>

class PxProtocolReader;

// A request's elements, taken out of the reader once so that each protocol area can look up what
// it needs by id, check sizes and refuse what it does not know with a device answer code.
class PxSimRequest
{
public:
  struct Element
  {
    PtU16 mId = 0;
    PtU16 mCount = 0;
    PtU32 mSize = 0;
    std::vector<PtByte> mData;
  };

  PxSimRequest() = default;
  // Reads every element of a payload already read with ReadPayload; a malformed payload throws
  // the reader's exception.
  explicit PxSimRequest(PxProtocolReader& aReader);

  const std::vector<Element>& Elements() const { return mElements; }
  // The first element of that id, or null.
  const Element* Find(PtU16 aId) const;

  // A single value of exactly sizeof(T) bytes. A missing one throws ANSWER_MISSING_ELEMENT unless
  // a default is given; a wrong count or size throws ANSWER_BAD_ELEMENT.
  template <class T>
  T Scalar(PtU16 aId) const
  {
    return ScalarOr<T>(aId, true, T());
  }
  template <class T>
  T Scalar(PtU16 aId, T aDefault) const
  {
    return ScalarOr<T>(aId, false, aDefault);
  }
  // Every element's id must be one of aAllowed, else ANSWER_BAD_ELEMENT naming the first stranger.
  void CheckOnly(std::initializer_list<PtU16> aAllowed) const;

private:
  template <class T>
  T ScalarOr(PtU16 aId, bool aRequired, T aDefault) const
  {
    const Element* lElement = Find(aId);
    if (!lElement) {
      if (aRequired) {
        Missing(aId);
      }
      return aDefault;
    }
    if (lElement->mCount != 1 || lElement->mSize != sizeof(T)) {
      Bad(aId);
    }
    T lValue;
    std::memcpy(&lValue, lElement->mData.data(), sizeof(T));
    return lValue;
  }
  [[noreturn]] static void Missing(PtU16 aId);
  [[noreturn]] static void Bad(PtU16 aId);

  std::vector<Element> mElements;
};
