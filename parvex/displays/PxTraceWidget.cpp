#include "PxTraceWidget.h"

#include "PxFloatProperty.h"
#include "PxResultEchoes.h"
#include "PxResultState.h"
#include "PxResultTrace.h"
#include "PxSensor.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <climits>
#include <cmath>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {
constexpr float FAR_AWAY = 9e19f;
constexpr unsigned long ALL_CHANNELS = static_cast<unsigned long>(-1);
constexpr float DEFAULT_X_MIN = -3.0f;
constexpr float DEFAULT_X_MAX = 93.0f;
constexpr float DEFAULT_Y_MIN = 0.0f;
constexpr float DEFAULT_Y_MAX = 4095.0f;
// A segment zoom shows the near range, where a segment's echoes are read.
constexpr float SEGMENT_ZOOM_X_MAX = 66.0f;
constexpr int OBJECT_RADIUS = 9;       // pixels on each axis within which an echo is hovered
constexpr int OBJECT_MAX_SQUARED = 99; // and its squared distance must not exceed this
constexpr double CURVE_MAX_SQUARED = 25.0;
constexpr int TICK_HEIGHT = 5;
constexpr float TEXT_SIZE = 7.5f;

// Mask of the subscription for the display flags: state and echoes always, traces as shown.
PtU32 MaskForFlags(unsigned int aFlags)
{
  PtU32 lMask = PxResultProvider::ID_STATE | PxResultProvider::ID_ECHOES;
  if (aFlags & PxTraceWidget::SHOW_RAW) {
    lMask |= PxResultProvider::ID_TRACES;
  }
  if (aFlags & PxTraceWidget::SHOW_FILTERED) {
    lMask |= PxResultProvider::ID_TRACES_32;
  }
  return lMask;
}

// The largest amplitude the sensor's raw traces can carry: their full 16-bit sample range.
float MaxTraceAmplitude(PxSensor& aSensor)
{
  return 65535.0f * aSensor.TraceProvider().AmplitudeScale();
}

// The segment the Shift (or Alt) digit row names, from the key's place on a PC keyboard: the
// characters it gives change with the layout and with Shift, the place does not.
int SegmentFromScanCode(quint32 aNativeScanCode)
{
  quint32 lScanCode = aNativeScanCode;
  const QString lPlatform = QGuiApplication::platformName();
  // X11 and Wayland report keycodes: set-1 scan codes moved up by 8.
  if (lPlatform == QLatin1String("xcb") || lPlatform.startsWith(QLatin1String("wayland"))) {
    lScanCode = lScanCode >= 8 ? lScanCode - 8 : 0;
  }
  if (lScanCode == 11) {
    return 0;
  }
  if (lScanCode >= 2 && lScanCode <= 10) {
    return static_cast<int>(lScanCode) - 1;
  }
  return -1;
}

// A screen coordinate as a whole pixel. Far-away offsets must not overflow: the rasterizer clips
// anything this far out anyway.
inline int ToPixel(double aValue)
{
  constexpr double FAR = 1e6;
  const double lClamped = aValue < -FAR ? -FAR : aValue > FAR ? FAR : aValue;
#if defined(__SSE2__)
  // One instruction, rounding to nearest: this runs for every sample of every curve.
  return _mm_cvtsd_si32(_mm_set_sd(lClamped));
#else
  return static_cast<int>(std::lround(lClamped));
#endif
}
} // namespace

const unsigned int PxTraceWidget::DEFAULT_COLORS[COLOR_COUNT] = {
    0xFF4A69FF, 0xFFFF0000, 0xFF008000, 0xFF800080, 0xFF008080, 0xFFFFFF00, 0xFF800000, 0xFF0000FF,
    0xFF00FF00, 0xFFFF00FF, 0xFF808000, 0xFFFF8000, 0xFF804000, 0xFF00FFFF, 0xFF808080, 0xFFFFFFFF};
// Yellow and white would vanish on the light background: a dull rose and black stand in.
const unsigned int PxTraceWidget::REVERSE_COLORS[COLOR_COUNT] = {
    0xFF4A69FF, 0xFFFF0000, 0xFF008000, 0xFF800080, 0xFF008080, 0xFFB36666, 0xFF800000, 0xFF0000FF,
    0xFF00FF00, 0xFFFF00FF, 0xFF808000, 0xFFFF8000, 0xFF804000, 0xFF00FFFF, 0xFF808080, 0xFF000000};

