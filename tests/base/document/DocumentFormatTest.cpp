// Element round trips, ranges extracted as the record player does, files cut by a killed writer,
// and damaged or hostile files.
#include "PtDocumentFormat_p.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PxTest.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {
constexpr PtU32 RECORD_TYPE = 0x52454331; // a sensor's record-file type code
constexpr PtU32 SECTION_HEADER = 4352, SECTION_FRAME = 5536;

// A record file as the recorder writes it: a header, frames of nested sections whose data differ
// from frame to frame, and the empty closing frame.
void WriteRecord(const QString& aFileName, PtU32 aFrames)
{
  PtDocumentWriter lWriter(aFileName, RECORD_TYPE);
  lWriter.StartSection(SECTION_HEADER, 0, 1);
  lWriter.AddElement(34, QStringLiteral("Unit 3"));
  lWriter.EndSection();
  for (PtU32 f = 0; f < aFrames; ++f) {
    lWriter.StartSection(SECTION_FRAME, 0, 1);
    lWriter.StartSection(6656, 1);
    const PtU64 lTime = 1420070400000ull + f * 100ull;
    lWriter.AddElement(6673, &lTime, 8, 1, 8);
    lWriter.EndSection();
    const std::vector<PtU16> lSamples(8 + f, PtU16(f * 31));
    lWriter.AddElement(5893, lSamples.data(), 2, PtU32(lSamples.size()), 2);
    lWriter.EndSection();
  }
  lWriter.StartSection(SECTION_FRAME, 0, 1);
  lWriter.EndSection();
  lWriter.EndLastSection();
}

// Reads everything from the cursor's position to the end of the current level into a text, element
// data as a hash: two documents with the same text hold the same sections, elements and bytes.
QByteArray Dump(PtDocumentReader& aReader, int aDepth = 0)
{
  QByteArray lText;
  while (aReader.Advance()) {
    lText += QByteArray(aDepth * 2, ' ');
    if (aReader.IsSection()) {
      lText += "S " + QByteArray::number(aReader.Id()) + " v" + QByteArray::number(aReader.Version()) + " f" +
               QByteArray::number(aReader.Flag()) + "\n";
      lText += Dump(aReader, aDepth + 1);
    } else {
      QByteArray lData(int(aReader.UnitSize() * aReader.Count()), '\0');
      aReader.GetElement(lData.data(), aReader.UnitSize(), aReader.Count(), aReader.UnitSize());
      lText += "E " + QByteArray::number(aReader.Id()) + " " + QByteArray::number(aReader.UnitSize()) + "x" +
               QByteArray::number(aReader.Count()) + " " +
               QCryptographicHash::hash(lData, QCryptographicHash::Md5).toHex().left(12) + "\n";
    }
  }
  return lText;
}

// One text per main section, in file order.
std::vector<QByteArray> DumpMainSections(PtDocumentReader& aReader)
{
  std::vector<QByteArray> lSections;
  while (aReader.Advance()) {
    lSections.push_back("S " + QByteArray::number(aReader.Id()) + "\n" + Dump(aReader, 1));
  }
  return lSections;
}

// Reads the whole document the way a careless caller would, ignoring nothing: every element's data
// is fetched. Returns the format error code, or 0 when the file read through.
unsigned int ReadEverything(const QString& aFile)
{
  try {
    PtDocumentReader lReader(aFile);
    Dump(lReader);
    lReader.BuildMainSectionList();
    const size_t lCount = lReader.MainSectionCount();
    if (lCount > 0) {
      lReader.Extract(0, 0, lCount - 1, PxTest::ScratchFile(QStringLiteral("everything.doc")));
    }
    for (size_t i = 0; i < lCount; i += 1 + lCount / 4) {
      lReader.MoveTo(i);
      Dump(lReader);
    }
    return 0;
  } catch (const PtFileFormatException& e) {
    unsigned int lCode = 0;
    PtExtractException(e, &lCode, nullptr);
    return lCode;
  }
}

// Builders of raw records, for files no writer would produce.
QByteArray Word(PtU32 aValue)
{
  return QByteArray(reinterpret_cast<const char*>(&aValue), 4);
}
QByteArray Long(PtU64 aValue)
{
  return QByteArray(reinterpret_cast<const char*>(&aValue), 8);
}
QByteArray FileHeader(PtU32 aVersion = 1)
{
  return Word(0x43445850) + Word(7) + Word(aVersion) + Word(0);
}
QByteArray Section(PtU32 aId, const QByteArray& aContent, PtU64 aLength = PtU64(-1))
{
  return Word(0x54434553) + Word(aId) + Word(0) + Word(0) + Long(aLength == PtU64(-1) ? aContent.size() : aLength) +
         aContent;
}
QByteArray Element(PtU32 aId, PtU32 aUnit, PtU32 aCount, const QByteArray& aData)
{
  return Word(0x4D454C45) + Word(aId) + Word(aUnit) + Word(aCount) + aData;
}
} // namespace

