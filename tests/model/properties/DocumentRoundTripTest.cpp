// Properties through real configuration documents: written by one set of properties, read back
// by another, the way a device saves and loads its configuration.
#include "PropertyTestSupport.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PxBitFieldProperty.h"
#include "PxBoolProperty.h"
#include "PxEnumProperty.h"
#include "PxFloatProperty.h"
#include "PxIntegerProperty.h"
#include "PxTest.h"
#include "PxTextProperty.h"

#include <memory>

namespace {
constexpr PtU32 DOCUMENT_TYPE = 0x50544F31;
constexpr PtU32 PROPERTIES_SECTION = 2;
constexpr PtU32 SAVED = F_EDITABLE | F_SAVE;

QString Path(const QString& aName)
{
  return PxTest::ScratchDir() + QLatin1Char('/') + aName + QStringLiteral(".pto");
}

void Save(const QString& aFile, const std::vector<PxProperty*>& aProperties)
{
  PtDocumentWriter lWriter(aFile, DOCUMENT_TYPE);
  lWriter.StartSection(PROPERTIES_SECTION);
  for (PxProperty* lProperty : aProperties) {
    lProperty->WriteToFile(lWriter);
  }
  lWriter.EndSection();
  lWriter.EndLastSection();
}

// Reads every element whose id a property has; returns the ids found in the file, in order.
std::vector<PtU32> Load(const QString& aFile, const std::vector<PxProperty*>& aProperties)
{
  PtDocumentReader lReader(aFile);
  std::vector<PtU32> lIds;
  if (!lReader.Advance() || lReader.Id() != PROPERTIES_SECTION) {
    return lIds;
  }
  while (lReader.Advance()) {
    lIds.push_back(lReader.Id());
    for (PxProperty* lProperty : aProperties) {
      if (lProperty->Id() == lReader.Id()) {
        lProperty->ReadFromFile(lReader);
      }
    }
  }
  return lIds;
}

struct RoundTrip
{
  const char* mName;
  // Makes the property; aFill gives it the values to save (the reader's copy stays unfilled or
  // holds other values).
  std::function<std::unique_ptr<PxProperty>(bool aFill)> mMake;
};

TEST(PropertyDocuments, EveryKindReadsBackWhatItWrote)
{
  const RoundTrip lCases[] = {
      {"signed byte",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxIntegerProperty>(SAVED, 11, 1, 1);
         lProperty->SetSigned(true);
         lProperty->SetLimits(-100, 100);
         lProperty->SetCount(aFill ? 1 : 3);
         lProperty->SetValue(0, aFill ? -5 : 60);
         return lProperty;
       }},
      {"unsigned 2 bytes",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxIntegerProperty>(SAVED, 12, 1, 2);
         lProperty->SetCount(3);
         lProperty->SetValue(0, aFill ? 65535 : 65536);
         lProperty->SetValue(2, aFill ? 1 : 65536);
         return lProperty;
       }},
      {"signed 4 bytes",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxIntegerProperty>(SAVED, 13, 1, 4);
         lProperty->SetSigned(true);
         lProperty->SetLimitsNotChecked(true);
         lProperty->SetCount(2);
         lProperty->SetValue(0, aFill ? -2 : 0);
         lProperty->SetValue(1, aFill ? 2147483647 : 0);
         return lProperty;
       }},
      {"scaled float in 2 bytes",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxFloatProperty>(SAVED, 14, 1, 2, 100.0f, 2);
         lProperty->SetCount(1);
         lProperty->SetValue(0, aFill ? -3.27f : 1.0f);
         return lProperty;
       }},
      {"plain float",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxFloatProperty>(SAVED, 15, 1, 4, 1.0f, 0xFFFFFFFFu);
         lProperty->SetCount(2);
         lProperty->SetValue(0, aFill ? 0.1f : 0.0f);
         lProperty->SetValue(1, aFill ? -1e30f : 0.0f);
         return lProperty;
       }},
      {"bool",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxBoolProperty>(SAVED, 16, 1);
         lProperty->SetCount(3);
         lProperty->SetValue(0, aFill);
         lProperty->SetValue(2, aFill);
         return lProperty;
       }},
      {"enum",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxEnumProperty>(SAVED, 17, 1, 1);
         lProperty->AddEnumValue(0, QStringLiteral("Off"));
         lProperty->AddEnumValue(200, QStringLiteral("Auto"));
         lProperty->SetCount(1);
         lProperty->SetValue(0, aFill ? 200 : 0);
         return lProperty;
       }},
      {"bit field",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxBitFieldProperty>(SAVED, 18, 1, 4);
         lProperty->SetCount(1);
         lProperty->SetValue(0, aFill ? 0xDEADBEEFu : 1u);
         return lProperty;
       }},
      {"ascii text",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxTextProperty>(SAVED, PxTextProperty::TYPE_ASCII, 19, 1, 11);
         lProperty->SetCount(1);
         lProperty->SetTextValue(0, aFill ? QStringLiteral("SN-0042") : QStringLiteral("LONGER-TEXT"));
         return lProperty;
       }},
      {"utf-16 text",
       [](bool aFill) {
         auto lProperty = std::make_unique<PxTextProperty>(SAVED, PxTextProperty::TYPE_UTF16, 20, 1, 64);
         lProperty->SetCount(1);
         lProperty->SetTextValue(0, aFill ? QStringLiteral("Sensor Nord") : QStringLiteral("A much longer old name"));
         return lProperty;
       }},
  };
  for (const RoundTrip& c : lCases) {
    SCOPED_TRACE(c.mName);
    const QString lFile = Path(QString::fromLatin1(c.mName));
    std::unique_ptr<PxProperty> lSaved = c.mMake(true);
    Save(lFile, {lSaved.get()});
    std::unique_ptr<PxProperty> lLoaded = c.mMake(false);
    lLoaded->SetEditable(false);
    QSignalSpy lValues(lLoaded.get(), &PxProperty::ValueChanged);
    EXPECT_EQ(Load(lFile, {lLoaded.get()}), std::vector<PtU32>{lSaved->Id()});
    EXPECT_EQ(lLoaded->Count(), lSaved->Count());
    for (size_t i = 0; i < lSaved->Count(); ++i) {
      EXPECT_EQ(lLoaded->FormattedValue(i), lSaved->FormattedValue(i)) << i;
      EXPECT_TRUE(lLoaded->Editable(i)) << "a read resets the editable flags";
    }
    EXPECT_EQ(lLoaded->Backup(), lLoaded->Values()) << "a read is not an edit";
    EXPECT_EQ(Indexes(lValues), std::vector<size_t>{PT_ALL});
    Load(lFile, {lLoaded.get()});
    EXPECT_EQ(lValues.count(), 1) << "reading the same values again changes nothing";
  }
}

