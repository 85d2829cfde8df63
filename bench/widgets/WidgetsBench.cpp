// Property-bound widgets:
// - opening the simulated sensor's configuration form (binding every setting, laying it out and
//   showing it offscreen), in ms, target under 50 ms; the peer is a form of the same number of
//   rows of plain label and spin box pairs, shown the same way;
// - one property change reaching 10 bound widgets, in us per widget, target under 20 us; peers:
//   10 plain QSpinBox::setValue and QDoubleSpinBox::setValue calls.
#include "PxBenchUi.h"
#include "PxDoubleSpinBox.h"
#include "PxFloatProperty.h"
#include "PxInProcessConnection.h"
#include "PxIntegerProperty.h"
#include "PxSimConfigForm.h"
#include "PxSimDriver.h"
#include "PxSimSensor.h"
#include "PxSpinBox.h"
#include "PxUnits.h"

#include <QApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QSpinBox>
#include <QVBoxLayout>

#include <benchmark/benchmark.h>
#include <memory>

namespace {
constexpr int WIDGETS = 10;
constexpr PtU32 SETTING = CAT_CONFIGURATION | F_EDITABLE | F_SAVE;

struct Sensor
{
  Sensor()
  {
    PxSimDriver::Register();
    mLink.Connect();
    mSensor.reset(dynamic_cast<PxSimSensor*>(PxDevice::Create(PxSimSensor::TYPE, &mLink)));
    mSensor->Initialize();
  }
  PxInProcessConnection mLink;
  std::unique_ptr<PxSimSensor> mSensor;
};

int RowCount(PxSimSensor& aSensor)
{
  int lRows = 0;
  for (const auto& lGroup : aSensor.ConfigurationGroups()) {
    lRows += static_cast<int>(lGroup.mProperties.size());
  }
  return lRows;
}

void ShowAndSettle(QWidget& aWidget)
{
  aWidget.show();
  // Layout and the first paint happen in posted events.
  QApplication::processEvents();
}

void BM_ConfigFormOpen(benchmark::State& aState)
{
  Sensor lSensor;
  for (auto _ : aState) {
    auto lForm = std::make_unique<PxSimConfigForm>(*lSensor.mSensor);
    ShowAndSettle(*lForm);
    aState.PauseTiming();
    lForm.reset();
    QApplication::processEvents();
    aState.ResumeTiming();
  }
  aState.counters["rows"] = RowCount(*lSensor.mSensor);
}
BENCHMARK(BM_ConfigFormOpen)->Unit(benchmark::kMillisecond)->UseRealTime();

// The same rows with nothing bound: what Qt alone costs for a form of this size.
void BM_PlainFormOpen(benchmark::State& aState)
{
  Sensor lSensor;
  const auto lGroups = lSensor.mSensor->ConfigurationGroups();
  for (auto _ : aState) {
    auto lForm = std::make_unique<QWidget>();
    auto* lOuter = new QVBoxLayout(lForm.get());
    auto* lScroll = new QScrollArea;
    auto* lContents = new QWidget;
    auto* lLayout = new QVBoxLayout(lContents);
    for (const auto& lGroup : lGroups) {
      auto* lBox = new QGroupBox(lGroup.mTitle);
      auto* lGrid = new QGridLayout(lBox);
      int lRow = 0;
      for (PxProperty* lProperty : lGroup.mProperties) {
        lGrid->addWidget(new QLabel(lProperty->Name()), lRow, 0);
        lGrid->addWidget(new QSpinBox, lRow, 1);
        ++lRow;
      }
      lLayout->addWidget(lBox);
    }
    lScroll->setWidgetResizable(true);
    lScroll->setWidget(lContents);
    lOuter->addWidget(lScroll);
    ShowAndSettle(*lForm);
    aState.PauseTiming();
    lForm.reset();
    QApplication::processEvents();
    aState.ResumeTiming();
  }
}
BENCHMARK(BM_PlainFormOpen)->Unit(benchmark::kMillisecond)->UseRealTime();

// Time per widget reached, as the counter "per_widget".
void CountWidgets(benchmark::State& aState)
{
  aState.counters["per_widget"] = benchmark::Counter(static_cast<double>(aState.iterations()) * WIDGETS,
                                                     benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_IntegerChangeTo10Widgets(benchmark::State& aState)
{
  PxIntegerProperty lProperty(SETTING, 1, 1, 4);
  lProperty.SetCount(1);
  lProperty.SetLimits(0, 1000);
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  for (int i = 0; i < WIDGETS; ++i) {
    auto* lBox = new PxSpinBox;
    lBox->SetProperty(&lProperty, 0);
    lGrid->addWidget(lBox, i, 0);
  }
  ShowAndSettle(lForm);
  int lValue = 0;
  for (auto _ : aState) {
    lProperty.SetValue(0, ++lValue % 1000);
  }
  CountWidgets(aState);
}
BENCHMARK(BM_IntegerChangeTo10Widgets)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_PlainSpinBoxSetValue10(benchmark::State& aState)
{
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  std::vector<QSpinBox*> lBoxes;
  for (int i = 0; i < WIDGETS; ++i) {
    lBoxes.push_back(new QSpinBox);
    lBoxes.back()->setRange(0, 1000);
    lGrid->addWidget(lBoxes.back(), i, 0);
  }
  ShowAndSettle(lForm);
  int lValue = 0;
  for (auto _ : aState) {
    const int lNext = ++lValue % 1000;
    for (QSpinBox* lBox : lBoxes) {
      lBox->setValue(lNext);
    }
  }
  CountWidgets(aState);
}
BENCHMARK(BM_PlainSpinBoxSetValue10)->Unit(benchmark::kMicrosecond)->UseRealTime();

// A scaled distance shown in feet: the conversion and the text comparison of the scaled store.
void BM_FloatChangeTo10Widgets(benchmark::State& aState)
{
  PxUnits::SetUnit(UT_DISTANCE, 2);
  PxFloatProperty lProperty(SETTING, 1, 1, 4, 65536.0f, 3);
  lProperty.SetCount(1);
  lProperty.SetUnitType(UT_DISTANCE);
  lProperty.SetLimits(-5.0f, 5.0f);
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  for (int i = 0; i < WIDGETS; ++i) {
    auto* lBox = new PxDoubleSpinBox;
    lBox->SetProperty(&lProperty, 0);
    lGrid->addWidget(lBox, i, 0);
  }
  ShowAndSettle(lForm);
  int lValue = 0;
  for (auto _ : aState) {
    lProperty.SetValue(0, static_cast<float>(++lValue % 1000) / 250.0f);
  }
  CountWidgets(aState);
  PxUnits::SetUnit(UT_DISTANCE, 1);
}
BENCHMARK(BM_FloatChangeTo10Widgets)->Unit(benchmark::kMicrosecond)->UseRealTime();

void BM_PlainDoubleSpinBoxSetValue10(benchmark::State& aState)
{
  QWidget lForm;
  auto* lGrid = new QGridLayout(&lForm);
  std::vector<QDoubleSpinBox*> lBoxes;
  for (int i = 0; i < WIDGETS; ++i) {
    lBoxes.push_back(new QDoubleSpinBox);
    lBoxes.back()->setRange(-16.404, 16.404);
    lBoxes.back()->setDecimals(3);
    lBoxes.back()->setSuffix(QStringLiteral(" ft"));
    lGrid->addWidget(lBoxes.back(), i, 0);
  }
  ShowAndSettle(lForm);
  int lValue = 0;
  for (auto _ : aState) {
    const double lNext = static_cast<double>(++lValue % 1000) / 250.0 * 3.28084;
    for (QDoubleSpinBox* lBox : lBoxes) {
      lBox->setValue(lNext);
    }
  }
  CountWidgets(aState);
}
BENCHMARK(BM_PlainDoubleSpinBoxSetValue10)->Unit(benchmark::kMicrosecond)->UseRealTime();
} // namespace

int main(int argc, char** argv)
{
  return PxBenchRunWithUi(argc, argv, [] {
    QLocale::setDefault(QLocale::c());
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
  });
}