PxTraceWidget::Curve::Curve()
{
  mPoints.reserve(512);
  mColumns.reserve(512);
}

int PxTraceWidget::Curve::MarkerHalfSize(PtGrafContext& aContext) const
{
  return std::max(4, static_cast<int>(2.0 * aContext.Layer(mColorIndex).Pen().widthF()));
}

void PxTraceWidget::Curve::Draw(PtGrafContext& aContext)
{
  const size_t lLength = mTrace->Length();
  if (lLength == 0) {
    return;
  }
  // Kept between paints: the array is only reallocated when a trace grows past what it held.
  mPoints.resize(lLength);
  QPointF* lPoints = mPoints.data();
  mTrace->FillPoints(lPoints);
  QPainter& lPainter = aContext.Painter();
  lPainter.setPen(aContext.Layer(mColorIndex).Pen());
  if (lPainter.testRenderHint(QPainter::Antialiasing)) {
    for (size_t k = 0; k < lLength; ++k) {
      lPoints[k] = QPointF(aContext.ScreenX(lPoints[k].x() + mXOffset), aContext.ScreenY(lPoints[k].y() + mYOffset));
    }
    lPainter.drawPolyline(lPoints, static_cast<int>(lLength));
  } else {
    DrawColumns(lPainter, lPoints, lLength, aContext);
  }

  if (mMarkerStyle != 0) {
    const int lHalf = MarkerHalfSize(aContext);
    if (mMarker.isNull()) {
      CreateMarker(aContext);
    }
    // The marker is opaque: stamping it again where the last one went changes nothing.
    QPoint lLast(INT_MIN, INT_MIN);
    for (size_t k = 0; k < lLength; ++k) {
      const QPoint lCorner(static_cast<int>(lPoints[k].x() - lHalf), static_cast<int>(lPoints[k].y() - lHalf));
      if (lCorner != lLast) {
        lPainter.drawPixmap(lCorner, mMarker);
        lLast = lCorner;
      }
    }
  }
}

void PxTraceWidget::Curve::DrawColumns(QPainter& aPainter, QPointF* aPoints, size_t aLength, PtGrafContext& aContext)
{
  // Without smoothing, a one-pixel polyline lights in each pixel column the rows between the
  // lowest and highest sample it passes there, plus the rows of the step to the next column,
  // which the rasterizer puts in the left column up to, not including, the next sample's row.
  // Traces have several samples per column: filling each column's rows as one rectangle lights
  // the same pixels as the polyline at a fraction of the cost of stroking it. Steps over more
  // than one column (a zoomed-in view) are drawn as lines.
  const QPen lPen = aPainter.pen();
  const bool lAsColumns = lPen.style() == Qt::SolidLine && lPen.widthF() <= 1.0 &&
                          aPainter.deviceTransform().type() <= QTransform::TxTranslate;
  mColumns.clear();
  mSteps.clear();
  const PtGrafContext::Mapping lMap = aContext.CurrentMapping();
  const double lXOffset = mXOffset;
  const double lYOffset = mYOffset;
  int lColumn = 0, lTop = 0, lBottom = 0, lLast = 0;
  for (size_t k = 0; k < aLength; ++k) {
    const QPointF lScreen(lMap.ScreenX(aPoints[k].x() + lXOffset), lMap.ScreenY(aPoints[k].y() + lYOffset));
    aPoints[k] = lScreen;
    const int lX = ToPixel(lScreen.x());
    const int lY = ToPixel(lScreen.y());
    if (k > 0 && lX == lColumn) {
      lTop = std::min(lTop, lY);
      lBottom = std::max(lBottom, lY);
      lLast = lY;
      continue;
    }
    if (k > 0) {
      if (lAsColumns && lX == lColumn + 1) {
        if (lY > lLast + 1) {
          lBottom = std::max(lBottom, lY - 1);
        } else if (lY < lLast - 1) {
          lTop = std::min(lTop, lY + 1);
        }
      } else {
        mSteps.emplace_back(lColumn, lLast, lX, lY);
      }
      mColumns.emplace_back(lColumn, lTop, 1, lBottom - lTop + 1);
    }
    lColumn = lX;
    lTop = lBottom = lLast = lY;
  }
  mColumns.emplace_back(lColumn, lTop, 1, lBottom - lTop + 1);

  if (lAsColumns) {
    const QBrush lBrush = aPainter.brush();
    aPainter.setPen(Qt::NoPen);
    aPainter.setBrush(lPen.brush());
    aPainter.drawRects(mColumns.data(), static_cast<int>(mColumns.size()));
    aPainter.setBrush(lBrush);
    aPainter.setPen(lPen);
  } else {
    // A thick or dashed pen: the columns' runs as vertical lines, joined by the steps.
    for (const QRect& lRun : mColumns) {
      mSteps.emplace_back(lRun.left(), lRun.top(), lRun.left(), lRun.bottom());
    }
  }
  aPainter.drawLines(mSteps.data(), static_cast<int>(mSteps.size()));
}

