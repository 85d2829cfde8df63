// Feeds arbitrary bytes to the document reader as a file and walks it the way every caller does:
// depth first with every element read (and scattered with a stride), sections skipped, the
// main-section list built, jumps, and an extract of the first sections. Anything but a clean
// read or a PtFileFormatException (or a file error) is a finding.
#include "PtDocumentReader.h"
#include "PtException.h"

#include <QFile>
#include <QString>

#include <cstdint>
#include <unistd.h>
#include <vector>

namespace {
const QString& Scratch(const char* aSuffix)
{
  // One file per process in /dev/shm when it is there: no disk traffic between runs.
  static const QString sBase = QStringLiteral("%1/parvex-fuzz-%2")
                                   .arg(QFile::exists(QStringLiteral("/dev/shm")) ? "/dev/shm" : "/tmp")
                                   .arg(getpid());
  static QString sInput = sBase + QStringLiteral(".in"), sOutput = sBase + QStringLiteral(".out");
  return aSuffix[0] == 'i' ? sInput : sOutput;
}

void Walk(PtDocumentReader& aReader, std::vector<char>& aBuffer, int aRound)
{
  while (aReader.Advance()) {
    if (aReader.IsSection()) {
      if ((aReader.Id() + aRound) % 5 == 0) {
        aReader.SkipCurrentSection();
      }
      continue;
    }
    const uint64_t lBytes = uint64_t(aReader.Count()) * aReader.UnitSize();
    if (lBytes > (64u << 20)) {
      continue;
    }
    if (aReader.UnitSize() == 1 && aRound == 0) {
      QString lText;
      aReader.GetElement(lText);
    }
    // The result classes scatter into records: a stride of three units.
    const size_t lStride = size_t(aReader.UnitSize()) * (aRound == 0 ? 1 : 3);
    aBuffer.resize(std::max<size_t>(1, aReader.Count() * lStride));
    aReader.GetElement(aBuffer.data(), aReader.UnitSize(), aReader.Count(), lStride);
  }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
  {
    QFile lFile(Scratch("in"));
    if (!lFile.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
      return 0;
    }
    lFile.write(reinterpret_cast<const char*>(aData), qint64(aSize));
  }
  std::vector<char> lBuffer;
  try {
    PtDocumentReader lReader(Scratch("in"));
    Walk(lReader, lBuffer, 0);
    const size_t lCount = lReader.MainSectionCount();
    if (lCount > 0) {
      lReader.MoveTo(lCount / 2);
      Walk(lReader, lBuffer, 1);
      lReader.IsIndexSection(lCount - 1);
      lReader.Extract(0, 0, std::min<size_t>(lCount - 1, 2), Scratch("out"));
      PtDocumentReader lCopy(Scratch("out"));
      Walk(lCopy, lBuffer, 0);
    }
  } catch (const PtFileFormatException&) {
  } catch (const std::runtime_error&) {
    // File errors (a file that shrank, a full /dev/shm): reported, not a crash.
  }
  return 0;
}
