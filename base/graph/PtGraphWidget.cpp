#include "PtGraphWidget.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr int TICK_LENGTH = 4;
// Below this many pixels a dragged rectangle is taken for a click, not a zoom.
constexpr int MIN_ZOOM_DRAG = 5;
constexpr double WHEEL_STEP = 1.2;
// A view narrower than this relative to its values can no longer be labelled or mapped sensibly.
constexpr double MIN_RELATIVE_SPAN = 1e-9;

const QColor NORMAL_BACKGROUND(0, 0, 0);
const QColor NORMAL_FOREGROUND(200, 200, 200);
const QColor NORMAL_GRID(64, 64, 64);
const QColor REVERSE_BACKGROUND(255, 255, 255);
const QColor REVERSE_FOREGROUND(0, 0, 0);
const QColor REVERSE_GRID(200, 200, 200);

// Widens a degenerate range so that it has something to show.
void Widen(double& aMin, double& aMax)
{
  if (!std::isfinite(aMin) || !std::isfinite(aMax)) {
    aMin = 0.0;
    aMax = 1.0;
  }
  if (aMax < aMin) {
    std::swap(aMin, aMax);
  }
  const double lLeast = std::max(std::abs(aMin), std::abs(aMax)) * MIN_RELATIVE_SPAN;
  if (aMax - aMin <= lLeast) {
    const double lHalf = std::max(lLeast, 0.5);
    aMin -= lHalf;
    aMax += lHalf;
  }
}
} // namespace

PtGraphWidget::PtGraphWidget(QWidget* aParent)
    : QWidget(aParent)
    , mContext(*this)
{
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(false);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(120, 80);
  SetReverseVideo(false);
}

PtGraphWidget::~PtGraphWidget() = default;

void PtGraphWidget::SetLimits(float aXMin, float aXMax, float aYMin, float aYMax)
{
  double lXMin = aXMin, lXMax = aXMax, lYMin = aYMin, lYMax = aYMax;
  Widen(lXMin, lXMax);
  Widen(lYMin, lYMax);
  mLimitXMin = lXMin;
  mLimitXMax = lXMax;
  mLimitYMin = lYMin;
  mLimitYMax = lYMax;
  mViewXMin = lXMin;
  mViewXMax = lXMax;
  mViewYMin = lYMin;
  mViewYMax = lYMax;
  UpdateGeometry(size());
  update();
}

void PtGraphWidget::SetYUpperLimit(float aLimit)
{
  mYUpperLimit = aLimit;
}

void PtGraphWidget::ShowGrid(bool aShow)
{
  mGridShown = aShow;
  update();
}

void PtGraphWidget::SetReverseVideo(bool aReverse)
{
  mReverseVideo = aReverse;
  mBackground = aReverse ? REVERSE_BACKGROUND : NORMAL_BACKGROUND;
  mForeground = aReverse ? REVERSE_FOREGROUND : NORMAL_FOREGROUND;
  mGridColor = aReverse ? REVERSE_GRID : NORMAL_GRID;
  update();
}

void PtGraphWidget::SetAntialiasing(bool aOn)
{
  mAntialiasing = aOn;
  update();
}

void PtGraphWidget::SetView(double aXMin, double aXMax, double aYMin, double aYMax)
{
  Widen(aXMin, aXMax);
  Widen(aYMin, aYMax);
  mViewXMin = aXMin;
  mViewXMax = aXMax;
  mViewYMin = aYMin;
  mViewYMax = aYMax;
  KeepBelowUpperLimit();
  UpdateGeometry(size());
  update();
}

void PtGraphWidget::KeepBelowUpperLimit()
{
  // The ceiling is the user's, not the data's: stacked curves may lie above it and must stay
  // reachable through the full view.
  const double lCeiling = std::max(static_cast<double>(mYUpperLimit), mLimitYMax);
  if (mViewYMax > lCeiling) {
    const double lHeight = mViewYMax - mViewYMin;
    mViewYMax = lCeiling;
    mViewYMin = lCeiling - lHeight;
  }
}

