#include "PxDevice.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PtTime.h"
#include "PxCommand.h"
#include "PxConnection.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#if defined(Q_OS_WIN)
#include <windows.h>
#elif defined(Q_OS_UNIX)
#include <fcntl.h>
#include <unistd.h>
#endif

Q_LOGGING_CATEGORY(lcModel, "parvex.model")

namespace {
struct TypeEntry
{
  PtU16 mType = 0;
  QString mName;
  PxDevice::Factory mFactory = nullptr;
};

// Filled by the drivers while they load; never emptied.
std::vector<TypeEntry>& Types()
{
  static std::vector<TypeEntry> sTypes;
  return sTypes;
}

const TypeEntry* FindType(PtU16 aType)
{
  for (const TypeEntry& lEntry : Types()) {
    if (lEntry.mType == aType) {
      return &lEntry;
    }
  }
  return nullptr;
}

// Header strings are UTF-8 bytes counted in UTF-16 code units, as files have always had them: a
// text beyond 7-bit ASCII is stored cut short by its surplus bytes. A UTF-8 text is never shorter
// in bytes than in code units, so the count never runs past the data.
void AddText(PtDocumentWriter& aWriter, PtU32 aId, const QString& aText)
{
  const QByteArray lUtf8 = aText.toUtf8();
  aWriter.AddElement(aId, lUtf8.constData(), 1, static_cast<PtU32>(aText.length()), 1);
}

// Reads the header section, which must be the next item of aReader. Fields are only handed out
// once the whole section has been read, so a damaged header leaves aHeader as it was.
void ReadHeader(PtDocumentReader& aReader, PxDevice::FileHeader& aHeader)
{
  if (!aReader.Advance() || !aReader.IsSection() || aReader.Id() != PxDevice::SECTION_HEADER) {
    return;
  }
  PxDevice::FileHeader lHeader;
  while (aReader.Advance()) {
    if (!aReader.IsElement()) {
      aReader.SkipCurrentSection();
      continue;
    }
    switch (aReader.Id()) {
    case PxDevice::ELEMENT_OLD_DATE: {
      PtU64 lFiletime = 0;
      aReader.GetElement(&lFiletime, 8, 1, 8);
      lHeader.mDate = PtFromFiletime(lFiletime);
      break;
    }
    case PxDevice::ELEMENT_DATE: {
      Pt64 lValue = 0;
      aReader.GetElement(&lValue, 8, 1, 8);
      lHeader.mDate = PtFromPersistence(lValue);
      break;
    }
    case PxDevice::ELEMENT_OLD_NAME:
    case PxDevice::ELEMENT_NAME:
      aReader.GetElement(lHeader.mName);
      break;
    case PxDevice::ELEMENT_OLD_COMMENT:
    case PxDevice::ELEMENT_COMMENT:
      aReader.GetElement(lHeader.mComment);
      break;
    case PxDevice::ELEMENT_OLD_SERIAL_NUMBER:
    case PxDevice::ELEMENT_SERIAL_NUMBER:
      aReader.GetElement(lHeader.mSerialNumber);
      break;
    default:
      break; // written by a later version
    }
  }
  aHeader = lHeader;
}

// Whether the reader stands on a main section it has not entered yet. PreLoadFile leaves it so
// when a file has no header; the loaders then take that section instead of stepping past it.
bool StandsOnMainSection(const PtDocumentReader& aReader)
{
  return aReader.IsSection() && aReader.Depth() == 0;
}

// The main section that the next load will read: the one the reader stands on, or the next.
// PT_ALL when the reader is inside a section, where the loaders find nothing to load.
size_t NextMainSection(const PtDocumentReader& aReader)
{
  if (aReader.Depth() != 0) {
    return PT_ALL;
  }
  const size_t lCurrent = aReader.CurrentMainSection();
  if (StandsOnMainSection(aReader)) {
    return lCurrent;
  }
  return lCurrent == PT_ALL ? 0 : lCurrent + 1;
}

// The bytes that the property's ReadFromFile takes from an element of aCount items of aUnitSize
// bytes. The reader refuses to give more than the element holds; finding that out in the middle
// of a load would leave the properties read before it changed, so the check is made up front. It
// follows the reads of PxProperty::ReadFromFile and PxTextProperty::ReadFromFile.
PtU64 BytesRead(const PxProperty& aProperty, PtU32 aCount, PtU32 aUnitSize)
{
  if (const auto* lText = qobject_cast<const PxTextProperty*>(&aProperty)) {
    const PtU64 lMaxLength = lText->MaxLength();
    if (lText->Type() == PxTextProperty::TYPE_ASCII) {
      return aCount <= lMaxLength && aUnitSize == 1 ? aCount : lMaxLength;
    }
    if (aUnitSize == 1) {
      return aCount;
    }
    return aUnitSize == 2 ? lMaxLength / 2 * 2 : 0;
  }
  return PtU64(aProperty.UnitSize()) * aCount;
}

[[noreturn]] void FileError(unsigned int aCode, const QString& aText)
{
  PtThrow<PtFileFormatException>(aCode, aText);
}

// Flushes a finished file to the disk before it replaces the previous one: after a power cut the
// name then holds either the old or the new document, never an empty file.
void SyncFile(const QString& aFileName)
{
#if defined(Q_OS_UNIX)
  const int lFile = ::open(QFile::encodeName(aFileName).constData(), O_RDONLY | O_CLOEXEC);
  if (lFile >= 0) {
    ::fsync(lFile);
    ::close(lFile);
  }
#else
  Q_UNUSED(aFileName);
#endif
}

// Replaces aTarget by aSource in one step (QFile::rename refuses an existing target).
void ReplaceFile(const QString& aSource, const QString& aTarget)
{
#if defined(Q_OS_WIN)
  const bool lDone = ::MoveFileExW(reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(aSource).utf16()),
                                   reinterpret_cast<const wchar_t*>(QDir::toNativeSeparators(aTarget).utf16()),
                                   MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
  const unsigned int lError = lDone ? 0 : static_cast<unsigned int>(::GetLastError());
  const QString lReason = PxDevice::tr("system error %1").arg(lError);
#else
  const bool lDone = std::rename(QFile::encodeName(aSource).constData(), QFile::encodeName(aTarget).constData()) == 0;
  const unsigned int lError = lDone ? 0 : static_cast<unsigned int>(errno);
  const QString lReason = QString::fromLocal8Bit(std::strerror(static_cast<int>(lError)));
#endif
  if (!lDone) {
    PtThrow<std::runtime_error>(lError, PxDevice::tr("Cannot write %1: %2").arg(aTarget, lReason));
  }
#if defined(Q_OS_UNIX)
  // The rename itself lives in the directory.
  SyncFile(QFileInfo(aTarget).absolutePath());
#endif
}
} // namespace

