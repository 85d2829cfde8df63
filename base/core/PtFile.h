#pragma once

#include "ParvexTechExport.h"
#include "PtTypes.h"

#include <QFile>

// A QFile whose Read either delivers every byte asked for or throws: readers of binary files
// then never act on a half-filled buffer. The error text is the file's own, with its name.
class PT_EXPORT PtFile : public QFile
{
  Q_OBJECT

public:
  explicit PtFile(const QString& aName, QObject* aParent = nullptr);

  // Reads exactly aSize bytes. A short read throws std::runtime_error with the file's error code
  // (or QFileDevice::ReadError at the end of the file) and a message naming the file.
  void Read(void* aBuffer, qint64 aSize);

  // Opens or throws std::runtime_error with the file's error code and text.
  void OpenOrThrow(QIODevice::OpenMode aMode);
};
