// Replays every input the protocol fuzzer kept as interesting, so the normal and sanitizer suites
// re-check them on every build without running the fuzzer.
#include "PxTest.h"

#include <QDir>

#include <gtest/gtest.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize);

namespace {
TEST(ProtocolFuzzCorpus, EveryKeptInputIsHandledCleanly)
{
  const QDir lDir(QStringLiteral(PX_COMM_CORPUS));
  const QStringList lFiles = lDir.entryList(QDir::Files);
  ASSERT_GE(lFiles.size(), 4);
  for (const QString& lName : lFiles) {
    const QByteArray lBytes = PxTest::ReadFile(lDir.filePath(lName));
    EXPECT_EQ(LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(lBytes.constData()), size_t(lBytes.size())), 0)
        << lName.toStdString();
  }
}
} // namespace
