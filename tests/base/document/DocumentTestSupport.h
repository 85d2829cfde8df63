#pragma once

#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QFile>
#include <QString>

#include <cstring>
#include <vector>

namespace DocumentTest {
constexpr PtU32 RECORD_TYPE = 0x52454331; // a sensor's record-file type code
constexpr PtU32 SECTION_HEADER = 4352, SECTION_PROPERTIES = 4353, SECTION_FRAME = 5536, SECTION_STATE = 6656,
                SECTION_ECHOES = 6144, SECTION_TRACES = 6016, SECTION_TRACE = 5888;

// The 24-byte in-memory echo record whose fields travel with stride 24.
struct Echo
{
  PtU32 mDistance, mAmplitude, mThird;
  PtU16 mFourth;
  PtByte mSegment, mFlag;
  PtU32 mSeventh, mEighth;
};
static_assert(sizeof(Echo) == 24, "echo record layout");

struct Field
{
  PtU32 mId;
  size_t mOffset;
  PtU32 mWidth;
};
inline const Field ECHO_FIELDS[] = {{6145, offsetof(Echo, mDistance), 4}, {6146, offsetof(Echo, mAmplitude), 4},
                                    {6147, offsetof(Echo, mThird), 4},    {6148, offsetof(Echo, mFourth), 2},
                                    {6149, offsetof(Echo, mSegment), 1},  {6150, offsetof(Echo, mFlag), 1},
                                    {6151, offsetof(Echo, mSeventh), 4},  {6152, offsetof(Echo, mEighth), 4}};

inline std::vector<Echo> MakeEchoes(PtU32 aFrame, PtU32 aCount)
{
  std::vector<Echo> lEchoes(aCount);
  for (PtU32 i = 0; i < aCount; ++i) {
    lEchoes[i] = {aFrame * 1000 + i, aFrame + 7 * i, i, PtU16(aFrame ^ i), PtByte(i % 16), PtByte(i & 1), aFrame, ~i};
  }
  return lEchoes;
}

inline std::vector<PtU16> MakeSamples(PtU32 aFrame, PtU32 aTrace, PtU32 aLength)
{
  std::vector<PtU16> lSamples(aLength);
  for (PtU32 i = 0; i < aLength; ++i) {
    lSamples[i] = PtU16(aFrame * 31 + aTrace * 7 + i);
  }
  return lSamples;
}

// Writes one frame as the recorder and the result classes lay it out: state, echoes, traces.
inline void WriteFrame(PtDocumentWriter& aWriter, PtU32 aFrame, PtU32 aEchoes, PtU32 aTraces, PtU32 aLength)
{
  aWriter.StartSection(SECTION_FRAME, 0, 1);
  aWriter.StartSection(SECTION_STATE, 1);
  const PtU64 lTime = 1420070400000ull + aFrame * 100ull;
  aWriter.AddElement(6673, &lTime, 8, 1, 8);
  const PtU32 lTemperature = 40 + aFrame;
  aWriter.AddElement(6660, &lTemperature, 4, 1, 4);
  aWriter.EndSection();
  aWriter.StartSection(SECTION_ECHOES, 1);
  const std::vector<Echo> lEchoes = MakeEchoes(aFrame, aEchoes);
  for (const Field& f : ECHO_FIELDS) {
    aWriter.AddElement(f.mId, reinterpret_cast<const char*>(lEchoes.data()) + f.mOffset, f.mWidth, aEchoes,
                       sizeof(Echo));
  }
  aWriter.EndSection();
  aWriter.StartSection(SECTION_TRACES, 1);
  for (PtU32 t = 0; t < aTraces; ++t) {
    aWriter.StartSection(SECTION_TRACE, 1);
    aWriter.AddElement(5889, &t, 4, 1, 4);
    aWriter.AddElement(5894, &aLength, 4, 1, 4);
    const std::vector<PtU16> lSamples = MakeSamples(aFrame, t, aLength);
    aWriter.AddElement(5893, lSamples.data(), 2, aLength, 2);
    aWriter.EndSection();
  }
  aWriter.EndSection();
  aWriter.EndSection();
}

// A record file as the recorder writes it: header with properties, frames, empty closing frame.
inline void WriteRecord(const QString& aFileName, PtU32 aFrames, PtU32 aEchoes = 5, PtU32 aTraces = 2,
                        PtU32 aLength = 8, bool aClose = true)
{
  PtDocumentWriter lWriter(aFileName, RECORD_TYPE);
  lWriter.StartSection(SECTION_HEADER, 0, 1);
  lWriter.StartSection(SECTION_PROPERTIES, 0, 1);
  const PtU32 lChannels = aTraces;
  lWriter.AddElement(4117, &lChannels, 4, 1, 4);
  lWriter.AddElement(34, QStringLiteral("Unit 3"));
  lWriter.EndSection();
  lWriter.EndSection();
  for (PtU32 f = 0; f < aFrames; ++f) {
    WriteFrame(lWriter, f, aEchoes, aTraces, aLength);
  }
  lWriter.StartSection(SECTION_FRAME, 0, 1);
  lWriter.EndSection();
  if (aClose) {
    lWriter.EndLastSection();
  }
}

// Reads everything from the cursor's position to the end of the current level into a text, element
// data as a hash: two documents with the same text hold the same sections, elements and bytes.
inline QByteArray Dump(PtDocumentReader& aReader, int aDepth = 0)
{
  QByteArray lText;
  while (aReader.Advance()) {
    lText += QByteArray(aDepth * 2, ' ');
    if (aReader.IsSection()) {
      lText += "S " + QByteArray::number(aReader.Id()) + " v" + QByteArray::number(aReader.Version()) + " f" +
               QByteArray::number(aReader.Flag()) + "\n";
      const QByteArray lInside = Dump(aReader, aDepth + 1);
      lText += lInside;
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
inline std::vector<QByteArray> DumpMainSections(PtDocumentReader& aReader)
{
  std::vector<QByteArray> lSections;
  while (aReader.Advance()) {
    const QByteArray lHead = "S " + QByteArray::number(aReader.Id()) + "\n";
    lSections.push_back(lHead + Dump(aReader, 1));
  }
  return lSections;
}

inline QByteArray ReadAll(const QString& aFileName)
{
  QFile lFile(aFileName);
  lFile.open(QIODevice::ReadOnly);
  return lFile.readAll();
}

inline void WriteAll(const QString& aFileName, const QByteArray& aBytes)
{
  QFile lFile(aFileName);
  lFile.open(QIODevice::WriteOnly | QIODevice::Truncate);
  lFile.write(aBytes);
}
} // namespace DocumentTest
