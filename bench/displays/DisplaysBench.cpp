// Painting the displays into a 1600 x 1000 offscreen image:
// - the trace graph with 16 raw and 16 filtered traces of 4096 samples, against QCustomPlot (its
//   adaptive sampling off, then on) and Qwt drawing the same 32 curves with the same pen and size;
//   and with markers on;
// - one echo-form update with 96 echoes passing the filters;
// - the echoes graph with 96 arcs.
// Run with --benchmark_repetitions=5 --benchmark_report_aggregates_only=true and compare medians.

#include "DisplaysTestSupport.h"
#include "PxBenchAllocations.h"
#include "PxBenchUi.h"
#include "PxEchoForm.h"
#include "PxEchoesGraph.h"
#include "PxTraceWidget.h"
#include "PxUnits.h"

#include <QImage>
#include <QPainter>
#include <QPointF>

#ifdef PX_BENCH_QCUSTOMPLOT
#include <qcustomplot.h>
#endif
#ifdef PX_BENCH_QWT
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_renderer.h>
#endif

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>
#include <random>

using namespace DisplaysTest;

namespace {
constexpr int WIDTH = 1600;
constexpr int HEIGHT = 1000;
constexpr int SEGMENTS = 16;
constexpr PtU32 SAMPLES = 4096;
constexpr float POINT_STEP = 0.025f; // 4096 samples over about 100 m

// A sensor with realistic traces: noise on a base line with a few echo pulses per segment.
struct Scene
{
  Scene()
      : mSensor(SEGMENTS, true)
  {
    mSensor.PointStepProperty().SetValue(0, POINT_STEP);
    std::mt19937 lRandom(7);
    std::normal_distribution<double> lNoise(0.0, 6.0);
    std::vector<std::vector<PtU32>> lRaw(SEGMENTS, std::vector<PtU32>(SAMPLES));
    for (int s = 0; s < SEGMENTS; ++s) {
      for (PtU32 k = 0; k < SAMPLES; ++k) {
        double lValue = 200 + lNoise(lRandom);
        for (double lPeak : {400.0 + 37 * s, 1500.0 + 90 * s, 3200.0}) {
          lValue += 2500.0 * std::exp(-std::pow((k - lPeak) / 12.0, 2));
        }
        lRaw[s][k] = static_cast<PtU32>(std::max(0.0, lValue));
      }
    }
    mSensor.FeedTraces(mSensor.TraceProvider(), SAMPLES, [&](int s, PtU32 k) { return lRaw[s][k]; });
    auto* lFiltered = qobject_cast<PxResultTrace*>(mSensor.GetProvider(PxResultProvider::ID_TRACES_32));
    mSensor.FeedTraces(*lFiltered, SAMPLES, [&](int s, PtU32 k) {
      // A running mean of five samples, as the device's filter smooths.
      PtU32 lSum = 0;
      for (PtU32 j = k >= 2 ? k - 2 : 0; j <= std::min(SAMPLES - 1, k + 2); ++j) {
        lSum += lRaw[s][j];
      }
      return lSum / 5 + 100;
    });
  }
  // Every curve's data points, as the peers are handed them.
  std::vector<std::vector<QPointF>> Curves()
  {
    std::vector<std::vector<QPointF>> lCurves;
    auto* lFiltered = qobject_cast<PxResultTrace*>(mSensor.GetProvider(PxResultProvider::ID_TRACES_32));
    for (PxResultTrace* lTraces : {&mSensor.TraceProvider(), lFiltered}) {
      for (const PxTrace& lTrace : lTraces->Traces()) {
        lCurves.emplace_back(lTrace.Length());
        lTrace.FillPoints(lCurves.back().data());
      }
    }
    return lCurves;
  }

