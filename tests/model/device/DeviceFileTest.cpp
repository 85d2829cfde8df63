// Configuration and calibration files written and read through real files: what a user saves
// comes back, files of other versions load what they can, and a bad file changes nothing.
#include "../properties/PropertyTestSupport.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PtException.h"
#include "PtTime.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxTest.h"
#include "PxTestDevice.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>

#include <gtest/gtest.h>
#include <map>
#include <memory>

namespace {
constexpr PtU32 SAVED = F_SAVE | F_EDITABLE;

// A device with a property of every kind, spread over every category, plus a configuration
// property that is never saved.
class RichDevice : public PxTestDevice
{
public:
  PxIntegerProperty mInteger{CAT_CONFIGURATION | SAVED, 5000, 50, 2};
  PxFloatProperty mFloat{CAT_CALIBRATION | SAVED, 5001, 51, 4, 100.0f, 2};
  PxBoolProperty mBool{CAT_USER_CALIBRATION | SAVED, 5002, 52};
  PxEnumProperty mEnum{CAT_CONFIGURATION | SAVED, 5003, 53, 1};
  PxTextProperty mAscii{CAT_CALIBRATION | SAVED, PxTextProperty::TYPE_ASCII, 5004, 54, 12};
  PxTextProperty mUtf16{CAT_USER_CALIBRATION | SAVED, PxTextProperty::TYPE_UTF16, 5005, 55, 32};
  PxBitFieldProperty mBits{CAT_CONFIGURATION | SAVED, 5006, 56, 4};
  PxIntegerProperty mState{CAT_STATE | F_SAVE, 5007, 57, 4};
  PxIntegerProperty mUnsaved{CAT_CONFIGURATION | F_EDITABLE, 5008, 58, 4};

  RichDevice()
  {
    mEnum.AddEnumValue(0, QStringLiteral("Off"));
    mEnum.AddEnumValue(7, QStringLiteral("Auto"));
    for (PxProperty* lProperty : Own()) {
      AddProperty(lProperty);
    }
  }

  std::vector<PxProperty*> Own()
  {
    return {&mInteger, &mFloat, &mBool, &mEnum, &mAscii, &mUtf16, &mBits, &mState, &mUnsaved};
  }

  // Values that differ from one seed to another, so that a load shows which ones it replaced.
  void Fill(int aSeed)
  {
    ::Fill(mInteger, {1000 * aSeed, 1000 * aSeed + 1, 1000 * aSeed + 2});
    ::Fill(mFloat, {-1.25f * aSeed, 3.5f * aSeed});
    ::Fill(mBool, {aSeed % 2 == 1, aSeed % 2 == 0});
    ::Fill(mEnum, {aSeed % 2 ? 7u : 0u});
    ::Fill(mBits, {0xDEAD0000u + aSeed});
    ::Fill(mState, {aSeed});
    ::Fill(mUnsaved, {aSeed});
    mAscii.SetCount(1);
    mUtf16.SetCount(1);
    mAscii.SetTextValue(0, QStringLiteral("CAL-%1").arg(aSeed));
    mUtf16.SetTextValue(0, QStringLiteral("user %1").arg(aSeed));
    SetFpgaVersion(static_cast<PtU16>(aSeed));
    SetSerialNumber(QStringLiteral("SN-%1").arg(aSeed).toLatin1().constData());
    DeviceName().SetCount(1);
    DeviceName().SetTextValue(0, QStringLiteral("Unit %1").arg(aSeed));
  }
};

QString Path(const QString& aName)
{
  return PxTest::ScratchFile(QStringLiteral("device-") + aName);
}

// Every property's values, backup and editable flags, by id: what "the model" is.
using Snapshot = std::map<PtU32, std::tuple<std::vector<PtByte>, std::vector<PtByte>, std::vector<bool>>>;
Snapshot Take(const PxDevice& aDevice)
{
  Snapshot lSnapshot;
  for (const PxProperty* lProperty : aDevice.Properties()) {
    std::vector<bool> lEditable;
    for (size_t i = 0; i < lProperty->Count(); ++i) {
      lEditable.push_back(lProperty->Editable(i));
    }
    lSnapshot[lProperty->Id()] = {lProperty->Values(), lProperty->Backup(), lEditable};
  }
  return lSnapshot;
}

PxDevice::FileHeader Load(PxDevice& aDevice, const QString& aFile)
{
  PtDocumentReader lReader(aFile);
  PxDevice::FileHeader lHeader;
  aDevice.PreLoadFile(lReader, lHeader);
  aDevice.LoadConfiguration(lReader);
  return lHeader;
}

// The document as a tree: "id{...}" for a section, "id:unit x count" for an element. Elements
// of the property sections are sorted by id, as their order there carries no meaning.
QString Outline(PtDocumentReader& aReader, bool aSort)
{
  QStringList lItems;
  while (aReader.Advance()) {
    const PtU32 lId = aReader.Id();
    if (aReader.IsSection()) {
      lItems << QStringLiteral("%1{%2}").arg(lId).arg(Outline(aReader, lId != PxDevice::SECTION_HEADER));
    } else {
      lItems << QStringLiteral("%1:%2x%3").arg(lId).arg(aReader.UnitSize()).arg(aReader.Count());
    }
  }
  if (aSort) {
    lItems.sort(); // as texts: the ids within one section have the same number of digits
  }
  return lItems.join(QLatin1Char(' '));
}

QString Outline(const QString& aFile)
{
  PtDocumentReader lReader(aFile);
  return Outline(lReader, false);
}

QStringList Leftovers()
{
  return QDir(PxTest::ScratchDir()).entryList({QStringLiteral("*.part")}, QDir::Files | QDir::Hidden);
}
} // namespace

