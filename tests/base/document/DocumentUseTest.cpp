// The document reader as the record player uses it: play, seek, extract, and the file a recorder
// leaves when it stops before the first frame.
#include "DocumentTestSupport.h"
#include "PxTest.h"

#include <gtest/gtest.h>

using namespace DocumentTest;

namespace {
QString Path(const char* aName)
{
  return PxTest::ScratchDir() + QLatin1Char('/') + QLatin1String(aName);
}

// The main section the reader stands on, as DumpMainSections writes it.
QByteArray Current(PtDocumentReader& aReader)
{
  const QByteArray lHead = "S " + QByteArray::number(aReader.Id()) + "\n";
  return lHead + Dump(aReader, 1);
}
} // namespace

TEST(DocumentUse, RecordPlaysForwardAndFromAnyFrame)
{
  const QString lFile = Path("record.ptl");
  WriteRecord(lFile, 12, 6, 3, 16);
  std::vector<QByteArray> lSections;
  {
    PtDocumentReader lReader(lFile);
    lSections = DumpMainSections(lReader);
  }
  PtDocumentReader lReader(lFile, RECORD_TYPE);
  // The player reads the header, then lists the frames: the list must leave the cursor where it is.
  ASSERT_TRUE(lReader.Advance());
  EXPECT_EQ(lReader.Id(), SECTION_HEADER);
  EXPECT_EQ(Dump(lReader).count("  E "), 2);
  lReader.BuildMainSectionList();
  ASSERT_EQ(lReader.MainSectionCount(), 14u);
  for (size_t f = 1; f <= 12; ++f) {
    ASSERT_TRUE(lReader.Advance());
    EXPECT_EQ(Current(lReader), lSections[f]) << f;
  }
  for (size_t lIndex : {5u, 1u, 12u}) {
    ASSERT_TRUE(lReader.MoveTo(lIndex));
    ASSERT_TRUE(lReader.Advance());
    EXPECT_EQ(lReader.CurrentMainSection(), lIndex);
    EXPECT_EQ(Current(lReader), lSections[lIndex]);
  }
}

TEST(DocumentUse, ExtractedRangeIsARecordOfItsOwn)
{
  const QString lFile = Path("source.ptl");
  const QString lCopy = Path("extract.ptl");
  WriteRecord(lFile, 10, 4, 2, 8);
  std::vector<QByteArray> lSource;
  {
    PtDocumentReader lReader(lFile);
    lSource = DumpMainSections(lReader);
  }
  PtDocumentReader lReader(lFile);
  lReader.Advance(); // the cursor of the source must not move
  EXPECT_TRUE(lReader.Extract(1, 4, 7, lCopy));
  EXPECT_EQ(lReader.CurrentMainSection(), 0u);
  EXPECT_EQ(lReader.Id(), SECTION_HEADER);
  {
    // The header, frames 3 to 6, and the closing empty frame, each as it was.
    PtDocumentReader lExtract(lCopy, RECORD_TYPE);
    EXPECT_EQ(DumpMainSections(lExtract), (std::vector<QByteArray>{lSource[0], lSource[4], lSource[5], lSource[6],
                                                                     lSource[7], lSource[11]}));
    EXPECT_EQ(lExtract.MainSectionCount(), 6u);
  }

  const struct
  {
    size_t mLeading, mFirst, mLast;
  } lBad[] = {{2, 1, 3}, {1, 5, 4}, {1, 3, 12}};
  for (const auto& b : lBad) {
    EXPECT_FALSE(lReader.Extract(b.mLeading, b.mFirst, b.mLast, Path("bad.ptl")));
  }
  EXPECT_FALSE(QFile::exists(Path("bad.ptl")));
}

TEST(DocumentUse, RecordWithHeaderLeftOpenEndsWithTheClosingFrameInside)
{
  // The recorder closed before any frame: header still open, then the empty frame, then
  // EndLastSection closes both.
  const QString lFile = Path("noframes.ptl");
  {
    PtDocumentWriter lWriter(lFile, RECORD_TYPE);
    lWriter.StartSection(SECTION_HEADER, 0, 1);
    lWriter.StartSection(SECTION_PROPERTIES, 0, 1);
    lWriter.EndSection();
    lWriter.StartSection(SECTION_FRAME, 0, 1);
    lWriter.EndSection();
    lWriter.EndLastSection();
  }
  PtDocumentReader lReader(lFile);
  EXPECT_EQ(lReader.MainSectionCount(), 1u);
  EXPECT_EQ(Dump(lReader), QByteArray("S 4352 v0 f1\n  S 4353 v0 f1\n  S 5536 v0 f1\n"));
}
