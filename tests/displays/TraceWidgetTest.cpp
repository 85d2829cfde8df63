// The trace graph and form: what is subscribed, where curves are stacked and zoomed, what the
// pointer finds, what each key does, and how the form's menus and boxes stay in line.

#include "DisplaysTestSupport.h"
#include "PxTraceForm.h"
#include "PxTraceWidget.h"

#include <QAction>
#include <QCheckBox>
#include <QImage>
#include <QKeyEvent>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

using namespace DisplaysTest;

namespace {
constexpr unsigned long ALL = static_cast<unsigned long>(-1);

// Four segments: raw sample k of segment s is 100 s + k % 50 (a saw tooth from 100 s to 100 s +
// 49), filtered is raw + 10; 400 samples at 0.25 per sample, so distances run from 0 to 100.
struct Traces : testing::Test
{
  explicit Traces(int aSegments = 4, bool aFiltered = true)
      : mSensor(aSegments, aFiltered)
  {
    mGraph.resize(800, 500);
    mGraph.SetSensor(&mSensor);
    mGraph.SetFlags(PxTraceWidget::SHOW_RAW | PxTraceWidget::SHOW_FILTERED);
  }
  void Feed()
  {
    mSensor.FeedTraces(mSensor.TraceProvider(), 400, [](int s, PtU32 k) { return 100 * s + k % 50; });
    if (auto* lFiltered = qobject_cast<PxResultTrace*>(mSensor.GetProvider(PxResultProvider::ID_TRACES_32))) {
      mSensor.FeedTraces(*lFiltered, 400, [](int s, PtU32 k) { return 100 * s + k % 50 + 10; });
    }
    mGraph.StateNewData();
  }
  void Paint()
  {
    QImage lImage(mGraph.size(), QImage::Format_RGB32);
    QPainter lPainter(&lImage);
    mGraph.Paint(lPainter, lImage.size());
  }
  float Offset(int aCurve) const { return mGraph.CurveAt(aCurve).mYOffset; }
  void Key(int aKey, Qt::KeyboardModifiers aModifiers, quint32 aScanCode = 0)
  {
    QKeyEvent lEvent(QEvent::KeyPress, aKey, aModifiers, aScanCode, 0, 0);
    QApplication::sendEvent(&mGraph, &lEvent);
  }
  std::vector<bool> Enabled() const
  {
    std::vector<bool> lEnabled;
    for (unsigned int i = 0; i < mGraph.CurveCount(); ++i) {
      lEnabled.push_back(mGraph.CurveAt(i).mEnabled);
    }
    return lEnabled;
  }

  TraceSensor mSensor;
  PxTraceWidget mGraph;
};
} // namespace

TEST_F(Traces, FlagsChooseTheSubscribedGroupsAndDropStaleTraces)
{
  const PtU32 MASKS[4] = {18, 22, 26, 30};
  for (unsigned int lFlags : {0u, 1u, 2u, 3u, 1u}) {
    mGraph.SetFlags(lFlags);
    EXPECT_EQ(mSensor.DataMask(), MASKS[lFlags]) << "flags " << lFlags;
    EXPECT_EQ(mGraph.CurveAt(0).mTrace, nullptr) << "a trace of the old choice was kept";
    Feed();
    EXPECT_EQ(mGraph.CurveAt(0).mTrace != nullptr, (lFlags & 1) != 0);
    EXPECT_EQ(mGraph.CurveAt(4).mTrace != nullptr, (lFlags & 2) != 0);
  }
  // A sensor without filtered traces has one curve per segment; bit 1 only subscribes.
  TraceSensor lPlain(3, false);
  PxTraceWidget lGraph;
  lGraph.SetSensor(&lPlain);
  lGraph.SetFlags(3);
  EXPECT_EQ(lGraph.CurveCount(), 3u);
  EXPECT_EQ(lPlain.DataMask(), 30u);
  lGraph.SetSensor(nullptr);
  EXPECT_EQ(lPlain.DataMask(), 0u);
}

