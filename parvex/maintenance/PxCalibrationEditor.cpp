#include "PxCalibrationEditor.h"

#include "PtAssert.h"
#include "PtDocumentReader.h"
#include "PtErrorLogForm.h"
#include "PtFileChooser.h"
#include "PtMessageBox.h"
#include "PtTextPrompt.h"
#include "PxBoolProperty.h"
#include "PxCheckBox.h"
#include "PxComboBox.h"
#include "PxEnumProperty.h"
#include "PxIntegerProperty.h"
#include "PxSensor.h"
#include "PxSpinBox.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <algorithm>

PxCalibrationEditor::PxCalibrationEditor(PxSensor* aSensor, QWidget* aParent)
    : PtDialog(aParent)
    , mSensor(aSensor)
{
  PT_ASSERT(aSensor);
  setWindowTitle(tr("Calibration"));
  auto* lLayout = new QVBoxLayout(this);
  auto* lHeader = new QLabel(tr("Calibration of %1, serial number %2").arg(aSensor->Name(), aSensor->SerialNumber()));
  QFont lBold = lHeader->font();
  lBold.setBold(true);
  lHeader->setFont(lBold);
  lLayout->addWidget(lHeader);

  for (PtU32 lCategory : {PxProperty::CAT_CALIBRATION, PxProperty::CAT_USER_CALIBRATION}) {
    for (PxProperty* lProperty : aSensor->GetPropertiesByCategory(lCategory)) {
      mProperties.push_back(lProperty);
    }
  }
  std::sort(mProperties.begin(), mProperties.end(),
            [](const PxProperty* a, const PxProperty* b) { return a->Id() < b->Id(); });

  auto* lContents = new QWidget;
  auto* lGrid = new QGridLayout(lContents);
  for (PxProperty* lProperty : mProperties) {
    const int lRow = lGrid->rowCount();
    // Float, text and bit-field values know their editor; the other kinds are given theirs here.
    if (auto* lInteger = qobject_cast<PxIntegerProperty*>(lProperty)) {
      auto* lSpinBox = new PxSpinBox;
      lSpinBox->SetProperty(lInteger, 0);
      lSpinBox->SetLayout(*lGrid, lRow, 1, 0);
    } else if (auto* lEnum = qobject_cast<PxEnumProperty*>(lProperty)) {
      auto* lComboBox = new PxComboBox;
      lComboBox->SetProperty(lEnum, 0);
      lComboBox->SetLayout(*lGrid, lRow, 1, 0);
    } else if (auto* lBool = qobject_cast<PxBoolProperty*>(lProperty)) {
      auto* lCheckBox = new PxCheckBox(lProperty->Name());
      lCheckBox->SetProperty(lBool, 0, false);
      lGrid->addWidget(lCheckBox, lRow, 1);
    } else {
      lProperty->CreateWidget(*lGrid, false, nullptr);
    }
    connect(lProperty, &PxProperty::ValueChanged, this, &PxCalibrationEditor::UpdateControls);
  }
  lGrid->setRowStretch(lGrid->rowCount(), 1);
  auto* lScroll = new QScrollArea;
  lScroll->setWidgetResizable(true);
  lScroll->setWidget(lContents);
  lLayout->addWidget(lScroll, 1);
  if (mProperties.empty()) {
    lScroll->hide();
    lLayout->addWidget(new QLabel(tr("This sensor has no calibration values.")));
  }

  mStatus = new QLabel;
  mStatus->setWordWrap(true);
  lLayout->addWidget(mStatus);
  auto* lButtons = new QDialogButtonBox(QDialogButtonBox::Close);
  mLoad = lButtons->addButton(tr("Load..."), QDialogButtonBox::ActionRole);
  mSave = lButtons->addButton(tr("Save..."), QDialogButtonBox::ActionRole);
  mWrite = lButtons->addButton(tr("Write to Device"), QDialogButtonBox::ActionRole);
  lLayout->addWidget(lButtons);
  connect(mLoad, &QPushButton::clicked, this, &PxCalibrationEditor::PBLoadClicked);
  connect(mSave, &QPushButton::clicked, this, &PxCalibrationEditor::PBSaveClicked);
  connect(mWrite, &QPushButton::clicked, this, &PxCalibrationEditor::PBWriteClicked);
  connect(lButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  resize(560, 300);
  UpdateControls();
}

PxCalibrationEditor::~PxCalibrationEditor() = default;

QString PxCalibrationEditor::FileFilter()
{
  return tr("Parvex") + QStringLiteral("\u2122") + tr(" Calibration Files (*.ptc)") + QStringLiteral(";;") +
         tr("All Files (*.*)");
}

bool PxCalibrationEditor::Modified() const
{
  return std::any_of(mProperties.begin(), mProperties.end(),
                     [](const PxProperty* p) { return p->Values() != p->Backup(); });
}

void PxCalibrationEditor::UpdateControls()
{
  const bool lCanWrite = mSensor->CanModifyConfiguration();
  mWrite->setEnabled(lCanWrite && Modified());
  mLoad->setEnabled(lCanWrite);
  mSave->setEnabled(!mProperties.empty());
}

void PxCalibrationEditor::ReportError(const std::exception& aError)
{
  PtErrorLogForm::LogError(aError);
  PtMessageBox::ShowError(this, aError);
}

void PxCalibrationEditor::PBWriteClicked()
{
  try {
    mSensor->WriteCalibration();
    // Saves it on the device and reads it back: the editors then show what the device runs.
    mSensor->ApplyConfiguration();
    mStatus->setText(tr("The calibration was written to the device."));
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

void PxCalibrationEditor::PBLoadClicked()
{
  const QString lFile = PtFileChooser::OpenFile(this, QString(), QString(), FileFilter());
  if (lFile.isEmpty()) {
    return;
  }
  try {
    PtDocumentReader lReader(lFile, mSensor->CalibrationDocumentType(lFile, QString()));
    PxDevice::FileHeader lHeader;
    mSensor->PreLoadFile(lReader, lHeader);
    const QString lQuestion = tr("This calibration was saved from %1, serial number %2, on %3.\n\n"
                                 "Do you want to write it to the connected %4, serial number %5?")
                                  .arg(lHeader.mName, lHeader.mSerialNumber, lHeader.mDate.toString(Qt::TextDate),
                                       mSensor->Name(), mSensor->SerialNumber());
    if (!PtMessageBox::Question(this, lQuestion)) {
      return;
    }
    // Loading a calibration sends it to the device and reads it back.
    mSensor->LoadCalibration(lReader);
    mStatus->setText(tr("The calibration of %1 was written to the device.").arg(lFile));
  } catch (const std::exception& e) {
    ReportError(e);
  }
  UpdateControls();
}

void PxCalibrationEditor::PBSaveClicked()
{
  QString lFile = PtFileChooser::SaveFile(this, QString(), QString(), FileFilter());
  if (lFile.isEmpty()) {
    return;
  }
  QString lComment;
  if (!PtTextPrompt::Ask(this, tr("Enter comment"), tr("Comment (optional):"), &lComment)) {
    return;
  }
  try {
    mSensor->SaveCalibration(lFile, lComment);
    mStatus->setText(tr("The calibration was saved to %1.").arg(lFile));
  } catch (const std::exception& e) {
    ReportError(e);
  }
}

void PxCalibrationEditor::done(int aResult)
{
  // Values edited but never written would otherwise stay behind as unapplied changes of the
  // configuration, and block recording.
  for (PxProperty* lProperty : mProperties) {
    lProperty->Restore();
  }
  PtDialog::done(aResult);
}
