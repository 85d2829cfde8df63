#pragma once

#include <QCommandLineParser>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <memory>
#include <stdexcept>
#include <vector>

class PxControlConnection;
class PxProperty;
class PxSimSensor;
class QJsonObject;

// Shared pieces of parvex-cli: exit codes, the per-verb option parser, output, and the session
// with one connected sensor. Every verb reaches the device through the same library classes as
// the application, so the command line and the window behave alike.
namespace PxCli {
// Exit codes, the same for every verb (docs/parvex-cli.md).
enum ExitCode : int {
  EXIT_OK = 0,
  EXIT_FAILED = 1,      // understood, but refused or failed: device answer, file error, read-only value
  EXIT_USAGE = 2,       // the command line cannot be understood
  EXIT_UNREACHABLE = 3, // the device does not answer, or the link was lost
};

// An error that ends the verb with its exit code; main prints the message on standard error.
class Error : public std::runtime_error
{
public:
  Error(int aExitCode, const QString& aMessage)
      : std::runtime_error(aMessage.toStdString())
      , mExitCode(aExitCode)
  {
  }
  int ExitCode() const { return mExitCode; }

private:
  int mExitCode;
};

[[noreturn]] void Usage(const QString& aMessage);
[[noreturn]] void Fail(const QString& aMessage);

QString Tr(const char* aText);

// One verb of the program.
struct Verb
{
  const char* mName;
  const char* mSummary;
  int (*mRun)(const QStringList& aArguments);
};
const std::vector<Verb>& Verbs();

// QCommandLineParser for one verb, with the options most verbs share. Parse returns false when
// --help was given and printed; unknown options and missing arguments throw a usage error.
class Parser
{
public:
  Parser(const QString& aVerb, const QString& aDescription);

  void AddConnect();
  void AddJson();
  void AddPositional(const QString& aName, const QString& aDescription, const QString& aSyntax);
  void AddOption(const QCommandLineOption& aOption) { mParser.addOption(aOption); }

  // aArguments starts with the verb itself. aMinimum and aMaximum bound the positional arguments.
  bool Parse(const QStringList& aArguments, int aMinimum, int aMaximum);

  QCommandLineParser& Qt() { return mParser; }
  QStringList Positional() const;
  bool Json() const { return mJson && mParser.isSet(*mJson); }
  QString Address() const;
  int TimeoutMs() const;
  // An option's value as a positive number; a usage error names the option otherwise.
  double Number(const QCommandLineOption& aOption, double aMinimum) const;

private:
  QString mVerb;
  QCommandLineParser mParser;
  QStringList mNegatives; // negative numbers, kept from the parser
  std::unique_ptr<QCommandLineOption> mConnect;
  std::unique_ptr<QCommandLineOption> mTimeout;
  std::unique_ptr<QCommandLineOption> mJson;
};

// Output: results on standard output, progress and errors on standard error.
void Print(const QString& aText);
void PrintJson(const QJsonValue& aValue);
// A progress line that rewrites itself on a terminal and is printed at most once a second
// otherwise; Done ends it.
class Progress
{
public:
  explicit Progress(bool aEnabled);
  void Show(const QString& aText, bool aForce = false);
  void Done();

private:
  bool mEnabled;
  bool mTerminal;
  bool mShown = false;
  qint64 mLast = -1;
  int mWidth = 0;
};

// A connected sensor, made as the application's connection dialog makes it: the transport named
// by the address, then the device of the type the driver registered, initialised.
class Session
{
public:
  // "sim", "sim:STATEDIR" or "tcp://HOST[:PORT]". Throws a usage error on a malformed address and
  // EXIT_UNREACHABLE when the device does not answer.
  Session(const QString& aAddress, int aTimeoutMs);
  ~Session();

  PxSimSensor& Sensor() { return *mSensor; }
  PxControlConnection& Link() { return *mLink; }
  const QString& Address() const { return mAddress; }

private:
  QString mAddress;
  std::unique_ptr<PxControlConnection> mLink;
  std::unique_ptr<PxSimSensor> mSensor;
};

// Properties as the command line names and shows them.
// A short name for scripts: "Light source power (%):" is "light-source-power".
QString Key(const PxProperty& aProperty);
// Every property, sorted by id.
std::vector<PxProperty*> SortedProperties(const PxSimSensor& aSensor);
// By key, name (with or without its colon, any case) or id (decimal or 0x hex). A usage error
// when none or several match.
PxProperty& FindProperty(const PxSimSensor& aSensor, const QString& aName);
QString ValueText(const PxProperty& aProperty, size_t aIndex);
QString ValuesText(const PxProperty& aProperty);
QString Unit(const PxProperty& aProperty);
bool Modified(const PxProperty& aProperty);
QJsonObject PropertyJson(const PxProperty& aProperty);
// Sets value aIndex (all values when aIndex is all-ones) from the user's text, as the editing
// widgets would: checked against the property's kind, limits and editability.
void SetFromText(PxProperty& aProperty, size_t aIndex, const QString& aText);

QString FormatBytes(qint64 aBytes);
} // namespace PxCli
