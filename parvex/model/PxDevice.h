#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"
#include "PxIntegerProperty.h"
#include "PxTextProperty.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

class PtDocumentReader;
class PtDocumentWriter;
class PxCodeUpdateJob;
class PxCommand;
class PxConnection;
class PxProperty;

// The model of one connected device: its properties and commands, found by identifier, whether
// its configuration may be changed, whether the user has unapplied edits, and its configuration
// and calibration files. Concrete devices (the sensor, and the device types that drivers register)
// derive from it and implement the abstract operations, which are the exchanges with the hardware.
//
// A class-wide registry maps the 16-bit device type a connection reports to a name and a factory.
//
// Properties and commands are not owned by the maps: a concrete device keeps them as members or
// as QObject children of itself, so that they live exactly as long as the device.
class PX_EXPORT PxDevice : public QObject
{
  Q_OBJECT

public:
  using Factory = PxDevice* (*)(PxConnection* aConnection);

  // The header of a configuration or calibration file, as PreLoadFile reads it.
  struct FileHeader
  {
    QDateTime mDate;
    QString mName;
    QString mComment;
    QString mSerialNumber;
  };

  // Identifiers of the built-in properties, and of the serial number that every concrete device
  // adds (an 8-bit text property).
  enum : PtU32 {
    ID_DEVICE_NAME = 34,
    ID_SERIAL_NUMBER = 3840,
    ID_HARDWARE_PART_NUMBER = 4347, // text, for devices that report one
    ID_SOFTWARE_PART_NUMBER = 4348,
    ID_SOFTWARE_VERSION = 4349,
    ID_SOFTWARE_CRC = 4350,
    ID_FPGA_VERSION = 4351,
    ID_PRODUCT_TYPE = 2097154
  };

  // Sections and header elements of configuration and calibration files. Files written before the
  // date became a persistence value used 17 to 20 in the header; they are still read.
  enum : PtU32 {
    SECTION_HEADER = 1,
    SECTION_PROPERTIES = 2,
    SECTION_CALIBRATION = 259,
    SECTION_USER_CALIBRATION = 288,
    ELEMENT_OLD_DATE = 17, // a Windows file time
    ELEMENT_OLD_NAME = 18,
    ELEMENT_OLD_COMMENT = 19,
    ELEMENT_OLD_SERIAL_NUMBER = 20,
    ELEMENT_DATE = 21, // PtToPersistence
    ELEMENT_NAME = 22,
    ELEMENT_COMMENT = 23,
    ELEMENT_SERIAL_NUMBER = 24
  };

  // Codes of the file errors the device raises itself (the document layer uses 20 to 29).
  enum : unsigned int { FILE_ERROR_INCOMPLETE = 30, FILE_ERROR_WRONG_DEVICE = 31, FILE_ERROR_ELEMENT = 32 };

  explicit PxDevice(PxConnection* aConnection);
  ~PxDevice() override;

  PxDevice(const PxDevice&) = delete;
  PxDevice& operator=(const PxDevice&) = delete;

  // Type registry. Entries keep their order of registration; duplicates are kept and lookups take
  // the first match.
  static void RegisterType(PtU16 aType, const QString& aName, Factory aFactory);
  // A new device of the first entry of aType, or null when no driver registered it.
  static PxDevice* Create(PtU16 aType, PxConnection* aConnection);
  // The name of the first entry of aType, or "??".
  static QString TypeToName(PtU16 aType);
  static size_t RegisteredTypeCount();
  static PtU16 RegisteredType(size_t aIndex);
  static QString RegisteredName(size_t aIndex);

  // --- Operations of the concrete device, in this order. ---

  // The device's name for the user: window title, and the questions of the device UI.
  virtual QString Name() const = 0;
  // The software version this application was built for, for component 1 or 2; the version check
  // on connection compares the device's firmware with it.
  virtual PtU16 ExpectedSoftwareVersion(int aComponent) const = 0;
  // The firmware update job that brings component 1 or 2 up to the expected version. The caller
  // deletes it.
  virtual PxCodeUpdateJob* CreateComponentUpdateJob(int aComponent) = 0;
  // Whether the configuration may be changed now: by default, while the device is live.
  virtual bool CanModifyConfiguration() const;
  // The document types of the device's configuration and calibration files.
  virtual PtU32 ConfigurationDocumentType(const QString& aFileName, const QString& aComment) const = 0;
  virtual PtU32 CalibrationDocumentType(const QString& aFileName, const QString& aComment) const = 0;
  // Reads the identity (versions, part and serial numbers, name, product type) from the device.
  virtual void ReadIdentity() = 0;
  // "Apply" in two steps, also run after a configuration file was loaded: send the configuration
  // properties to the device, then make the device take them into use.
  virtual void WriteConfiguration() = 0;
  virtual void ApplyConfiguration() = 0;
  virtual void Reset() = 0;
  // The firmware update job for a file chosen by the user, of a kind and with an option. The
  // caller deletes it.
  virtual PxCodeUpdateJob* CreateFileUpdateJob(const QString& aFile, unsigned char aKind, int aOption) = 0;
  // Reads every configuration property from the device.
  virtual void ReadConfiguration() = 0;
  // The base device has no commands: every id is refused (PtInvalidArgument).
  virtual void ExecuteCommand(PtU32 aId);
  // Sends the calibration properties to the device.
  virtual void WriteCalibration() = 0;
  // Reads the elements of the section the reader stands on into the properties of their ids.
  // Unknown ids and nested sections are skipped. Ends with UpdateEditables().
  virtual void LoadProperties(PtDocumentReader& aReader);
  // After PreLoadFile: reads the calibration sections of a calibration file.
  virtual void LoadCalibration(PtDocumentReader& aReader);
  // Every property editable exactly when CanModifyConfiguration() (and its own F_EDITABLE) allow.
  virtual void UpdateEditables();