TEST(PropertyDocuments, OnlySavedPropertiesWithValuesAreWritten)
{
  PxIntegerProperty lSaved(SAVED, 1, 1, 4);
  lSaved.SetCount(1);
  PxIntegerProperty lNotSaved(F_EDITABLE, 2, 1, 4);
  lNotSaved.SetCount(1);
  PxIntegerProperty lEmpty(SAVED, 3, 1, 4);
  PxTextProperty lNotSavedText(CAT_STATE | F_EDITABLE, PxTextProperty::TYPE_UTF16, 4, 1, 16);
  lNotSavedText.SetCount(1);
  PxTextProperty lEmptyText(SAVED, PxTextProperty::TYPE_UTF16, 5, 1, 16);
  PxTextProperty lEmptyString(SAVED, PxTextProperty::TYPE_UTF16, 6, 1, 16);
  lEmptyString.SetCount(1);
  const QString lFile = Path(QStringLiteral("saved"));
  Save(lFile, {&lSaved, &lNotSaved, &lEmpty, &lNotSavedText, &lEmptyText, &lEmptyString});
  EXPECT_EQ(Load(lFile, {}), (std::vector<PtU32>{1, 6}));
}

TEST(PropertyDocuments, Utf16TextKeepsTheCountOfCodeUnits)
{
  // Existing files count UTF-16 code units, not UTF-8 bytes: text beyond 7-bit ASCII comes back
  // cut short, and that must stay so to read and write the same files as before.
  PxTextProperty lSaved(SAVED, PxTextProperty::TYPE_UTF16, 34, 320, 64);
  lSaved.SetCount(1);
  lSaved.SetTextValue(0, QString::fromUtf8("Grüße"));
  const QString lFile = Path(QStringLiteral("utf16"));
  Save(lFile, {&lSaved});
  {
    PtDocumentReader lReader(lFile);
    ASSERT_TRUE(lReader.Advance() && lReader.Advance());
    EXPECT_EQ(lReader.UnitSize(), 1u);
    EXPECT_EQ(lReader.Count(), 5u);
  }
  PxTextProperty lLoaded(SAVED, PxTextProperty::TYPE_UTF16, 34, 320, 64);
  Load(lFile, {&lLoaded});
  EXPECT_TRUE(lLoaded.TextValue(0).startsWith(QString::fromUtf8("Grü")));
  EXPECT_NE(lLoaded.TextValue(0), lSaved.TextValue(0));
}

