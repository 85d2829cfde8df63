// The document reader and writer as the device, the result classes, the recorder and the record
// player use them: each test walks a file the way its caller does.
#include "DocumentTestSupport.h"
#include "PtException.h"
#include "PtTime.h"
#include "PxTest.h"

#include <QDateTime>

#include <gtest/gtest.h>
#include <map>

using namespace DocumentTest;

namespace {
QString Path(const char* aName)
{
  return PxTest::ScratchDir() + QLatin1Char('/') + QLatin1String(aName);
}

struct Header
{
  QDateTime mDate;
  QString mName, mComment, mSerial;
};

// The device's header reader: section 1 and its elements; other sections are left alone.
void PreLoadFile(PtDocumentReader& aReader, Header& aHeader)
{
  if (!aReader.Advance() || aReader.Id() != 1) {
    return;
  }
  while (aReader.Advance()) {
    switch (aReader.Id()) {
    case 21: {
      Pt64 lValue = 0;
      aReader.GetElement(&lValue, 8, 1, 8);
      aHeader.mDate = PtFromPersistence(lValue);
      break;
    }
    case 22:
      aReader.GetElement(aHeader.mName);
      break;
    case 23:
      aReader.GetElement(aHeader.mComment);
      break;
    case 24:
      aReader.GetElement(aHeader.mSerial);
      break;
    default:
      break;
    }
  }
}

// The device's property loop: known ids read themselves with their own unit size and stride.
using Properties = std::map<PtU32, std::vector<PtU32>>;
void LoadProperties(PtDocumentReader& aReader, Properties& aProperties)
{
  while (aReader.Advance()) {
    auto lIt = aProperties.find(aReader.Id());
    if (lIt != aProperties.end()) {
      lIt->second.resize(aReader.Count());
      aReader.GetElement(lIt->second.data(), 4, aReader.Count(), 4);
    }
  }
}

bool LoadConfiguration(PtDocumentReader& aReader, Properties& aProperties)
{
  aReader.Advance();
  if (aReader.Id() != 2) {
    return false;
  }
  LoadProperties(aReader, aProperties);
  return true;
}

void LoadCalibration(PtDocumentReader& aReader, Properties& aProperties)
{
  aReader.Advance();
  if (aReader.Id() != 2) {
    return;
  }
  while (aReader.Advance()) {
    if (aReader.Id() == 259 || aReader.Id() == 288) {
      LoadProperties(aReader, aProperties);
    } else {
      aReader.SkipCurrentSection();
    }
  }
}

void WriteHeader(PtDocumentWriter& aWriter, const QString& aName)
{
  aWriter.StartSection(1);
  const Pt64 lDate = PtToPersistence(QDateTime::fromMSecsSinceEpoch(1425301509123));
  aWriter.AddElement(21, &lDate, 8, 1, 8);
  aWriter.AddElement(22, aName);
  aWriter.AddElement(23, QStringLiteral("Comment: tuned on the roof"));
  aWriter.AddElement(99, QStringLiteral("an element of a later version"));
  aWriter.AddElement(24, QStringLiteral("SN-0042"));
  aWriter.EndSection();
}
} // namespace

TEST(DocumentUse, ConfigurationFileLoadsHeaderThenProperties)
{
  const QString lFile = Path("config.pto");
  {
    PtDocumentWriter lWriter(lFile, 0x70746F31);
    WriteHeader(lWriter, QStringLiteral("Tête de mesure Ω"));
    lWriter.StartSection(2);
    const PtU32 lRange[3] = {10, 20, 30};
    lWriter.AddElement(4100, lRange, 4, 3, 4);
    const PtU32 lUnknown = 5;
    lWriter.AddElement(777, &lUnknown, 4, 1, 4);
    const PtU32 lRate = 25;
    lWriter.AddElement(4101, &lRate, 4, 1, 4);
    lWriter.EndSection();
    lWriter.EndLastSection();
  }
  PtDocumentReader lReader(lFile);
  EXPECT_EQ(lReader.DocumentType(), 0x70746F31u);
  Header lHeader;
  PreLoadFile(lReader, lHeader);
  EXPECT_EQ(lHeader.mName, QStringLiteral("Tête de mesure Ω"));
  EXPECT_EQ(lHeader.mComment, QStringLiteral("Comment: tuned on the roof"));
  EXPECT_EQ(lHeader.mSerial, QStringLiteral("SN-0042"));
  EXPECT_EQ(lHeader.mDate.toMSecsSinceEpoch(), 1425301509123);

  Properties lProperties{{4100, {}}, {4101, {}}};
  ASSERT_TRUE(LoadConfiguration(lReader, lProperties));
  EXPECT_EQ(lProperties[4100], (std::vector<PtU32>{10, 20, 30}));
  EXPECT_EQ(lProperties[4101], (std::vector<PtU32>{25}));
  EXPECT_FALSE(lReader.Advance()); // nothing after section 2
  EXPECT_EQ(lReader.Id(), PT_NONE32);
}