void PtGraphWidget::ZoomAll()
{
  SetView(mLimitXMin, mLimitXMax, mLimitYMin, mLimitYMax);
}

void PtGraphWidget::ZoomAt(const QPointF& aPixel, double aXFactor, double aYFactor)
{
  const QPointF lFixed = ToData(aPixel);
  SetView(lFixed.x() - (lFixed.x() - mViewXMin) * aXFactor, lFixed.x() + (mViewXMax - lFixed.x()) * aXFactor,
          lFixed.y() - (lFixed.y() - mViewYMin) * aYFactor, lFixed.y() + (mViewYMax - lFixed.y()) * aYFactor);
  KeepUnder(aPixel, lFixed);
}

void PtGraphWidget::KeepUnder(const QPointF& aPixel, const QPointF& aData)
{
  // New tick labels may widen or narrow the left margin, which slides the whole plot sideways:
  // shift the view until the data point is back under the pixel. Twice is enough, since the
  // second shift hardly changes the labels again.
  for (int i = 0; i < 2; ++i) {
    const QPointF lNow = ToData(aPixel);
    const double lDx = aData.x() - lNow.x();
    const double lDy = aData.y() - lNow.y();
    if (lDx == 0.0 && lDy == 0.0) {
      break;
    }
    mViewXMin += lDx;
    mViewXMax += lDx;
    mViewYMin += lDy;
    mViewYMax += lDy;
    KeepBelowUpperLimit();
    UpdateGeometry(size());
  }
  update();
}

void PtGraphWidget::Pan(double aDx, double aDy)
{
  const double lDx = aDx / mXScale;
  const double lDy = aDy / mYScale;
  SetView(mViewXMin - lDx, mViewXMax - lDx, mViewYMin + lDy, mViewYMax + lDy);
}

QPointF PtGraphWidget::ToScreen(double aX, double aY) const
{
  return QPointF(mContext.ScreenX(aX), mContext.ScreenY(aY));
}

QPointF PtGraphWidget::ToData(const QPointF& aPixel) const
{
  return QPointF(mContext.DataX(aPixel.x()), mContext.DataY(aPixel.y()));
}

bool PtGraphWidget::InPlot(int aX, int aY) const
{
  return aX >= mLeftMargin && aX < mWidth - mRightMargin && aY >= mTopMargin && aY < mHeight - mBottomMargin;
}

void PtGraphWidget::ComputeTicks(double aMin, double aMax, int aMaxCount, Ticks& aTicks)
{
  aTicks.mCount = 0;
  aTicks.mDecimals = 0;
  aMaxCount = std::clamp(aMaxCount, 2, MAX_TICKS);
  const double lSpan = aMax - aMin;
  if (!(lSpan > 0.0) || !std::isfinite(lSpan)) {
    return;
  }
  // The step is 1, 2 or 5 times a power of ten: the values people read without effort.
  const double lRough = lSpan / aMaxCount;
  const double lPower = std::pow(10.0, std::floor(std::log10(lRough)));
  const double lMantissa = lRough / lPower;
  const double lStep = (lMantissa <= 1.0 ? 1.0 : lMantissa <= 2.0 ? 2.0 : lMantissa <= 5.0 ? 5.0 : 10.0) * lPower;
  aTicks.mDecimals = std::max(0, static_cast<int>(-std::floor(std::log10(lStep) + 1e-9)));
  const double lFirst = std::ceil(aMin / lStep - 1e-9);
  for (int i = 0; i < MAX_TICKS; ++i) {
    const double lValue = (lFirst + i) * lStep;
    if (lValue > aMax + lStep * 1e-9) {
      break;
    }
    // Multiples of the step, not sums: no creeping rounding in long axes.
    aTicks.mValues[aTicks.mCount++] = std::abs(lValue) < lStep * 1e-9 ? 0.0 : lValue;
  }
}