TEST(DeviceFiles, ConfigurationComesBackWithItsHeaderInItsLayout)
{
  RichDevice lSaved;
  lSaved.Fill(1);
  // Header texts count UTF-16 code units: 6 here, for 8 bytes of UTF-8.
  lSaved.DeviceName().SetTextValue(0, QStringLiteral("Tête Ω"));
  const QString lFile = Path(QStringLiteral("round.pto"));
  const QString lCalibration = Path(QStringLiteral("layout.cal"));
  const QDateTime lBefore = QDateTime::currentDateTime().addSecs(-1);
  lSaved.SaveConfiguration(lFile, QStringLiteral("tuned on the roof"));
  lSaved.SaveCalibration(lCalibration, QStringLiteral("c"));

  // Every saved property of categories 0 to 2 that has values (the FPGA version among the
  // built-ins); neither the name nor the other state values, whatever their F_SAVE, nor the
  // unsaved one. Calibration files nest their two categories in section 2.
  EXPECT_EQ(Outline(lFile), QStringLiteral("1{21:8x1 22:1x6 23:1x17 24:1x4} 2{4351:2x1 5000:2x3 5001:4x2 "
                                           "5002:1x2 5003:1x1 5004:12x1 5005:1x6 5006:4x1}"));
  EXPECT_EQ(Outline(lCalibration), QStringLiteral("1{21:8x1 22:1x6 23:1x1 24:1x4} 2{259{5001:4x2 5004:12x1} "
                                                  "288{5002:1x2 5005:1x6}}"));
  EXPECT_EQ(PtDocumentReader(lFile).DocumentType(), PxTestDevice::CONFIGURATION_DOCUMENT);
  EXPECT_EQ(PtDocumentReader(lCalibration).DocumentType(), PxTestDevice::CALIBRATION_DOCUMENT);

  RichDevice lLoaded;
  lLoaded.Fill(2);
  const PxDevice::FileHeader lHeader = Load(lLoaded, lFile);
  EXPECT_EQ(lHeader.mName, QStringLiteral("Tête ")) << "the name is cut by its surplus bytes, as files always had it";
  EXPECT_EQ(lHeader.mComment, QStringLiteral("tuned on the roof"));
  EXPECT_EQ(lHeader.mSerialNumber, QStringLiteral("SN-1"));
  EXPECT_TRUE(lHeader.mDate >= lBefore && lHeader.mDate <= QDateTime::currentDateTime())
      << lHeader.mDate.toString().toStdString();

  // Configuration and both calibration categories load; state values and unsaved properties stay.
  for (PxProperty* lProperty : lLoaded.Own()) {
    SCOPED_TRACE(lProperty->Id());
    const bool lFromFile = lProperty->Category() != CAT_STATE && (lProperty->Flags() & F_SAVE);
    EXPECT_EQ(lProperty->Values() == lSaved.FindProperty(lProperty->Id())->Values(), lFromFile);
  }
  EXPECT_EQ(lLoaded.FpgaVersion().Value(0), 1);
  EXPECT_EQ(lLoaded.DeviceName().TextValue(0), QStringLiteral("Unit 2")) << "the name is the device's own";
  EXPECT_EQ(lLoaded.SerialNumber(), QStringLiteral("SN-2"));
  // The editable flags follow the (absent) link again, and the device took the configuration.
  EXPECT_FALSE(lLoaded.mInteger.Editable(0));
  EXPECT_EQ(lLoaded.mCalls, (QStringList{QStringLiteral("UpdateEditables"), QStringLiteral("WriteConfiguration"),
                                         QStringLiteral("ApplyConfiguration")}));
}

