#pragma once

#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

#include <cstring>
#include <vector>

namespace DocumentTest {
constexpr PtU32 RECORD_TYPE = 0x52454331; // a sensor's record-file type code
constexpr PtU32 SECTION_HEADER = 4352, SECTION_PROPERTIES = 4353, SECTION_FRAME = 5536, SECTION_STATE = 6656,
                SECTION_ECHOES = 6144, SECTION_TRACES = 6016, SECTION_TRACE = 5888;

// Writes one frame as the recorder and the result classes lay it out: state, the eight fields of
// 24-byte echo records, traces.
inline void WriteFrame(PtDocumentWriter& aWriter, PtU32 aFrame, PtU32 aEchoes, PtU32 aTraces, PtU32 aLength)
{
  aWriter.StartSection(SECTION_FRAME, 0, 1);
  aWriter.StartSection(SECTION_STATE, 1);
  const PtU64 lTime = 1420070400000ull + aFrame * 100ull;
  aWriter.AddElement(6673, &lTime, 8, 1, 8);
  aWriter.EndSection();
  aWriter.StartSection(SECTION_ECHOES, 1);
  std::vector<PtU32> lEchoes(aEchoes * 6 + 1);
  for (size_t i = 0; i < lEchoes.size(); ++i) {
    lEchoes[i] = aFrame * 1000 + PtU32(i) * 7;
  }
  const PtU32 lOffsets[8] = {0, 4, 8, 12, 14, 15, 16, 20}, lWidths[8] = {4, 4, 4, 2, 1, 1, 4, 4};
  for (PtU32 f = 0; f < 8; ++f) {
    aWriter.AddElement(6145 + f, reinterpret_cast<const char*>(lEchoes.data()) + lOffsets[f], lWidths[f], aEchoes, 24);
  }
  aWriter.EndSection();
  aWriter.StartSection(SECTION_TRACES, 1);
  for (PtU32 t = 0; t < aTraces; ++t) {
    aWriter.StartSection(SECTION_TRACE, 1);
    aWriter.AddElement(5889, &t, 4, 1, 4);
    std::vector<PtU16> lSamples(aLength, PtU16(aFrame * 31 + t));
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

} // namespace DocumentTest
