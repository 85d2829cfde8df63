#pragma once

#include "ParvexExport.h"
#include "PxDockWidget.h"
#include "PxResultSubscription.h"

#include <QBitArray>
#include <QList>
#include <QLocale>

class PxResultEchoes;
class PxSensor;
class QCheckBox;
class QDoubleSpinBox;
class QTableWidget;
class QTableWidgetItem;

// The "Raw Detections" window: the sensor's current echoes as a table, one row per valid echo
// that passes the amplitude, distance and segment filters, unless frozen.
class PX_EXPORT PxEchoForm : public PxDockWidget
{
  Q_OBJECT

public:
  static constexpr int ROW_COUNT = 96;

  // The four items of one table row; placed once, only their texts change.
  struct Echo
  {
    QTableWidgetItem* mItems[4] = {};
  };

  PxEchoForm(PxSensor* aSensor, QWidget* aParent = nullptr);
  ~PxEchoForm() override;

  unsigned int PermanentId() const override { return 4; }

  QTableWidget* Table() const { return mTable; }
  int FilledRows() const { return mRowCount; }
  QCheckBox* FreezeBox() const { return mFreeze; }
  const QList<QCheckBox*>& SegmentBoxes() const { return mSegmentBoxes; }
  QDoubleSpinBox* MinAmplitudeBox() const { return mMinAmplitudeBox; }
  QDoubleSpinBox* MaxAmplitudeBox() const { return mMaxAmplitudeBox; }
  QDoubleSpinBox* MinDistanceBox() const { return mMinDistanceBox; }
  QDoubleSpinBox* MaxDistanceBox() const { return mMaxDistanceBox; }

public Q_SLOTS:
  void EchoesNewData();
  void CBEnabledStateChanged(int aState);
  void DSBMinAmplitudeValueChanged(double aValue);
  void DSBMaxAmplitudeValueChanged(double aValue);
  void DSBMinDistanceValueChanged(double aValue);
  void DSBMaxDistanceValueChanged(double aValue);

private:
  PxSensor* mSensor = nullptr;
  PxResultEchoes* mEchoes = nullptr;
  PxResultSubscription mSubscription{16};
  float mMinDistance = 0.0f;
  float mMaxDistance = 100.0f;
  float mMinAmplitude = 0.0f;
  float mMaxAmplitude = 1024.0f;
  QDoubleSpinBox* mMinAmplitudeBox = nullptr;
  QDoubleSpinBox* mMaxAmplitudeBox = nullptr;
  QDoubleSpinBox* mMinDistanceBox = nullptr;
  QDoubleSpinBox* mMaxDistanceBox = nullptr;
  QCheckBox* mFreeze = nullptr;
  QTableWidget* mTable = nullptr;
  Echo mRows[ROW_COUNT];
  int mRowCount = 0;
  QList<QCheckBox*> mSegmentBoxes;
  QBitArray mSegmentMask;
  QLocale mLocale;
};
