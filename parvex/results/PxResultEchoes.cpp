#include "PxResultEchoes.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtDocumentWriter.h"
#include "PxIntegerProperty.h"
#include "PxProtocolReader.h"

#include <QTextStream>

#include <cstddef>

namespace {
struct Field
{
  PtU16 mProtocolId;
  PtU32 mFileId;
  size_t mOffset;
  PtU32 mWidth;
};

// The first two protocol ids are crossed against the record order (4227 is the amplitude); the
// file ids follow the record. Both are what devices and existing record files use.
constexpr Field FIELDS[] = {
    {4228, 6145, offsetof(PxEcho, mDistance), 4}, {4227, 6146, offsetof(PxEcho, mAmplitude), 4},
    {4229, 6147, offsetof(PxEcho, mValue3), 4},   {4230, 6148, offsetof(PxEcho, mValue4), 2},
    {4231, 6149, offsetof(PxEcho, mSegment), 1},  {4232, 6150, offsetof(PxEcho, mFlag), 1},
    {4233, 6151, offsetof(PxEcho, mValue7), 4},   {4234, 6152, offsetof(PxEcho, mValue8), 4},
};

const Field* FieldOfProtocolId(PtU16 aId)
{
  for (const Field& lField : FIELDS) {
    if (lField.mProtocolId == aId) {
      return &lField;
    }
  }
  return nullptr;
}

const Field* FieldOfFileId(PtU32 aId)
{
  for (const Field& lField : FIELDS) {
    if (lField.mFileId == aId) {
      return &lField;
    }
  }
  return nullptr;
}

float InverseScale(const PxIntegerProperty& aProperty)
{
  return aProperty.Count() > 0 ? 1.0f / static_cast<float>(aProperty.Value(0)) : 1.0f;
}
} // namespace

PxResultEchoes::PxResultEchoes(PxIntegerProperty& aDistanceScale, PxIntegerProperty& aAmplitudeScale)
    : PxResultProvider(ID_ECHOES)
    , mEchoes(CAPACITY)
    , mDistanceScaleProperty(aDistanceScale)
    , mAmplitudeScaleProperty(aAmplitudeScale)
{
  connect(&aDistanceScale, &PxProperty::ValueChanged, this, &PxResultEchoes::DistanceScaleValueChanged);
  connect(&aAmplitudeScale, &PxProperty::ValueChanged, this, &PxResultEchoes::AmplitudeScaleValueChanged);
}

void PxResultEchoes::DistanceScaleValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  mDistanceScale = InverseScale(mDistanceScaleProperty);
}

void PxResultEchoes::AmplitudeScaleValueChanged(size_t aIndex)
{
  Q_UNUSED(aIndex);
  mAmplitudeScale = InverseScale(mAmplitudeScaleProperty);
}

void PxResultEchoes::SetEchoCount(PtU32 aValue)
{
  CheckEchoCount(aValue);
  mEchoCount = aValue;
}

void PxResultEchoes::ReadFromPtProtocol(PxProtocolReader& aReader)
{
  aReader.ReadPayload();
  UpdateGuard lUpdate(*this);
  if (aReader.PayloadLength() == 0) {
    SetEchoCount(0);
  }
  auto* lBase = reinterpret_cast<PtByte*>(mEchoes.data());
  while (aReader.Advance()) {
    const Field* lField = FieldOfProtocolId(aReader.Id());
    if (!lField) {
      continue;
    }
    // Every field carries the count of the frame; the last one read decides.
    const PtU16 lCount = aReader.Count();
    SetEchoCount(lCount);
    aReader.ReadElement(lBase + lField->mOffset, lCount, lField->mWidth, sizeof(PxEcho));
  }
  lUpdate.Finish();
}

void PxResultEchoes::Save(PtDocumentWriter& aWriter)
{
  aWriter.StartSection(SECTION_ID, 1);
  const auto* lBase = reinterpret_cast<const PtByte*>(mEchoes.data());
  for (const Field& lField : FIELDS) {
    aWriter.AddElement(lField.mFileId, lBase + lField.mOffset, lField.mWidth, mEchoCount, sizeof(PxEcho));
  }
  aWriter.EndSection();
}

void PxResultEchoes::Load(PtDocumentReader& aReader)
{
  UpdateGuard lUpdate(*this);
  auto* lBase = reinterpret_cast<PtByte*>(mEchoes.data());
  while (aReader.Advance()) {
    const Field* lField = aReader.IsElement() ? FieldOfFileId(aReader.Id()) : nullptr;
    if (!lField) {
      aReader.SkipCurrentSection();
      continue;
    }
    const PtU32 lCount = aReader.Count();
    SetEchoCount(lCount);
    aReader.GetElement(lBase + lField->mOffset, lField->mWidth, lCount, sizeof(PxEcho));
  }
  lUpdate.Finish();
}

void PxResultEchoes::Log(QTextStream& aStream, unsigned int aTimestamp) const
{
  if (mEchoCount == 0) {
    return;
  }
  // The stream belongs to the caller: its formatting is put back as it was.
  const int lWidth = aStream.fieldWidth();
  const QTextStream::FieldAlignment lAlignment = aStream.fieldAlignment();
  const QTextStream::RealNumberNotation lNotation = aStream.realNumberNotation();
  const int lPrecision = aStream.realNumberPrecision();
  const QChar lPad = aStream.padChar();

  aStream.setFieldAlignment(QTextStream::AlignRight);
  aStream.setPadChar(QLatin1Char(' '));
  aStream.setRealNumberNotation(QTextStream::FixedNotation);
  aStream.setRealNumberPrecision(2);
  for (PtU32 i = 0; i < mEchoCount; ++i) {
    const PxEcho& lEcho = mEchoes[i];
    const float lAmplitude = static_cast<float>(lEcho.mAmplitude) * mAmplitudeScale;
    const float lDistance = static_cast<float>(lEcho.mDistance) * mDistanceScale;
    aStream << qSetFieldWidth(9) << aTimestamp << qSetFieldWidth(3) << static_cast<int>(lEcho.mSegment)
            << qSetFieldWidth(7) << static_cast<double>(lAmplitude) << qSetFieldWidth(7)
            << static_cast<double>(lDistance) << qSetFieldWidth(2)
            << (lEcho.mFlag ? 1 : 0)
            // The line feed goes through the field width too: every line ends in a blank before it.
            << qSetFieldWidth(2) << QLatin1Char('\n');
  }

  aStream.setFieldWidth(lWidth);
  aStream.setFieldAlignment(lAlignment);
  aStream.setRealNumberNotation(lNotation);
  aStream.setRealNumberPrecision(lPrecision);
  aStream.setPadChar(lPad);
}

// Precondition checks stay at fixed line numbers: crash reports from installed versions are
// triaged by file and line, so these must not move when the code above changes.
void PxResultEchoes::CheckEchoCount(PtU32 aValue) const
{
#line 124
  PT_ASSERT(aValue <= mEchoes.size());
  PT_ASSERT(Updating());
}
