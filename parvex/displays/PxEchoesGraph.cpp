#include "PxEchoesGraph.h"

#include "PtErrorLogForm.h"
#include "PxFloatProperty.h"
#include "PxResultEchoes.h"
#include "PxSensor.h"
#include "PxUnits.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {
constexpr double DEGREES = 180.0 / M_PI;
constexpr qint64 BLINK_SHOWN_MS = 600;
constexpr qint64 BLINK_HIDDEN_MS = 400;

float Distance(float aMetres)
{
  return PxUnits::To(UT_DISTANCE, aMetres);
}
} // namespace

void PxEchoesGraph::Fan::Draw(PtGrafContext& aContext)
{
  if (mGraph->mSensor == nullptr) {
    return;
  }
  const double lRange = mGraph->Range();
  const double lX = Distance(mGraph->SensorX());
  const double lY = Distance(mGraph->SensorY());
  const double lScreenX = aContext.ScreenX(lX);
  const double lScreenY = aContext.ScreenY(lY);
  mOriginX = static_cast<int>(std::lround(lScreenX));
  mOriginY = static_cast<int>(std::lround(lScreenY));
  QPainter& lPainter = aContext.Painter();
  lPainter.setPen(aContext.Layer(0).Pen());
  const int lRays = std::min(mGraph->SegmentCount(), MAX_RAYS - 1) + 1;
  for (int i = 0; i < lRays; ++i) {
    lPainter.drawLine(QPointF(lScreenX, lScreenY), QPointF(aContext.ScreenX(lX + lRange * mGraph->mCosines[i]),
                                                           aContext.ScreenY(lY + lRange * mGraph->mSines[i])));
  }
}

void PxEchoesGraph::Fan::UpdateSelection(PtGrafSelection&)
{
  // The fan follows the sensor; the user does not pick it up.
}

PxEchoesGraph::PxEchoesGraph(QWidget* aParent)
    : PtGrafEditWidget(aParent)
    , mAttention(tr("ATTENTION"))
    , mModified(tr("Configuration modified. Use Apply button to confirm."))
{
  mEchoes.reserve(100);
  Context().Layer(0).SetColor(QColor::fromRgba(0xFFFFFFFF));
  Context().Layer(1).SetColor(QColor::fromRgba(0xFFFF0000));
  Context().Layer(2).SetColor(QColor::fromRgba(0xFFFF0000));
  Context().Layer(3).SetColor(QColor::fromRgba(0xFF00FF00));
  Context().Layer(4).SetColor(QColor(255, 0, 0, 144));
  mAttention.setPerformanceHint(QStaticText::AggressiveCaching);
  mModified.setPerformanceHint(QStaticText::AggressiveCaching);
  mToolTipTemplate = tr("Segment") + QStringLiteral("\t%1\n") + tr("Distance") + QStringLiteral("\t%2\n") +
                     tr("Amplitude") + QStringLiteral("\t%3");
  PxUnits::Initialize();
  connect(PxUnits::Singleton(), &PxUnits::Changed, this, &PxEchoesGraph::UnitsChanged);
}

PxEchoesGraph::~PxEchoesGraph()
{
  if (mSensor != nullptr) {
    mSensor->Unsubscribe(&mSubscription);
  }
}

float PxEchoesGraph::Range() const
{
  PxFloatProperty& lRange = mSensor->LengthProperty();
  return Distance(lRange.Count() > 0 ? lRange.Value(0) : 0.0f);
}

float PxEchoesGraph::FieldOfView() const
{
  PxFloatProperty& lFieldOfView = mSensor->FieldOfViewProperty();
  return static_cast<float>((lFieldOfView.Count() > 0 ? lFieldOfView.Value(0) : 0.0f) * M_PI / 180.0);
}

int PxEchoesGraph::SegmentCount() const
{
  return mSensor != nullptr ? std::clamp(mSensor->ChannelCount(), 0, MAX_RAYS - 1) : 0;
}

void PxEchoesGraph::SetSensor(PxSensor* aSensor)
{
  if (mSensor != nullptr) {
    if (mEchoesResult != nullptr) {
      disconnect(mEchoesResult, &PxResultProvider::NewData, this, &PxEchoesGraph::EchoesNewData);
    }
    mEchoesResult = nullptr;
    try {
      mSensor->Unsubscribe(&mSubscription);
    } catch (const std::exception& e) {
      PtErrorLogForm::LogError(e);
    }
  }
  mSensor = aSensor;
  mDrawnCount = 0;
  if (aSensor == nullptr) {
    return;
  }
  mEchoesResult = &aSensor->EchoesProvider();
  connect(mEchoesResult, &PxResultProvider::NewData, this, &PxEchoesGraph::EchoesNewData);
  aSensor->Subscribe(&mSubscription);
  ResetAxes();
  ComputeVectors();
  CreateObjects();
}

