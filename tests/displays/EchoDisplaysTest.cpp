// The echoes fan and the echo table: the box around the fan, which arcs are drawn and hovered,
// and which echoes the table lists, how, and for how long.

#include "DisplaysTestSupport.h"
#include "PxEchoForm.h"
#include "PxEchoesGraph.h"
#include "PxUnits.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QImage>
#include <QPainter>
#include <QTableWidget>

#include <cmath>
#include <gtest/gtest.h>

using namespace DisplaysTest;

namespace {
// A graph whose sensor stands at (2, -1) looking along aAngle.
class PlacedGraph : public PxEchoesGraph
{
public:
  explicit PlacedGraph(float aAngle)
      : mAngle(aAngle)
  {
  }
  float SensorX() const override { return 2.0f; }
  float SensorY() const override { return -1.0f; }
  float SensorAngle() const override { return mAngle; }
  float mAngle;
};

void Paint(PtGraphWidget& aGraph)
{
  QImage lImage(aGraph.size(), QImage::Format_RGB32);
  QPainter lPainter(&lImage);
  aGraph.Paint(lPainter, lImage.size());
}
} // namespace

TEST(EchoesGraph, AxesBoundTheFanAndItsOrigin)
{
  struct Case
  {
    float mRange, mFieldOfView, mAngle;
    std::vector<double> mLimits; // x min, x max, y min, y max
  };
  PxUnits::Initialize();
  PxUnits::SetUnit(UT_DISTANCE, 1);
  for (const Case& c : {Case{10, 90, float(M_PI / 2), {-6, 10, -1, 9}}, Case{0.2f, 90, float(M_PI / 2), {1, 3, -1, 0}},
                        Case{10, 50, 0, {2, 12, -6, 4}}, Case{10, 360, 0, {-8, 12, -11, 9}}}) {
    TraceSensor lSensor(4, false);
    lSensor.LengthProperty().SetValue(0, c.mRange);
    lSensor.SetFieldOfView(c.mFieldOfView);
    PlacedGraph lGraph(c.mAngle);
    lGraph.SetSensor(&lSensor);
    EXPECT_EQ(std::vector<double>({lGraph.LimitXMin(), lGraph.LimitXMax(), lGraph.LimitYMin(), lGraph.LimitYMax()}),
              c.mLimits)
        << "range " << c.mRange << ", field " << c.mFieldOfView << ", angle " << c.mAngle;
    EXPECT_EQ(lSensor.DataMask(), 16u);
  }
}

TEST(EchoesGraph, ArcsAndTooltipsCoverValidEchoesOfKnownSegments)
{
  PxUnits::SetUnit(UT_DISTANCE, 1);
  TraceSensor lSensor(4, false);
  lSensor.LengthProperty().SetValue(0, 20);
  lSensor.SetFieldOfView(80);
  PxEchoesGraph lGraph;
  lGraph.resize(600, 600);
  lGraph.SetSensor(&lSensor);
  // Segment 0 lies left of the centre (rays 0 and 1 at 130 and 110 degrees).
  EXPECT_NEAR(std::atan2(lGraph.RaySine(0), lGraph.RayCosine(0)) * 180 / M_PI, 130, 1e-4);
  lSensor.FeedEchoes({{10, 7, 0, 0, 1}, {12, 8, 0, 1, 0}, {14, 9, 0, 4, 1}, {16, 5, 0, 3, 1}});
  Paint(lGraph);
  ASSERT_EQ(lGraph.DrawnEchoCount(), 2u) << "flag bit 0 clear, or a segment beyond the last: not drawn";
  EXPECT_EQ(lGraph.DrawnEcho(1).mSegment, 3u);

  // On the arc of segment 0's echo, halfway across the segment (120 degrees): segments from 1.
  const double lAngle = 120 * M_PI / 180;
  const QPointF lOnArc = lGraph.ToScreen(10 * std::cos(lAngle), 10 * std::sin(lAngle));
  ASSERT_TRUE(lGraph.ToolTipAt(qRound(lOnArc.x()), qRound(lOnArc.y())));
  EXPECT_EQ(lGraph.ToolTipText(), QStringLiteral("Segment\t1\nDistance\t10.00m\nAmplitude\t7.00"));
  const QPointF lOutside = lGraph.ToScreen(10.5 * std::cos(lAngle), 10.5 * std::sin(lAngle));
  EXPECT_FALSE(lGraph.ToolTipAt(qRound(lOutside.x()), qRound(lOutside.y())));
  const QPointF lOrigin = lGraph.ToScreen(0, 0);
  EXPECT_FALSE(lGraph.ToolTipAt(qRound(lOrigin.x()), qRound(lOrigin.y()))) << "on the sensor itself";

  // Feet: the axes follow the unit.
  PxUnits::SetUnit(UT_DISTANCE, 2);
  EXPECT_GT(lGraph.LimitYMax(), 60.0);
  PxUnits::SetUnit(UT_DISTANCE, 1);
  EXPECT_EQ(lGraph.LimitYMax(), 20.0);
}

