#pragma once

#include "ParvexExport.h"
#include "PtGrafEditWidget.h"
#include "PxResultSubscription.h"

#include <QDateTime>
#include <QStaticText>

#include <vector>

class PxResultEchoes;
class PxSensor;

// A top view of what the sensor sees: a fan of rays from the sensor that splits its field of view
// into segments, and an arc across its segment for every valid echo, at the echo's distance.
// While the sensor holds changes not yet applied, a blinking warning says so. Hosts place it in
// their own windows; a subclass places and turns the sensor through SensorX, SensorY and
// SensorAngle (metres and radians).
class PX_EXPORT PxEchoesGraph : public PtGrafEditWidget
{
  Q_OBJECT

public:
  static constexpr int MAX_RAYS = 17;

  // The fan of rays, drawn as an editable object of the graph.
  class PX_EXPORT Fan : public PtGrafObject
  {
  public:
    explicit Fan(PxEchoesGraph* aGraph)
        : mGraph(aGraph)
    {
    }
    void Draw(PtGrafContext& aContext) override;
    void UpdateSelection(PtGrafSelection& aSelection) override;

    PxEchoesGraph* mGraph;
    // Screen position of the sensor as last drawn.
    int mOriginX = -99;
    int mOriginY = -99;
    int mReserved = 0;
  };

  // An echo as last drawn.
  struct Echo
  {
    unsigned int mSegment = 0;
    float mDistance = 0.0f; // display unit
    float mAmplitude = 0.0f;
  };

  explicit PxEchoesGraph(QWidget* aParent = nullptr);
  ~PxEchoesGraph() override;

  virtual void SetSensor(PxSensor* aSensor);
  virtual float SensorX() const;
  virtual float SensorY() const;
  virtual float SensorAngle() const;
  virtual void ComputeVectors();
  virtual void CreateObjects();

  void ResetAxes();
  void DrawWarning();

  PxSensor* Sensor() const { return mSensor; }
  size_t DrawnEchoCount() const { return mDrawnCount; }
  const Echo& DrawnEcho(size_t aIndex) const { return mEchoes.at(aIndex); }
  float RayCosine(int aIndex) const { return mCosines[aIndex]; }
  float RaySine(int aIndex) const { return mSines[aIndex]; }

public Q_SLOTS:
  void EchoesNewData();
  void UnitsChanged(int aType, int aPreviousUnit);

protected:
  void PaintGraph() override;
  bool CheckToolTip(int aX, int aY) override;
  void resizeEvent(QResizeEvent* aEvent) override;

private:
  friend class Fan;
  // The sensor's range and field of view as the graph uses them: display units and radians.
  float Range() const;
  float FieldOfView() const;
  int SegmentCount() const;

  PxResultSubscription mSubscription{16};
  PxSensor* mSensor = nullptr;
  PxResultEchoes* mEchoesResult = nullptr;
  QDateTime mBlinkTime;
  float mLineHeight = 0.0f;
  QStaticText mAttention;
  QStaticText mModified;
  float mCosines[MAX_RAYS] = {};
  float mSines[MAX_RAYS] = {};
  std::vector<Echo> mEchoes;
  size_t mDrawnCount = 0;
  QString mToolTipTemplate;
};
