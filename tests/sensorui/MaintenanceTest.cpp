#include "PtModalScript.h"
#include "PxCalibrationEditor.h"
#include "PxDebugForm.h"
#include "PxFloatProperty.h"
#include "PxLabel.h"
#include "PxSimProtocol.h"
#include "PxSimSensor.h"
#include "PxSystemStateForm.h"
#include "PxTest.h"
#include "PxTestGallery.h"
#include "PxTestSimSensor.h"
#include "PxTestUi.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <memory>

namespace {
// The simulated sensor connected in-process, as the maintenance and state windows find it.
class Maintenance : public ::testing::Test
{
protected:
  void SetUp() override { ASSERT_TRUE(mSensor); }
  PxFloatProperty& Offsets()
  {
    return static_cast<PxFloatProperty&>(
        mSensor->Property(PxSimSensor::PropertyId(PxSimProtocol::ID_DISTANCE_OFFSETS)));
  }

  QTemporaryDir mState;
  PxTest::SimSensor mSim{mState.path()};
  std::unique_ptr<PxSimSensor>& mSensor = mSim.mSensor;
};

TEST_F(Maintenance, DebugFormReadsAndWritesMemoriesAndShowsWhatTheDeviceRefuses)
{
  PxDebugForm lForm;
  lForm.SetSensor(mSensor.get());
  ASSERT_EQ(lForm.MemoryBox()->count(), 4);
  auto lRead = [&](int aMemory, const QString& aAddress, int aLength) {
    lForm.MemoryBox()->setCurrentIndex(aMemory);
    lForm.AddressEdit()->setText(aAddress);
    lForm.LengthBox()->setValue(aLength);
    lForm.findChildren<QPushButton*>().at(0)->click();
  };
  QPushButton* lWrite = lForm.findChildren<QPushButton*>().at(1);

  // RAM round trip: read, edit in the view, write back, read again.
  lRead(0, QStringLiteral("0x100"), 20);
  EXPECT_EQ(lForm.HexView()->toPlainText().count(QLatin1Char('\n')), 2);
  EXPECT_TRUE(lForm.HexView()->toPlainText().startsWith(QStringLiteral("0000 0100: 00 00")));
  QString lEdited = lForm.HexView()->toPlainText();
  lEdited.replace(11, 5, QStringLiteral("41 42"));
  lForm.HexView()->setPlainText(lEdited);
  lWrite->click();
  EXPECT_EQ(lForm.StatusLabel()->text(), QStringLiteral("Wrote 20 byte(s) to RAM at 0x100."));
  lForm.HexView()->clear();
  lRead(0, QStringLiteral("100"), 20);
  EXPECT_EQ(mSensor->ReadMemory(0, 0x100, 2), QByteArray("AB"));
  EXPECT_TRUE(lForm.HexView()->toPlainText().contains(QStringLiteral("AB..")));
  // More than one transfer of the device's.
  EXPECT_EQ(mSensor->ReadMemory(3, 0, PxSimProtocol::MAX_MEMORY_TRANSFER + 100).size(),
            static_cast<int>(PxSimProtocol::MAX_MEMORY_TRANSFER + 100));

  // Each refusal: the memory, the address, whether it is written, and how the status line starts.
  for (const auto& [lMemory, lAddress, lWriting, lStatusStart] :
       {std::tuple{0, "0xFFFF", false, "Read failed: "},
        {1, "0x0", true, "Write failed: "},
        {0, "0xZZ", false, "The address must be a hexadecimal number."}}) {
    SCOPED_TRACE(lAddress);
    PtModalScript lScript; // nothing may pop up: the form shows it
    lRead(lMemory, QLatin1String(lAddress), 16);
    if (lWriting) {
      lWrite->click();
    }
    EXPECT_TRUE(lForm.StatusLabel()->text().startsWith(QLatin1String(lStatusStart)))
        << lForm.StatusLabel()->text().toStdString();
    EXPECT_TRUE(lScript.Interactions().isEmpty());
    EXPECT_TRUE(mSensor->IsLive());
  }
  lForm.HexView()->setPlainText(QStringLiteral("0000 0000: 4G"));
  lWrite->click();
  EXPECT_EQ(lForm.StatusLabel()->text(), QStringLiteral("The bytes to write must be pairs of hexadecimal digits."));

  lRead(1, QStringLiteral("0"), 64);
  lForm.resize(620, 360);
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("debug-form")));
}

