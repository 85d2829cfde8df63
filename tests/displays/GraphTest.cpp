// The base graph as a user meets it: round tick labels that fit, zoom and pan that keep the data
// under the pointer, the way back to the full view, and the direction test of fan-shaped graphs.

#include "PtGrafObject.h"
#include "PtGraphWidget.h"

#include <QFontMetrics>
#include <QTest>

#include <cmath>
#include <gtest/gtest.h>

namespace {
void Mouse(QWidget& aWidget, QEvent::Type aType, QPoint aPos, Qt::MouseButton aButton, Qt::MouseButtons aButtons)
{
  QMouseEvent lEvent(aType, aPos, aButton, aButtons, Qt::NoModifier);
  QApplication::sendEvent(&aWidget, &lEvent);
}

bool IsRound(double aStep)
{
  const double lMantissa = aStep / std::pow(10.0, std::floor(std::log10(aStep) + 1e-9));
  return std::abs(lMantissa - 1) < 1e-6 || std::abs(lMantissa - 2) < 1e-6 || std::abs(lMantissa - 5) < 1e-6;
}
} // namespace

TEST(Graph, TicksFallOnRoundValuesAndTheirLabelsFitTheMargins)
{
  struct Case
  {
    float mMin, mMax;
  };
  PtGraphWidget lGraph;
  lGraph.resize(800, 500);
  const QFontMetrics lMetrics(lGraph.font());
  for (const Case& c : {Case{-3, 93}, Case{0, 4095}, Case{-0.0013f, 0.0021f}, Case{-250000, 1.2e6f}, Case{5, 5}}) {
    SCOPED_TRACE(testing::Message() << c.mMin << " .. " << c.mMax);
    lGraph.SetLimits(c.mMin, c.mMax, c.mMin, c.mMax);
    for (bool lX : {true, false}) {
      const int lCount = lX ? lGraph.XTickCount() : lGraph.YTickCount();
      ASSERT_GE(lCount, 2);
      ASSERT_LE(lCount, 20) << "labels would overlap";
      auto lTick = [&](int i) { return lX ? lGraph.XTick(i) : lGraph.YTick(i); };
      const double lStep = lTick(1) - lTick(0);
      EXPECT_TRUE(IsRound(lStep)) << lStep;
      for (int i = 0; i < lCount; ++i) {
        EXPECT_GE(lTick(i), (lX ? lGraph.ViewXMin() : lGraph.ViewYMin()) - lStep * 1e-6);
        EXPECT_LE(lTick(i), (lX ? lGraph.ViewXMax() : lGraph.ViewYMax()) + lStep * 1e-6);
        EXPECT_NEAR(std::remainder(lTick(i), lStep), 0.0, lStep * 1e-6);
        const QString lLabel = lGraph.TickLabel(lTick(i), lX);
        EXPECT_NE(lLabel, QStringLiteral("-0")) << "a zero label with a sign";
        if (!lX) {
          EXPECT_LT(lMetrics.horizontalAdvance(lLabel), lGraph.LeftMargin());
        }
      }
      // Distinct labels: as many decimals as the step needs.
      EXPECT_NE(lGraph.TickLabel(lTick(0), lX), lGraph.TickLabel(lTick(1), lX));
    }
  }
}