void PxTraceWidget::Curve::CreateMarker(PtGrafContext& aContext)
{
  const int m = MarkerHalfSize(aContext);
  const PtLayer& lLayer = aContext.Layer(mColorIndex);
  mMarker = QPixmap(2 * m + 1, 2 * m + 1);
  // Opaque black, not transparent: the markers have always been stamped on black squares.
  mMarker.fill(QColor(QRgb(0)));
  QPainter lPainter(&mMarker);
  lPainter.setPen(lLayer.Pen());
  switch (mMarkerStyle) {
  case 1:
    lPainter.drawLine(0, 0, 2 * m, 2 * m);
    lPainter.drawLine(2 * m, 0, 0, 2 * m);
    break;
  case 2:
    lPainter.drawLine(m, 0, m, 2 * m + 1);
    lPainter.drawLine(0, m, 2 * m + 1, m);
    break;
  case 3:
    lPainter.fillRect(0, 0, 2 * m + 1, 2 * m + 1, lLayer.Brush());
    break;
  case 4:
    lPainter.drawEllipse(0, 0, 2 * m - 1, 2 * m - 1);
    break;
  default:
    break;
  }
}

void PxTraceWidget::Curve::SetMarkerStyle(unsigned short aStyle)
{
  if (aStyle != mMarkerStyle) {
    mMarkerStyle = aStyle;
    DropMarker();
  }
}

PxTraceWidget::PxTraceWidget(QWidget* aParent)
    : PtGraphWidget(aParent)
{
  ColorLayers(DEFAULT_COLORS);
  for (unsigned int i = 0; i < COLOR_COUNT; ++i) {
    Context().Layer(static_cast<int>(COLOR_COUNT + i)).SetColor(QColor::fromRgba(DEFAULT_COLORS[i] & 0x40FFFFFF));
  }
  Context().Layer(TEXT_LAYER).SetColor(Qt::white);
  Context().Layer(TEXT_LAYER).SetFont(PtLayer::GENERIC_SANS_SERIF, TEXT_SIZE);
  Context().Layer(1).SetFont(PtLayer::GENERIC_SANS_SERIF, TEXT_SIZE);
  SetLimits(DEFAULT_X_MIN, DEFAULT_X_MAX, DEFAULT_Y_MIN, DEFAULT_Y_MAX);
}

PxTraceWidget::~PxTraceWidget()
{
  SetSensor(nullptr);
}

void PxTraceWidget::ColorLayers(const unsigned int* aColors)
{
  for (unsigned int i = 0; i < COLOR_COUNT; ++i) {
    Context().Layer(static_cast<int>(i)).SetColor(QColor::fromRgba(aColors[i]));
  }
}

void PxTraceWidget::DropMarkers()
{
  for (Curve& lCurve : mCurves) {
    lCurve.DropMarker();
  }
}