PxDevice::PxDevice(PxConnection* aConnection)
    : mConnection(aConnection)
{
  // A CRC uses all 32 bits; stored as its bit pattern it reads negative, which the default limits
  // would refuse.
  mSoftwareCrc.SetLimitsNotChecked(true);
  AddProperty(&mFpgaVersion);
  AddProperty(&mSoftwareVersion);
  AddProperty(&mSoftwareCrc);
  AddProperty(&mSoftwarePartNumber);
  AddProperty(&mDeviceName);
  AddProperty(&mProductType);
}

PxDevice::~PxDevice() = default;

void PxDevice::RegisterType(PtU16 aType, const QString& aName, Factory aFactory)
{
  PT_ASSERT(aFactory);
  Types().push_back({aType, aName, aFactory});
}

PxDevice* PxDevice::Create(PtU16 aType, PxConnection* aConnection)
{
  const TypeEntry* lEntry = FindType(aType);
  return lEntry ? lEntry->mFactory(aConnection) : nullptr;
}

QString PxDevice::TypeToName(PtU16 aType)
{
  const TypeEntry* lEntry = FindType(aType);
  return lEntry ? lEntry->mName : QStringLiteral("??");
}

size_t PxDevice::RegisteredTypeCount()
{
  return Types().size();
}

PtU16 PxDevice::RegisteredType(size_t aIndex)
{
  PT_ASSERT(aIndex < Types().size());
  return Types()[aIndex].mType;
}

QString PxDevice::RegisteredName(size_t aIndex)
{
  PT_ASSERT(aIndex < Types().size());
  return Types()[aIndex].mName;
}