TEST_F(Traces, AxesAndOffsetsStackTheSegments)
{
  mGraph.ResetAxes();
  EXPECT_EQ(std::vector<double>({mGraph.LimitXMin(), mGraph.LimitXMax(), mGraph.LimitYMin(), mGraph.LimitYMax()}),
            std::vector<double>({-3, 93, 0, 4095}))
      << "no trace yet";
  Feed();
  mGraph.ResetAxes();
  EXPECT_EQ(std::vector<double>({mGraph.LimitXMin(), mGraph.LimitXMax(), mGraph.LimitYMin(), mGraph.LimitYMax()}),
            std::vector<double>({0, 100, 0, 359}));

  // Separate traces: each segment's base (0 here) on the line i * spacing, raw and filtered alike.
  mGraph.IncreaseOffset();
  EXPECT_EQ(mGraph.TraceSpacing(), 11.0f);
  EXPECT_EQ(std::vector<float>({Offset(0), Offset(1), Offset(3), Offset(7)}), std::vector<float>({0, 11, 33, 33}));

  // Stacked without gaps: segment s spans [100 s, 100 s + 59] over both of its curves.
  mGraph.SetChannelEnabled(1, false);
  mGraph.AutoSetOffsets(2);
  EXPECT_EQ(std::vector<float>({Offset(0), Offset(1), Offset(2), Offset(3), Offset(6)}),
            std::vector<float>({0, 11, -141, -182, -141}))
      << "a disabled segment keeps its offset and takes no room";
  EXPECT_EQ(std::vector<double>({mGraph.LimitXMin(), mGraph.LimitXMax(), mGraph.LimitYMin(), mGraph.LimitYMax()}),
            std::vector<double>({0, 66, 59, 118}))
      << "a segment zoom ends at 66 whatever the trace's extent";
  mGraph.AutoSetOffsets(ALL);
  EXPECT_EQ(mGraph.LimitXMax(), 100.0) << "all segments: the full view";
  mGraph.ResetOffsets();
  EXPECT_EQ(Offset(3), 0.0f);

  // A segment with no trace yet still takes its place, with far-away limits.
  mGraph.SetFlags(0);
  mGraph.AutoSetOffsets(ALL);
  EXPECT_LT(Offset(0), -1e19f);
  mGraph.DisableAll();
  mGraph.ResetAxes();
  EXPECT_EQ(mGraph.LimitYMax(), 4095.0);
}

TEST_F(Traces, PointerFindsEchoesFirstThenTheNearestCurvePoint)
{
  Feed();
  mGraph.SetLimits(0, 100, 0, 400);
  // Two echoes at the same place: the first in the list wins. One on a disabled segment: ignored.
  // Amplitudes and bases come in halves, distances as they are.
  mSensor.EchoAmplitudeScaleProperty().SetValue(0, 2);
  mSensor.FeedEchoes({{40, 24, 6, 1, 0}, {40, 24, 6, 2, 1}, {20, 10, 0, 3, 0}});
  mGraph.SetChannelEnabled(3, false);
  Paint();
  ASSERT_EQ(mGraph.ReadoutCount(), 2u);
  const PxTraceWidget::Readout& lEcho = mGraph.ReadoutAt(0);
  EXPECT_EQ(lEcho.mX, qRound(mGraph.ToScreen(40, 15).x())) << "the tick stands on base + amplitude";
  struct Case
  {
    int mDx, mDy;
    bool mFound;
  };
  for (const Case& c :
       {Case{0, 0, true}, Case{9, 0, true}, Case{7, 7, true}, Case{10, 0, false}, Case{0, -10, false}}) {
    const bool lShown = mGraph.ToolTipAt(lEcho.mX + c.mDx, lEcho.mY + c.mDy);
    EXPECT_EQ(lShown &&
                  mGraph.ToolTipText() == QStringLiteral("Segment\t1\nDistance\t40.00\nAmplitude\t12.00\nBase\t\t3.0"),
              c.mFound)
        << c.mDx << "," << c.mDy << ": " << mGraph.ToolTipText().toStdString();
  }

  // Away from echoes: the curve point under the pointer, within 5 pixels, offset included.
  mGraph.SetChannelEnabled(1, false);
  mSensor.FeedEchoes({});
  const QPointF lPoint = mGraph.ToScreen(50, 210); // segment 2's filtered curve
  Paint();
  ASSERT_TRUE(mGraph.ToolTipAt(qRound(lPoint.x()), qRound(lPoint.y()) - 2));
  EXPECT_EQ(mGraph.ToolTipText(), QStringLiteral("Segment 2\nX = 50.0000\nY = 210.0000"));
  EXPECT_FALSE(mGraph.ToolTipAt(qRound(lPoint.x()), qRound(lPoint.y()) - 6));

  // The right button drags the segment's curves by the rows moved.
  QTest::mousePress(&mGraph, Qt::RightButton, Qt::NoModifier, lPoint.toPoint());
  ASSERT_TRUE(mGraph.Dragging());
  QMouseEvent lMove(QEvent::MouseMove, lPoint.toPoint() - QPoint(0, 50), Qt::NoButton, Qt::RightButton, Qt::NoModifier);
  QApplication::sendEvent(&mGraph, &lMove);
  EXPECT_NEAR(Offset(2), 50 / mGraph.YScale(), 1e-3);
  EXPECT_EQ(Offset(6), Offset(2));
}