void PxTraceWidget::SetSensor(PxSensor* aSensor)
{
  if (mSensor != nullptr) {
    if (mState != nullptr) {
      disconnect(mState, &PxResultProvider::NewData, this, &PxTraceWidget::StateNewData);
    }
    mEchoes = nullptr;
    mRawTraces = nullptr;
    mFilteredTraces = nullptr;
    mState = nullptr;
    mCurveCount = 0;
    mReadoutCount = 0;
    mSensor->Unsubscribe(&mSubscription);
  }
  mSensor = aSensor;
  for (Curve& lCurve : mCurves) {
    lCurve.mTrace = nullptr;
  }
  if (aSensor == nullptr) {
    return;
  }
  mChannelCount = static_cast<unsigned int>(std::max(0, aSensor->ChannelCount()));
  mCurveCount = aSensor->DeliversFilteredTraces() ? 2 * mChannelCount : mChannelCount;
  PT_ASSERT(mChannelCount <= COLOR_COUNT);
  for (unsigned int i = 0; i < mChannelCount; ++i) {
    for (Curve* lCurve : {&mCurves[i], &mCurves[mChannelCount + i]}) {
      lCurve->mColorIndex = static_cast<int>(i);
      lCurve->mEnabled = true;
      lCurve->DropMarker();
    }
  }
  SetYUpperLimit(MaxTraceAmplitude(*aSensor));
  mEchoes = &aSensor->EchoesProvider();
  mRawTraces = &aSensor->TraceProvider();
  mFilteredTraces = qobject_cast<PxResultTrace*>(aSensor->GetProvider(PxResultProvider::ID_TRACES_32));
  mState = qobject_cast<PxResultState*>(aSensor->GetProvider(PxResultProvider::ID_STATE));
  if (mState != nullptr) {
    connect(mState, &PxResultProvider::NewData, this, &PxTraceWidget::StateNewData);
  }
  aSensor->Subscribe(&mSubscription);
}

void PxTraceWidget::SetFlags(unsigned int aFlags)
{
  if (aFlags == mFlags) {
    return;
  }
  mFlags = aFlags;
  if (mSensor != nullptr) {
    mSensor->Unsubscribe(&mSubscription);
    for (Curve& lCurve : mCurves) {
      lCurve.mTrace = nullptr;
    }
  }
  mSubscription.SetMask(MaskForFlags(aFlags));
  if (mSensor != nullptr) {
    mSensor->Subscribe(&mSubscription);
  }
}

void PxTraceWidget::SetChannelEnabled(unsigned long aChannel, bool aEnabled)
{
  if (aChannel < COLOR_COUNT) {
    mCurves[aChannel].mEnabled = aEnabled;
    if (aChannel + mChannelCount < 2 * COLOR_COUNT) {
      mCurves[aChannel + mChannelCount].mEnabled = aEnabled;
    }
  }
}

void PxTraceWidget::EnableAll()
{
  for (unsigned int i = 0; i < mCurveCount; ++i) {
    mCurves[i].mEnabled = true;
  }
}

void PxTraceWidget::DisableAll()
{
  for (unsigned int i = 0; i < mCurveCount; ++i) {
    mCurves[i].mEnabled = false;
  }
}

void PxTraceWidget::SetTraceWidth(unsigned short aWidth)
{
  for (unsigned int i = 0; i < COLOR_COUNT; ++i) {
    Context().Layer(static_cast<int>(i)).Pen().setWidth(aWidth);
  }
  DropMarkers();
}

void PxTraceWidget::SetMarkerStyle(unsigned short aStyle)
{
  for (Curve& lCurve : mCurves) {
    lCurve.SetMarkerStyle(aStyle);
  }
}

void PxTraceWidget::SetMarkerStyle(unsigned long aIndex, unsigned short aStyle)
{
  if (aIndex < 2 * COLOR_COUNT) {
    mCurves[aIndex].SetMarkerStyle(aStyle);
  }
}

void PxTraceWidget::IncreaseTraceWidth()
{
  mSelectedProperty = 'W';
  ModifyProperty(1);
}

void PxTraceWidget::DecreaseTraceWidth()
{
  mSelectedProperty = 'W';
  ModifyProperty(-1);
}

void PxTraceWidget::IncreaseOffset()
{
  mSelectedProperty = 'O';
  ModifyProperty(1);
}

void PxTraceWidget::DecreaseOffset()
{
  mSelectedProperty = 'O';
  ModifyProperty(-1);
}

