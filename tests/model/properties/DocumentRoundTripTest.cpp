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

// Property makers for the round-trip table: the same kind with the values to save, or with other
// values (and counts) that a read must replace.
using Made = std::unique_ptr<PxProperty>;

template <class P, class V>
Made Filled(std::unique_ptr<P> aProperty, std::initializer_list<V> aValues)
{
  Fill(*aProperty, aValues);
  return aProperty;
}

Made Integer(PtU32 aUnitSize, bool aSigned, std::initializer_list<int> aValues)
{
  auto lProperty = std::make_unique<PxIntegerProperty>(SAVED, 10, 1, aUnitSize);
  lProperty->SetSigned(aSigned);
  lProperty->SetLimitsNotChecked(true);
  return Filled(std::move(lProperty), aValues);
}

Made Float(PtU32 aUnitSize, float aScale, std::initializer_list<float> aValues)
{
  return Filled(std::make_unique<PxFloatProperty>(SAVED, 20, 1, aUnitSize, aScale, 0xFFFFFFFFu), aValues);
}

Made Enum(std::initializer_list<PtU32> aValues)
{
  auto lProperty = std::make_unique<PxEnumProperty>(SAVED, 30, 1, 1);
  lProperty->AddEnumValue(0, QStringLiteral("Off"));
  lProperty->AddEnumValue(200, QStringLiteral("Auto"));
  return Filled(std::move(lProperty), aValues);
}

Made Bits(std::initializer_list<PtU32> aValues)
{
  return Filled(std::make_unique<PxBitFieldProperty>(SAVED, 40, 1, 4), aValues);
}

Made Bool(std::initializer_list<bool> aValues)
{
  return Filled(std::make_unique<PxBoolProperty>(SAVED, 50, 1), aValues);
}

Made String(PxTextProperty::eType aType, PtU32 aMaxLength, const QString& aText)
{
  auto lProperty = std::make_unique<PxTextProperty>(SAVED, aType, 60, 1, aMaxLength);
  lProperty->SetCount(1);
  lProperty->SetTextValue(0, aText);
  return lProperty;
}

TEST(PropertyDocuments, EveryKindReadsBackWhatItWrote)
{
  using T = PxTextProperty;
  std::pair<Made, Made> lCases[] = {
      {Integer(1, true, {-5}), Integer(1, true, {60, 0, 0})},
      {Integer(2, false, {65535, 0, 1}), Integer(2, false, {65536, 0, 65536})},
      {Float(2, 100.0f, {-3.27f}), Float(2, 100.0f, {1.0f})},
      {Float(4, 1.0f, {0.1f, -1e30f}), Float(4, 1.0f, {})},
      {Bool({true, false, true}), Bool({false})},
      {Enum({200}), Enum({0})},
      {Bits({0xDEADBEEFu}), Bits({1, 2})},
      {String(T::TYPE_ASCII, 11, QStringLiteral("SN-0042")), String(T::TYPE_ASCII, 11, QStringLiteral("LONGER-TEXT"))},
      // One code unit short of the field: the terminator must cut off the longer old text.
      {String(T::TYPE_UTF16, 16, QStringLiteral("Seven 7")), String(T::TYPE_UTF16, 16, QStringLiteral("EIGHT 88"))},
  };
  int lCase = 0;
  for (auto& [lSaved, lLoaded] : lCases) {
    SCOPED_TRACE(lCase);
    const QString lFile = PxTest::ScratchFile(QString::number(lCase++) + QStringLiteral(".pto"));
    Save(lFile, {lSaved.get()});
    lLoaded->SetEditable(false);
    QSignalSpy lValues(lLoaded.get(), &PxProperty::ValueChanged);
    EXPECT_EQ(Load(lFile, {lLoaded.get()}), std::vector<PtU32>{lSaved->Id()});
    ASSERT_EQ(lLoaded->Count(), lSaved->Count());
    for (size_t i = 0; i < lSaved->Count(); ++i) {
      EXPECT_EQ(lLoaded->FormattedValue(i), lSaved->FormattedValue(i)) << i;
      EXPECT_TRUE(lLoaded->Editable(i)) << "a read resets the editable flags";
    }
    EXPECT_EQ(lLoaded->Backup(), lLoaded->Values()) << "a read is not an edit";
    Load(lFile, {lLoaded.get()});
    EXPECT_EQ(Indexes(lValues), std::vector<size_t>{PT_ALL}) << "reading the same values again changes nothing";
  }
}

TEST(PropertyDocuments, TextReadsTheLayoutsOlderFilesUse)
{
  const QString lFile = PxTest::ScratchFile(QStringLiteral("older.pto"));
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

} // namespace