bool PxDevice::CanModifyConfiguration() const
{
  return IsLive();
}

void PxDevice::ExecuteCommand(PtU32 aId)
{
  PtInvalidArgument(QStringLiteral("aId"), QString::number(aId), 17);
}

void PxDevice::AddProperty(PxProperty* aProperty)
{
  PT_ASSERT(aProperty);
  mProperties.insert(aProperty->Id(), aProperty);
  mPropertiesByDeviceId.insert(aProperty->DeviceId(), aProperty);
}

void PxDevice::AddCommand(PxCommand* aCommand)
{
  PT_ASSERT(aCommand);
  mCommands.insert(aCommand->Id(), aCommand);
}

PxProperty* PxDevice::FindProperty(PtU32 aId) const
{
  return mProperties.value(aId, nullptr);
}

PxProperty* PxDevice::FindPropertyByDeviceId(PtU16 aDeviceId) const
{
  return mPropertiesByDeviceId.value(aDeviceId, nullptr);
}

PxCommand* PxDevice::FindCommand(PtU32 aId) const
{
  return mCommands.value(aId, nullptr);
}

PxProperty& PxDevice::Property(PtU32 aId) const
{
  PxProperty* lProperty = FindProperty(aId);
  if (!lProperty) {
    throw std::out_of_range("PxDevice: no property " + std::to_string(aId));
  }
  return *lProperty;
}

std::vector<PxProperty*> PxDevice::GetPropertiesByCategory(PtU32 aCategory) const
{
  std::vector<PxProperty*> lResult;
  for (PxProperty* lProperty : mProperties) {
    if (lProperty->Category() == aCategory) {
      lResult.push_back(lProperty);
    }
  }
  return lResult;
}

bool PxDevice::PropertyModified() const
{
  for (const PxProperty* lProperty : mProperties) {
    // Properties not exchanged with the device (id 0) have nothing to apply.
    if ((lProperty->Flags() & F_EDITABLE) != 0 && lProperty->DeviceId() != 0 &&
        lProperty->Values() != lProperty->Backup()) {
      return true;
    }
  }
  return false;
}

void PxDevice::RestoreProperties()
{
  for (PxProperty* lProperty : mProperties) {
    lProperty->Restore();
  }
}

void PxDevice::UpdateEditables()
{
  const bool lEditable = CanModifyConfiguration();
  for (PxProperty* lProperty : mProperties) {
    lProperty->SetEditable(lEditable);
  }
}

PxConnection* PxDevice::Connection() const
{
  return mConnection;
}

bool PxDevice::IsLive() const
{
  return mConnection && mConnection->Connected();
}

void PxDevice::Disconnect()
{
  if (mConnection) {
    mConnection->Disconnect();
  }
}

QString PxDevice::SerialNumber() const
{
  const std::vector<PtByte>& lBytes = Property(ID_SERIAL_NUMBER).Values();
  const auto lEnd = std::find(lBytes.begin(), lBytes.end(), PtByte(0));
  return QString::fromLocal8Bit(reinterpret_cast<const char*>(lBytes.data()), static_cast<int>(lEnd - lBytes.begin()));
}

void PxDevice::SetFpgaVersion(PtU16 aVersion)
{
  mFpgaVersion.SetCount(1);
  mFpgaVersion.SetValue(0, aVersion);
}

void PxDevice::SetSoftwareVersion(PtU16 aVersion)
{
  mSoftwareVersion.SetCount(1);
  mSoftwareVersion.SetValue(0, aVersion);
}

void PxDevice::SetSoftwareCRC(PtU32 aCrc)
{
  mSoftwareCrc.SetCount(1);
  mSoftwareCrc.SetValue(0, static_cast<int>(aCrc));
}

void PxDevice::SetProductType(PtU16 aType)
{
  mProductType.SetCount(1);
  mProductType.SetValue(0, aType);
}

void PxDevice::SetSoftwarePartNumber(const char* aText, size_t aLength)
{
  mSoftwarePartNumber.SetCount(1);
  mSoftwarePartNumber.SetValue(aText, aLength);
}