  // --- Model ---

  // Enters the property in both maps, replacing an entry with the same key.
  void AddProperty(PxProperty* aProperty);
  void AddCommand(PxCommand* aCommand);
  // Null when there is none.
  PxProperty* FindProperty(PtU32 aId) const;
  PxProperty* FindPropertyByDeviceId(PtU16 aDeviceId) const;
  PxCommand* FindCommand(PtU32 aId) const;
  // The property of aId, which must exist: a missing one throws std::out_of_range.
  PxProperty& Property(PtU32 aId) const;
  const QHash<PtU32, PxProperty*>& Properties() const { return mProperties; }
  const QHash<PtU16, PxProperty*>& PropertiesByDeviceId() const { return mPropertiesByDeviceId; }
  const QHash<PtU32, PxCommand*>& Commands() const { return mCommands; }
  // Every property whose category (bits 0-1) is aCategory, in map order.
  std::vector<PxProperty*> GetPropertiesByCategory(PtU32 aCategory) const;

  // Whether the user has edits not yet applied: an editable property exchanged with the device
  // whose values differ from those last read.
  bool PropertyModified() const;
  // Undoes those edits.
  void RestoreProperties();

  PxConnection* Connection() const;
  // Connected through a link that is up. A device replayed from a record is not live.
  bool IsLive() const;
  void Disconnect();

  // The serial number property's raw bytes up to the first NUL. Throws std::out_of_range when the
  // concrete device has not added the property.
  QString SerialNumber() const;

  // Identity values as the concrete device reads them: each makes its property one value.
  void SetFpgaVersion(PtU16 aVersion);
  void SetSoftwareVersion(PtU16 aVersion);
  void SetSoftwareCRC(PtU32 aCrc);
  void SetProductType(PtU16 aType);
  // aLength bytes of 8-bit text, or up to the NUL when aLength is all-ones.
  void SetSoftwarePartNumber(const char* aText, size_t aLength);

  const PxIntegerProperty& FpgaVersion() const { return mFpgaVersion; }
  const PxIntegerProperty& SoftwareVersion() const { return mSoftwareVersion; }
  const PxIntegerProperty& SoftwareCRC() const { return mSoftwareCrc; }
  const PxTextProperty& SoftwarePartNumber() const { return mSoftwarePartNumber; }
  PxTextProperty& DeviceName() { return mDeviceName; }
  const PxTextProperty& DeviceName() const { return mDeviceName; }
  const PxIntegerProperty& ProductType() const { return mProductType; }

  // --- Files ---

  // Writes a configuration file: the header, then every property of the configuration and both
  // calibration categories. The previous file is replaced only once the new one is complete.
  void SaveConfiguration(const QString& aFileName, const QString& aComment);
  // Writes a calibration file: the header, then the two calibration categories in their own
  // sections. Replaces the previous file as SaveConfiguration does.
  void SaveCalibration(const QString& aFileName, const QString& aComment);
  // Every property with F_SAVE, into the writer's open section (record files keep them so).
  void SaveProperties(PtDocumentWriter& aWriter);
  // Reads the header section of a fresh reader. A file without one leaves aHeader as it was and
  // the reader before its first section.
  void PreLoadFile(PtDocumentReader& aReader, FileHeader& aHeader);
  // After PreLoadFile: loads the properties section, then runs the two apply steps. A file whose
  // next section is not the properties section loads nothing. A damaged, incomplete or foreign
  // file throws before any property changes.
  void LoadConfiguration(PtDocumentReader& aReader);

protected:
  // Checks the whole document behind aReader before anything of it is loaded; aLoadedSection is
  // the main section that the load is going to read. Throws on an incomplete, damaged or foreign
  // document, or on an element of a known id that its property could not read.
  void CheckDocument(const PtDocumentReader& aReader, bool aCalibration, size_t aLoadedSection) const;

private:
  void WriteHeader(PtDocumentWriter& aWriter, const QString& aComment, const QString& aSerialNumber) const;
  // Writes the document under a temporary name beside aFileName and renames it into place.
  static void WriteReplacing(const QString& aFileName, PtU32 aDocumentType,
                             const std::function<void(PtDocumentWriter&)>& aContent);

  // Not owned. Guarded, so that a device outliving its link at teardown reads as not live.
  QPointer<PxConnection> mConnection;
  QHash<PtU32, PxProperty*> mProperties;
  QHash<PtU16, PxProperty*> mPropertiesByDeviceId;
  QHash<PtU32, PxCommand*> mCommands;

protected:
  // The built-in properties; concrete devices read them from the hardware.
  PxIntegerProperty mFpgaVersion{CAT_CONFIGURATION | F_SAVE, ID_FPGA_VERSION, 1, 2};
  PxIntegerProperty mSoftwareVersion{CAT_CONFIGURATION | F_SAVE, ID_SOFTWARE_VERSION, 1, 4};
  PxIntegerProperty mSoftwareCrc{CAT_CONFIGURATION | F_SAVE, ID_SOFTWARE_CRC, 1, 4};
  PxTextProperty mSoftwarePartNumber{CAT_CONFIGURATION | F_SAVE, PxTextProperty::TYPE_ASCII, ID_SOFTWARE_PART_NUMBER, 1,
                                     11};
  PxTextProperty mDeviceName{CAT_STATE | F_EDITABLE | F_SAVE, PxTextProperty::TYPE_UTF16, ID_DEVICE_NAME, 320, 64};
  PxIntegerProperty mProductType{CAT_CONFIGURATION | F_SAVE, ID_PRODUCT_TYPE, 0, 2};
};