QString PtGraphWidget::Label(double aValue, int aDecimals) const
{
  return QString::number(aValue, 'f', std::min(aDecimals, 9));
}

QString PtGraphWidget::TickLabel(double aValue, bool aXAxis) const
{
  return Label(aValue, aXAxis ? mXTicks.mDecimals : mYTicks.mDecimals);
}

void PtGraphWidget::UpdateGeometry(const QSize& aSize)
{
  mWidth = aSize.width();
  mHeight = aSize.height();
  const QFontMetrics lMetrics(font());
  const int lLineHeight = lMetrics.height();
  mTopMargin = lLineHeight / 2 + 4;
  mBottomMargin = lLineHeight + TICK_LENGTH + 6;
  const int lPlotHeight = std::max(1, mHeight - mTopMargin - mBottomMargin);
  mYScale = lPlotHeight / (mViewYMax - mViewYMin);
  mYMin = mViewYMin;
  ComputeTicks(mViewYMin, mViewYMax, lPlotHeight / (3 * lLineHeight), mYTicks);

  // The left margin fits the widest Y label, the right one half the last X label.
  int lWidest = lMetrics.horizontalAdvance(QStringLiteral("0"));
  for (int i = 0; i < mYTicks.mCount; ++i) {
    lWidest = std::max(lWidest, lMetrics.horizontalAdvance(Label(mYTicks.mValues[i], mYTicks.mDecimals)));
  }
  mLeftMargin = lWidest + TICK_LENGTH + 8;
  const int lXLabel =
      std::max(lMetrics.horizontalAdvance(Label(mViewXMax, 3)), lMetrics.horizontalAdvance(Label(mViewXMin, 3)));
  mRightMargin = lXLabel / 2 + 6;
  const int lPlotWidth = std::max(1, mWidth - mLeftMargin - mRightMargin);
  mXScale = lPlotWidth / (mViewXMax - mViewXMin);
  mXMin = mViewXMin;
  ComputeTicks(mViewXMin, mViewXMax, lPlotWidth / (lXLabel + 3 * lLineHeight), mXTicks);

  mContext.mXMin = mXMin;
  mContext.mYMin = mYMin;
  mContext.mXScale = mXScale;
  mContext.mYScale = mYScale;
  mContext.mLeft = mLeftMargin;
  mContext.mBottom = mHeight - mBottomMargin;
}

void PtGraphWidget::Paint(QPainter& aPainter, const QSize& aSize)
{
  UpdateGeometry(aSize);
  mPainter = &aPainter;
  mContext.mPainter = &aPainter;
  aPainter.setRenderHint(QPainter::Antialiasing, mAntialiasing);
  aPainter.setRenderHint(QPainter::TextAntialiasing, true);
  aPainter.setFont(font());
  PaintGraphBackground();

  aPainter.save();
  aPainter.setClipRect(
      QRect(mLeftMargin, mTopMargin, mWidth - mLeftMargin - mRightMargin, mHeight - mTopMargin - mBottomMargin));
  PaintGraph();
  aPainter.restore();

  if (mZooming) {
    aPainter.setPen(QPen(mForeground, 1, Qt::DashLine));
    aPainter.setBrush(Qt::NoBrush);
    aPainter.drawRect(QRect(mGestureStart, mGestureEnd).normalized());
  }
  mContext.mPainter = nullptr;
  mPainter = nullptr;
}

