// Pictures of the displays on the simulated sensor, in-process, for a person to look at: the
// trace form in its main modes, the echoes fan with the "configuration modified" warning and
// the echo table, each before and after the moving target has moved.

#include "PxEchoForm.h"
#include "PxEchoesGraph.h"
#include "PxFloatProperty.h"
#include "PxSimProtocol.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestSimSensor.h"
#include "PxTraceForm.h"
#include "PxTraceWidget.h"
#include "PxUnits.h"


#include <gtest/gtest.h>

namespace {
struct Simulated : testing::Test, PxTest::SimSensor
{
  void SetUp() override
  {
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
    ASSERT_TRUE(mSensor);
  }
  // Runs the device for aFrames frames (20 ms of device time each at the default rate).
  void Run(int aFrames)
  {
    for (int i = 0; i < aFrames; ++i) {
      mSensor->Acquire();
    }
  }
};
} // namespace

TEST_F(Simulated, TraceFormPictures)
{
  PxTraceForm lForm;
  lForm.SetFlags(PxTraceWidget::SHOW_RAW | PxTraceWidget::SHOW_FILTERED);
  lForm.SetSensor(mSensor.get());
  lForm.resize(1000, 700);
  PxTraceWidget& lGraph = *lForm.Graph();
  Run(1);
  ASSERT_NE(lGraph.CurveAt(0).mTrace, nullptr);
  ASSERT_NE(lGraph.CurveAt(16).mTrace, nullptr);
  lGraph.ResetAxes();
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("trace_form_raw_filtered")));

  lForm.MIActionsAutoSetOffsetsTriggered();
  lForm.MIActionsShowSegmentsPanelTriggered();
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("trace_form_offsets")));
  EXPECT_GT(lGraph.CurveAt(15).mYOffset, lGraph.CurveAt(0).mYOffset);
  Run(100);
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("trace_form_offsets_2s_later")));

  lForm.MISettingsMarkerXTriggered();
  lForm.MIActionsZoomsTriggered(7);
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("trace_form_segment7_markers")));

  lForm.MISettingsMarkerNoneTriggered();
  lForm.MISettingsReverseVideoTriggered();
  lForm.MIActionsAutoSetOffsetsTriggered();
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("trace_form_reverse_video")));
}

TEST_F(Simulated, EchoesPictures)
{
  PxEchoesGraph lGraph;
  lGraph.resize(700, 500);
  lGraph.SetSensor(mSensor.get());
  PxEchoForm lForm(mSensor.get());
  lForm.resize(700, 500);
  Run(1);
  EXPECT_GT(lGraph.LimitYMax(), 10.0);
  EXPECT_TRUE(PxTest::SaveToGallery(&lGraph, QStringLiteral("echoes_graph")));
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("echo_form")));
  EXPECT_GT(lForm.FilledRows(), 0);
  EXPECT_GT(lGraph.DrawnEchoCount(), 0u);

  // An edit not yet applied: the warning shows.
  auto& lThreshold =
      dynamic_cast<PxFloatProperty&>(*mSensor->FindPropertyByDeviceId(PxSimProtocol::ID_DETECTION_THRESHOLD));
  lThreshold.SetValue(0, lThreshold.Value(0) + 1.0f);
  ASSERT_TRUE(mSensor->PropertyModified());
  Run(100);
  EXPECT_TRUE(PxTest::SaveToGallery(&lGraph, QStringLiteral("echoes_graph_warning_2s_later")));
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("echo_form_2s_later")));
}