TEST_F(Traces, DenseCurvesLightTheSamePixelsAsTheirFullPolyline)
{
  // Several samples per pixel column: the graph hands the rasterizer each column's extremes only.
  Feed();
  mGraph.resize(260, 300);
  mGraph.ResetAxes();
  for (unsigned long s : {0ul, 1ul, 3ul}) {
    mGraph.SetChannelEnabled(s, false);
  }
  QImage lDrawn(mGraph.size(), QImage::Format_RGB32);
  QPainter lPainter(&lDrawn);
  mGraph.Paint(lPainter, lDrawn.size());

  QImage lFull(lDrawn.size(), QImage::Format_RGB32);
  lFull.fill(Qt::black);
  QPainter lReference(&lFull);
  lReference.setClipRect(
      QRect(QPoint(mGraph.LeftMargin(), mGraph.TopMargin()),
            QPoint(mGraph.width() - mGraph.RightMargin() - 1, mGraph.height() - mGraph.BottomMargin() - 1)));
  lReference.setPen(mGraph.Context().Layer(2).Pen());
  for (int lCurve : {2, 6}) {
    // Every sample, on whole pixels as the graph places them.
    std::vector<QPoint> lPixels;
    for (const QPointF& lPoint : mGraph.CurveAt(lCurve).mPoints) {
      lPixels.push_back(lPoint.toPoint());
    }
    lReference.drawPolyline(lPixels.data(), static_cast<int>(lPixels.size()));
  }
  const QRgb lGreen = mGraph.Context().Layer(2).Color().rgb();
  int lLit = 0, lMissing = 0, lExtra = 0;
  for (int y = 0; y < lFull.height(); ++y) {
    for (int x = 0; x < lFull.width(); ++x) {
      const bool lInFull = lFull.pixel(x, y) == lGreen;
      const bool lInDrawn = lDrawn.pixel(x, y) == lGreen;
      lLit += lInFull;
      lMissing += lInFull && !lInDrawn;
      lExtra += lInDrawn && !lInFull;
    }
  }
  ASSERT_GT(lLit, 300);
  EXPECT_LT(lMissing, lLit / 20) << "pixels of the curve left out";
  EXPECT_LT(lExtra, lLit / 20) << "pixels lit that the curve does not pass";
}