void PxTraceWidget::ModifyProperty(int aDelta)
{
  switch (mSelectedProperty) {
  case 'O':
    mTraceSpacing += static_cast<float>(aDelta);
    SetOffsets();
    break;
  case 'W': {
    const int lWidth = std::max(0, Context().Layer(0).Pen().width() + aDelta);
    SetTraceWidth(static_cast<unsigned short>(lWidth));
    update();
    break;
  }
  case 'M': {
    const int lStyle = std::clamp(static_cast<int>(mCurves[0].mMarkerStyle) + aDelta, 0, 4);
    for (unsigned int i = 0; i < mCurveCount; ++i) {
      mCurves[i].SetMarkerStyle(static_cast<unsigned short>(lStyle));
    }
    update();
    break;
  }
  default:
    break;
  }
}

void PxTraceWidget::ResetAxes()
{
  float lXMin = 200.0f, lXMax = -200.0f;
  float lYMin = FAR_AWAY, lYMax = -FAR_AWAY;
  bool lAny = false;
  for (unsigned int i = 0; i < mCurveCount; ++i) {
    const Curve& lCurve = mCurves[i];
    if (!lCurve.mEnabled || lCurve.mTrace == nullptr) {
      continue;
    }
    lAny = true;
    float lMin = 0.0f, lMax = 0.0f;
    lCurve.mTrace->ComputeXLimits(lMin, lMax);
    lXMin = std::min(lXMin, lMin);
    lXMax = std::max(lXMax, lMax);
    lCurve.mTrace->ComputeYLimits(lMin, lMax);
    lYMin = std::min(lYMin, lMin + lCurve.mYOffset);
    lYMax = std::max(lYMax, lMax + lCurve.mYOffset);
  }
  if (!lAny) {
    SetLimits(DEFAULT_X_MIN, DEFAULT_X_MAX, DEFAULT_Y_MIN, DEFAULT_Y_MAX);
    return;
  }
  SetLimits(std::floor(lXMin), std::ceil(lXMax), std::floor(lYMin), std::ceil(lYMax));
}

void PxTraceWidget::SetChannelOffset(unsigned int aSegment, float aOffset)
{
  mCurves[aSegment].mYOffset = aOffset;
  mCurves[mChannelCount + aSegment].mYOffset = aOffset;
}

void PxTraceWidget::SetOffsets()
{
  for (unsigned int i = 0; i < mChannelCount; ++i) {
    const PxTrace* lTrace = mCurves[i].mTrace != nullptr ? mCurves[i].mTrace : mCurves[mChannelCount + i].mTrace;
    const float lBase = lTrace != nullptr ? lTrace->SignalBase() : 0.0f;
    SetChannelOffset(i, std::ceil(static_cast<float>(i) * mTraceSpacing - lBase));
  }
  update();
}

void PxTraceWidget::ResetOffsets()
{
  for (Curve& lCurve : mCurves) {
    lCurve.mYOffset = 0.0f;
  }
  update();
}

void PxTraceWidget::AutoSetOffsets(unsigned long aChannel)
{
  float lTop = 0.0f;
  float lZoomXMin = 0.0f, lZoomYMin = 0.0f, lZoomYMax = 256.0f;
  for (unsigned int i = 0; i < mChannelCount; ++i) {
    const Curve& lRaw = mCurves[i];
    const Curve& lFiltered = mCurves[mChannelCount + i];
    if (!lRaw.mEnabled) {
      continue;
    }
    // A segment without a trace yet keeps its place in the stack with far-away limits, so the
    // stack reads the same once its data arrive.
    float lLow = FAR_AWAY, lHigh = -FAR_AWAY;
    if (lRaw.mTrace != nullptr) {
      lRaw.mTrace->ComputeYLimits(lLow, lHigh);
    }
    if (lFiltered.mEnabled && lFiltered.mTrace != nullptr) {
      float lMin = 0.0f, lMax = 0.0f;
      lFiltered.mTrace->ComputeYLimits(lMin, lMax);
      lLow = std::min(lLow, lMin);
      lHigh = std::max(lHigh, lMax);
    }
    const float lOffset = std::ceil(lTop - lLow);
    SetChannelOffset(i, lOffset);
    lTop = lOffset + lHigh;
    if (i == aChannel) {
      const PxTrace* lTrace = lRaw.mTrace != nullptr ? lRaw.mTrace : lFiltered.mTrace;
      if (lTrace != nullptr) {
        float lXMax = 0.0f;
        lTrace->ComputeXLimits(lZoomXMin, lXMax);
      }
      lZoomYMin = lLow + lOffset;
      lZoomYMax = lOffset + lHigh;
    }
  }
  if (aChannel < mChannelCount && aChannel != ALL_CHANNELS) {
    SetLimits(lZoomXMin, SEGMENT_ZOOM_X_MAX, lZoomYMin, lZoomYMax);
  } else {
    ResetAxes();
  }
}