void PtGraphWidget::PaintGraphBackground()
{
  QPainter& lPainter = *mPainter;
  lPainter.fillRect(QRect(0, 0, mWidth, mHeight), mBackground);
  const int lRight = mWidth - mRightMargin;
  const int lBottom = mHeight - mBottomMargin;
  const QFontMetrics lMetrics(lPainter.font());

  if (mGridShown) {
    lPainter.setPen(QPen(mGridColor, 0, Qt::DotLine));
    for (int i = 0; i < mXTicks.mCount; ++i) {
      const int lX = static_cast<int>(std::lround(mContext.ScreenX(mXTicks.mValues[i])));
      lPainter.drawLine(lX, mTopMargin, lX, lBottom);
    }
    for (int i = 0; i < mYTicks.mCount; ++i) {
      const int lY = static_cast<int>(std::lround(mContext.ScreenY(mYTicks.mValues[i])));
      lPainter.drawLine(mLeftMargin, lY, lRight, lY);
    }
  }

  lPainter.setPen(QPen(mForeground, 0));
  lPainter.setBrush(Qt::NoBrush);
  lPainter.drawRect(QRect(mLeftMargin, mTopMargin, lRight - mLeftMargin - 1, lBottom - mTopMargin - 1));
  for (int i = 0; i < mXTicks.mCount; ++i) {
    const int lX = static_cast<int>(std::lround(mContext.ScreenX(mXTicks.mValues[i])));
    lPainter.drawLine(lX, lBottom, lX, lBottom + TICK_LENGTH);
    const QString lText = Label(mXTicks.mValues[i], mXTicks.mDecimals);
    const int lWidth = lMetrics.horizontalAdvance(lText);
    lPainter.drawText(lX - lWidth / 2, lBottom + TICK_LENGTH + 2 + lMetrics.ascent(), lText);
  }
  for (int i = 0; i < mYTicks.mCount; ++i) {
    const int lY = static_cast<int>(std::lround(mContext.ScreenY(mYTicks.mValues[i])));
    lPainter.drawLine(mLeftMargin - TICK_LENGTH, lY, mLeftMargin, lY);
    const QString lText = Label(mYTicks.mValues[i], mYTicks.mDecimals);
    const int lWidth = lMetrics.horizontalAdvance(lText);
    lPainter.drawText(mLeftMargin - TICK_LENGTH - 3 - lWidth, lY + lMetrics.ascent() / 2 - 1, lText);
  }
}

void PtGraphWidget::PaintGraph()
{
}

bool PtGraphWidget::CheckToolTip(int, int)
{
  return false;
}

bool PtGraphWidget::ToolTipAt(int aX, int aY)
{
  if (mWidth != width() || mHeight != height()) {
    UpdateGeometry(size());
  }
  return CheckToolTip(aX, aY);
}

bool PtGraphWidget::event(QEvent* aEvent)
{
  if (aEvent->type() == QEvent::ToolTip) {
    const auto* lHelp = static_cast<QHelpEvent*>(aEvent);
    if (!mZooming && !mPanning && ToolTipAt(lHelp->pos().x(), lHelp->pos().y())) {
      QToolTip::showText(mapToGlobal(QPoint(mToolTipX, mToolTipY)), mToolTipText, this);
    } else {
      QToolTip::hideText();
      aEvent->ignore();
    }
    return true;
  }
  return QWidget::event(aEvent);
}

void PtGraphWidget::paintEvent(QPaintEvent*)
{
  QPainter lPainter(this);
  Paint(lPainter, size());
}

void PtGraphWidget::resizeEvent(QResizeEvent* aEvent)
{
  QWidget::resizeEvent(aEvent);
  UpdateGeometry(size());
}

void PtGraphWidget::wheelEvent(QWheelEvent* aEvent)
{
  const int lDelta = aEvent->angleDelta().y();
  if (lDelta == 0) {
    aEvent->ignore();
    return;
  }
  const double lFactor = std::pow(WHEEL_STEP, -lDelta / 120.0);
  const Qt::KeyboardModifiers lModifiers = aEvent->modifiers();
  ZoomAt(aEvent->position(), (lModifiers & Qt::ControlModifier) ? 1.0 : lFactor,
         (lModifiers & Qt::ShiftModifier) ? 1.0 : lFactor);
  aEvent->accept();
}