TEST(Graph, ZoomAndPanKeepTheDataUnderThePointerAndReturnToTheFullView)
{
  PtGraphWidget lGraph;
  lGraph.resize(800, 500);
  lGraph.SetLimits(0, 100, 0, 1000);
  const QPoint lPointer(300, 200);
  const QPointF lUnder = lGraph.ToData(lPointer);

  QWheelEvent lWheel(lPointer, lGraph.mapToGlobal(lPointer), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                     Qt::NoScrollPhase, false);
  QApplication::sendEvent(&lGraph, &lWheel);
  EXPECT_LT(lGraph.ViewXMax() - lGraph.ViewXMin(), 100.0) << "the wheel forward zooms in";
  const QPointF lAfter = lGraph.ToData(lPointer);
  EXPECT_NEAR(lAfter.x(), lUnder.x(), 0.05);
  EXPECT_NEAR(lAfter.y(), lUnder.y(), 0.5);

  // Double-click: the full view again. A dragged rectangle: exactly what it covered.
  QTest::mouseDClick(&lGraph, Qt::LeftButton, Qt::NoModifier, lPointer);
  EXPECT_DOUBLE_EQ(lGraph.ViewXMax(), 100.0);
  const QPointF lCorner1 = lGraph.ToData(QPoint(200, 100));
  const QPointF lCorner2 = lGraph.ToData(QPoint(400, 300));
  Mouse(lGraph, QEvent::MouseButtonPress, QPoint(200, 100), Qt::LeftButton, Qt::LeftButton);
  Mouse(lGraph, QEvent::MouseMove, QPoint(399, 299), Qt::NoButton, Qt::LeftButton);
  Mouse(lGraph, QEvent::MouseButtonRelease, QPoint(399, 299), Qt::LeftButton, Qt::NoButton);
  EXPECT_NEAR(lGraph.ViewXMin(), lCorner1.x(), 1e-6);
  EXPECT_NEAR(lGraph.ViewXMax(), lCorner2.x(), 1e-6);
  EXPECT_NEAR(lGraph.ViewYMax(), lCorner1.y(), 1e-6);
  EXPECT_NEAR(lGraph.ViewYMin(), lCorner2.y(), 1e-6);

  // Panning drags the data along; Home returns to the full view.
  const double lWidth = lGraph.ViewXMax() - lGraph.ViewXMin();
  const QPointF lGrabbed = lGraph.ToData(QPoint(300, 200));
  Mouse(lGraph, QEvent::MouseButtonPress, QPoint(300, 200), Qt::MiddleButton, Qt::MiddleButton);
  Mouse(lGraph, QEvent::MouseMove, QPoint(350, 180), Qt::NoButton, Qt::MiddleButton);
  Mouse(lGraph, QEvent::MouseButtonRelease, QPoint(350, 180), Qt::MiddleButton, Qt::NoButton);
  EXPECT_NEAR(lGraph.ToData(QPoint(350, 180)).x(), lGrabbed.x(), 1e-6);
  EXPECT_NEAR(lGraph.ViewXMax() - lGraph.ViewXMin(), lWidth, 1e-6);
  QTest::keyClick(&lGraph, Qt::Key_Home);
  EXPECT_DOUBLE_EQ(lGraph.ViewYMax(), 1000.0);

  // The user cannot zoom out past the Y upper limit.
  lGraph.SetYUpperLimit(1500);
  for (int i = 0; i < 10; ++i) {
    lGraph.ZoomAt(QPointF(300, 100), 1.5, 1.5);
  }
  EXPECT_LE(lGraph.ViewYMax(), 1500.0);
  EXPECT_GT(lGraph.ViewXMax() - lGraph.ViewXMin(), 1000.0);
}

TEST(Graph, AngleInRangeComparesDirectionsModuloAFullTurn)
{
  struct Case
  {
    double mAngle, mFrom, mTo;
    bool mIn;
  };
  const double PI = M_PI;
  for (const Case& c : {Case{PI / 2, PI / 4, 3 * PI / 4, true}, Case{PI, PI / 4, 3 * PI / 4, false},
                        Case{-PI, 3 * PI / 4, 5 * PI / 4, true}, Case{PI / 2 + 2 * PI, 0, PI, true},
                        Case{-PI / 2, 0, PI, false}, Case{0, -0.1, 0.1, true}, Case{0.2, -0.1, 0.1, false},
                        Case{3.0, 0, 2 * PI, true}, Case{PI / 4, PI / 4, PI / 4, true}}) {
    EXPECT_EQ(AngleInRange(c.mAngle, c.mFrom, c.mTo), c.mIn) << c.mAngle << " in " << c.mFrom << ".." << c.mTo;
  }
}
