#include "PxFloatProperty.h"

#include "PtException.h"
#include "PxDoubleSpinBox.h"
#include "PxProperty_p.h"
#include "PxUnits.h"

#include <QGridLayout>
#include <QSpinBox>

#include <cmath>
#include <limits>

namespace {
constexpr PtU32 DECIMALS_NOT_FIXED = 0xFFFFFFFFu;

// Cuts aLimit to the digits shown, toward zero, so that a limit never shows more digits than the
// value can have. The arithmetic stays in float on purpose: -32768 / 100 must come back as
// -327.68 and not as -327.67. Limits too large for the product (the float extremes) have no
// digits after the point to cut and stay as they are.
float CutToDecimals(float aLimit, float aPower)
{
  const float lScaled = aLimit * aPower;
  if (!std::isfinite(lScaled)) {
    return aLimit;
  }
  return std::trunc(lScaled) / aPower;
}
} // namespace

PxFloatProperty::PxFloatProperty(PtU32 aCategory, PtU32 aId, PtU16 aDeviceId, PtU32 aUnitSize, float aScale,
                                 PtU32 aDecimals)
    : PxProperty(aCategory, aId, aDeviceId, aUnitSize, sizeof(Pt32))
    , mMinimum(std::numeric_limits<float>::lowest())
    , mMaximum(std::numeric_limits<float>::max())
    , mScale(aScale)
    , mDecimals(aDecimals)
{
  SetMaxLimits();
}

double PxFloatProperty::DoubleValue(size_t aIndex) const
{
  return Value(aIndex);
}

QString PxFloatProperty::FixedText(float aValue) const
{
  // Without fixed decimals every digit of the stored number is written out (103 of them), so two
  // texts are equal only when the numbers are.
  const int lDecimals = mDecimals == DECIMALS_NOT_FIXED ? 103 : static_cast<int>(mDecimals);
  return QString::number(aValue, 'f', lDecimals);
}

QString PxFloatProperty::TextValue(size_t aIndex) const
{
  return FixedText(PxUnits::To(UnitType(), Value(aIndex)));
}

QString PxFloatProperty::FormattedValue(size_t aIndex) const
{
  const float lShown = PxUnits::To(UnitType(), Value(aIndex));
  const QString lValue = mDecimals == DECIMALS_NOT_FIXED ? QString::number(lShown, 'g', 6)
                                                         : QString::number(lShown, 'f', static_cast<int>(mDecimals));
  QString lText = Format();
  PxPropertyPrivate::ReplaceFirst(lText, QStringLiteral("%n"), Name());
  PxPropertyPrivate::ReplaceFirst(lText, QStringLiteral("%v"), lValue);
  PxPropertyPrivate::ReplaceFirst(lText, QStringLiteral("%u"), PxUnits::ShortName(UnitType()));
  return lText;
}

bool PxFloatProperty::Signed() const
{
  // Raw values are signed integers; plain floats are never widened.
  return mScale != 1;
}

void PxFloatProperty::SetDoubleValue(size_t aIndex, double aValue)
{
  SetValue(aIndex, static_cast<float>(aValue));
}

void PxFloatProperty::SetTextValue(size_t aIndex, const QString& aValue)
{
  const QString lCurrent = TextValue(aIndex);
  if (aValue == lCurrent) {
    return;
  }
  bool lOk = false;
  const float lNumber = aValue.toFloat(&lOk);
  if (!lOk) {
    PtInvalidArgument(QStringLiteral("aValue"), aValue, 16);
  }
  // "1.50" and "1.5" are the same value to the user.
  if (FixedText(lNumber) == lCurrent) {
    return;
  }
  SetValue(aIndex, PxUnits::From(UnitType(), lNumber));
}

void PxFloatProperty::CreateWidget(QGridLayout& aLayout, bool aDisabler, QMap<int, QString>* aBitNames)
{
  Q_UNUSED(aDisabler);
  Q_UNUSED(aBitNames);
  const size_t lCount = Count();
  if (lCount == 0) {
    return;
  }
  // The indexer counts in an int.
  if (lCount > static_cast<size_t>(std::numeric_limits<int>::max())) {
    PtInvalidArgument(QStringLiteral("Count()"), QString::number(lCount), 7);
  }
  const int lRow = aLayout.rowCount();
  auto* lSpinBox = new PxDoubleSpinBox;
  lSpinBox->SetProperty(this, 0);
  lSpinBox->SetLayout(aLayout, lRow, 1);
  if (lCount > 1) {
    // A value per channel: the indexer beside the spin box chooses which one is edited.
    auto* lIndexer = new QSpinBox;
    lIndexer->setRange(1, static_cast<int>(lCount));
    aLayout.addWidget(lIndexer, lRow, 2);
    lSpinBox->SetIndexer(*lIndexer);
  }
}