void PxDevice::WriteHeader(PtDocumentWriter& aWriter, const QString& aComment, const QString& aSerialNumber) const
{
  aWriter.StartSection(SECTION_HEADER);
  const Pt64 lDate = PtToPersistence(QDateTime::currentDateTime());
  aWriter.AddElement(ELEMENT_DATE, &lDate, 8, 1, 8);
  AddText(aWriter, ELEMENT_NAME, mDeviceName.TextValue(0));
  AddText(aWriter, ELEMENT_COMMENT, aComment);
  AddText(aWriter, ELEMENT_SERIAL_NUMBER, aSerialNumber);
  aWriter.EndSection();
}

void PxDevice::WriteReplacing(const QString& aFileName, PtU32 aDocumentType,
                              const std::function<void(PtDocumentWriter&)>& aContent)
{
  // A link is followed, as editors do, so that the file it names is replaced and the link kept.
  const QFileInfo lGiven(aFileName);
  const QFileInfo lTarget(lGiven.isSymLink() ? lGiven.symLinkTarget() : lGiven.absoluteFilePath());
  // Beside the target, so that the rename stays on one file system and is atomic.
  const QString lTemporary = lTarget.absolutePath() + QStringLiteral("/.") + lTarget.fileName() + QLatin1Char('.') +
                             QString::number(QRandomGenerator::global()->generate64(), 36) + QStringLiteral(".part");
  try {
    {
      PtDocumentWriter lWriter(lTemporary, aDocumentType);
      aContent(lWriter);
      lWriter.EndLastSection();
    }
    SyncFile(lTemporary);
    if (lTarget.exists()) {
      QFile::setPermissions(lTemporary, lTarget.permissions());
    }
    ReplaceFile(lTemporary, lTarget.absoluteFilePath());
  } catch (...) {
    QFile::remove(lTemporary);
    throw;
  }
}

void PxDevice::SaveConfiguration(const QString& aFileName, const QString& aComment)
{
  // Everything that may fail before writing fails before the file is touched.
  const QString lSerialNumber = SerialNumber();
  const PtU32 lType = ConfigurationDocumentType(aFileName, aComment);
  WriteReplacing(aFileName, lType, [&](PtDocumentWriter& aWriter) {
    WriteHeader(aWriter, aComment, lSerialNumber);
    aWriter.StartSection(SECTION_PROPERTIES);
    for (PxProperty* lProperty : mProperties) {
      // State values belong to the moment, not to a configuration, whatever their F_SAVE.
      if (lProperty->Category() != CAT_STATE) {
        lProperty->WriteToFile(aWriter);
      }
    }
    aWriter.EndSection();
  });
}

void PxDevice::SaveCalibration(const QString& aFileName, const QString& aComment)
{
  const QString lSerialNumber = SerialNumber();
  const PtU32 lType = CalibrationDocumentType(aFileName, aComment);
  WriteReplacing(aFileName, lType, [&](PtDocumentWriter& aWriter) {
    WriteHeader(aWriter, aComment, lSerialNumber);
    aWriter.StartSection(SECTION_PROPERTIES);
    const std::pair<PtU32, PtU32> lParts[] = {{SECTION_CALIBRATION, CAT_CALIBRATION},
                                              {SECTION_USER_CALIBRATION, CAT_USER_CALIBRATION}};
    for (const auto& lPart : lParts) {
      aWriter.StartSection(lPart.first);
      for (PxProperty* lProperty : GetPropertiesByCategory(lPart.second)) {
        lProperty->WriteToFile(aWriter);
      }
      aWriter.EndSection();
    }
    aWriter.EndSection();
  });
}

void PxDevice::SaveProperties(PtDocumentWriter& aWriter)
{
  for (PxProperty* lProperty : mProperties) {
    lProperty->WriteToFile(aWriter);
  }
}

void PxDevice::PreLoadFile(PtDocumentReader& aReader, FileHeader& aHeader)
{
  ReadHeader(aReader, aHeader);
}