float PxEchoesGraph::SensorX() const
{
  return 0.0f;
}

float PxEchoesGraph::SensorY() const
{
  return 0.0f;
}

float PxEchoesGraph::SensorAngle() const
{
  return 1.5707964f;
}

void PxEchoesGraph::CreateObjects()
{
  AddEditableObject(new Fan(this));
}

void PxEchoesGraph::ComputeVectors()
{
  const int n = SegmentCount();
  if (mSensor == nullptr) {
    return;
  }
  const double lStep = n > 0 ? FieldOfView() / n : 0.0;
  const double lCentre = SensorAngle();
  for (int i = 0; i <= n; ++i) {
    const double lAngle = lCentre - (i - n / 2.0) * lStep;
    mCosines[i] = static_cast<float>(std::cos(lAngle));
    mSines[i] = static_cast<float>(std::sin(lAngle));
  }
}

void PxEchoesGraph::ResetAxes()
{
  if (mSensor == nullptr) {
    return;
  }
  const double r = std::max(1.0f, Range());
  const double lX = Distance(SensorX());
  const double lY = Distance(SensorY());
  const double lHalf = FieldOfView() / 2.0;
  const double a0 = SensorAngle() - lHalf;
  const double a1 = SensorAngle() + lHalf;
  const double lLeft = AngleInRange(M_PI, a0, a1) ? -r : r * std::min(std::cos(a1), std::cos(a0));
  const double lRight = AngleInRange(0.0, a0, a1) ? r : r * std::max(std::cos(a1), std::cos(a0));
  const double lBottom = AngleInRange(-M_PI / 2, a0, a1) ? -r : r * std::min(std::sin(a1), std::sin(a0));
  const double lTop = AngleInRange(M_PI / 2, a0, a1) ? r : r * std::max(std::sin(a1), std::sin(a0));
  SetLimits(static_cast<float>(std::floor(std::min(lX, lX + lLeft))),
            static_cast<float>(std::ceil(std::max(lX, lX + lRight))),
            static_cast<float>(std::floor(std::min(lY, lY + lBottom))),
            static_cast<float>(std::ceil(std::max(lY, lY + lTop))));
}

void PxEchoesGraph::EchoesNewData()
{
  update();
}

void PxEchoesGraph::UnitsChanged(int aType, int)
{
  if (aType == UT_DISTANCE) {
    ResetAxes();
  }
}

void PxEchoesGraph::resizeEvent(QResizeEvent* aEvent)
{
  PtGrafEditWidget::resizeEvent(aEvent);
}

void PxEchoesGraph::PaintGraph()
{
  PtGrafEditWidget::PaintGraph();
  if (mEchoesResult == nullptr) {
    return;
  }
  const PtU32 lCount = mEchoesResult->EchoCount();
  mEchoes.resize(lCount);
  mDrawnCount = 0;
  const unsigned int n = static_cast<unsigned int>(SegmentCount());
  const float lDistanceScale = mEchoesResult->DistanceScale();
  const float lAmplitudeScale = mEchoesResult->AmplitudeScale();
  const double lX = Distance(SensorX());
  const double lY = Distance(SensorY());
  PtGrafContext& lContext = Context();
  QPainter& lPainter = lContext.Painter();
  lPainter.setPen(lContext.Layer(3).Pen());
  lPainter.setBrush(Qt::NoBrush);
  for (PtU32 e = 0; e < lCount; ++e) {
    const PxEcho& lRaw = mEchoesResult->mEchoes[e];
    if (!(lRaw.mFlag & 1) || lRaw.mSegment >= n) {
      continue;
    }
    Echo& lEcho = mEchoes[mDrawnCount++];
    lEcho.mSegment = lRaw.mSegment;
    lEcho.mDistance = Distance(static_cast<float>(lRaw.mDistance) * lDistanceScale);
    lEcho.mAmplitude = static_cast<float>(lRaw.mAmplitude) * lAmplitudeScale;
    const unsigned int s = lEcho.mSegment;
    const double lStart = std::atan2(mSines[s + 1], mCosines[s + 1]) * DEGREES;
    double lEnd = std::atan2(mSines[s], mCosines[s]) * DEGREES;
    if (lStart > lEnd) {
      lEnd += 360.0;
    }
    const double d = lEcho.mDistance;
    const QPointF lCorner(lContext.ScreenX(lX - d), lContext.ScreenY(lY + d));
    lPainter.drawArc(QRectF(lCorner, QSizeF(2 * d * mXScale, 2 * d * mYScale)), static_cast<int>(16 * lStart),
                     static_cast<int>(16 * (lEnd - lStart)));
  }
  DrawWarning();
}

