// The simulated sensor's configuration form on an in-process link: what the user changes there is
// marked until applied, and once applied the device sends data that shows it.

#include "PxBitFieldEditor.h"
#include "PxResultSubscription.h"
#include "PxSimConfigForm.h"
#include "PxSimProtocol.h"
#include "PxSpinBox.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestSimSensor.h"
#include "PxTextProperty.h"
#include "PxUnits.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>

#include <algorithm>
#include <gtest/gtest.h>

using namespace PxSimProtocol;

namespace {
class ConfigForm : public ::testing::Test, public PxTest::SimSensor
{
public:
  void SetUp() override
  {
    PxUnits::Initialize();
    PxUnits::SetUnit(UT_DISTANCE, 1);
    ASSERT_TRUE(mSensor);
    mForm = std::make_unique<PxSimConfigForm>(*mSensor);
  }

  template <class W>
  W* EditorOf(PtU16 aDeviceId)
  {
    for (QWidget* lWidget : mForm->PropertyWidgets(mSensor->FindPropertyByDeviceId(aDeviceId))) {
      if (auto* lEditor = qobject_cast<W*>(lWidget)) {
        return lEditor;
      }
    }
    return nullptr;
  }

  std::unique_ptr<PxSimConfigForm> mForm;
};
} // namespace

TEST_F(ConfigForm, ShowsEverySettingByAreaWithItsIdentifierUnitAndLimits)
{
  EXPECT_EQ(mForm->PermanentId(), 16u);
  QStringList lTitles;
  for (QGroupBox* lBox : mForm->findChildren<QGroupBox*>()) {
    if (!qobject_cast<PxBitFieldEditor*>(lBox->parentWidget())) {
      lTitles << lBox->title();
    }
  }
  EXPECT_EQ(lTitles.size(), 6) << lTitles.join(QLatin1Char(',')).toStdString();
  for (const PxSimSensor::ConfigurationGroup& lGroup : mSensor->ConfigurationGroups()) {
    EXPECT_TRUE(lTitles.contains(lGroup.mTitle)) << lGroup.mTitle.toStdString();
    for (const PxProperty* lProperty : lGroup.mProperties) {
      EXPECT_FALSE(mForm->PropertyWidgets(lProperty).isEmpty()) << lProperty->Name().toStdString();
    }
  }
  const QString lTip = EditorOf<QWidget>(ID_DISTANCE_OFFSETS)->toolTip();
  const QString lId = QStringLiteral("0x%1").arg(PxSimSensor::PropertyId(ID_DISTANCE_OFFSETS), 8, 16, QLatin1Char('0'));
  EXPECT_TRUE(lTip.contains(lId)) << lTip.toStdString();
  EXPECT_TRUE(lTip.contains(QStringLiteral("Unit: m"))) << lTip.toStdString();
  EXPECT_TRUE(lTip.contains(QStringLiteral("-5.000 to 5.000"))) << lTip.toStdString();
  PxUnits::SetUnit(UT_DISTANCE, 2);
  EXPECT_TRUE(EditorOf<QWidget>(ID_DISTANCE_OFFSETS)->toolTip().contains(QStringLiteral("-16.404 to 16.404 ft")));
  PxUnits::SetUnit(UT_DISTANCE, 1);

  // For a person to look at, with two settings changed and not yet applied.
  dynamic_cast<PxIntegerProperty&>(*mSensor->FindPropertyByDeviceId(ID_LIGHT_POWER)).SetValue(0, 80);
  dynamic_cast<PxTextProperty&>(*mSensor->FindPropertyByDeviceId(ID_LOCATION)).SetTextValue(0, QStringLiteral("Bay 7"));
  mForm->resize(static_cast<QScrollArea*>(mForm->widget())->widget()->sizeHint() + QSize(40, 40));
  EXPECT_TRUE(PxTest::SaveToGallery(mForm.get(), QStringLiteral("widgets_sim_config_form")));
}

TEST_F(ConfigForm, AChangeIsMarkedUntilAppliedAndThenShowsInTheData)
{
  struct Case
  {
    const char* mWhat;
    PtU16 mDeviceId;
    std::function<void(ConfigForm&)> mEdit;
    std::function<bool(PxSimSensor&)> mSeenInData;
  } const lCases[] = {
      {"trace length in its spin box", ID_TRACE_LENGTH,
       [](ConfigForm& t) { t.EditorOf<PxSpinBox>(ID_TRACE_LENGTH)->setValue(256); },
       [](PxSimSensor& s) { return s.TraceProvider().TraceLength() == 256; }},
      {"segment 2 unchecked in the segment box", ID_SEGMENT_MASK,
       [](ConfigForm& t) { t.EditorOf<PxBitFieldEditor>(ID_SEGMENT_MASK)->CheckBoxes()[1]->click(); },
       [](PxSimSensor& s) {
         const auto& lEchoes = s.EchoesProvider();
         const auto lEnd = lEchoes.Echoes().begin() + lEchoes.EchoCount();
         return lEchoes.EchoCount() > 0 &&
                std::none_of(lEchoes.Echoes().begin(), lEnd, [](const PxEcho& e) { return e.mSegment == 1; });
       }},
  };
  PxResultSubscription lView(4 | 16);
  mSensor->Subscribe(&lView);
  for (const Case& c : lCases) {
    SCOPED_TRACE(c.mWhat);
    const PxProperty* lProperty = mSensor->FindPropertyByDeviceId(c.mDeviceId);
    mSensor->Acquire();
    ASSERT_FALSE(c.mSeenInData(*mSensor)) << "already so before the change";
    EXPECT_FALSE(mForm->ShownModified(lProperty));
    c.mEdit(*this);
    EXPECT_TRUE(mForm->ShownModified(lProperty));
    mSensor->Acquire();
    EXPECT_FALSE(c.mSeenInData(*mSensor)) << "not before it is applied";
    mSensor->WriteConfiguration();
    mSensor->ApplyConfiguration();
    EXPECT_FALSE(mForm->ShownModified(lProperty)) << "applied and read back";
    mSensor->Acquire();
    EXPECT_TRUE(c.mSeenInData(*mSensor));
  }
  mSensor->Unsubscribe(&lView);
}
