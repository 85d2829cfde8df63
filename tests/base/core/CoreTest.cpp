#include "PtAssert.h"
#include "PtException.h"
#include "PtFile.h"
#include "PtTime.h"
#include "PxTest.h"

#include <gtest/gtest.h>

namespace {
struct ThrowCase
{
  const char* mName;
  std::function<void()> mThrow;
  unsigned int mCode;
  const char* mTextContains;
};

TEST(Errors, EveryReporterCarriesItsCodeAndAReadableMessage)
{
  const ThrowCase lCases[] = {
      {"PtThrow", [] { PtThrow<std::runtime_error>(1003, QStringLiteral("Protocol error")); }, 1003, "Protocol error"},
      {"invalid argument", [] { PtInvalidArgument(QStringLiteral("aValue"), QStringLiteral("70000"), 10); }, 10,
       "70000"},
      {"logic", [] { PtLogicError(7); }, 7, "logic error 7"},
      {"format 6", [] { PtFileFormatError(6); }, 6, "no header"},
      {"format other", [] { PtFileFormatError(42); }, 42, "format error 42"},
  };
  for (const auto& c : lCases) {
    SCOPED_TRACE(c.mName);
    EXPECT_EQ(PxTest::ErrorCode(c.mThrow), c.mCode);
    const QString lText = PxTest::ErrorText(c.mThrow);
    EXPECT_TRUE(lText.contains(QString::fromUtf8(c.mTextContains)));
    EXPECT_FALSE(lText.startsWith(QLatin1Char(' ')));
  }
}

TEST(Errors, ForeignExceptionTextIsKeptWholeWithCodeZero)
{
  const char* lTexts[] = {"12abc", "", "4294967296 too big"};
  for (const char* t : lTexts) {
    unsigned int lCode = 1;
    QString lText;
    PtExtractException(std::runtime_error(t), &lCode, &lText);
    EXPECT_EQ(lCode, 0u) << t;
    EXPECT_EQ(lText, QString::fromUtf8(t));
  }
  PtExtractException(std::runtime_error("5 x"), nullptr, nullptr); // null outputs are allowed
}

TEST(AssertDeathTest, NamesExpressionFileWithoutExtensionAndLine)
{
  const int lStride = 1;
  EXPECT_DEATH(PT_ASSERT(lStride >= 4), "Assertion failed: lStride >= 4, file CoreTest, line [0-9]+");
}

TEST(Time, PersistenceIsLosslessToTheMillisecond)
{
  const QDateTime lTimes[] = {
      QDateTime(QDate(2026, 11, 22), QTime(13, 45, 7, 123), Qt::LocalTime),
      QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59, 999), Qt::UTC),
  };
  for (const auto& t : lTimes) {
    EXPECT_EQ(PtFromPersistence(PtToPersistence(t)), t) << t.toString(Qt::ISODateWithMs).toStdString();
  }
  EXPECT_FALSE(PtFromPersistence(PtToPersistence(QDateTime())).isValid());
}

TEST(Time, FiletimesAndElapsedTimesReadAsText)
{
  // File times count 100 ns from 1601; elapsed times are milliseconds shown as hours:minutes:seconds.
  const std::pair<PtU64, const char*> lFiletimes[] = {
      {116444736000000000ull, "1970-01-01T00:00:00.000Z"},
      {132223104001234567ull, "2020-01-01T00:00:00.123Z"},
      {0ull, "1601-01-01T00:00:00.000Z"},
  };
  for (const auto& [lFiletime, lUtc] : lFiletimes) {
    EXPECT_EQ(PtFromFiletime(lFiletime).toUTC().toString(Qt::ISODateWithMs), QString::fromLatin1(lUtc));
  }
  const std::pair<PtU32, const char*> lElapsed[] = {
      {999, "0:00:00"}, {3599999, "0:59:59"}, {108000000, "30:00:00"}, {0xFFFFFFFFu, "1193:02:47"}};
  for (const auto& [lMs, lText] : lElapsed) {
    EXPECT_EQ(PtToElapsedTimeString(lMs), QString::fromLatin1(lText)) << lMs;
  }
}

TEST(File, ShortReadThrowsNamingTheFile)
{
  const QString lName = PxTest::ScratchFile(QStringLiteral("short.bin"));
  ASSERT_TRUE(PxTest::WriteFile(lName, "abc"));
  PtFile lFile(lName);
  lFile.OpenOrThrow(QIODevice::ReadOnly);
  char lBuf[4] = {};
  lFile.Read(lBuf, 2);
  EXPECT_EQ(QByteArray(lBuf, 2), QByteArray("ab"));
  EXPECT_TRUE(PxTest::ErrorText([&] { lFile.Read(lBuf, 4); }).contains(lName));

  PtFile lMissing(PxTest::ScratchDir() + QStringLiteral("/no/such/file"));
  EXPECT_THROW(lMissing.OpenOrThrow(QIODevice::ReadOnly), std::runtime_error);
}
} // namespace