void PxTraceWidget::ReverseVideo()
{
  const bool lNormal = Context().Layer(15).Color() == QColor(Qt::white);
  ColorLayers(lNormal ? REVERSE_COLORS : DEFAULT_COLORS);
  Context().Layer(TEXT_LAYER).SetColor(lNormal ? Qt::black : Qt::white);
  SetReverseVideo(lNormal);
  DropMarkers();
  update();
}

void PxTraceWidget::StateNewData()
{
  if (mSensor == nullptr) {
    return;
  }
  if ((mFlags & SHOW_RAW) && mRawTraces != nullptr) {
    const std::vector<PxTrace>& lTraces = mRawTraces->Traces();
    for (unsigned int i = 0; i < mChannelCount; ++i) {
      mCurves[i].mTrace = i < lTraces.size() ? &lTraces[i] : nullptr;
    }
  }
  if ((mFlags & SHOW_FILTERED) && mFilteredTraces != nullptr) {
    const std::vector<PxTrace>& lTraces = mFilteredTraces->Traces();
    for (unsigned int i = 0; i < mChannelCount; ++i) {
      mCurves[mChannelCount + i].mTrace = i < lTraces.size() ? &lTraces[i] : nullptr;
    }
  }
  update();
}

void PxTraceWidget::PaintGraph()
{
  if (mSensor == nullptr) {
    return;
  }
  for (unsigned int i = 0; i < mCurveCount; ++i) {
    if (mCurves[i].mEnabled && mCurves[i].mTrace != nullptr) {
      mCurves[i].Draw(Context());
    }
  }
  DrawObjects();
}

void PxTraceWidget::DrawObjects()
{
  PxFloatProperty& lOffsetProperty = mSensor->EchoDistanceOffsetProperty();
  const float lXShift = lOffsetProperty.Count() > 0 ? lOffsetProperty.Value(0) : 0.0f;
  mReadoutCount = 0;
  if (mEchoes == nullptr) {
    return;
  }
  const float lDistanceScale = mEchoes->DistanceScale();
  const float lAmplitudeScale = mEchoes->AmplitudeScale();
  const PtU32 lCount = mEchoes->EchoCount();
  for (PtU32 e = 0; e < lCount && mReadoutCount < MAX_READOUTS; ++e) {
    const PxEcho& lEcho = mEchoes->mEchoes[e];
    if (lEcho.mSegment >= 2 * COLOR_COUNT || !mCurves[lEcho.mSegment].mEnabled) {
      continue;
    }
    Readout& lReadout = mReadouts[mReadoutCount++];
    lReadout.mDistance = static_cast<float>(lEcho.mDistance) * lDistanceScale;
    lReadout.mAmplitude = static_cast<float>(lEcho.mAmplitude) * lAmplitudeScale;
    lReadout.mBase = static_cast<float>(lEcho.mValue3) * lAmplitudeScale;
    lReadout.mSegment = lEcho.mSegment;
    lReadout.mFlag = (lEcho.mFlag & 1) != 0;
  }

  PtGrafContext& lContext = Context();
  QPainter& lPainter = lContext.Painter();
  for (size_t r = 0; r < mReadoutCount; ++r) {
    Readout& lReadout = mReadouts[r];
    const Curve& lCurve = mCurves[lReadout.mSegment];
    const double lX = lXShift + lReadout.mDistance + lCurve.mXOffset;
    const double lY = lReadout.mBase + lReadout.mAmplitude + lCurve.mYOffset;
    const double lScreenX = lContext.ScreenX(lX);
    const double lScreenY = lContext.ScreenY(lY);
    lReadout.mX = static_cast<int>(std::lround(lScreenX));
    lReadout.mY = static_cast<int>(std::lround(lScreenY));
    lPainter.setPen(lContext.Layer(lCurve.mColorIndex).Pen());
    lPainter.drawLine(QPointF(lScreenX, lScreenY), QPointF(lScreenX, lScreenY - TICK_HEIGHT));
    const PtLayer& lTextLayer = lContext.Layer(lReadout.mFlag ? TEXT_LAYER : 1);
    lPainter.setPen(lTextLayer.Pen());
    lPainter.setFont(lTextLayer.Font());
    lPainter.drawText(QPointF(lScreenX - 8.0, lScreenY - 11.0),
                      QString::number(static_cast<double>(lReadout.mDistance), 'f', mDistanceDecimals));
  }
}

