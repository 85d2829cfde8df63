#pragma once

#include "ParvexExport.h"
#include "PtGraphWidget.h"
#include "PxResultSubscription.h"
#include "PxSensor.h"

#include <QLine>
#include <QPixmap>
#include <QPointF>
#include <QPointer>
#include <QRect>

#include <vector>

class PxResultEchoes;
class PxResultState;
class PxResultTrace;
class PxTrace;

// The signal traces of every segment of a sensor as curves, with the detected echoes as labelled
// ticks over them. Segments can be stacked apart by vertical offsets, shown or hidden one by one,
// drawn thicker or with markers, in normal or reverse video; the trace form drives it from menus,
// the user from the keyboard (see keyPressEvent) and the right mouse button (drags a curve).
class PX_EXPORT PxTraceWidget : public PtGraphWidget
{
  Q_OBJECT

public:
  static constexpr unsigned int COLOR_COUNT = 16;
  static const unsigned int DEFAULT_COLORS[COLOR_COUNT];
  static const unsigned int REVERSE_COLORS[COLOR_COUNT];
  // Layers 16 to 31 are the curve colours made translucent; layer 32 carries the echo labels.
  static constexpr int TEXT_LAYER = 32;
  static constexpr size_t MAX_READOUTS = 96;
  // The display flags.
  enum : unsigned int { SHOW_RAW = 1, SHOW_FILTERED = 2 };

  // One curve: a segment's raw or filtered trace as screen points, with its offsets and markers.
  class Curve
  {
  public:
    Curve();
    Curve(const Curve&) = delete;
    Curve& operator=(const Curve&) = delete;

    void Draw(PtGrafContext& aContext);
    void SetMarkerStyle(unsigned short aStyle);
    // Drops the marker image; it is made again at the next paint.
    void DropMarker() { mMarker = QPixmap(); }

    std::vector<QPointF> mPoints;
    // The curve as drawn without smoothing: the pixels each screen column lights, and the lines
    // for steps that skip columns. Kept between paints so that painting does not allocate.
    std::vector<QRect> mColumns;
    std::vector<QLine> mSteps;
    QPixmap mMarker;
    const PxTrace* mTrace = nullptr;
    unsigned short mMarkerStyle = 0; // 0 none, 1 X, 2 +, 3 square, 4 circle
    float mXOffset = 0.0f;
    float mYOffset = 0.0f;
    int mColorIndex = 0;
    bool mEnabled = true;

  private:
    void DrawColumns(QPainter& aPainter, QPointF* aPoints, size_t aLength, PtGrafContext& aContext);
    void CreateMarker(PtGrafContext& aContext);
    int MarkerHalfSize(PtGrafContext& aContext) const;
  };

  // An echo as drawn: where its tick is and what its tooltip says.
  struct Readout
  {
    int mX = 0;
    int mY = 0;
    unsigned int mSegment = 0;
    float mDistance = 0.0f;
    float mAmplitude = 0.0f;
    float mBase = 0.0f;
    bool mFlag = false;
  };

  explicit PxTraceWidget(QWidget* aParent = nullptr);
  ~PxTraceWidget() override;

  void SetSensor(PxSensor* aSensor);
  void SetFlags(unsigned int aFlags);
  void SetChannelEnabled(unsigned long aChannel, bool aEnabled);
  void EnableAll();
  void DisableAll();
  void SetTraceWidth(unsigned short aWidth);
  void SetMarkerStyle(unsigned short aStyle);
  void SetMarkerStyle(unsigned long aIndex, unsigned short aStyle);
  void IncreaseTraceWidth();
  void DecreaseTraceWidth();
  void IncreaseOffset();
  void DecreaseOffset();
  // Changes the property chosen with 'O' (spacing), 'W' (width) or 'M' (markers) by aDelta.
  void ModifyProperty(int aDelta);
  // The full view over what is shown.
  void ResetAxes();
  // Puts the signal base of segment i on the line i * spacing.
  void SetOffsets();
  void ResetOffsets();
  // Stacks the enabled segments without gaps and zooms on segment aChannel; all ones (or any
  // segment beyond the last) shows them all.
  void AutoSetOffsets(unsigned long aChannel);
  // Toggles between the dark and the light palette.
  void ReverseVideo();

  // For the form, tests and tools that read what is shown.
  PxSensor* Sensor() const { return mSensor; }
  unsigned int Flags() const { return mFlags; }
  unsigned int ChannelCount() const { return mChannelCount; }
  unsigned int CurveCount() const { return mCurveCount; }
  const Curve& CurveAt(size_t aIndex) const { return mCurves[aIndex]; }
  PtU32 SubscriptionMask() const { return mSubscription.Mask(); }
  float TraceSpacing() const { return mTraceSpacing; }
  int SelectedProperty() const { return mSelectedProperty; }
  bool Dragging() const { return mDragging; }
  size_t ReadoutCount() const { return mReadoutCount; }
  const Readout& ReadoutAt(size_t aIndex) const { return mReadouts[aIndex]; }

public Q_SLOTS:
  void StateNewData();

protected:
  void mousePressEvent(QMouseEvent* aEvent) override;
  void mouseMoveEvent(QMouseEvent* aEvent) override;
  void keyPressEvent(QKeyEvent* aEvent) override;
  void PaintGraph() override;
  bool CheckToolTip(int aX, int aY) override;

private:
  void DrawObjects();
  bool SearchClosestObject(int aX, int aY);
  int SearchClosestCurvePoint(int aX, int aY);
  void SetChannelOffset(unsigned int aSegment, float aOffset);
  void ColorLayers(const unsigned int* aColors);
  void DropMarkers();
  // Toggles a segment from a Shift (or Alt) key; false when the key names no segment of ours.
  bool ToggleSegmentKey(QKeyEvent* aEvent);

  // Guarded: the view may outlive the sensor by a moment at disconnect (a closed form waits for
  // its deletion, the host's central view goes after the device UI) and must not reach back then.
  QPointer<PxSensor> mSensor;
  PxResultEchoes* mEchoes = nullptr;
  PxResultTrace* mRawTraces = nullptr;
  PxResultTrace* mFilteredTraces = nullptr;
  PxResultState* mState = nullptr;
  PxResultSubscription mSubscription{18};
  Readout mReadouts[MAX_READOUTS];
  size_t mReadoutCount = 0;
  Curve mCurves[2 * COLOR_COUNT];
  unsigned int mChannelCount = 0;
  unsigned int mCurveCount = 0;
  bool mDragging = false;
  int mDragSegment = 0;
  int mDragStartRow = 0;
  float mDragStartOffset = 0.0f;
  float mTraceSpacing = 10.0f;
  unsigned int mFlags = 0;
  int mDistanceDecimals = 3;
  int mSelectedProperty = 0;
};