  TraceSensor mSensor;
};

// The ranges the trace graph's full view takes over the scene, for the peers to show the same.
struct Ranges
{
  double mXMin, mXMax, mYMin, mYMax;
};
Ranges GraphRanges(const std::vector<std::vector<QPointF>>& aCurves)
{
  Ranges lRanges{0, 0, 1e300, -1e300};
  for (const std::vector<QPointF>& lCurve : aCurves) {
    for (const QPointF& lPoint : lCurve) {
      lRanges.mYMin = std::min(lRanges.mYMin, lPoint.y());
      lRanges.mYMax = std::max(lRanges.mYMax, lPoint.y());
    }
  }
  lRanges.mXMax = std::ceil(SAMPLES * POINT_STEP);
  lRanges.mYMin = std::floor(lRanges.mYMin);
  lRanges.mYMax = std::ceil(lRanges.mYMax);
  return lRanges;
}

Scene& SharedScene()
{
  static Scene sScene;
  return sScene;
}

QImage& Image()
{
  static QImage sImage(WIDTH, HEIGHT, QImage::Format_ARGB32_Premultiplied);
  return sImage;
}

// With PX_BENCH_PICTURES set to a folder, each contender's picture is saved there, so that a
// person can check that they all draw the same thing.
void SavePicture(const char* aName)
{
  const QString lFolder = qEnvironmentVariable("PX_BENCH_PICTURES");
  if (!lFolder.isEmpty()) {
    Image().save(lFolder + QLatin1Char('/') + QLatin1String(aName) + QStringLiteral(".png"));
  }
}

// The axes, grid and labels alone: what every graph pays before it draws a curve.
void EmptyGraph(benchmark::State& aState)
{
  PxTraceWidget lGraph;
  lGraph.resize(WIDTH, HEIGHT);
  lGraph.ShowGrid(true);
  lGraph.SetLimits(0, SAMPLES * POINT_STEP, 0, 4000);
  QPainter lPainter(&Image());
  for (auto _ : aState) {
    lGraph.Paint(lPainter, Image().size());
    benchmark::DoNotOptimize(Image().constBits());
  }
}

void TraceGraph(benchmark::State& aState, bool aMarkers)
{
  Scene& lScene = SharedScene();
  PxTraceWidget lGraph;
  lGraph.resize(WIDTH, HEIGHT);
  lGraph.SetSensor(&lScene.mSensor);
  lGraph.SetFlags(PxTraceWidget::SHOW_RAW | PxTraceWidget::SHOW_FILTERED);
  lGraph.ShowGrid(true);
  lGraph.StateNewData();
  lGraph.ResetAxes();
  lGraph.SetMarkerStyle(aMarkers ? 1 : 0);
  QPainter lPainter(&Image());
  lGraph.Paint(lPainter, Image().size()); // markers and point arrays made once
  SavePicture(aMarkers ? "trace_graph_markers" : "trace_graph");
  const long lAllocations = PxBenchAllocations();
  for (auto _ : aState) {
    lGraph.Paint(lPainter, Image().size());
    benchmark::DoNotOptimize(Image().constBits());
  }
  aState.counters["allocs/paint"] =
      benchmark::Counter(static_cast<double>(PxBenchAllocations() - lAllocations) / aState.iterations());
  aState.counters["points"] = static_cast<double>(2 * SEGMENTS * SAMPLES);
}

#ifdef PX_BENCH_QCUSTOMPLOT
void QCustomPlotPeer(benchmark::State& aState, bool aAdaptiveSampling)
{
  Scene& lScene = SharedScene();
  QCustomPlot lPlot;
  lPlot.resize(WIDTH, HEIGHT);
  // The same picture: no antialiasing, the same pens, the same ranges.
  lPlot.setNotAntialiasedElements(QCP::aeAll);
  PxTraceWidget lColours;
  const std::vector<std::vector<QPointF>> lCurves = lScene.Curves();
  for (size_t c = 0; c < lCurves.size(); ++c) {
    QVector<double> lKeys, lValues;
    for (const QPointF& lPoint : lCurves[c]) {
      lKeys << lPoint.x();
      lValues << lPoint.y();
    }
    QCPGraph* lGraph = lPlot.addGraph();
    lGraph->setData(lKeys, lValues, true);
    lGraph->setPen(lColours.Context().Layer(static_cast<int>(c % SEGMENTS)).Pen());
    lGraph->setAdaptiveSampling(aAdaptiveSampling);
  }
  const Ranges lRanges = GraphRanges(lCurves);
  lPlot.xAxis->setRange(lRanges.mXMin, lRanges.mXMax);
  lPlot.yAxis->setRange(lRanges.mYMin, lRanges.mYMax);
  lPlot.setBackground(Qt::black);
  QCPPainter lPainter(&Image());
  lPlot.toPainter(&lPainter, WIDTH, HEIGHT);
  SavePicture(aAdaptiveSampling ? "qcustomplot_sampling" : "qcustomplot");
  for (auto _ : aState) {
    lPlot.toPainter(&lPainter, WIDTH, HEIGHT);
    benchmark::DoNotOptimize(Image().constBits());
  }
}
#endif

#ifdef PX_BENCH_QWT
void QwtPeer(benchmark::State& aState)
{
  Scene& lScene = SharedScene();
  QwtPlot lPlot;
  lPlot.resize(WIDTH, HEIGHT);
  lPlot.setCanvasBackground(Qt::black);
  PxTraceWidget lColours;
  const std::vector<std::vector<QPointF>> lCurves = lScene.Curves();
  for (size_t c = 0; c < lCurves.size(); ++c) {
    auto* lCurve = new QwtPlotCurve;
    lCurve->setSamples(QVector<QPointF>(lCurves[c].begin(), lCurves[c].end()));
    lCurve->setPen(lColours.Context().Layer(static_cast<int>(c % SEGMENTS)).Pen());
    lCurve->attach(&lPlot);
  }
  (new QwtPlotGrid)->attach(&lPlot);
  const Ranges lRanges = GraphRanges(lCurves);
  lPlot.setAxisScale(QwtPlot::xBottom, lRanges.mXMin, lRanges.mXMax);
  lPlot.setAxisScale(QwtPlot::yLeft, lRanges.mYMin, lRanges.mYMax);
  lPlot.updateAxes();
  QwtPlotRenderer lRenderer;
  QPainter lPainter(&Image());
  lRenderer.render(&lPlot, &lPainter, QRectF(0, 0, WIDTH, HEIGHT));
  SavePicture("qwt");
  for (auto _ : aState) {
    lRenderer.render(&lPlot, &lPainter, QRectF(0, 0, WIDTH, HEIGHT));
    benchmark::DoNotOptimize(Image().constBits());
  }
}
#endif

// 96 valid echoes over the 16 segments, between 2 and 50 m.
std::vector<TraceSensor::Echo> NinetySixEchoes()
{
  std::vector<TraceSensor::Echo> lEchoes;
  for (int i = 0; i < 96; ++i) {
    lEchoes.push_back({2000 + 500 * i, static_cast<PtU32>(100 + 7 * i), 0, static_cast<PtByte>(i % SEGMENTS), 1});
  }
  return lEchoes;
}

void EchoFormUpdate(benchmark::State& aState)
{
  TraceSensor lSensor(SEGMENTS, false);
  lSensor.EchoDistanceScaleProperty().SetValue(0, 1000); // raw millimetres
  lSensor.FeedEchoes(NinetySixEchoes());
  PxEchoForm lForm(&lSensor);
  lForm.resize(700, 900);
  lForm.show();
  std::vector<PxEcho>& lEchoes = lSensor.EchoesProvider().mEchoes;
  int lStep = 1;
  for (auto _ : aState) {
    // Another frame: every distance moves, so every row's text changes.
    for (PxEcho& lEcho : lEchoes) {
      lEcho.mDistance += lStep;
    }
    lStep = -lStep;
    lForm.EchoesNewData();
  }
  if (lForm.FilledRows() != 96) {
    aState.SkipWithError("the echoes did not all pass the filters");
  }
}

void EchoesGraphPaint(benchmark::State& aState)
{
  TraceSensor lSensor(SEGMENTS, false);
  lSensor.EchoDistanceScaleProperty().SetValue(0, 1000);
  lSensor.LengthProperty().SetValue(0, 60.0f);
  lSensor.SetFieldOfView(48.0f);
  lSensor.FeedEchoes(NinetySixEchoes());
  PxEchoesGraph lGraph;
  lGraph.resize(WIDTH, HEIGHT);
  lGraph.SetSensor(&lSensor);
  QPainter lPainter(&Image());
  lGraph.Paint(lPainter, Image().size());
  SavePicture("echoes_graph");
  for (auto _ : aState) {
    lGraph.Paint(lPainter, Image().size());
    benchmark::DoNotOptimize(Image().constBits());
  }
  if (lGraph.DrawnEchoCount() != 96) {
    aState.SkipWithError("not every echo was drawn");
  }
}
} // namespace

BENCHMARK(EmptyGraph)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(TraceGraph, NoMarkers, false)->Unit(benchmark::kMillisecond)->UseRealTime();
#ifdef PX_BENCH_QCUSTOMPLOT
BENCHMARK_CAPTURE(QCustomPlotPeer, AdaptiveSamplingOff, false)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(QCustomPlotPeer, AdaptiveSamplingOn, true)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif
#ifdef PX_BENCH_QWT
BENCHMARK(QwtPeer)->Unit(benchmark::kMillisecond)->UseRealTime();
#endif
BENCHMARK_CAPTURE(TraceGraph, Markers, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(EchoFormUpdate)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(EchoesGraphPaint)->Unit(benchmark::kMicrosecond)->UseRealTime();

int main(int argc, char** argv)
{
  return PxBenchRunWithUi(argc, argv, [] {
    QLocale::setDefault(QLocale::c());
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
  });
}