TEST(PropertyDocuments, TextReadsTheLayoutsOlderFilesUse)
{
  const QString lFile = Path(QStringLiteral("older"));
  {
    PtDocumentWriter lWriter(lFile, DOCUMENT_TYPE);
    lWriter.StartSection(PROPERTIES_SECTION);
    lWriter.AddElement(1, QStringLiteral("PN-7")); // 8-bit text as bytes
    const char16_t lUnits[8] = u"Name";
    lWriter.AddElement(2, lUnits, 2, 8, 2); // UTF-16 as a field of code units
    const char lTooLong[] = "0123456789ABCDEF";
    lWriter.AddElement(3, lTooLong, 1, 16, 1); // more bytes than the field holds
    lWriter.EndLastSection();
  }
  PxTextProperty lAscii(SAVED, PxTextProperty::TYPE_ASCII, 1, 1, 11);
  PxTextProperty lUtf16(SAVED, PxTextProperty::TYPE_UTF16, 2, 1, 16);
  PxTextProperty lField(SAVED, PxTextProperty::TYPE_ASCII, 3, 1, 8);
  Load(lFile, {&lAscii, &lUtf16, &lField});
  EXPECT_EQ(lAscii.TextValue(0), QStringLiteral("PN-7"));
  EXPECT_EQ(lUtf16.TextValue(0), QStringLiteral("Name"));
  EXPECT_EQ(lField.TextValue(0), QStringLiteral("01234567"));
}

TEST(PropertyDocuments, DamagedElementLeavesThePropertyAsItWas)
{
  const QString lFile = Path(QStringLiteral("damaged"));
  {
    PtDocumentWriter lWriter(lFile, DOCUMENT_TYPE);
    lWriter.StartSection(PROPERTIES_SECTION);
    const PtByte lShort[2] = {1, 2};
    lWriter.AddElement(7, lShort, 1, 2, 1); // two bytes where two 4-byte values are expected
    lWriter.EndLastSection();
  }
  PxIntegerProperty lProperty(SAVED, 7, 1, 4);
  lProperty.SetCount(1);
  lProperty.SetValue(0, 99);
  QSignalSpy lValues(&lProperty, &PxProperty::ValueChanged);
  EXPECT_THROW(Load(lFile, {&lProperty}), std::exception);
  EXPECT_EQ(lProperty.Count(), 1u);
  EXPECT_EQ(lProperty.Value(0), 99);
  EXPECT_EQ(lValues.count(), 0);
}

TEST(PropertyDocuments, ReadingAnotherPropertysElementIsAProgrammingError)
{
  PxIntegerProperty lSaved(SAVED, 1, 1, 4);
  lSaved.SetCount(1);
  const QString lFile = Path(QStringLiteral("other"));
  Save(lFile, {&lSaved});
  PxIntegerProperty lOther(SAVED, 2, 1, 4);
  PxTextProperty lOtherText(SAVED, PxTextProperty::TYPE_ASCII, 3, 1, 4);
  PtDocumentReader lReader(lFile);
  ASSERT_TRUE(lReader.Advance() && lReader.Advance());
  EXPECT_DEATH(lOther.ReadFromFile(lReader), AssertionMessage("mId == aReader.Id()", "PxProperty"));
  EXPECT_DEATH(lOtherText.ReadFromFile(lReader), AssertionMessage("Id() == aReader.Id()", "PxTextProperty"));
}
} // namespace