void PxDevice::CheckDocument(const PtDocumentReader& aReader, bool aCalibration, size_t aLoadedSection) const
{
  // A second cursor over the same file, so that the caller's stays where it is.
  PtDocumentReader lCheck(aReader.FileName());
  const QString& lFile = aReader.FileName();
  if (!lCheck.WasClosed()) {
    // The reader would read what is there, but half a configuration is not one.
    FileError(FILE_ERROR_INCOMPLETE, tr("The file %1 is incomplete: it was not written to the end.").arg(lFile));
  }
  lCheck.BuildMainSectionList();

  FileHeader lHeader;
  ReadHeader(lCheck, lHeader);
  const PtU32 lExpected = aCalibration ? CalibrationDocumentType(lFile, lHeader.mComment)
                                       : ConfigurationDocumentType(lFile, lHeader.mComment);
  if (lCheck.DocumentType() != lExpected) {
    FileError(FILE_ERROR_WRONG_DEVICE,
              aCalibration ? tr("The file %1 is not a calibration file of this %2.").arg(lFile, Name())
                           : tr("The file %1 is not a configuration file of this %2.").arg(lFile, Name()));
  }

  // Walks every item of the document: the reader checks each record against the section that
  // holds it. Elements of the sections that the load will read must also suit their properties.
  enum class Walk { SKIP, PROPERTIES, CALIBRATION };
  std::function<void(Walk)> lWalkSection = [&](Walk aWalk) {
    while (lCheck.Advance()) {
      if (lCheck.IsSection()) {
        const bool lPart = aWalk == Walk::CALIBRATION &&
                           (lCheck.Id() == SECTION_CALIBRATION || lCheck.Id() == SECTION_USER_CALIBRATION);
        lWalkSection(lPart ? Walk::PROPERTIES : Walk::SKIP);
        continue;
      }
      if (aWalk != Walk::PROPERTIES) {
        continue;
      }
      const PxProperty* lProperty = FindProperty(lCheck.Id());
      if (lProperty &&
          BytesRead(*lProperty, lCheck.Count(), lCheck.UnitSize()) > PtU64(lCheck.Count()) * lCheck.UnitSize()) {
        FileError(FILE_ERROR_ELEMENT,
                  tr("The file %1 holds a value of property %2 that does not suit it (%3 values of %4 bytes).")
                      .arg(lFile)
                      .arg(lCheck.Id())
                      .arg(lCheck.Count())
                      .arg(lCheck.UnitSize()));
      }
    }
  };
  lCheck.MoveTo(0);
  for (size_t lMain = 0; lCheck.Advance(); ++lMain) {
    const bool lLoaded = lMain == aLoadedSection && lCheck.Id() == SECTION_PROPERTIES;
    lWalkSection(!lLoaded ? Walk::SKIP : aCalibration ? Walk::CALIBRATION : Walk::PROPERTIES);
  }
}

void PxDevice::LoadConfiguration(PtDocumentReader& aReader)
{
  CheckDocument(aReader, false, NextMainSection(aReader));
  if (!StandsOnMainSection(aReader)) {
    aReader.Advance();
  }
  if (!StandsOnMainSection(aReader) || aReader.Id() != SECTION_PROPERTIES) {
    qCInfo(lcModel) << aReader.FileName() << "has no properties section where expected; nothing loaded";
    return;
  }
  LoadProperties(aReader);
  WriteConfiguration();
  ApplyConfiguration();
}

void PxDevice::LoadCalibration(PtDocumentReader& aReader)
{
  CheckDocument(aReader, true, NextMainSection(aReader));
  if (!StandsOnMainSection(aReader)) {
    aReader.Advance();
  }
  if (!StandsOnMainSection(aReader) || aReader.Id() != SECTION_PROPERTIES) {
    qCInfo(lcModel) << aReader.FileName() << "has no calibration where expected; nothing loaded";
    return;
  }
  while (aReader.Advance()) {
    if (aReader.IsSection() && (aReader.Id() == SECTION_CALIBRATION || aReader.Id() == SECTION_USER_CALIBRATION)) {
      LoadProperties(aReader);
    } else {
      aReader.SkipCurrentSection();
    }
  }
}

void PxDevice::LoadProperties(PtDocumentReader& aReader)
{
  while (aReader.Advance()) {
    if (aReader.IsSection()) {
      aReader.SkipCurrentSection();
      continue;
    }
    if (PxProperty* lProperty = FindProperty(aReader.Id())) {
      lProperty->ReadFromFile(aReader);
    }
  }
  UpdateEditables();
}
