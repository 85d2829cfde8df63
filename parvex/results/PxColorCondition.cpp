#include "PxColorCondition.h"

#include "PxProperty.h"

#include <cmath>

PxColorCondition::PxColorCondition(Qt::GlobalColor aColor, double aThreshold)
    : mThreshold(aThreshold)
    , mColor(aColor)
{
}

PxColorCondition::~PxColorCondition() = default;

void PxColorCondition::SetProperty(PxProperty* aProperty)
{
  mProperty = aProperty;
}

double PxColorCondition::ConditionValue() const
{
  return mProperty ? mProperty->DoubleValue(0) : mThreshold;
}

PxColorConditionLessThan::PxColorConditionLessThan(Qt::GlobalColor aColor, double aThreshold)
    : PxColorCondition(aColor, aThreshold)
{
}

Qt::GlobalColor PxColorConditionLessThan::GetColor(const double& aValue) const
{
  // Comparisons with NaN are false, so a value that is not a number never colours.
  return ConditionValue() > aValue ? mColor : Qt::black;
}

PxColorConditionGreaterThan::PxColorConditionGreaterThan(Qt::GlobalColor aColor, double aThreshold)
    : PxColorCondition(aColor, aThreshold)
{
}

Qt::GlobalColor PxColorConditionGreaterThan::GetColor(const double& aValue) const
{
  return aValue > ConditionValue() ? mColor : Qt::black;
}

PxColorConditionOutBoundPourcentage::PxColorConditionOutBoundPourcentage(Qt::GlobalColor aColor, double aThreshold,
                                                                         double aFraction)
    : PxColorCondition(aColor, aThreshold)
    , mFraction(aFraction)
{
}

Qt::GlobalColor PxColorConditionOutBoundPourcentage::GetColor(const double& aValue) const
{
  const double lReference = ConditionValue();
  return std::abs(lReference - aValue) > lReference * mFraction ? mColor : Qt::black;
}