TEST_F(Maintenance, CalibrationEditorWritesSavesAndLoadsTheCalibration)
{
  const QString lFile = mState.filePath(QStringLiteral("offsets.ptc"));
  PxCalibrationEditor lEditor(mSensor.get());
  ASSERT_EQ(lEditor.Properties().size(), 1u);
  EXPECT_FALSE(lEditor.WriteButton()->isEnabled());

  // Edit and write: the device runs the value from then on.
  Offsets().SetDoubleValue(3, 0.25);
  EXPECT_TRUE(lEditor.WriteButton()->isEnabled());
  lEditor.WriteButton()->click();
  EXPECT_FALSE(lEditor.Modified());
  mSensor->ReadConfiguration();
  EXPECT_DOUBLE_EQ(Offsets().DoubleValue(3), 0.25);

  {
    PtModalScript lScript;
    lScript.Queue(lFile);
    lScript.Queue(QStringLiteral("bench offsets"));
    PxTest::Button(&lEditor, QStringLiteral("Save..."))->click();
    EXPECT_EQ(lScript.Pending(), 0);
  }
  Offsets().SetDoubleValue(3, -1.0);
  lEditor.WriteButton()->click();

  // Loading asks first, then writes the file's calibration to the device.
  for (int lAnswer : {int(QMessageBox::No), int(QMessageBox::Yes)}) {
    PtModalScript lScript;
    lScript.Queue(lFile);
    lScript.Queue(lAnswer);
    PxTest::Button(&lEditor, QStringLiteral("Load..."))->click();
    ASSERT_EQ(lScript.Interactions().size(), 2);
    EXPECT_EQ(lScript.Interactions()[1].mText.section(QLatin1Char(','), 0, 1),
              QStringLiteral("This calibration was saved from %1, serial number %2")
                  .arg(mSensor->DeviceName().TextValue(0), mSensor->SerialNumber()));
    mSensor->ReadConfiguration();
    EXPECT_DOUBLE_EQ(Offsets().DoubleValue(3), lAnswer == QMessageBox::Yes ? 0.25 : -1.0);
  }

  // Edits never written are taken back when the editor closes.
  Offsets().SetDoubleValue(0, 1.5);
  lEditor.resize(560, 300);
  lEditor.show();
  EXPECT_TRUE(PxTest::SaveToGallery(&lEditor, QStringLiteral("calibration-editor")));
  lEditor.reject();
  EXPECT_FALSE(mSensor->PropertyModified());
}

TEST_F(Maintenance, SystemStateFormFollowsTheSimulatedSensorsState)
{
  PxSimSensor* lSensor = mSensor.get();
  PxSystemStateForm lForm;
  lForm.SetSensor(lSensor);
  // The form's subscription makes the acquisition fetch the state group.
  EXPECT_TRUE(lSensor->DataMask() & 2);
  for (int i = 0; i < 40; ++i) {
    lSensor->Acquire();
  }
  EXPECT_FALSE(lForm.ElapsedTimeLabel()->text().isEmpty());
  // The frame counter is the simulated sensor's diagnostic value: it gets the "Debug" group.
  ASSERT_FALSE(lForm.DebugGroup()->isHidden());
  auto* lFrames = lForm.DebugGroup()->findChild<PxLabel*>();
  ASSERT_NE(lFrames, nullptr);
  EXPECT_EQ(lFrames->text(), QStringLiteral("Frame Counter: 39"));
  QStringList lShown;
  for (PxLabel* lLabel : lForm.ResultLabels()) {
    lShown << lLabel->text().section(QLatin1Char(':'), 0, 0);
  }
  EXPECT_EQ(lShown,
            (QStringList{"Acquisition State", "Temperature", "Processor Load", "Measurement Rate", "Frame Counter"}));
  lForm.resize(640, 420);
  EXPECT_TRUE(PxTest::SaveToGallery(&lForm, QStringLiteral("system-state-form")));
}
} // namespace