TEST(DocumentFormat, ElementsRoundTripWithAnyUnitSizeAndStride)
{
  struct Case
  {
    const char* mName;
    PtU32 mUnit, mCount;
    size_t mStride;
  };
  // Strides equal to the unit take the block copy; the others gather and scatter, with the scalar
  // moves for 1, 2, 4 and 8 bytes and the general copy for odd sizes. The large ones outgrow the
  // read window and the write buffer.
  const Case lCases[] = {
      {"empty", 4, 0, 4},     {"one field of echoes", 1, 96, 24}, {"32-bit field", 4, 96, 24},
      {"odd unit", 3, 77, 5}, {"large block", 2, 1500000, 2},     {"units larger than the window", 300000, 3, 300016},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    std::vector<char> lSource(std::max<size_t>(1, c.mCount * c.mStride));
    std::mt19937 lRandom(c.mCount);
    for (char& b : lSource) {
      b = char(lRandom());
    }
    const QString lFile = PxTest::ScratchFile(QStringLiteral("element.doc"));
    {
      PtDocumentWriter lWriter(lFile, 7);
      lWriter.StartSection(10);
      lWriter.AddElement(11, lSource.data(), c.mUnit, c.mCount, c.mStride);
      lWriter.AddElement(12, QStringLiteral("after"));
      lWriter.EndSection();
      lWriter.EndLastSection();
    }
    PtDocumentReader lReader(lFile);
    ASSERT_TRUE(lReader.Advance());
    ASSERT_TRUE(lReader.Advance());
    EXPECT_EQ(lReader.Id(), 11u);
    EXPECT_EQ(lReader.UnitSize(), c.mUnit);
    ASSERT_EQ(lReader.Count(), c.mCount);
    std::vector<char> lBack(lSource.size(), '\0');
    lReader.GetElement(lBack.data(), c.mUnit, c.mCount, c.mStride);
    for (size_t i = 0; i < c.mCount; ++i) {
      ASSERT_EQ(std::memcmp(&lBack[i * c.mStride], &lSource[i * c.mStride], c.mUnit), 0) << "item " << i;
    }
    ASSERT_TRUE(lReader.Advance());
    QString lText;
    lReader.GetElement(lText);
    EXPECT_EQ(lText, QStringLiteral("after"));
    EXPECT_FALSE(lReader.Advance());
    EXPECT_FALSE(lReader.Advance());
  }
}