TEST(DocumentUse, ConfigurationWhoseSecondSectionIsNotTwoLoadsNothing)
{
  struct Case
  {
    const char* mName;
    std::function<void(PtDocumentWriter&)> mAfterHeader;
  };
  const Case lCases[] = {
      {"other section",
       [](PtDocumentWriter& w) {
         w.StartSection(3);
         PtU32 v = 1;
         w.AddElement(4100, &v, 4, 1, 4);
         w.EndSection();
       }},
      {"no second section", [](PtDocumentWriter&) {}},
      // An element id 2 inside a section must not pass for section 2.
      {"section holding element 2",
       [](PtDocumentWriter& w) {
         w.StartSection(5);
         PtU32 v = 1;
         w.AddElement(2, &v, 4, 1, 4);
         w.EndSection();
       }},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mName);
    const QString lFile = Path("config2.pto");
    {
      PtDocumentWriter lWriter(lFile, 1);
      WriteHeader(lWriter, QStringLiteral("x"));
      c.mAfterHeader(lWriter);
      lWriter.EndLastSection();
    }
    PtDocumentReader lReader(lFile);
    Header lHeader;
    PreLoadFile(lReader, lHeader);
    Properties lProperties{{4100, {7}}};
    EXPECT_FALSE(LoadConfiguration(lReader, lProperties));
    EXPECT_EQ(lProperties[4100], std::vector<PtU32>{7});
  }
}

TEST(DocumentUse, CalibrationReadsNestedSectionsAndSkipsTheRest)
{
  const QString lFile = Path("calibration.ptc");
  {
    PtDocumentWriter lWriter(lFile, 0x63616C31);
    WriteHeader(lWriter, QStringLiteral("Unit"));
    lWriter.StartSection(2);
    const PtU32 lA = 11, lB = 22, lC = 33, lD = 44;
    lWriter.StartSection(259);
    lWriter.AddElement(5000, &lA, 4, 1, 4);
    lWriter.EndSection();
    lWriter.AddElement(5001, &lD, 4, 1, 4); // an element directly in section 2 is skipped
    lWriter.StartSection(300);              // an unknown section, with a nested one, is skipped whole
    lWriter.AddElement(5002, &lD, 4, 1, 4);
    lWriter.StartSection(259);
    lWriter.AddElement(5000, &lD, 4, 1, 4);
    lWriter.EndSection();
    lWriter.EndSection();
    lWriter.StartSection(288);
    lWriter.AddElement(5003, &lB, 4, 1, 4);
    lWriter.AddElement(5004, &lC, 4, 1, 4);
    lWriter.EndSection();
    lWriter.EndSection();
    lWriter.EndLastSection();
  }
  PtDocumentReader lReader(lFile);
  Header lHeader;
  PreLoadFile(lReader, lHeader);
  EXPECT_EQ(lHeader.mSerial, QStringLiteral("SN-0042"));
  Properties lProperties{{5000, {}}, {5001, {}}, {5002, {}}, {5003, {}}, {5004, {}}};
  LoadCalibration(lReader, lProperties);
  EXPECT_EQ(lProperties[5000], std::vector<PtU32>{11});
  EXPECT_TRUE(lProperties[5001].empty());
  EXPECT_TRUE(lProperties[5002].empty());
  EXPECT_EQ(lProperties[5003], std::vector<PtU32>{22});
  EXPECT_EQ(lProperties[5004], std::vector<PtU32>{33});
  EXPECT_FALSE(lReader.Advance());
}