TEST(DeviceFiles, OlderHeadersAndUnknownIdsLoadWhatIsKnown)
{
  const QString lFile = Path(QStringLiteral("older.pto"));
  constexpr PtU64 FILETIME = 130697751091230000ull; // 2015-03-02 13:05:09.123 UTC
  {
    PtDocumentWriter lWriter(lFile, PxTestDevice::CONFIGURATION_DOCUMENT);
    lWriter.StartSection(1);
    lWriter.AddElement(17, &FILETIME, 8, 1, 8);
    lWriter.AddElement(18, QStringLiteral("Old unit"));
    lWriter.AddElement(19, QStringLiteral("from 2015"));
    lWriter.AddElement(99, QStringLiteral("a later header field"));
    lWriter.AddElement(20, QStringLiteral("SN-7"));
    lWriter.EndSection();
    lWriter.StartSection(2);
    const PtU32 lUnknown = 5;
    lWriter.AddElement(777, &lUnknown, 4, 1, 4);
    const PtU16 lIntegers[2] = {11, 22};
    lWriter.AddElement(5000, lIntegers, 2, 2, 2);
    lWriter.StartSection(400); // a later version's group, even with a known id inside
    const PtU32 lBits = 1;
    lWriter.AddElement(5006, &lBits, 4, 1, 4);
    lWriter.EndSection();
    const PtU32 lEnum = 7;
    lWriter.AddElement(5003, &lEnum, 1, 1, 1);
    lWriter.EndSection();
    lWriter.EndLastSection();
  }
  RichDevice lDevice;
  lDevice.Fill(2);
  const PxDevice::FileHeader lHeader = Load(lDevice, lFile);
  EXPECT_EQ(lHeader.mName, QStringLiteral("Old unit"));
  EXPECT_EQ(lHeader.mComment, QStringLiteral("from 2015"));
  EXPECT_EQ(lHeader.mSerialNumber, QStringLiteral("SN-7"));
  EXPECT_EQ(lHeader.mDate.toUTC().toString(Qt::ISODateWithMs), QStringLiteral("2015-03-02T13:05:09.123Z"));

  ASSERT_EQ(lDevice.mInteger.Count(), 2u);
  EXPECT_EQ(lDevice.mInteger.Value(1), 22);
  EXPECT_EQ(lDevice.mEnum.Value(0), 7u) << "read after the unknown section";
  EXPECT_EQ(lDevice.mBits.Value(0), 0xDEAD0002u) << "nested sections are not the device's";
  EXPECT_EQ(lDevice.mCalls.size(), 3);
}