TEST(DocumentFormat, ExtractedRangeIsARecordOfItsOwn)
{
  const QString lFile = PxTest::ScratchFile(QStringLiteral("source.ptl"));
  const QString lCopy = PxTest::ScratchFile(QStringLiteral("extract.ptl"));
  WriteRecord(lFile, 10);
  const std::vector<QByteArray> lSource = [&] {
    PtDocumentReader lReader(lFile);
    return DumpMainSections(lReader);
  }();
  PtDocumentReader lReader(lFile);
  lReader.Advance(); // the cursor of the source must not move
  EXPECT_TRUE(lReader.Extract(1, 4, 7, lCopy));
  EXPECT_EQ(lReader.CurrentMainSection(), 0u);
  EXPECT_EQ(lReader.Id(), SECTION_HEADER);
  {
    // The header, frames 3 to 6, and the closing empty frame, each as it was.
    PtDocumentReader lExtract(lCopy, RECORD_TYPE);
    EXPECT_EQ(DumpMainSections(lExtract),
              (std::vector<QByteArray>{lSource[0], lSource[4], lSource[5], lSource[6], lSource[7], lSource[11]}));
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

TEST(DocumentFormat, WriterReportsFileErrorsWithTheFileName)
{
  // A directory that does not exist, and a disk that is full.
  for (const QString& lFile : {PxTest::ScratchFile(QStringLiteral("no/such/dir/x.ptl")), QStringLiteral("/dev/full")}) {
    SCOPED_TRACE(lFile.toStdString());
    if (!QFile::exists(lFile) && lFile.startsWith(QLatin1String("/dev"))) {
      continue;
    }
    const auto lWrite = [&] {
      PtDocumentWriter lWriter(lFile, 1);
      lWriter.StartSection(1);
      std::vector<char> lData(3 << 20);
      lWriter.AddElement(2, lData.data(), 1, PtU32(lData.size()), 1);
      lWriter.EndLastSection();
    };
    EXPECT_NE(PxTest::ErrorCode(lWrite), 0u);
    EXPECT_TRUE(PxTest::ErrorText(lWrite).contains(lFile));
  }
}

TEST(DocumentFormat, ManyMainSectionsListFromIndexOrByScanAlike)
{
  // More main sections than two index chunks hold, alternating index flags.
  const QString lFile = PxTest::ScratchFile(QStringLiteral("many.doc"));
  const QString lKilled = PxTest::ScratchFile(QStringLiteral("many-killed.doc"));
  const PtU32 lSections = 10000;
  for (const QString& lName : {lFile, lKilled}) {
    PtDocumentWriter lWriter(lName, 9);
    for (PtU32 i = 0; i < lSections; ++i) {
      lWriter.StartSection(100 + i % 3, 0, i % 2);
      lWriter.AddElement(1, &i, 4, 1, 4);
      lWriter.EndSection();
    }
    if (lName == lFile) {
      lWriter.EndLastSection();
      EXPECT_EQ(lWriter.FileSize(), PtU64(QFileInfo(lFile).size()));
    } // else sections follow the last chunk, as a recorder killed mid-file leaves them
  }
  const QString lCut = PxTest::ScratchFile(QStringLiteral("many-cut.doc"));
  PxTest::WriteFile(lCut, PxTest::ReadFile(lFile).chopped(1)); // no trailer: the list is rebuilt by walking the file
  for (const QString& lName : {lFile, lCut, lKilled}) {
    SCOPED_TRACE(lName.toStdString());
    PtDocumentReader lReader(lName);
    EXPECT_EQ(lReader.WasClosed(), lName == lFile);
    ASSERT_EQ(lReader.MainSectionCount(), lSections);
    for (PtU32 i : {0u, 1u, 4095u, 4096u, 4097u, 9999u, 8192u, 5000u, 8191u}) {
      ASSERT_TRUE(lReader.MoveTo(i));
      EXPECT_EQ(lReader.IsIndexSection(), i > 0 && i % 2 == 0); // of the section before
      EXPECT_EQ(lReader.IsIndexSection(i), i % 2 == 1);
      ASSERT_TRUE(lReader.Advance());
      EXPECT_EQ(lReader.CurrentMainSection(), i);
      EXPECT_EQ(lReader.Id(), 100 + i % 3);
      EXPECT_EQ(lReader.IsIndexSection(), i % 2 == 1);
      ASSERT_TRUE(lReader.Advance());
      PtU32 lValue = 0;
      lReader.GetElement(&lValue, 4, 1, 4);
      EXPECT_EQ(lValue, i);
    }
    EXPECT_TRUE(lReader.MoveTo(lSections));
    EXPECT_FALSE(lReader.Advance());
    EXPECT_FALSE(lReader.MoveTo(lSections + 1));
    ASSERT_TRUE(lReader.MoveTo(0)); // and in order, each section where the list puts it
    size_t lWalked = 0;
    while (lReader.Advance()) {
      lReader.SkipCurrentSection();
      ++lWalked;
    }
    EXPECT_EQ(lWalked, lSections);
  }
}

TEST(DocumentFormat, DamagedFilesEndInAFormatErrorWithItsCode)
{
  QByteArray lDeep = Element(1, 1, 1, "x");
  for (int i = 0; i < 33; ++i) { // one level deeper than a writer can open
    lDeep = Section(1, lDeep);
  }
  QByteArray lClosed;
  {
    const QString lFile = PxTest::ScratchFile(QStringLiteral("valid.doc"));
    WriteRecord(lFile, 3);
    lClosed = PxTest::ReadFile(lFile);
  }
  QByteArray lBadIndex = lClosed;
  lBadIndex[lBadIndex.size() - 24 - 20] = char(lBadIndex[lBadIndex.size() - 24 - 20] ^ 0x40); // an index entry
  // Three index chunks; the middle one is read only when a section it lists is first asked for:
  // once damaged, once listing a section past the file under a valid checksum.
  const QString lChunks = PxTest::ScratchFile(QStringLiteral("chunks.doc"));
  {
    PtDocumentWriter lWriter(lChunks, 7);
    for (int i = 0; i < 10000; ++i) {
      lWriter.StartSection(1);
      lWriter.EndSection();
    }
    lWriter.EndLastSection();
  }
  QByteArray lLateDamage = PxTest::ReadFile(lChunks), lWildEntry = lLateDamage;
  const int lMiddle = lLateDamage.indexOf("INDX", lLateDamage.indexOf("INDX") + 1);
  lLateDamage[lMiddle + 100] = char(lLateDamage[lMiddle + 100] ^ 0x01);
  lWildEntry.replace(lMiddle + 24, 8, Long(PtU64(1) << 40));
  const PtU64 lPrevious = qFromLittleEndian<PtU64>(lWildEntry.constData() + lMiddle + 8);
  lWildEntry.replace(
      lMiddle + 16, 4,
      Word(PtDocumentFormat::Checksum(lWildEntry.constData() + lMiddle + 24, 4096 * 16, lPrevious ^ 4096)));

  struct Case
  {
    const char* mName;
    QByteArray mBytes;
    unsigned int mCode;
  } const lCases[] = {
      {"not a document", QByteArray("PK\3\4 a zip file, not ours"), 20},
      {"newer format", FileHeader(2), 26},
      {"unknown record at the top", FileHeader() + QByteArray(40, 'z'), 22},
      {"unknown record inside", FileHeader() + Section(1, QByteArray(20, 'q')), 22},
      {"element longer than its section", FileHeader() + Section(1, Element(2, 4, 1000, "abcd")), 23},
      {"nested section longer than its parent", FileHeader() + Section(1, Section(2, "", 5000)), 23},
      {"element with a short header", FileHeader() + Section(1, "ELEM1234"), 23},
      {"zero-size items, huge count", FileHeader() + Section(1, Element(2, 0, 0xFFFFFFFF, "")), 22},
      {"nested too deep", FileHeader() + lDeep, 24},
      {"damaged index", lBadIndex, 27},
      {"damaged index chunk read late", lLateDamage, 27},
      {"index entry outside its chunk", lWildEntry, 27},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    const QString lFile = PxTest::ScratchFile(QStringLiteral("damaged.doc"));
    PxTest::WriteFile(lFile, c.mBytes);
    EXPECT_EQ(ReadEverything(lFile), c.mCode);
  }
  PxTest::WriteFile(PxTest::ScratchFile(QStringLiteral("typed.doc")), lClosed);
  EXPECT_EQ(
      PxTest::ErrorCode([] { PtDocumentReader(PxTest::ScratchFile(QStringLiteral("typed.doc")), RECORD_TYPE + 1); }),
      21u);
  EXPECT_THROW(PtDocumentReader(PxTest::ScratchFile(QStringLiteral("absent.doc"))), std::runtime_error);
}

TEST(DocumentFormat, CutDocumentWrittenFrameByFrameKeepsWhatItsLastCommitVouchesFor)
{
  // A flushing writer marks its file header, keeps zeros beyond its data and ends every flush with
  // a commit record; a kill leaves any prefix of a write over those zeros.
  const QByteArray lHeader = FileHeader().left(12) + Word(1);
  const QByteArray lFirst = Section(500, Element(1, 4, 1, "abcd"));
  auto lCommit = [](qint64 aAt) { return Word(0x54494D43) + Word(0) + Long(PtU64(aAt)) + Long(0); };
  const QByteArray lCommitted = lHeader + lFirst + lCommit(lHeader.size() + lFirst.size());
  const QByteArray lNext = Section(501, Element(1, 4, 1, "efgh"));
  const QByteArray lZeros(4096, '\0');
  const struct
  {
    const char* mName;
    QByteArray mBytes;
    size_t mSections;
  } lCases[] = {
      {"zeros after the last commit", lCommitted + lZeros, 1},
      {"a whole section after the last commit", lCommitted + lNext + lZeros, 1},
      {"a header cut short with a plausible length", lCommitted + lNext.left(17) + lZeros, 1},
      {"the next commit cut inside its tag",
       lCommitted + lNext + lCommit(lCommitted.size() + lNext.size()).left(3) + lZeros, 1},
      {"garbage after the last commit", lCommitted + QByteArray(40, 'z'), 1},
      {"a commit that does not say where it stands", lHeader + lFirst + lCommit(0) + lZeros, 0},
      {"nothing committed yet", lHeader + lFirst + lZeros, 0},
  };
  for (const auto& c : lCases) {
    SCOPED_TRACE(c.mName);
    const QString lFile = PxTest::ScratchFile(QStringLiteral("committed.ptl"));
    PxTest::WriteFile(lFile, c.mBytes);
    PtDocumentReader lReader(lFile);
    ASSERT_EQ(DumpMainSections(lReader).size(), c.mSections);
    EXPECT_EQ(lReader.MainSectionCount(), c.mSections);
    EXPECT_EQ(ReadEverything(lFile), 0u);
  }
}

TEST(DocumentFormat, FuzzerCorpusReadsThroughOrFailsCleanly)
{
  const QDir lDir(QStringLiteral(DOCUMENT_CORPUS_DIR));
  const QStringList lFiles = lDir.entryList(QDir::Files);
  EXPECT_GT(lFiles.size(), 10);
  for (const QString& lName : lFiles) {
    SCOPED_TRACE(lName.toStdString());
    const unsigned int lCode = ReadEverything(lDir.filePath(lName));
    EXPECT_TRUE(lCode == 0 || (lCode >= 20 && lCode <= 28)) << lCode;
  }
}
