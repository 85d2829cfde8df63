#pragma once

#include "ParvexExport.h"
#include "PtTypes.h"

class PxSensor;

// A view's or logger's interest in groups of a sensor's data: a mask of provider ids. The sensor
// fetches the OR of the masks of all its subscriptions. A subscription is free or subscribed to
// exactly one sensor; the sensor's Subscribe and Unsubscribe attach and detach it.
class PX_EXPORT PxResultSubscription
{
public:
  PxResultSubscription() = default;
  explicit PxResultSubscription(PtU32 aMask);
  // Unsubscribes from the sensor first, so the sensor never holds a dangling subscription.
  virtual ~PxResultSubscription();

  PxResultSubscription(const PxResultSubscription&) = delete;
  PxResultSubscription& operator=(const PxResultSubscription&) = delete;

  // Ignored while subscribed: the sensor's data mask was computed from the old mask.
  void SetMask(PtU32 aMask);
  PtU32 Mask() const { return mMask; }

  PxSensor* Sensor() const { return mSensor; }
  bool Subscribed() const { return mSensor != nullptr; }

  // For the sensor's Subscribe (its own address) and Unsubscribe (null).
  void SetSensor(PxSensor* aSensor) { mSensor = aSensor; }

private:
  static void CheckMask(PtU32 aMask);

  PxSensor* mSensor = nullptr;
  PtU32 mMask = 0;
};
