#pragma once

#include "ParvexTechExport.h"
#include "PtTypes.h"

#include <QString>

#include <memory>

// Reads a sectioned document written by PtDocumentWriter (layout in docs/document-format.md).
//
// The reader is a cursor over the document walked depth first. Advance() steps to the next item:
// - standing on a section, it enters it and stands on its first item;
// - standing on an element, it steps over the element's data;
// - at the end of a section it returns false and leaves that section, so that the next Advance()
//   gives the item after it. At the end of the document it keeps returning false.
// This makes the usual loops read naturally: "Advance() to a section, then while (Advance()) read
// its elements" reads exactly one section; SkipCurrentSection() steps over a section unread.
//
// A document cut short (its writer was killed) opens: every complete main section reads back,
// the incomplete one at the end is dropped. Damaged or hostile content throws
// PtFileFormatException (PtFileFormatError codes 20-29) naming the file and the offset; file
// errors throw std::runtime_error with the file's error code. No length from the file is trusted
// before it is checked against the section that holds it, so no allocation is larger than the
// file and nesting is bounded.
class PT_EXPORT PtDocumentReader
{
public:
  // The first 32-bit word of every document ("PXDC"); the second is the document type. Record-player
  // types register under these two words.
  static constexpr PtU32 FORMAT_SIGNATURE = 0x43445850u;

  explicit PtDocumentReader(const QString& aFileName);
  // As above, and the document must be of aDocumentType, else format error 21.
  PtDocumentReader(const QString& aFileName, PtU32 aDocumentType);
  ~PtDocumentReader();

  PtDocumentReader(const PtDocumentReader&) = delete;
  PtDocumentReader& operator=(const PtDocumentReader&) = delete;

  // The document type given to the writer (the second word of the file).
  PtU32 DocumentType() const;
  // True when the writer finished the document with EndLastSection(); false for a cut file.
  bool WasClosed() const;
  const QString& FileName() const;

  // Steps the cursor (see above). True when it stands on a section or an element.
  bool Advance();

  // The current item. At the end of a section or of the document: Id() is PT_NONE32 and the
  // others are 0. Count() and UnitSize() are those of an element (0 for a section); Version()
  // and Flag() those of a section (0 for an element).
  bool IsSection() const;
  bool IsElement() const;
  PtU32 Id() const;
  PtU32 Count() const;
  PtU32 UnitSize() const;
  PtU32 Version() const;
  PtU32 Flag() const;
  // How deep the cursor is: 0 between main sections, 1 inside a main section, and so on.
  size_t Depth() const;

  // Reads aCount items of aUnitSize bytes from the current element's data, in order, item i to
  // aBuffer + i * aStride (one block copy when the stride equals the unit size). Reading fewer
  // bytes than the element holds takes its start; asking for more, or standing on anything but
  // an element, is a format error. May be called again on the same element.
  void GetElement(void* aBuffer, PtU32 aUnitSize, PtU32 aCount, size_t aStride);
  // The current element's bytes decoded as UTF-8, up to the first NUL if there is one (older
  // writers stored fixed-size text fields padded with NULs).
  void GetElement(QString& aText);

  // Standing on a section: steps over it unread, so that the next Advance() gives the item after
  // it. Standing on anything else: nothing (the next Advance() steps over an element anyway).
  void SkipCurrentSection();

  // Main sections are the sections at the top level, numbered from 0 in file order.
  // BuildMainSectionList() finds them all: from the index of a closed document, or by walking the
  // section records of a cut one. The calls below build the list themselves when needed. The list
  // holds one chunk of the file's index (4096 main sections) at a time, whatever the file's
  // length: the calls that take a main-section number read another chunk when the number is
  // outside it, and a damaged chunk then throws format error 27.
  void BuildMainSectionList();
  size_t MainSectionCount();
  // The main section the cursor is in or last left; PT_ALL before the first one.
  size_t CurrentMainSection() const;
  // Places the cursor just before main section aIndex: the next Advance() stands on it, and
  // CurrentMainSection() reads aIndex - 1 (PT_ALL for 0) as if the one before had just been read.
  // aIndex may equal MainSectionCount() (the end). False, and nothing moved, beyond that.
  bool MoveTo(size_t aIndex);
  // Whether main section aIndex (or the current one) was started with a non-zero flag. False for
  // an index out of range. Both may read a chunk of the index (see above).
  bool IsIndexSection(size_t aIndex);
  bool IsIndexSection() const;

  // Writes a new document of the same type holding main sections 0 to aLeading - 1, then aFirst
  // to aLast, then, for a document its writer finished (WasClosed()), the last main section when
  // it is not already among them (record files end with an empty closing section that players
  // count on; a cut file has none to copy). Sections are copied as they are. False, and no file
  // written, when the range is not aLeading <= aFirst <= aLast < MainSectionCount(). The cursor
  // does not move.
  bool Extract(size_t aLeading, size_t aFirst, size_t aLast, const QString& aFileName);

private:
  class Private;
  std::unique_ptr<Private> d;
};