TEST_F(Traces, KeysFollowTheTable)
{
  Feed();
  struct Case
  {
    int mKey;
    Qt::KeyboardModifiers mModifiers;
    quint32 mScanCode;
    std::vector<bool> mEnabled; // segments 0 to 3 after the key
  };
  const Qt::KeyboardModifiers SHIFT = Qt::ShiftModifier;
  // Shift + digit row by place: scan code 2 is '1', 11 is '0', whatever character the layout gives.
  for (const Case& c : {Case{Qt::Key_Exclam, SHIFT, 2, {true, false, true, true}},
                        Case{Qt::Key_ParenRight, SHIFT, 11, {false, false, true, true}},
                        Case{Qt::Key_Q, Qt::AltModifier, 3, {false, false, false, true}},
                        Case{Qt::Key_Dollar, SHIFT, 5, {false, false, false, true}}, // segment 4: not ours
                        Case{Qt::Key_Z, SHIFT, 44, {false, false, false, true}},
                        Case{Qt::Key_E, Qt::AltModifier, 0, {true, true, true, true}},
                        Case{Qt::Key_D, Qt::AltModifier, 0, {false, false, false, false}}}) {
    Key(c.mKey, c.mModifiers, c.mScanCode);
    std::vector<bool> lSegments = Enabled();
    EXPECT_EQ(std::vector<bool>(lSegments.begin(), lSegments.begin() + 4), c.mEnabled) << "key " << c.mKey;
    EXPECT_EQ(std::vector<bool>(lSegments.begin() + 4, lSegments.end()), c.mEnabled) << "filtered curves follow";
  }
  Key(Qt::Key_E, Qt::AltModifier);

  // Width and markers are stepped with '+' and '-' and stop at their ends.
  Key(Qt::Key_W, Qt::NoModifier);
  for (int i = 0; i < 3; ++i) {
    Key(Qt::Key_Minus, Qt::NoModifier);
  }
  EXPECT_EQ(mGraph.Context().Layer(0).Pen().width(), 0);
  Key(Qt::Key_M, Qt::NoModifier);
  for (int i = 0; i < 6; ++i) {
    Key(Qt::Key_Plus, Qt::NoModifier);
  }
  EXPECT_EQ(mGraph.CurveAt(7).mMarkerStyle, 4);

  // Ctrl + digit or A-F: zoom on that segment; Alt+V: reverse video, back again.
  Key(Qt::Key_2, Qt::ControlModifier);
  EXPECT_EQ(mGraph.LimitXMax(), 66.0);
  Key(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(mGraph.Context().Layer(PxTraceWidget::TEXT_LAYER).Color(), QColor(Qt::black));
  Key(Qt::Key_V, Qt::AltModifier);
  EXPECT_EQ(mGraph.Context().Layer(15).Color(), QColor(Qt::white));
  EXPECT_EQ(mGraph.Context().Layer(31).Color().alpha(), 0x40) << "the translucent layers stay";
}

TEST(TraceForm, MenusAndSegmentBoxesStayInLine)
{
  TraceSensor lSensor(3, true);
  PxTraceForm lForm;
  lForm.SetFlags(1);
  lForm.SetSensor(&lSensor);
  ASSERT_EQ(lForm.SegmentActions().size(), 3);
  ASSERT_EQ(lForm.SegmentBoxes().size(), 4);

  // "Hide All Segments" unchecks the menu entries but leaves the boxes; "All" brings both back.
  lForm.MIActionsDisableAllTriggered();
  EXPECT_FALSE(lForm.SegmentActions()[1]->isChecked());
  EXPECT_TRUE(lForm.SegmentBoxes()[2]->isChecked());
  EXPECT_FALSE(lForm.Graph()->CurveAt(1).mEnabled);
  lForm.SegmentBoxes()[0]->setChecked(false);
  lForm.SegmentBoxes()[0]->setChecked(true);
  EXPECT_TRUE(lForm.SegmentActions()[1]->isChecked());
  EXPECT_TRUE(lForm.Graph()->CurveAt(4).mEnabled);

  // A segment entry and its box follow each other.
  lForm.SegmentActions()[2]->trigger();
  EXPECT_FALSE(lForm.SegmentBoxes()[3]->isChecked());
  EXPECT_FALSE(lForm.Graph()->CurveAt(5).mEnabled);
  lForm.SegmentBoxes()[3]->setChecked(true);
  EXPECT_TRUE(lForm.SegmentActions()[2]->isChecked());
}