void PxEchoesGraph::DrawWarning()
{
  PtGrafContext& lContext = Context();
  if (mLineHeight == 0.0f) {
    const float lPlotWidth = static_cast<float>(mWidth - mLeftMargin - mRightMargin);
    const float lSize = std::max(2.0f, lPlotWidth / 35.0f);
    lContext.Layer(2).SetFont(PtLayer::GENERIC_SANS_SERIF, lSize);
    lContext.Layer(1).SetFont(PtLayer::GENERIC_SANS_SERIF, 1.5f * lSize);
    mLineHeight =
        static_cast<float>(QFontMetricsF(lContext.Layer(1).Font()).boundingRect(QStringLiteral("M")).height()) + 1.0f;
  }
  if (mSensor == nullptr || !mSensor->PropertyModified()) {
    return;
  }
  QPainter& lPainter = lContext.Painter();
  const QDateTime lNow = QDateTime::currentDateTime();
  if (mBlinkTime < lNow) {
    lPainter.setFont(lContext.Layer(1).Font());
    lPainter.setPen(lContext.Layer(1).Pen());
    lPainter.drawStaticText(QPointF(mLeftMargin + 5, mTopMargin + 1), mAttention);
  }
  if (!mBlinkTime.isValid() || mBlinkTime.msecsTo(lNow) > BLINK_SHOWN_MS) {
    mBlinkTime = lNow.addMSecs(BLINK_HIDDEN_MS);
  }
  lPainter.setFont(lContext.Layer(2).Font());
  lPainter.setPen(lContext.Layer(2).Pen());
  lPainter.drawStaticText(QPointF(mLeftMargin + 5, mTopMargin + mLineHeight), mModified);
}

bool PxEchoesGraph::CheckToolTip(int aX, int aY)
{
  if (mSensor == nullptr) {
    return false;
  }
  const double lX = Distance(SensorX());
  const double lY = Distance(SensorY());
  const QPointF lPoint = ToData(QPointF(aX, aY));
  const double lVx = lPoint.x() - lX;
  const double lVy = lPoint.y() - lY;
  const double lLength = std::hypot(lVx, lVy);
  if (!(lLength > 0.0)) {
    return false;
  }
  const double lUx = lVx / lLength;
  const double lUy = lVy / lLength;
  const int n = SegmentCount();
  int lSegment = -1;
  for (int i = 0; i < n; ++i) {
    if (mSines[i] * lUx - mCosines[i] * lUy >= 0.0 && 0.0 >= mSines[i + 1] * lUx - mCosines[i + 1] * lUy) {
      lSegment = i;
      break;
    }
  }
  if (lSegment < 0) {
    return false;
  }
  double lBest = 1000.0;
  const Echo* lFound = nullptr;
  for (size_t e = 0; e < mDrawnCount; ++e) {
    const Echo& lEcho = mEchoes[e];
    if (lEcho.mSegment != static_cast<unsigned int>(lSegment)) {
      continue;
    }
    const QPointF lScreen = ToScreen(lX + lEcho.mDistance * lUx, lY + lEcho.mDistance * lUy);
    const double lDx = lScreen.x() - aX;
    const double lDy = lScreen.y() - aY;
    const double lSquared = lDx * lDx + lDy * lDy;
    if (lSquared < lBest) {
      lBest = lSquared;
      lFound = &lEcho;
    }
  }
  if (lFound == nullptr || !(lBest < 10.0)) {
    return false;
  }
  mToolTipText = mToolTipTemplate.arg(lFound->mSegment + 1)
                     .arg(PxUnits::Format(QStringLiteral("%1"), UT_DISTANCE, lFound->mDistance, 2, true))
                     .arg(QString::number(static_cast<double>(lFound->mAmplitude), 'f', 2));
  mToolTipX = aX;
  mToolTipY = aY;
  return true;
}
