#pragma once

#include "ParvexTechExport.h"

#include <QString>
#include <stdexcept>

// Run-time errors carry their numeric code in their text: the decimal code, one blank, then the
// message. That keeps the code across any layer that only passes std::exception on, and lets the
// UI take it apart again for display (PtExtractException).

// Builds "code message" as UTF-8 and throws E constructed from it.
template <class E> [[noreturn]] void PtThrow(unsigned int aCode, const QString& aText)
{
  throw E((QString::number(aCode) + QLatin1Char(' ') + aText).toUtf8().toStdString());
}

// Splits an exception's text into code and message. A text that does not start with a decimal
// code (an exception from elsewhere) gives code 0 and the whole text. Either pointer may be null.
PT_EXPORT void PtExtractException(const std::exception& aException, unsigned int* aCode, QString* aText);

// A caller passed a value the callee cannot take. The code is the site: a small number that tells
// the call sites of one function apart.
class PT_EXPORT PtInvalidArgumentException : public std::invalid_argument
{
public:
  using std::invalid_argument::invalid_argument;
};

// An operation the object does not support (for example a typed accessor of the wrong kind).
class PT_EXPORT PtLogicException : public std::logic_error
{
public:
  using std::logic_error::logic_error;
};

// A document or record file that is not what it claims to be.
class PT_EXPORT PtFileFormatException : public std::runtime_error
{
public:
  using std::runtime_error::runtime_error;
};

// Reports a bad argument: its name, its value as text, and the call site.
[[noreturn]] PT_EXPORT void PtInvalidArgument(const QString& aName, const QString& aValue, int aSite);

// Reports an unsupported operation, numbered by the caller.
[[noreturn]] PT_EXPORT void PtLogicError(int aCode);

// Reports a malformed file. Known codes get a message that says what is wrong.
[[noreturn]] PT_EXPORT void PtFileFormatError(int aCode);

// The message PtFileFormatError uses for a code; exposed so the document layer can add detail.
PT_EXPORT QString PtFileFormatMessage(int aCode);