void PxFloatProperty::SetWidgetEnable(bool aEnable)
{
  Q_UNUSED(aEnable);
}

float PxFloatProperty::Value(size_t aIndex) const
{
  if (mScale == 1) {
    return ValueAt<float>(aIndex);
  }
  return static_cast<float>(ValueAt<Pt32>(aIndex)) / mScale;
}

Pt32 PxFloatProperty::RawValue(size_t aIndex) const
{
  PT_ASSERT(mScale != 1);
  return ValueAt<Pt32>(aIndex);
}

void PxFloatProperty::SetValue(size_t aIndex, float aValue)
{
  // Written so that NaN, which compares false with everything, is refused as well.
  if (!(aValue >= mMinimum && aValue <= mMaximum)) {
    PtInvalidArgument(QStringLiteral("aValue"), FixedText(aValue), 15);
  }
  if (mScale == 1) {
    if (ValueAt<float>(aIndex) == aValue) {
      return;
    }
    StoreAt<float>(aIndex, aValue);
    Q_EMIT ValueChanged(aIndex);
    return;
  }
  // A change too small to show is not a change.
  if (FixedText(aValue) == FixedText(Value(aIndex))) {
    return;
  }
  // Rounded half away from zero. The top limit of 4-byte raw values is 2^31, one past the
  // largest raw integer, so the product is held to the raw range before it is converted.
  const float lProduct = aValue * mScale;
  const float lRounded = lProduct >= 0 ? lProduct + 0.5f : lProduct - 0.5f;
  Pt32 lRaw;
  if (lRounded >= 2147483648.0f) {
    lRaw = std::numeric_limits<Pt32>::max();
  } else if (lRounded <= -2147483648.0f) {
    lRaw = std::numeric_limits<Pt32>::min();
  } else {
    lRaw = static_cast<Pt32>(lRounded);
  }
  SetRawValue(aIndex, lRaw);
}

void PxFloatProperty::SetRawValue(size_t aIndex, Pt32 aValue)
{
  PT_ASSERT(mScale != 1);
  if (ValueAt<Pt32>(aIndex) == aValue) {
    return;
  }
  StoreAt<Pt32>(aIndex, aValue);
  Q_EMIT ValueChanged(aIndex);
}

void PxFloatProperty::SetLimits(float aMin, float aMax)
{
  if (aMin == mMinimum && aMax == mMaximum) {
    return;
  }
  mMinimum = aMin;
  mMaximum = aMax;
  const size_t lCount = Count();
  for (size_t i = 0; i < lCount; ++i) {
    const float lValue = Value(i);
    if (lValue < mMinimum) {
      SetValue(i, mMinimum);
    } else if (lValue > mMaximum) {
      SetValue(i, mMaximum);
    }
  }
  Q_EMIT LimitsChanged();
}

void PxFloatProperty::SetMaxLimits()
{
  mMinimum = std::numeric_limits<float>::lowest();
  mMaximum = std::numeric_limits<float>::max();
  if (mScale != 1) {
    // The range of the raw integer on the wire. The 4-byte top is 2^31 as devices have always
    // been described, not 2^31 - 1.
    bool lKnown = true;
    float lLow = 0;
    float lHigh = 0;
    switch (UnitSize()) {
    case 1:
      lLow = -128.0f;
      lHigh = 127.0f;
      break;
    case 2:
      lLow = -32768.0f;
      lHigh = 32767.0f;
      break;
    case 4:
      lLow = -2147483648.0f;
      lHigh = 2147483648.0f;
      break;
    default:
      lKnown = false;
      break;
    }
    if (lKnown) {
      mMinimum = lLow / mScale;
      mMaximum = lHigh / mScale;
    }
  }
  const float lPower = mDecimals == DECIMALS_NOT_FIXED ? 1e6f : std::pow(10.0f, static_cast<float>(mDecimals));
  mMinimum = CutToDecimals(mMinimum, lPower);
  mMaximum = CutToDecimals(mMaximum, lPower);
}