bool PxTraceWidget::CheckToolTip(int aX, int aY)
{
  return SearchClosestObject(aX, aY) || SearchClosestCurvePoint(aX, aY) >= 0;
}

bool PxTraceWidget::SearchClosestObject(int aX, int aY)
{
  int lBest = 9999999;
  const Readout* lFound = nullptr;
  for (size_t r = 0; r < mReadoutCount; ++r) {
    const int lDx = mReadouts[r].mX - aX;
    const int lDy = mReadouts[r].mY - aY;
    if (std::abs(lDx) > OBJECT_RADIUS || std::abs(lDy) > OBJECT_RADIUS) {
      continue;
    }
    const int lSquared = lDx * lDx + lDy * lDy;
    if (lSquared < lBest) {
      lBest = lSquared;
      lFound = &mReadouts[r];
    }
  }
  if (lFound == nullptr || lBest > OBJECT_MAX_SQUARED) {
    return false;
  }
  mToolTipText = tr("Segment") + QLatin1Char('\t') + QString::number(lFound->mSegment) + QLatin1Char('\n') +
                 tr("Distance") + QLatin1Char('\t') + QString::number(static_cast<double>(lFound->mDistance), 'f', 2) +
                 QLatin1Char('\n') + tr("Amplitude") + QLatin1Char('\t') +
                 QString::number(static_cast<double>(lFound->mAmplitude), 'f', 2) + QLatin1Char('\n') + tr("Base") +
                 QStringLiteral("\t\t") + QString::number(static_cast<double>(lFound->mBase), 'f', 1);
  mToolTipX = lFound->mX;
  mToolTipY = lFound->mY;
  return true;
}

int PxTraceWidget::SearchClosestCurvePoint(int aX, int aY)
{
  const float lDataX = static_cast<float>((aX - mLeftMargin) / mXScale + mXMin);
  double lBest = 9e19;
  int lCurveIndex = -1;
  QPointF lPoint;
  for (unsigned int i = 0; i < mCurveCount; ++i) {
    const Curve& lCurve = mCurves[i];
    if (!lCurve.mEnabled || lCurve.mTrace == nullptr) {
      continue;
    }
    const Pt32 k = lCurve.mTrace->IndexFromDistance(lDataX, false, true);
    if (k < 0 || static_cast<size_t>(k) >= lCurve.mPoints.size()) {
      continue;
    }
    const QPointF& lScreen = lCurve.mPoints[static_cast<size_t>(k)];
    const double lDx = lScreen.x() - aX;
    const double lDy = lScreen.y() - aY;
    const double lSquared = lDx * lDx + lDy * lDy;
    if (lSquared < lBest) {
      lBest = lSquared;
      lCurveIndex = static_cast<int>(i);
      lPoint = lScreen;
    }
  }
  if (lCurveIndex < 0 || !(lBest < CURVE_MAX_SQUARED)) {
    return -1;
  }
  const QPointF lData = ToData(lPoint);
  mToolTipText = tr("Segment") + QLatin1Char(' ') +
                 QString::number(static_cast<unsigned int>(lCurveIndex) % mChannelCount) + QStringLiteral("\nX = ") +
                 QString::number(lData.x(), 'f', 4) + QStringLiteral("\nY = ") + QString::number(lData.y(), 'f', 4);
  mToolTipX = aX;
  mToolTipY = aY;
  return lCurveIndex;
}

