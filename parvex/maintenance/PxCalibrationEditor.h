#pragma once

#include "ParvexExport.h"
#include "PtDialog.h"

#include <vector>

class PxProperty;
class PxSensor;
class QLabel;
class QPushButton;

// The calibration of one sensor in a modal dialog: every calibration value with its editor, the
// calibration files ("*.ptc") to load and save, and the write of the edited values to the device.
// Edits that were not written when the dialog closes are taken back, so that the configuration
// does not carry them as unapplied changes.
class PX_EXPORT PxCalibrationEditor : public PtDialog
{
  Q_OBJECT

public:
  PxCalibrationEditor(PxSensor* aSensor, QWidget* aParent = nullptr);
  ~PxCalibrationEditor() override;

  static QString FileFilter();
  // The calibration values shown, in the order of their identifiers.
  const std::vector<PxProperty*>& Properties() const { return mProperties; }
  // Whether a shown value differs from what the device holds.
  bool Modified() const;
  QPushButton* WriteButton() const { return mWrite; }
  QLabel* StatusLabel() const { return mStatus; }

public Q_SLOTS:
  void PBLoadClicked();
  void PBSaveClicked();
  void PBWriteClicked();
  void done(int aResult) override;

private:
  void UpdateControls();
  void ReportError(const std::exception& aError);

  PxSensor* mSensor = nullptr;
  std::vector<PxProperty*> mProperties;
  QPushButton* mLoad = nullptr;
  QPushButton* mSave = nullptr;
  QPushButton* mWrite = nullptr;
  QLabel* mStatus = nullptr;
};