void PtGraphWidget::mousePressEvent(QMouseEvent* aEvent)
{
  const QPoint lPos = aEvent->pos();
  const bool lPan = aEvent->button() == Qt::MiddleButton ||
                    (aEvent->button() == Qt::LeftButton && (aEvent->modifiers() & Qt::ControlModifier));
  if (lPan && InPlot(lPos.x(), lPos.y())) {
    mPanning = true;
    mGestureStart = lPos;
  } else if (aEvent->button() == Qt::LeftButton && InPlot(lPos.x(), lPos.y())) {
    mZooming = true;
    mGestureStart = mGestureEnd = lPos;
  } else {
    aEvent->ignore();
    return;
  }
  aEvent->accept();
}

void PtGraphWidget::mouseMoveEvent(QMouseEvent* aEvent)
{
  if (mPanning) {
    const QPointF lGrabbed = ToData(mGestureStart);
    const QPoint lMove = aEvent->pos() - mGestureStart;
    mGestureStart = aEvent->pos();
    Pan(lMove.x(), lMove.y());
    KeepUnder(aEvent->pos(), lGrabbed);
  } else if (mZooming) {
    // The band stays inside the plot, so that its edges are data.
    mGestureEnd = QPoint(std::clamp(aEvent->pos().x(), mLeftMargin, mWidth - mRightMargin - 1),
                         std::clamp(aEvent->pos().y(), mTopMargin, mHeight - mBottomMargin - 1));
    update();
  } else {
    aEvent->ignore();
  }
}

void PtGraphWidget::mouseReleaseEvent(QMouseEvent* aEvent)
{
  if (mZooming && aEvent->button() == Qt::LeftButton) {
    mZooming = false;
    const QRect lBand = QRect(mGestureStart, mGestureEnd).normalized();
    if (lBand.width() >= MIN_ZOOM_DRAG && lBand.height() >= MIN_ZOOM_DRAG) {
      const QPointF lTopLeft = ToData(lBand.topLeft());
      const QPointF lBottomRight = ToData(QPointF(lBand.right() + 1, lBand.bottom() + 1));
      SetView(lTopLeft.x(), lBottomRight.x(), lBottomRight.y(), lTopLeft.y());
    } else {
      update();
    }
  } else if (mPanning && aEvent->button() != Qt::RightButton) {
    mPanning = false;
  } else {
    aEvent->ignore();
  }
}

void PtGraphWidget::mouseDoubleClickEvent(QMouseEvent* aEvent)
{
  if (aEvent->button() == Qt::LeftButton) {
    mZooming = false;
    ZoomAll();
    aEvent->accept();
  } else {
    aEvent->ignore();
  }
}

void PtGraphWidget::keyPressEvent(QKeyEvent* aEvent)
{
  const double lPlotWidth = mWidth - mLeftMargin - mRightMargin;
  const double lPlotHeight = mHeight - mTopMargin - mBottomMargin;
  const QPointF lCentre(mLeftMargin + lPlotWidth / 2, mTopMargin + lPlotHeight / 2);
  switch (aEvent->key()) {
  case Qt::Key_Home:
  case Qt::Key_Escape:
    mZooming = mPanning = false;
    ZoomAll();
    break;
  case Qt::Key_Left:
    Pan(lPlotWidth / 10, 0);
    break;
  case Qt::Key_Right:
    Pan(-lPlotWidth / 10, 0);
    break;
  case Qt::Key_Up:
    Pan(0, lPlotHeight / 10);
    break;
  case Qt::Key_Down:
    Pan(0, -lPlotHeight / 10);
    break;
  case Qt::Key_PageUp:
    ZoomAt(lCentre, 1 / WHEEL_STEP, 1 / WHEEL_STEP);
    break;
  case Qt::Key_PageDown:
    ZoomAt(lCentre, WHEEL_STEP, WHEEL_STEP);
    break;
  default:
    QWidget::keyPressEvent(aEvent);
    return;
  }
  aEvent->accept();
}