TEST(DeviceFiles, ABadFileRaisesAnErrorAndChangesNoProperty)
{
  RichDevice lSource;
  lSource.Fill(1);
  const QString lGood = Path(QStringLiteral("good.pto"));
  lSource.SaveConfiguration(lGood, QStringLiteral("good"));
  const QByteArray lBytes = PxTest::ReadFile(lGood);
  // The last element of the file: a loader that read as it went would have changed the
  // properties before it.
  const int lLastElement = lBytes.lastIndexOf("ELEM");
  ASSERT_GT(lLastElement, 0);

  struct Case
  {
    const char* mWhat;
    std::function<void(const QString&)> mMake;
  } const lCases[] = {
      {"another device type's configuration",
       [&](const QString& f) {
         lSource.mConfigurationDocument = 0x12345678;
         lSource.SaveConfiguration(f, QString());
         lSource.mConfigurationDocument = PxTestDevice::CONFIGURATION_DOCUMENT;
       }},
      {"cut in the properties", [&](const QString& f) { PxTest::WriteFile(f, lBytes.left(lLastElement + 20)); }},
      {"a known id too short for its property, after good elements",
       [](const QString& f) {
         PtDocumentWriter w(f, PxTestDevice::CONFIGURATION_DOCUMENT);
         w.StartSection(1);
         const Pt64 lDate = PtToPersistence(QDateTime::fromMSecsSinceEpoch(1425301509123));
         w.AddElement(21, &lDate, 8, 1, 8);
         w.AddElement(22, QStringLiteral("Unit 9"));
         w.EndSection();
         w.StartSection(2);
         const PtU16 lIntegers[2] = {11, 22};
         w.AddElement(5000, lIntegers, 2, 2, 2);
         const PtByte lNarrow[2] = {1, 2};
         w.AddElement(5001, lNarrow, 1, 2, 1); // a float of 4 bytes per value
         w.EndSection();
         w.EndLastSection();
       }},
  };
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    const QString lFile = Path(QStringLiteral("bad.pto"));
    QFile::remove(lFile);
    c.mMake(lFile);
    RichDevice lDevice;
    lDevice.Fill(2);
    const Snapshot lBefore = Take(lDevice);
    QSignalSpy lChanged(&lDevice.mInteger, &PxProperty::ValueChanged);
    EXPECT_FALSE(PxTest::ErrorText([&] { Load(lDevice, lFile); }).isEmpty());
    EXPECT_EQ(Take(lDevice), lBefore);
    EXPECT_EQ(lChanged.count(), 0);
    EXPECT_TRUE(lDevice.mCalls.isEmpty()) << lDevice.mCalls.join(QLatin1Char(',')).toStdString();
  }
}

TEST(DeviceFiles, SavingReplacesTheOldFileOnlyWhenTheNewOneIsComplete)
{
  const QString lFile = Path(QStringLiteral("replace.pto"));
  RichDevice lDevice;
  lDevice.Fill(1);
  lDevice.SaveConfiguration(lFile, QStringLiteral("first"));
  lDevice.SaveConfiguration(lFile, QStringLiteral("second"));
  RichDevice lReader;
  EXPECT_EQ(Load(lReader, lFile).mComment, QStringLiteral("second"));
  const QByteArray lKept = PxTest::ReadFile(lFile);

  // A property whose writing fails half-way, as a full disk would make it.
  struct Failing : PxIntegerProperty
  {
    using PxIntegerProperty::PxIntegerProperty;
    void WriteToFile(PtDocumentWriter&) override { throw std::runtime_error("28 No space left on device"); }
  };
  RichDevice lFailing;
  lFailing.Fill(3);
  Failing lBroken(CAT_CONFIGURATION | F_SAVE, 6000, 60, 4);
  lFailing.AddProperty(&lBroken);
  EXPECT_THROW(lFailing.SaveConfiguration(lFile, QStringLiteral("third")), std::runtime_error);
  EXPECT_EQ(PxTest::ReadFile(lFile), lKept);

  // A device without a serial number cannot write a header: nothing is created.
  PxTestDevice lNoSerial(nullptr, false);
  const QString lNew = Path(QStringLiteral("never.pto"));
  EXPECT_THROW(lNoSerial.SaveConfiguration(lNew, QString()), std::out_of_range);
  EXPECT_FALSE(QFile::exists(lNew));
  EXPECT_EQ(Leftovers(), QStringList());

  // Through a link, the file it names is replaced and the link stays.
  const QString lLink = Path(QStringLiteral("link.pto"));
  QFile::remove(lLink);
  ASSERT_TRUE(QFile::link(lFile, lLink));
  lDevice.SaveConfiguration(lLink, QStringLiteral("through the link"));
  EXPECT_TRUE(QFileInfo(lLink).isSymLink());
  EXPECT_EQ(Load(lReader, lFile).mComment, QStringLiteral("through the link"));
  EXPECT_EQ(Leftovers(), QStringList());
}