TEST(EchoForm, ListsTheValidEchoesThatPassTheFilters)
{
  PxUnits::SetUnit(UT_DISTANCE, 1);
  TraceSensor lSensor(4, false);
  PxEchoForm lForm(&lSensor);
  QTableWidget* lTable = lForm.Table();
  auto lRow = [lTable](int r) {
    QStringList lTexts;
    for (int c = 0; c < 4; ++c) {
      lTexts << lTable->item(r, c)->text();
    }
    return lTexts.join(QLatin1Char('|'));
  };

  // A full frame fills every row.
  std::vector<TraceSensor::Echo> lMany;
  for (int i = 0; i < 96; ++i) {
    lMany.push_back({i % 90, 100, 0, static_cast<PtByte>(i % 4), 1});
  }
  lSensor.FeedEchoes(lMany);
  EXPECT_EQ(lForm.FilledRows(), 96);
  EXPECT_EQ(lRow(95), QStringLiteral("4|5.000|100.0|1"));

  struct Case
  {
    std::function<void()> mChange;
    std::vector<TraceSensor::Echo> mEchoes;
    int mRows;
  };
  const std::vector<TraceSensor::Echo> lFour = {
      {5, 10, 0, 0, 1}, {50, 500, 0, 1, 3}, {150, 50, 0, 2, 1}, {7, 9, 0, 3, 0}};
  for (const Case& c : {Case{[] {}, lFour, 2}, Case{[&] { lForm.MaxDistanceBox()->setValue(200); }, lFour, 3},
                        Case{[&] { lForm.MinAmplitudeBox()->setValue(50); }, lFour, 2},
                        Case{[&] { lForm.SegmentBoxes()[1]->setChecked(false); }, lFour, 1},
                        Case{[&] { lForm.MinAmplitudeBox()->setValue(600); }, lFour, 0}}) {
    c.mChange();
    lSensor.FeedEchoes(c.mEchoes);
    EXPECT_EQ(lForm.FilledRows(), c.mRows);
    EXPECT_EQ(lRow(c.mRows), QStringLiteral("|||")) << "a stale row was left";
  }

  // Frozen: the table keeps what it shows.
  lForm.MinAmplitudeBox()->setValue(0);
  lForm.FreezeBox()->setChecked(true);
  lSensor.FeedEchoes(lFour);
  EXPECT_EQ(lForm.FilledRows(), 0);
  lForm.FreezeBox()->setChecked(false);
  lSensor.FeedEchoes(lFour);
  EXPECT_EQ(lRow(1), QStringLiteral("3|150.000|50.0|1"));

  // Numbers follow the locale the form was made with.
  QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
  PxEchoForm lGerman(&lSensor);
  QLocale::setDefault(QLocale::c());
  lGerman.MaxDistanceBox()->setValue(200);
  lSensor.FeedEchoes({{150, 5, 0, 0, 1}});
  EXPECT_EQ(lGerman.Table()->item(0, 1)->text(), QStringLiteral("150,000"));
  EXPECT_EQ(lGerman.Table()->item(0, 2)->text(), QStringLiteral("5,0"));
}
