#include "PxEchoForm.h"

#include "PxResultEchoes.h"
#include "PxSensor.h"
#include "PxUnits.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
QDoubleSpinBox* AddSpinBox(QHBoxLayout* aRow, const QString& aLabel, double aMin, double aMax, double aValue)
{
  auto* lLabel = new QLabel(aLabel);
  auto* lBox = new QDoubleSpinBox;
  lBox->setDecimals(1);
  lBox->setRange(aMin, aMax);
  lBox->setValue(aValue);
  lLabel->setBuddy(lBox);
  aRow->addWidget(lLabel);
  aRow->addWidget(lBox);
  return lBox;
}
} // namespace

PxEchoForm::PxEchoForm(PxSensor* aSensor, QWidget* aParent)
    : PxDockWidget(aParent)
    , mSensor(aSensor)
    , mEchoes(&aSensor->EchoesProvider())
{
  auto* lContent = new QWidget(this);
  auto* lLayout = new QVBoxLayout(lContent);
  auto* lFilters = new QHBoxLayout;
  lLayout->addLayout(lFilters);
  mMinAmplitudeBox = AddSpinBox(lFilters, tr("Min Amplitude:"), 0.0, 1024.0, mMinAmplitude);
  mMaxAmplitudeBox = AddSpinBox(lFilters, tr("Max Amplitude:"), 0.0, 1024.0, mMaxAmplitude);
  mMinDistanceBox = AddSpinBox(lFilters, tr("Min Distance:"), -10.0, 200.0, mMinDistance);
  mMaxDistanceBox = AddSpinBox(lFilters, tr("Max Distance:"), 0.0, 200.0, mMaxDistance);
  mFreeze = new QCheckBox(tr("Freeze"));
  lFilters->addWidget(mFreeze);
  lFilters->addStretch(1);
  connect(mMinAmplitudeBox, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          &PxEchoForm::DSBMinAmplitudeValueChanged);
  connect(mMaxAmplitudeBox, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          &PxEchoForm::DSBMaxAmplitudeValueChanged);
  connect(mMinDistanceBox, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          &PxEchoForm::DSBMinDistanceValueChanged);
  connect(mMaxDistanceBox, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
          &PxEchoForm::DSBMaxDistanceValueChanged);

  mTable = new QTableWidget(ROW_COUNT, 4);
  mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
  mTable->setHorizontalHeaderLabels({tr("Seg"), tr("Distance"), tr("Amplitude"), tr("Flags")});
  for (int r = 0; r < ROW_COUNT; ++r) {
    for (int c = 0; c < 4; ++c) {
      mRows[r].mItems[c] = new QTableWidgetItem;
      mRows[r].mItems[c]->setTextAlignment(c == 0 ? int(Qt::AlignCenter) : int(Qt::AlignRight | Qt::AlignVCenter));
      mTable->setItem(r, c, mRows[r].mItems[c]);
    }
  }
  // Sized once to the widest texts a row can hold, not after every change: a table that resizes
  // itself to its contents measures all 384 cells for each text set, tens of times a second.
  const QStringList lWidest = {mLocale.toString(88), mLocale.toString(-8888.888, 'f', 3),
                               mLocale.toString(88888.8, 'f', 1), mLocale.toString(888)};
  for (int c = 0; c < 4; ++c) {
    mRows[0].mItems[c]->setText(lWidest[c]);
  }
  mTable->resizeColumnsToContents();
  mTable->resizeRowToContents(0);
  mTable->verticalHeader()->setDefaultSectionSize(mTable->rowHeight(0));
  mTable->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  for (QTableWidgetItem* lItem : mRows[0].mItems) {
    lItem->setText(QString());
  }
  lLayout->addWidget(mTable, 1);

  // Segment boxes in two rows: the first half of the segments above, the rest below.
  const int lSegments = std::max(0, aSensor->ChannelCount());
  auto* lFirstRow = new QHBoxLayout;
  auto* lSecondRow = new QHBoxLayout;
  lLayout->addLayout(lFirstRow);
  lLayout->addLayout(lSecondRow);
  mSegmentMask = QBitArray(lSegments, true);
  for (int s = 0; s < lSegments; ++s) {
    auto* lBox = new QCheckBox(QString::number(s + 1));
    lBox->setChecked(true);
    (s < lSegments / 2 ? lFirstRow : lSecondRow)->addWidget(lBox);
    connect(lBox, &QCheckBox::stateChanged, this, &PxEchoForm::CBEnabledStateChanged);
    mSegmentBoxes << lBox;
  }
  lFirstRow->addStretch(1);
  lSecondRow->addStretch(1);

  setWidget(lContent);
  setWindowTitle(tr("Raw Detections"));
  connect(mEchoes, &PxResultProvider::NewData, this, &PxEchoForm::EchoesNewData);
  aSensor->Subscribe(&mSubscription);
}

PxEchoForm::~PxEchoForm()
{
  if (mSubscription.Subscribed()) {
    mSubscription.Sensor()->Unsubscribe(&mSubscription);
  }
}

void PxEchoForm::CBEnabledStateChanged(int)
{
  for (int s = 0; s < mSegmentBoxes.size(); ++s) {
    mSegmentMask.setBit(s, mSegmentBoxes.at(s)->isChecked());
  }
}

void PxEchoForm::DSBMinAmplitudeValueChanged(double aValue)
{
  mMinAmplitude = static_cast<float>(aValue);
}

void PxEchoForm::DSBMaxAmplitudeValueChanged(double aValue)
{
  mMaxAmplitude = static_cast<float>(aValue);
}

void PxEchoForm::DSBMinDistanceValueChanged(double aValue)
{
  mMinDistance = static_cast<float>(aValue);
}

void PxEchoForm::DSBMaxDistanceValueChanged(double aValue)
{
  mMaxDistance = static_cast<float>(aValue);
}

void PxEchoForm::EchoesNewData()
{
  if (mFreeze->isChecked()) {
    return;
  }
  const float lDistanceScale = mEchoes->DistanceScale();
  const float lAmplitudeScale = mEchoes->AmplitudeScale();
  const PtU32 lCount = mEchoes->EchoCount();
  int lRows = 0;
  for (PtU32 e = 0; e < lCount && lRows < ROW_COUNT; ++e) {
    const PxEcho& lEcho = mEchoes->mEchoes[e];
    if (!(lEcho.mFlag & 1) || lEcho.mSegment >= mSegmentMask.size() || !mSegmentMask.testBit(lEcho.mSegment)) {
      continue;
    }
    const float lAmplitude = static_cast<float>(lEcho.mAmplitude) * lAmplitudeScale;
    if (lAmplitude < mMinAmplitude || lAmplitude > mMaxAmplitude) {
      continue;
    }
    const float lDistance = PxUnits::To(UT_DISTANCE, static_cast<float>(lEcho.mDistance) * lDistanceScale);
    if (lDistance < mMinDistance || lDistance > mMaxDistance) {
      continue;
    }
    QTableWidgetItem* const* lItems = mRows[lRows++].mItems;
    lItems[0]->setText(mLocale.toString(static_cast<int>(lEcho.mSegment) + 1));
    lItems[1]->setText(mLocale.toString(static_cast<double>(lDistance), 'f', 3));
    lItems[2]->setText(mLocale.toString(static_cast<double>(lAmplitude), 'f', 1));
    lItems[3]->setText(mLocale.toString(static_cast<int>(lEcho.mFlag)));
  }
  for (int r = lRows; r < mRowCount; ++r) {
    for (QTableWidgetItem* lItem : mRows[r].mItems) {
      lItem->setText(QString());
    }
  }
  mRowCount = lRows;
}
