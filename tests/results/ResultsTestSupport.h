#pragma once

#include "PxTest.h"

#include "PtException.h"
#include "PxProtocolReader.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QString>

#include <gtest/gtest.h>

namespace ResultsTest {
constexpr unsigned short REQUEST = 0x21;

// Queues one answer of aPayload and reads its header, as a driver does before handing the reader
// to a provider.
inline PxProtocolReader& Answer(PxTestTransport& aTransport, const PxTestBytes& aPayload)
{
  aTransport.Queue(
      PxTestBytes().AnswerHeader(2, 0, static_cast<std::uint32_t>(aPayload.Size()), REQUEST).Bytes(aPayload));
  aTransport.Reader().ReadAnswerHeader(REQUEST);
  return aTransport.Reader();
}

} // namespace ResultsTest
