#include "PxCli.h"

#include "PtException.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxInProcessConnection.h"
#include "PxIntegerProperty.h"
#include "PxSimSensor.h"
#include "PxTcpConnection.h"
#include "PxTextProperty.h"
#include "PxUnits.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <cstdio>
#include <limits>
#include <unistd.h>

namespace PxCli {

void Usage(const QString& aMessage)
{
  throw Error(EXIT_USAGE, aMessage);
}

void Fail(const QString& aMessage)
{
  throw Error(EXIT_FAILED, aMessage);
}

QString Tr(const char* aText)
{
  return QCoreApplication::translate("parvex-cli", aText);
}

// ---- Parser ------------------------------------------------------------------------------------

Parser::Parser(const QString& aVerb, const QString& aDescription)
    : mVerb(aVerb)
{
  mParser.setApplicationDescription(aDescription);
  mParser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
  mParser.addHelpOption();
}

void Parser::AddConnect()
{
  // The built-in simulated sensor unless the environment names another device, as the
  // application starts on it.
  QString lDefault = qEnvironmentVariable("PARVEX_CONNECT");
  if (lDefault.isEmpty()) {
    lDefault = QStringLiteral("sim");
  }
  mConnect = std::make_unique<QCommandLineOption>(
      QStringList{QStringLiteral("c"), QStringLiteral("connect")},
      Tr("The device: sim (the simulated sensor in this process; sim:DIR keeps its saved configuration in "
         "DIR) or tcp://HOST[:PORT] (default port %1). Default: $PARVEX_CONNECT, else sim.")
          .arg(PxTcpConnection::DEFAULT_PORT),
      QStringLiteral("address"), lDefault);
  mTimeout = std::make_unique<QCommandLineOption>(
      QStringLiteral("timeout"), Tr("Milliseconds to wait for each answer of the device (default %1).").arg(2000),
      QStringLiteral("ms"), QStringLiteral("2000"));
  mParser.addOption(*mConnect);
  mParser.addOption(*mTimeout);
}

void Parser::AddJson()
{
  mJson = std::make_unique<QCommandLineOption>(QStringLiteral("json"), Tr("Print the result as JSON."));
  mParser.addOption(*mJson);
}

void Parser::AddPositional(const QString& aName, const QString& aDescription, const QString& aSyntax)
{
  mParser.addPositionalArgument(aName, aDescription, aSyntax);
}

bool Parser::Parse(const QStringList& aArguments, int aMinimum, int aMaximum)
{
  QStringList lArguments = aArguments;
  // The parser takes the first word as the program: name the verb in its messages and help.
  lArguments[0] = QStringLiteral("parvex-cli ") + mVerb;
  // No option is a number: "config set smoothing -4" means the value, not an option "-4".
  static const QRegularExpression sNegative(QStringLiteral("^-\\.?\\d"));
  for (int i = 1; i < lArguments.size() && lArguments.at(i) != QLatin1String("--"); ++i) {
    if (sNegative.match(lArguments.at(i)).hasMatch()) {
      mNegatives << lArguments.at(i);
      lArguments[i] = QStringLiteral("\x01%1").arg(mNegatives.size() - 1);
    }
  }
  if (!mParser.parse(lArguments)) {
    Usage(mParser.errorText());
  }
  if (mParser.isSet(QStringLiteral("help"))) {
    Print(mParser.helpText().replace(QCoreApplication::applicationFilePath(), lArguments[0]).trimmed());
    return false;
  }
  const int lCount = static_cast<int>(Positional().size());
  if (lCount < aMinimum) {
    Usage(Tr("missing argument; see parvex-cli %1 --help").arg(mVerb));
  }
  if (lCount > aMaximum) {
    Usage(Tr("unexpected argument \"%1\"; see parvex-cli %2 --help").arg(Positional().at(aMaximum), mVerb));
  }
  return true;
}

QStringList Parser::Positional() const
{
  QStringList lArguments = mParser.positionalArguments();
  for (QString& lArgument : lArguments) {
    if (lArgument.startsWith(QLatin1Char('\x01'))) {
      lArgument = mNegatives.value(lArgument.mid(1).toInt());
    }
  }
  return lArguments;
}

QString Parser::Address() const
{
  return mParser.value(*mConnect);
}

int Parser::TimeoutMs() const
{
  return static_cast<int>(Number(*mTimeout, 1));
}

double Parser::Number(const QCommandLineOption& aOption, double aMinimum) const
{
  bool lOk = false;
  const QString lText = mParser.value(aOption);
  const double lValue = lText.toDouble(&lOk);
  if (!lOk || !(lValue >= aMinimum) || lValue > std::numeric_limits<int>::max()) {
    Usage(Tr("--%1 needs a number of at least %2, not \"%3\"").arg(aOption.names().last()).arg(aMinimum).arg(lText));
  }
  return lValue;
}

// ---- Output ------------------------------------------------------------------------------------

void Print(const QString& aText)
{
  const QByteArray lBytes = aText.toUtf8() + '\n';
  std::fwrite(lBytes.constData(), 1, static_cast<size_t>(lBytes.size()), stdout);
  std::fflush(stdout);
}

void PrintJson(const QJsonValue& aValue)
{
  const QByteArray lBytes = aValue.isArray() ? QJsonDocument(aValue.toArray()).toJson(QJsonDocument::Indented)
                                             : QJsonDocument(aValue.toObject()).toJson(QJsonDocument::Indented);
  std::fwrite(lBytes.constData(), 1, static_cast<size_t>(lBytes.size()), stdout);
  std::fflush(stdout);
}

Progress::Progress(bool aEnabled)
    : mEnabled(aEnabled)
    , mTerminal(::isatty(STDERR_FILENO) == 1)
{
}

void Progress::Show(const QString& aText, bool aForce)
{
  if (!mEnabled) {
    return;
  }
  const qint64 lNow = QDateTime::currentMSecsSinceEpoch();
  // A log file or a pipe gets one line a second, not one per frame.
  if (!mTerminal && !aForce && mLast >= 0 && lNow - mLast < 1000) {
    return;
  }
  mLast = lNow;
  QByteArray lLine = aText.toUtf8();
  if (mTerminal) {
    const int lLength = static_cast<int>(lLine.size());
    lLine = '\r' + lLine + QByteArray(std::max(0, mWidth - lLength), ' ');
    mWidth = lLength;
  } else {
    lLine += '\n';
  }
  std::fwrite(lLine.constData(), 1, static_cast<size_t>(lLine.size()), stderr);
  std::fflush(stderr);
  mShown = true;
}

void Progress::Done()
{
  if (mEnabled && mTerminal && mShown) {
    std::fputc('\n', stderr);
  }
  mShown = false;
}

QString FormatBytes(qint64 aBytes)
{
  if (aBytes < 1024) {
    return Tr("%1 B").arg(aBytes);
  }
  if (aBytes < 1024 * 1024) {
    return Tr("%1 KiB").arg(static_cast<double>(aBytes) / 1024.0, 0, 'f', 1);
  }
  return Tr("%1 MiB").arg(static_cast<double>(aBytes) / (1024.0 * 1024.0), 0, 'f', 1);
}

// ---- Session -----------------------------------------------------------------------------------

Session::Session(const QString& aAddress, int aTimeoutMs)
    : mAddress(aAddress)
{
  if (aAddress == QLatin1String("sim") || aAddress.startsWith(QLatin1String("sim:"))) {
    auto lLink = std::make_unique<PxInProcessConnection>(aAddress.mid(4));
    lLink->SetTimeout(aTimeoutMs);
    mLink = std::move(lLink);
  } else if (aAddress.startsWith(QLatin1String("tcp://"))) {
    const QUrl lUrl(aAddress, QUrl::StrictMode);
    if (!lUrl.isValid() || lUrl.host().isEmpty() || !lUrl.path().isEmpty() || lUrl.port() == 0) {
      Usage(Tr("malformed address \"%1\": expected tcp://HOST[:PORT]").arg(aAddress));
    }
    auto lLink =
        std::make_unique<PxTcpConnection>(lUrl.host(), static_cast<quint16>(lUrl.port(PxTcpConnection::DEFAULT_PORT)));
    lLink->SetTimeout(aTimeoutMs);
    if (!lLink->Connect()) {
      throw Error(EXIT_UNREACHABLE, Tr("cannot reach %1: %2").arg(aAddress, lLink->ErrorString()));
    }
    mLink = std::move(lLink);
  } else {
    Usage(Tr("unknown address \"%1\": expected sim, sim:DIR or tcp://HOST[:PORT]").arg(aAddress));
  }
  if (!mLink->Connected() && !mLink->Connect()) {
    throw Error(EXIT_UNREACHABLE, Tr("cannot reach %1").arg(aAddress));
  }
  // Through the registry, as the connection dialog does: a driver that registered another class
  // for the type would be the one used.
  PxDevice* lDevice = PxDevice::Create(PxSimSensor::TYPE, mLink.get());
  mSensor.reset(qobject_cast<PxSimSensor*>(lDevice));
  if (!mSensor) {
    delete lDevice;
    Fail(Tr("no driver for the device at %1").arg(aAddress));
  }
  mSensor->Initialize();
}

Session::~Session()
{
  // The sensor goes first: it still speaks through the link while it is torn down.
  mSensor.reset();
  if (mLink && mLink->Connected()) {
    mLink->Disconnect();
  }
}

// ---- Properties --------------------------------------------------------------------------------

QString Key(const PxProperty& aProperty)
{
  // The framework's own properties come without names of their own.
  static const QHash<PtU32, QString> sFramework{
      {PxDevice::ID_DEVICE_NAME, QStringLiteral("device-name")},
      {PxDevice::ID_SOFTWARE_PART_NUMBER, QStringLiteral("software-part-number")},
      {PxDevice::ID_SOFTWARE_VERSION, QStringLiteral("software-version")},
      {PxDevice::ID_SOFTWARE_CRC, QStringLiteral("software-crc")},
      {PxDevice::ID_FPGA_VERSION, QStringLiteral("fpga-version")},
      {PxDevice::ID_PRODUCT_TYPE, QStringLiteral("product-type")},
      {PxSensor::ID_LENGTH, QStringLiteral("range")},
      // The copy of the device's rate that the state display measures against.
      {PxSensor::ID_REFRESH_RATE, QStringLiteral("reference-refresh-rate")},
      {PxSensor::ID_FIELD_OF_VIEW, QStringLiteral("field-of-view")},
      {PxSensor::ID_CHANNEL_COUNT, QStringLiteral("channel-count")},
      {PxSensor::ID_ECHO_DISTANCE_SCALE, QStringLiteral("echo-distance-scale")},
      {PxSensor::ID_TRACE_AMPLITUDE_SCALE, QStringLiteral("trace-amplitude-scale")},
      {PxSensor::ID_ECHO_AMPLITUDE_SCALE, QStringLiteral("echo-amplitude-scale")},
      {PxSensor::ID_POINT_STEP, QStringLiteral("point-step")},
      {PxSensor::ID_ECHO_DISTANCE_OFFSET, QStringLiteral("echo-distance-offset")},
  };
  if (const auto lKnown = sFramework.constFind(aProperty.Id()); lKnown != sFramework.constEnd()) {
    return lKnown.value();
  }
  QString lKey = aProperty.Name().toLower();
  lKey.remove(QRegularExpression(QStringLiteral("\\([^)]*\\)")));
  lKey.replace(QRegularExpression(QStringLiteral("[^a-z0-9]+")), QStringLiteral("-"));
  while (lKey.startsWith(QLatin1Char('-'))) {
    lKey.remove(0, 1);
  }
  while (lKey.endsWith(QLatin1Char('-'))) {
    lKey.chop(1);
  }
  return lKey.isEmpty() ? QStringLiteral("id-%1").arg(aProperty.Id()) : lKey;
}

std::vector<PxProperty*> SortedProperties(const PxSimSensor& aSensor)
{
  std::vector<PxProperty*> lProperties(aSensor.Properties().begin(), aSensor.Properties().end());
  std::sort(lProperties.begin(), lProperties.end(),
            [](const PxProperty* a, const PxProperty* b) { return a->Id() < b->Id(); });
  return lProperties;
}

PxProperty& FindProperty(const PxSimSensor& aSensor, const QString& aName)
{
  bool lNumber = false;
  const PtU32 lId = aName.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? aName.mid(2).toUInt(&lNumber, 16)
                                                                               : aName.toUInt(&lNumber, 10);
  if (lNumber) {
    if (PxProperty* lProperty = aSensor.FindProperty(lId)) {
      return *lProperty;
    }
    Usage(Tr("no property with id %1; parvex-cli info lists them").arg(aName));
  }
  QString lName = aName.trimmed();
  if (lName.endsWith(QLatin1Char(':'))) {
    lName.chop(1);
  }
  std::vector<PxProperty*> lMatches;
  for (PxProperty* lProperty : SortedProperties(aSensor)) {
    QString lOwn = lProperty->Name();
    if (lOwn.endsWith(QLatin1Char(':'))) {
      lOwn.chop(1);
    }
    if (Key(*lProperty) == lName.toLower() || lOwn.compare(lName, Qt::CaseInsensitive) == 0) {
      lMatches.push_back(lProperty);
    }
  }
  // The framework keeps copies of some device values (the refresh rate the state display
  // measures against): the one the device itself exchanges is the one a user means.
  if (lMatches.size() > 1) {
    std::vector<PxProperty*> lExchanged;
    std::copy_if(lMatches.begin(), lMatches.end(), std::back_inserter(lExchanged),
                 [](const PxProperty* p) { return p->DeviceId() > 1; });
    if (lExchanged.size() == 1) {
      return *lExchanged.front();
    }
  }
  if (lMatches.empty()) {
    Usage(Tr("no property named \"%1\"; parvex-cli info lists them").arg(aName));
  }
  if (lMatches.size() > 1) {
    QStringList lIds;
    for (const PxProperty* lProperty : lMatches) {
      lIds << QString::number(lProperty->Id());
    }
    Usage(Tr("\"%1\" names several properties; use one of the ids %2").arg(aName, lIds.join(QStringLiteral(", "))));
  }
  return *lMatches.front();
}

QString ValueText(const PxProperty& aProperty, size_t aIndex)
{
  if (auto* lFloat = qobject_cast<const PxFloatProperty*>(&aProperty)) {
    // In the display unit, with the decimals the property is edited with; without fixed decimals
    // as many digits as a float holds.
    const float lShown = PxUnits::To(lFloat->UnitType(), lFloat->Value(aIndex));
    return lFloat->Decimals() == static_cast<PtU32>(-1)
               ? QString::number(lShown, 'g', 7)
               : QString::number(lShown, 'f', static_cast<int>(lFloat->Decimals()));
  }
  if (aProperty.Id() == PxDevice::ID_SOFTWARE_CRC) {
    return QStringLiteral("0x%1").arg(static_cast<PtU32>(aProperty.DoubleValue(aIndex)), 8, 16, QLatin1Char('0'));
  }
  if (auto* lBits = qobject_cast<const PxBitFieldProperty*>(&aProperty)) {
    return QStringLiteral("0x%1").arg(lBits->Value(aIndex), 4, 16, QLatin1Char('0'));
  }
  return aProperty.FormattedValue(aIndex);
}

QString ValuesText(const PxProperty& aProperty)
{
  QStringList lValues;
  for (size_t i = 0; i < aProperty.Count(); ++i) {
    lValues << ValueText(aProperty, i);
  }
  return lValues.join(QStringLiteral(","));
}

QString Unit(const PxProperty& aProperty)
{
  if (!qobject_cast<const PxFloatProperty*>(&aProperty)) {
    return QString();
  }
  if (aProperty.UnitType() != UT_NONE) {
    return PxUnits::ShortName(aProperty.UnitType());
  }
  // Fixed units are part of the display template: "%n %v Hz".
  const QString& lFormat = aProperty.Format();
  const int lValue = lFormat.indexOf(QLatin1String("%v"));
  if (lValue < 0) {
    return QString();
  }
  const QString lAfter = lFormat.mid(lValue + 2).trimmed();
  return lAfter.contains(QLatin1Char('%')) ? QString() : lAfter;
}

bool Modified(const PxProperty& aProperty)
{
  return aProperty.Values() != aProperty.Backup();
}

namespace {
QJsonValue JsonValue(const PxProperty& aProperty, size_t aIndex)
{
  if (auto* lBool = qobject_cast<const PxBoolProperty*>(&aProperty)) {
    return lBool->Value(aIndex);
  }
  if (qobject_cast<const PxTextProperty*>(&aProperty)) {
    return aProperty.TextValue(aIndex);
  }
  if (qobject_cast<const PxFloatProperty*>(&aProperty)) {
    return ValueText(aProperty, aIndex).toDouble();
  }
  return aProperty.DoubleValue(aIndex);
}

bool Editable(const PxProperty& aProperty)
{
  for (size_t i = 0; i < aProperty.Count(); ++i) {
    if (aProperty.Editable(i)) {
      return true;
    }
  }
  return false;
}
} // namespace

QJsonObject PropertyJson(const PxProperty& aProperty)
{
  QJsonObject lObject{
      {QStringLiteral("key"), Key(aProperty)},           {QStringLiteral("id"), static_cast<qint64>(aProperty.Id())},
      {QStringLiteral("name"), aProperty.Name()},        {QStringLiteral("unit"), Unit(aProperty)},
      {QStringLiteral("editable"), Editable(aProperty)}, {QStringLiteral("modified"), Modified(aProperty)}};
  if (aProperty.Count() == 1) {
    lObject.insert(QStringLiteral("value"), JsonValue(aProperty, 0));
    lObject.insert(QStringLiteral("text"), ValueText(aProperty, 0));
  } else {
    QJsonArray lValues;
    for (size_t i = 0; i < aProperty.Count(); ++i) {
      lValues.append(JsonValue(aProperty, i));
    }
    lObject.insert(QStringLiteral("value"), lValues);
    lObject.insert(QStringLiteral("text"), ValuesText(aProperty));
  }
  return lObject;
}

namespace {
void SetOne(PxProperty& aProperty, size_t aIndex, const QString& aText)
{
  const QString lText = aText.trimmed();
  auto lBad = [&](const QString& aExpected) { Usage(Tr("\"%1\" is not %2").arg(aText, aExpected)); };
  if (auto* lFloat = qobject_cast<PxFloatProperty*>(&aProperty)) {
    bool lOk = false;
    lText.toDouble(&lOk);
    if (!lOk) {
      lBad(Tr("a number"));
    }
    lFloat->SetTextValue(aIndex, lText);
  } else if (auto* lEnum = qobject_cast<PxEnumProperty*>(&aProperty)) {
    // The choice's text as shown ("x2"), or its value.
    QStringList lChoices;
    for (const PxEnumProperty::EnumValue& lChoice : lEnum->EnumValues()) {
      if (lChoice.mText.compare(lText, Qt::CaseInsensitive) == 0 || QString::number(lChoice.mValue) == lText) {
        lEnum->SetValue(aIndex, lChoice.mValue);
        return;
      }
      lChoices << lChoice.mText;
    }
    Fail(Tr("\"%1\" is not one of the choices: %2").arg(aText, lChoices.join(QStringLiteral(", "))));
  } else if (auto* lBool = qobject_cast<PxBoolProperty*>(&aProperty)) {
    static const QStringList sTrue{QStringLiteral("1"), QStringLiteral("true"), QStringLiteral("on"),
                                   QStringLiteral("yes")};
    static const QStringList sFalse{QStringLiteral("0"), QStringLiteral("false"), QStringLiteral("off"),
                                    QStringLiteral("no")};
    if (sTrue.contains(lText, Qt::CaseInsensitive)) {
      lBool->SetValue(aIndex, true);
    } else if (sFalse.contains(lText, Qt::CaseInsensitive)) {
      lBool->SetValue(aIndex, false);
    } else {
      lBad(Tr("true or false"));
    }
  } else if (auto* lBits = qobject_cast<PxBitFieldProperty*>(&aProperty)) {
    bool lOk = false;
    const PtU32 lValue =
        lText.startsWith(QLatin1String("0x"), Qt::CaseInsensitive) ? lText.mid(2).toUInt(&lOk, 16) : lText.toUInt(&lOk);
    if (!lOk) {
      lBad(Tr("a bit mask (decimal or 0x hex)"));
    }
    lBits->SetValue(aIndex, lValue);
  } else if (auto* lInteger = qobject_cast<PxIntegerProperty*>(&aProperty)) {
    bool lOk = false;
    const int lValue = lText.toInt(&lOk);
    if (!lOk) {
      lBad(Tr("a whole number"));
    }
    lInteger->SetValue(aIndex, lValue);
  } else if (auto* lTextProperty = qobject_cast<PxTextProperty*>(&aProperty)) {
    // The property takes a longer text as a programming error: refuse it here.
    const bool lAscii = lTextProperty->Type() == PxTextProperty::TYPE_ASCII;
    const int lBytes = lAscii ? static_cast<int>(aText.toLocal8Bit().size()) : static_cast<int>(aText.size() * 2);
    if (lBytes > static_cast<int>(lTextProperty->MaxLength())) {
      Fail(Tr("\"%1\" is longer than the %2 characters the device keeps")
               .arg(aText)
               .arg(lAscii ? lTextProperty->MaxLength() : lTextProperty->MaxLength() / 2));
    }
    lTextProperty->SetTextValue(aIndex, aText);
  } else {
    Fail(Tr("%1 cannot be set from the command line").arg(Key(aProperty)));
  }
}
} // namespace

void SetFromText(PxProperty& aProperty, size_t aIndex, const QString& aText)
{
  const bool lAll = aIndex == std::numeric_limits<size_t>::max();
  if (aProperty.Count() == 0 || (!lAll && aIndex >= aProperty.Count())) {
    Usage(Tr("%1 has %2 values; there is no value %3").arg(Key(aProperty)).arg(aProperty.Count()).arg(aIndex));
  }
  const size_t lFirst = lAll ? 0 : aIndex;
  const size_t lEnd = lAll ? aProperty.Count() : aIndex + 1;
  // A list gives one value each; a single value goes to every value asked for.
  QStringList lTexts{aText};
  if (lAll && aProperty.Count() > 1 && !qobject_cast<PxTextProperty*>(&aProperty)) {
    lTexts = aText.split(QLatin1Char(','));
    if (lTexts.size() != 1 && lTexts.size() != static_cast<int>(aProperty.Count())) {
      Usage(Tr("%1 has %2 values; give one value for all or %2 separated by commas")
                .arg(Key(aProperty))
                .arg(aProperty.Count()));
    }
  }
  for (size_t i = lFirst; i < lEnd; ++i) {
    if (!aProperty.Editable(i)) {
      Fail(Tr("%1 is read-only").arg(Key(aProperty)));
    }
  }
  for (size_t i = lFirst; i < lEnd; ++i) {
    const QString& lText = lTexts.size() == 1 ? lTexts.front() : lTexts.at(static_cast<int>(i));
    try {
      SetOne(aProperty, i, lText);
    } catch (const PtInvalidArgumentException&) {
      // The property refuses a value beyond its limits; say which limits.
      QString lRange;
      if (auto* lFloat = qobject_cast<PxFloatProperty*>(&aProperty)) {
        lRange = Tr(" (%1 to %2)")
                     .arg(PxUnits::To(lFloat->UnitType(), lFloat->MinValue()))
                     .arg(PxUnits::To(lFloat->UnitType(), lFloat->MaxValue()));
      } else if (auto* lInteger = qobject_cast<PxIntegerProperty*>(&aProperty)) {
        lRange = Tr(" (%1 to %2)").arg(lInteger->MinValue()).arg(lInteger->MaxValue());
      }
      Fail(Tr("%1 does not take %2%3").arg(Key(aProperty), lText, lRange));
    }
  }
}

} // namespace PxCli
