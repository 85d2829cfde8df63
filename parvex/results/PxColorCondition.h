#pragma once

#include "ParvexExport.h"

#include <Qt>

class PxProperty;

// Turns a result's value into a display colour: the condition's colour while it holds, black
// otherwise. The threshold is either fixed or follows a property (for example the configured
// refresh rate, so that the measured rate turns red when it strays from it). A NaN value never
// satisfies a condition.
class PX_EXPORT PxColorCondition
{
public:
  PxColorCondition(Qt::GlobalColor aColor, double aThreshold);
  virtual ~PxColorCondition();

  PxColorCondition(const PxColorCondition&) = delete;
  PxColorCondition& operator=(const PxColorCondition&) = delete;

  virtual Qt::GlobalColor GetColor(const double& aValue) const = 0;
  // Binds the threshold to value 0 of aProperty (not owned); null goes back to the fixed one.
  virtual void SetProperty(PxProperty* aProperty);
  // The bound property's value, or the fixed threshold.
  virtual double ConditionValue() const;

  double Threshold() const { return mThreshold; }
  Qt::GlobalColor Color() const { return mColor; }
  PxProperty* Property() const { return mProperty; }

protected:
  double mThreshold = 0.0;
  Qt::GlobalColor mColor = Qt::black;
  PxProperty* mProperty = nullptr;
};

// Holds while the value is strictly below the condition value.
class PX_EXPORT PxColorConditionLessThan : public PxColorCondition
{
public:
  PxColorConditionLessThan(Qt::GlobalColor aColor, double aThreshold);
  Qt::GlobalColor GetColor(const double& aValue) const override;
};

// Holds while the value is strictly above the condition value.
class PX_EXPORT PxColorConditionGreaterThan : public PxColorCondition
{
public:
  PxColorConditionGreaterThan(Qt::GlobalColor aColor, double aThreshold);
  Qt::GlobalColor GetColor(const double& aValue) const override;
};

// Holds while the value strays from the condition value by strictly more than aFraction of it
// (0.1: more than 10 %).
class PX_EXPORT PxColorConditionOutBoundPourcentage : public PxColorCondition
{
public:
  PxColorConditionOutBoundPourcentage(Qt::GlobalColor aColor, double aThreshold, double aFraction);
  Qt::GlobalColor GetColor(const double& aValue) const override;

  double Fraction() const { return mFraction; }

private:
  double mFraction = 0.0;
};
