#include "PtFile.h"

#include "PtException.h"

#include <QCoreApplication>

PtFile::PtFile(const QString& aName, QObject* aParent)
  : QFile(aName, aParent)
{
}

void PtFile::Read(void* aBuffer, qint64 aSize)
{
  const qint64 lRead = read(static_cast<char*>(aBuffer), aSize);
  if (lRead == aSize) {
    return;
  }
  if (lRead < 0 || error() != QFileDevice::NoError) {
    PtThrow<std::runtime_error>(static_cast<unsigned int>(error()),
                                QCoreApplication::translate("PtFile", "Cannot read %1: %2").arg(fileName(), errorString()));
  }
  PtThrow<std::runtime_error>(static_cast<unsigned int>(QFileDevice::ReadError),
                              QCoreApplication::translate("PtFile", "Cannot read %1: the file ends early.").arg(fileName()));
}

void PtFile::OpenOrThrow(QIODevice::OpenMode aMode)
{
  if (!open(aMode)) {
    PtThrow<std::runtime_error>(static_cast<unsigned int>(error()),
                                QCoreApplication::translate("PtFile", "Cannot open %1: %2").arg(fileName(), errorString()));
  }
}
