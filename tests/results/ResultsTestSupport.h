#pragma once

#include "PxTest.h"

#include "PtException.h"
#include "PxProtocolReader.h"
#include "PxTestBytes.h"
#include "PxTestTransport.h"

#include <QString>

#include <functional>
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

// The code of the exception aCall throws, or 0 (with a failure) when it throws none.
} // namespace ResultsTest

namespace ResultsTest {
// aText as a regular expression that matches exactly it, for death-test messages that hold
// parentheses and operators.
inline std::string Literal(const std::string& aText)
{
  std::string lPattern;
  for (char c : aText) {
    if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) {
      lPattern += '\\';
    }
    lPattern += c;
  }
  return lPattern;
}

struct DeathCase
{
  std::function<void()> mCall;
  const char* mMessage; // "expression, file Name, line N"
};

inline void ExpectDeaths(const std::vector<DeathCase>& aCases)
{
  for (const DeathCase& lCase : aCases) {
    SCOPED_TRACE(lCase.mMessage);
    EXPECT_DEATH(lCase.mCall(), Literal(std::string("Assertion failed: ") + lCase.mMessage));
  }
}
} // namespace ResultsTest
