#include "PtException.h"

#include <QCoreApplication>

void PtExtractException(const std::exception& aException, unsigned int* aCode, QString* aText)
{
  const QString lWhat = QString::fromUtf8(aException.what());
  int lDigits = 0;
  while (lDigits < lWhat.size() && lWhat.at(lDigits).isDigit() && lDigits < 10) {
    ++lDigits;
  }
  bool lOk = false;
  unsigned int lCode = 0;
  if (lDigits > 0 && lDigits < lWhat.size() && lWhat.at(lDigits) == QLatin1Char(' ')) {
    lCode = lWhat.leftRef(lDigits).toUInt(&lOk);
  }
  if (!lOk) {
    lCode = 0;
  }
  if (aCode) {
    *aCode = lCode;
  }
  if (aText) {
    *aText = lOk ? lWhat.mid(lDigits + 1) : lWhat;
  }
}

void PtInvalidArgument(const QString& aName, const QString& aValue, int aSite)
{
  PtThrow<PtInvalidArgumentException>(
    static_cast<unsigned int>(aSite),
    QCoreApplication::translate("PtException", "Invalid value \"%1\" for %2 (site %3).").arg(aValue, aName).arg(aSite));
}

void PtLogicError(int aCode)
{
  PtThrow<PtLogicException>(
    static_cast<unsigned int>(aCode),
    QCoreApplication::translate("PtException", "Operation not supported by this object (logic error %1).").arg(aCode));
}

QString PtFileFormatMessage(int aCode)
{
  switch (aCode) {
  case 6:
    return QCoreApplication::translate("PtException", "The file has no header section; it is not a record file.");
  case 7:
    return QCoreApplication::translate("PtException", "A frame was expected in the file but something else was found.");
  case 9:
    return QCoreApplication::translate("PtException", "The file's header section is of an unknown kind.");
  case 20:
    return QCoreApplication::translate("PtException", "The file is not a Parvex document.");
  case 21:
    return QCoreApplication::translate("PtException", "The document is not of the expected kind.");
  case 22:
    return QCoreApplication::translate("PtException", "The document holds a damaged record.");
  case 23:
    return QCoreApplication::translate("PtException", "A record of the document runs past the section that holds it.");
  case 24:
    return QCoreApplication::translate("PtException", "The document's sections are nested too deeply.");
  case 25:
    return QCoreApplication::translate("PtException", "An element of the document is shorter than expected.");
  case 26:
    return QCoreApplication::translate("PtException", "The document was written by a newer version of the software.");
  case 27:
    return QCoreApplication::translate("PtException", "The document's index does not match its sections.");
  case 28:
    return QCoreApplication::translate("PtException", "The document holds a section where a value was expected.");
  default:
    return QCoreApplication::translate("PtException", "The file is damaged or not in the expected format (format error %1).").arg(aCode);
  }
}

void PtFileFormatError(int aCode)
{
  PtThrow<PtFileFormatException>(static_cast<unsigned int>(aCode), PtFileFormatMessage(aCode));
}
