#pragma once

#include "PtAssert.h"
#include "PtLayer.h"

#include <array>

class PtGraphWidget;
class QPainter;

// What a graph hands to whatever draws in its plot area: the painter of the paint under way, the
// drawing layers, and the mapping between data and pixels as it stands for this paint. The
// mapping is inline and plain arithmetic: curves call it for every point.
class PT_EXPORT PtGrafContext
{
public:
  static constexpr int LAYER_COUNT = 33;

  explicit PtGrafContext(PtGraphWidget& aGraph)
      : mGraph(aGraph)
  {
  }

  PtGraphWidget& Graph() const { return mGraph; }
  PtLayer& Layer(int aIndex)
  {
    PT_ASSERT((aIndex >= 0) && (aIndex < LAYER_COUNT));
    return mLayers[static_cast<size_t>(aIndex)];
  }
  // Only while the graph paints.
  QPainter& Painter() const
  {
    PT_ASSERT(mPainter != nullptr);
    return *mPainter;
  }
  bool Painting() const { return mPainter != nullptr; }

  // The data-to-pixel mapping as a value: a loop over thousands of points keeps it in registers,
  // where the context's own members would be read again after every store through a pointer.
  struct Mapping
  {
    double mXMin, mYMin, mXScale, mYScale, mLeft, mBottom;
    double ScreenX(double aX) const { return (aX - mXMin) * mXScale + mLeft; }
    double ScreenY(double aY) const { return mBottom - (aY - mYMin) * mYScale; }
  };
  Mapping CurrentMapping() const { return {mXMin, mYMin, mXScale, mYScale, mLeft, mBottom}; }

  double ScreenX(double aX) const { return (aX - mXMin) * mXScale + mLeft; }
  double ScreenY(double aY) const { return mBottom - (aY - mYMin) * mYScale; }
  double DataX(double aX) const { return (aX - mLeft) / mXScale + mXMin; }
  double DataY(double aY) const { return (mBottom - aY) / mYScale + mYMin; }

private:
  friend class PtGraphWidget;

  PtGraphWidget& mGraph;
  std::array<PtLayer, LAYER_COUNT> mLayers;
  QPainter* mPainter = nullptr;
  // Copies of the graph's geometry, refreshed whenever it changes.
  double mXMin = 0.0;
  double mYMin = 0.0;
  double mXScale = 1.0;
  double mYScale = 1.0;
  double mLeft = 0.0;
  double mBottom = 0.0; // pixel row of the plot's lower edge
};