bool PxTraceWidget::ToggleSegmentKey(QKeyEvent* aEvent)
{
  const int lKey = aEvent->key();
  const int lSegment = (lKey >= Qt::Key_A && lKey <= Qt::Key_F) ? 10 + (lKey - Qt::Key_A)
                                                                : SegmentFromScanCode(aEvent->nativeScanCode());
  if (lSegment >= static_cast<int>(mChannelCount)) {
    return false;
  }
  if (lSegment >= 0) {
    Curve& lRaw = mCurves[lSegment];
    lRaw.mEnabled = !lRaw.mEnabled;
    mCurves[mChannelCount + static_cast<unsigned int>(lSegment)].mEnabled = lRaw.mEnabled;
    update();
  }
  return true;
}

void PxTraceWidget::keyPressEvent(QKeyEvent* aEvent)
{
  const Qt::KeyboardModifiers lModifiers =
      aEvent->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
  const int lKey = aEvent->key();
  bool lHandled = false;
  if (lModifiers == Qt::NoModifier) {
    lHandled = true;
    if (lKey == Qt::Key_Plus) {
      ModifyProperty(1);
    } else if (lKey == Qt::Key_Minus) {
      ModifyProperty(-1);
    } else if (lKey == Qt::Key_M || lKey == Qt::Key_O || lKey == Qt::Key_W) {
      mSelectedProperty = lKey;
    } else {
      lHandled = false;
    }
  } else if (lModifiers == Qt::ControlModifier) {
    lHandled = true;
    if (lKey >= Qt::Key_0 && lKey <= Qt::Key_9) {
      AutoSetOffsets(static_cast<unsigned long>(lKey - Qt::Key_0));
    } else if (lKey >= Qt::Key_A && lKey <= Qt::Key_F) {
      AutoSetOffsets(static_cast<unsigned long>(10 + lKey - Qt::Key_A));
    } else {
      lHandled = false;
    }
  } else if (lModifiers == Qt::AltModifier || lModifiers == Qt::ShiftModifier) {
    lHandled = true;
    switch (lModifiers == Qt::AltModifier ? lKey : 0) {
    case Qt::Key_A:
      AutoSetOffsets(ALL_CHANNELS);
      break;
    case Qt::Key_D:
      DisableAll();
      break;
    case Qt::Key_E:
      EnableAll();
      break;
    case Qt::Key_R:
      ResetAxes();
      break;
    case Qt::Key_S:
      SetOffsets();
      break;
    case Qt::Key_T:
      ResetOffsets();
      break;
    case Qt::Key_V:
      ReverseVideo();
      break;
    default:
      lHandled = ToggleSegmentKey(aEvent);
      break;
    }
  }
  if (lHandled) {
    aEvent->accept();
  } else {
    PtGraphWidget::keyPressEvent(aEvent);
  }
}

void PxTraceWidget::mousePressEvent(QMouseEvent* aEvent)
{
  if (aEvent->button() == Qt::RightButton && !mZooming && !mPanning) {
    const int lX = static_cast<int>(std::lround(aEvent->localPos().x()));
    const int lY = static_cast<int>(std::lround(aEvent->localPos().y()));
    if (InPlot(lX, lY) && mChannelCount > 0) {
      const int lCurve = SearchClosestCurvePoint(lX, lY);
      if (lCurve >= 0) {
        mDragging = true;
        mDragSegment = lCurve % static_cast<int>(mChannelCount);
        mDragStartRow = lY;
        mDragStartOffset = mCurves[mDragSegment].mYOffset;
        aEvent->accept();
        return;
      }
    }
  } else if (aEvent->button() == Qt::LeftButton && mDragging) {
    aEvent->accept();
    return;
  }
  PtGraphWidget::mousePressEvent(aEvent);
}

void PxTraceWidget::mouseMoveEvent(QMouseEvent* aEvent)
{
  if (!(aEvent->buttons() & Qt::RightButton)) {
    mDragging = false;
  } else if (mDragging) {
    const float lOffset = static_cast<float>((mDragStartRow - aEvent->localPos().y()) / mYScale) + mDragStartOffset;
    SetChannelOffset(static_cast<unsigned int>(mDragSegment), lOffset);
    update();
    aEvent->accept();
    return;
  }
  PtGraphWidget::mouseMoveEvent(aEvent);
}