namespace {
struct Frame
{
  PtU64 mTime = 0;
  std::vector<Echo> mEchoes;
  std::vector<std::vector<PtU16>> mTraces;
};

// Decodes the frame section the cursor stands on as the result providers do: the time from the
// state, the echo fields scattered into records, the trace samples by channel.
Frame ReadFrame(PtDocumentReader& aReader)
{
  Frame lFrame;
  while (aReader.Advance()) {
    const PtU32 lSection = aReader.Id();
    while (aReader.Advance()) {
      if (lSection == SECTION_STATE && aReader.Id() == 6673) {
        aReader.GetElement(&lFrame.mTime, 8, 1, 8);
      }
      for (const Field& f : ECHO_FIELDS) {
        if (lSection == SECTION_ECHOES && f.mId == aReader.Id()) {
          lFrame.mEchoes.resize(aReader.Count());
          aReader.GetElement(reinterpret_cast<char*>(lFrame.mEchoes.data()) + f.mOffset, f.mWidth, aReader.Count(),
                             sizeof(Echo));
        }
      }
      PtU32 lChannel = 0;
      while (lSection == SECTION_TRACES && aReader.Advance()) {
        if (aReader.Id() == 5889) {
          aReader.GetElement(&lChannel, 4, 1, 4);
        } else if (aReader.Id() == 5893) {
          lFrame.mTraces.resize(std::max<size_t>(lFrame.mTraces.size(), lChannel + 1));
          lFrame.mTraces[lChannel].resize(aReader.Count());
          aReader.GetElement(lFrame.mTraces[lChannel].data(), 2, aReader.Count(), 2);
        }
      }
    }
  }
  return lFrame;
}

void ExpectFrame(const Frame& aFrame, PtU32 aNumber, PtU32 aEchoes, PtU32 aTraces, PtU32 aLength)
{
  SCOPED_TRACE(aNumber);
  EXPECT_EQ(aFrame.mTime, 1420070400000ull + aNumber * 100ull);
  const std::vector<Echo> lEchoes = MakeEchoes(aNumber, aEchoes);
  ASSERT_EQ(aFrame.mEchoes.size(), lEchoes.size());
  EXPECT_EQ(std::memcmp(aFrame.mEchoes.data(), lEchoes.data(), lEchoes.size() * sizeof(Echo)), 0);
  ASSERT_EQ(aFrame.mTraces.size(), aTraces);
  for (PtU32 t = 0; t < aTraces; ++t) {
    EXPECT_EQ(aFrame.mTraces[t], MakeSamples(aNumber, t, aLength));
  }
}
} // namespace

TEST(DocumentUse, RecordPlaysForwardBackwardAndFromAnyFrame)
{
  const QString lFile = Path("record.ptl");
  WriteRecord(lFile, 12, 6, 3, 16);
  PtDocumentReader lReader(lFile, RECORD_TYPE);
  // The player reads the header, then lists the frames: the list must leave the cursor where it is.
  ASSERT_TRUE(lReader.Advance());
  EXPECT_EQ(lReader.Id(), SECTION_HEADER);
  EXPECT_EQ(Dump(lReader).count("  E "), 2);
  lReader.BuildMainSectionList();
  ASSERT_EQ(lReader.MainSectionCount(), 14u);
  for (PtU32 f = 0; f < 12; ++f) {
    ASSERT_TRUE(lReader.Advance());
    ASSERT_EQ(lReader.Id(), SECTION_FRAME);
    ExpectFrame(ReadFrame(lReader), f, 6, 3, 16);
  }
  for (size_t lIndex : {5u, 1u, 12u, 3u, 4u}) {
    ASSERT_TRUE(lReader.MoveTo(lIndex));
    ASSERT_TRUE(lReader.Advance());
    EXPECT_EQ(lReader.CurrentMainSection(), lIndex);
    ExpectFrame(ReadFrame(lReader), PtU32(lIndex - 1), 6, 3, 16);
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
