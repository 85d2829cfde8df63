#pragma once

#include "ParvexTechExport.h"
#include "PtTypes.h"

#include <QString>

#include <memory>

// Writes a sectioned document (configuration, calibration and record files; the layout is in
// docs/document-format.md). A document is a stream of main sections; sections nest and hold
// elements, each element a run of equally sized items.
//
// The writer streams: it keeps one fixed buffer and the stack of open sections, whatever the
// size of the file, and writes every main section as soon as the buffer fills. A writer that is
// killed at any point leaves a file that still opens: every main section it had ended reads back.
// Only EndLastSection() adds the index that lets a reader open a long record without scanning it.
//
// File errors (unwritable path, full disk) throw std::runtime_error through PtThrow with the
// file's error code and a text naming the file. Misuse (an element outside any section, an
// EndSection without a section, any call after EndLastSection) stops the program by assertion.
class PT_EXPORT PtDocumentWriter
{
public:
  // Creates (or truncates) the file and writes its header at once, so that even a writer killed
  // right after construction leaves a file whose two first words tell what it is.
  PtDocumentWriter(const QString& aFileName, PtU32 aDocumentType);
  // Writes out what is buffered. Without EndLastSection() the file is left as a cut document:
  // complete main sections read back, the open one is dropped. Never throws.
  ~PtDocumentWriter();

  PtDocumentWriter(const PtDocumentWriter&) = delete;
  PtDocumentWriter& operator=(const PtDocumentWriter&) = delete;

  // Opens a section inside the current one (or a new main section). A non-zero flag marks an
  // index section: a reader may start replaying there without the sections before it.
  void StartSection(PtU32 aId, PtU32 aVersion = 0, PtU32 aFlag = 0);

  // Appends one element of aCount items of aUnitSize bytes; item i is taken from
  // aData + i * aStride. One block copy when the stride equals the unit size, a gather otherwise.
  // Assertions: "aStride >= aUnitSize", an open section, and no items of size 0.
  void AddElement(PtU32 aId, const void* aData, PtU32 aUnitSize, PtU32 aCount, size_t aStride);

  // Appends a text as UTF-8: unit size 1, count = number of UTF-8 bytes. Callers that must keep an
  // older count convention pass the bytes through the general form instead.
  void AddElement(PtU32 aId, const QString& aText);

  // Closes the innermost open section.
  void EndSection();

  // Closes every section still open, writes the main-section index and closes the file. The
  // writer takes no further calls afterwards.
  void EndLastSection();

  // Hands everything buffered to the operating system in one write. Whatever was written before a
  // Flush survives the process being killed; the recorder calls it after every frame. Between main
  // sections the write ends with a commit record: a reader of a cut copy keeps only what the last
  // commit vouches for. From the first Flush on, the file is kept extended with zeros a little
  // ahead of its data, which makes frame-sized writes much cheaper; closing or destroying the
  // writer cuts them off (docs/document-format.md).
  void Flush();

  // Bytes of the document so far, buffered ones included. Costs nothing: the recorder asks before
  // every frame whether the file has reached its size limit.
  PtU64 FileSize() const;

  const QString& FileName() const;

private:
  friend class PtDocumentReader; // Extract copies whole main sections through the writer.

  // Extract: appends bytes of copied main-section records as they are, then enters a copied
  // section (which started at aOffset) in the index.
  void CopyRaw(const char* aData, size_t aSize);
  void CopiedMainSection(PtU64 aOffset, PtU32 aId, PtU32 aFlag);

  class Private;
  std::unique_ptr<Private> d;
};
