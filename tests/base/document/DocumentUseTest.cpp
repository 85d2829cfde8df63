// The document reader as the record player uses it: extracting a range of frames.
#include "DocumentTestSupport.h"
#include "PxTest.h"

#include <gtest/gtest.h>

using namespace DocumentTest;

TEST(DocumentUse, ExtractedRangeIsARecordOfItsOwn)
{
  const QString lFile = PxTest::ScratchFile(QStringLiteral("source.ptl"));
  const QString lCopy = PxTest::ScratchFile(QStringLiteral("extract.ptl"));
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
    EXPECT_FALSE(lReader.Extract(b.mLeading, b.mFirst, b.mLast, PxTest::ScratchFile(QStringLiteral("bad.ptl"))));
  }
  EXPECT_FALSE(QFile::exists(PxTest::ScratchFile(QStringLiteral("bad.ptl"))));
}
