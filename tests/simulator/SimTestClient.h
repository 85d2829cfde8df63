#pragma once

#include "PxControlConnection.h"
#include "PxSimProtocol.h"

#include <QByteArray>

#include <cstring>
#include <map>
#include <vector>

// What a driver does with the simulated sensor, written against the framework's reader the way its
// result providers decode answers, so the tests check the answers they will get.
class SimTestClient
{
public:
  struct Element
  {
    PtU16 mCount = 0;
    PtU32 mSize = 0;
    QByteArray mData;
    template <class T>
    T At(size_t aIndex = 0) const
    {
      T lValue;
      std::memcpy(&lValue, mData.constData() + aIndex * sizeof(T), sizeof(T));
      return lValue;
    }
  };
  using Answer = std::map<PtU16, Element>;

  explicit SimTestClient(PxControlConnection& aConnection)
      : mConnection(aConnection)
  {
  }

  // One request with the elements added by aAdd; the answer's elements by id. Answer codes and
  // link failures throw as ReadAnswer throws them.
  template <class F>
  Answer Exchange(PtU16 aRequest, F aAdd)
  {
    mConnection.StartRequest(aRequest);
    aAdd(mConnection.Writer());
    mConnection.SendRequest();
    return Collect(*mConnection.ReadAnswer());
  }
  Answer Exchange(PtU16 aRequest)
  {
    return Exchange(aRequest, [](PxProtocolWriter&) {});
  }
  // The answer code of a request (0 on success), with the link's fate left to the caller to check.
  template <class F>
  unsigned int Code(PtU16 aRequest, F aAdd);

  template <class T>
  Answer Write(PtU16 aId, T aValue, PtU16 aCount = 1)
  {
    std::vector<T> lValues(aCount, aValue);
    return Exchange(PxSimProtocol::REQ_WRITE_CONFIG,
                    [&](PxProtocolWriter& w) { w.AddElement(aId, aCount, sizeof(T), lValues.data(), sizeof(T)); });
  }
  Element Read(PtU16 aId);

  void Scene(PtU64 aSeed, PtU32 aFlags);

  static Answer Collect(PxProtocolReader& aReader);

private:
  PxControlConnection& mConnection;
};

template <class F>
unsigned int SimTestClient::Code(PtU16 aRequest, F aAdd)
{
  try {
    Exchange(aRequest, aAdd);
  } catch (const std::exception& e) {
    return static_cast<unsigned int>(std::strtoul(e.what(), nullptr, 10));
  }
  return 0;
}
