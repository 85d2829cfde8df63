#pragma once

#include "PtGrafContext.h"

#include <QColor>
#include <QPoint>
#include <QString>
#include <QWidget>

#include <limits>

class QPainter;

// A plotting area with axes: data limits, tick labels at round values, an optional grid, margins
// that fit the labels, normal or reverse video, and the user's zoom and pan:
// - mouse wheel: zoom about the pointer (Shift: X only, Ctrl: Y only);
// - left drag: zoom into the dragged rectangle; Ctrl + left drag or middle drag: pan;
// - double-click, Home or Escape: back to the full view (the data limits);
// - arrow keys: pan by a tenth of the plot; Page Up / Page Down: zoom in / out about the centre.
// Subclasses draw the plot contents in PaintGraph through the context's painter, layers and
// mapping, and answer CheckToolTip with a text and an anchor. Painting is not antialiased unless
// asked: the curves of a measurement graph are thousands of one-pixel segments.
class PT_EXPORT PtGraphWidget : public QWidget
{
  Q_OBJECT

public:
  explicit PtGraphWidget(QWidget* aParent = nullptr);
  ~PtGraphWidget() override;

  // The full view; the view is reset to it.
  void SetLimits(float aXMin, float aXMax, float aYMin, float aYMax);
  // The largest Y the user may zoom or pan out to (unlimited at start). The data limits may
  // still reach above it.
  void SetYUpperLimit(float aLimit);
  float YUpperLimit() const { return mYUpperLimit; }
  void ShowGrid(bool aShow);
  bool IsGridShown() const { return mGridShown; }
  // Light background with dark axes instead of the dark default.
  void SetReverseVideo(bool aReverse);
  bool IsReverseVideo() const { return mReverseVideo; }
  void SetAntialiasing(bool aOn);

  // The visible data range.
  void SetView(double aXMin, double aXMax, double aYMin, double aYMax);
  void ZoomAll();
  // Scales the view by the factors (below 1 zooms in) keeping the data under aPixel in place.
  void ZoomAt(const QPointF& aPixel, double aXFactor, double aYFactor);
  // Moves the view so the data follow the pointer by the given pixels.
  void Pan(double aDx, double aDy);
  double ViewXMin() const { return mViewXMin; }
  double ViewXMax() const { return mViewXMax; }
  double ViewYMin() const { return mViewYMin; }
  double ViewYMax() const { return mViewYMax; }
  double LimitXMin() const { return mLimitXMin; }
  double LimitXMax() const { return mLimitXMax; }
  double LimitYMin() const { return mLimitYMin; }
  double LimitYMax() const { return mLimitYMax; }

  // The geometry of the last layout: margins in pixels, scales in pixels per data unit.
  int LeftMargin() const { return mLeftMargin; }
  int RightMargin() const { return mRightMargin; }
  int TopMargin() const { return mTopMargin; }
  int BottomMargin() const { return mBottomMargin; }
  double XScale() const { return mXScale; }
  double YScale() const { return mYScale; }
  QPointF ToScreen(double aX, double aY) const;
  QPointF ToData(const QPointF& aPixel) const;
  // The tick values of the last layout, for whoever needs to line up with them.
  int XTickCount() const { return mXTicks.mCount; }
  double XTick(int aIndex) const { return mXTicks.mValues[aIndex]; }
  int YTickCount() const { return mYTicks.mCount; }
  double YTick(int aIndex) const { return mYTicks.mValues[aIndex]; }
  QString TickLabel(double aValue, bool aXAxis) const;

  PtGrafContext& Context() { return mContext; }
  // Paints the whole graph as it would appear at aSize onto any paint device.
  void Paint(QPainter& aPainter, const QSize& aSize);
  // Asks the tooltip hook about pixel (x, y); true when it has a text, then in ToolTipText().
  bool ToolTipAt(int aX, int aY);
  const QString& ToolTipText() const { return mToolTipText; }
  QPoint ToolTipAnchor() const { return QPoint(mToolTipX, mToolTipY); }

protected:
  // Axes, grid and labels under the plot contents.
  virtual void PaintGraphBackground();
  // The plot contents, clipped to the plot area; mPainter is the painter.
  virtual void PaintGraph();
  // Whether a tooltip belongs at pixel (x, y); if so, sets mToolTipText and the anchor.
  virtual bool CheckToolTip(int aX, int aY);

  bool event(QEvent* aEvent) override;
  void paintEvent(QPaintEvent* aEvent) override;
  void resizeEvent(QResizeEvent* aEvent) override;
  void wheelEvent(QWheelEvent* aEvent) override;
  void mousePressEvent(QMouseEvent* aEvent) override;
  void mouseMoveEvent(QMouseEvent* aEvent) override;
  void mouseReleaseEvent(QMouseEvent* aEvent) override;
  void mouseDoubleClickEvent(QMouseEvent* aEvent) override;
  void keyPressEvent(QKeyEvent* aEvent) override;

  // Whether (x, y) lies in the plot area.
  bool InPlot(int aX, int aY) const;

  QPainter* mPainter = nullptr;
  QString mToolTipText;
  int mToolTipX = 0;
  int mToolTipY = 0;
  // A rubber-band zoom or a pan is under way.
  bool mZooming = false;
  bool mPanning = false;

  int mWidth = 0;
  int mHeight = 0;
  int mLeftMargin = 0;
  int mRightMargin = 0;
  int mTopMargin = 0;
  int mBottomMargin = 0;
  double mXMin = 0.0;
  double mYMin = 0.0;
  double mXScale = 1.0;
  double mYScale = 1.0;

private:
  static constexpr int MAX_TICKS = 64;
  struct Ticks
  {
    double mValues[MAX_TICKS] = {};
    int mCount = 0;
    int mDecimals = 0;
  };

  // Lays out margins, scales and ticks for aSize and the current view.
  void UpdateGeometry(const QSize& aSize);
  static void ComputeTicks(double aMin, double aMax, int aMaxCount, Ticks& aTicks);
  QString Label(double aValue, int aDecimals) const;
  void KeepBelowUpperLimit();
  // Slides the view so that aData shows at aPixel again.
  void KeepUnder(const QPointF& aPixel, const QPointF& aData);

  PtGrafContext mContext;
  double mLimitXMin = 0.0;
  double mLimitXMax = 100.0;
  double mLimitYMin = 0.0;
  double mLimitYMax = 100.0;
  double mViewXMin = 0.0;
  double mViewXMax = 100.0;
  double mViewYMin = 0.0;
  double mViewYMax = 100.0;
  float mYUpperLimit = std::numeric_limits<float>::infinity();
  bool mGridShown = false;
  bool mReverseVideo = false;
  bool mAntialiasing = false;
  Ticks mXTicks;
  Ticks mYTicks;
  QPoint mGestureStart;
  QPoint mGestureEnd;
  QColor mBackground;
  QColor mForeground;
  QColor mGridColor;
};
