#include "PxSerialPortListener.h"

#include "PtAssert.h"
#include "PtException.h"
#include "PtModbus.h"

#include <QHeaderView>
#include <QMap>
#include <QTableWidget>

#include <algorithm>
#include <cmath>

namespace {
enum Column { C_REGISTER, C_NAME, C_VALUE, C_RAW, C_COUNT };

QMap<int, QString>& TypeNames()
{
  static QMap<int, QString> sNames;
  return sNames;
}
} // namespace

PxSerialPortListener::PxSerialPortListener(PtModbus* aModbus, QTableWidget* aTable, int aFirstRegister, int aCount)
    : mModbus(aModbus)
    , mTable(aTable)
    , mFirst(aFirstRegister)
    , mCount(aCount)
{
  PT_ASSERT(aModbus);
  PT_ASSERT(aTable);
  PT_ASSERT(aCount >= 1 && aCount <= PtModbus::MAX_REGISTERS);
  mTimer.setTimerType(Qt::PreciseTimer);
  connect(&mTimer, &QTimer::timeout, this, &PxSerialPortListener::Tick);
  connect(mModbus, &PtModbus::ReadFinished, this, &PxSerialPortListener::ReadFinished);
}

PxSerialPortListener::~PxSerialPortListener()
{
  Stop();
}

void PxSerialPortListener::RegisterTypeName(int aType, const QString& aName)
{
  TypeNames().insert(aType, aName);
}

QString PxSerialPortListener::TypeName(int aType)
{
  return TypeNames().value(aType, tr("Type %1").arg(aType));
}

void PxSerialPortListener::SetRate(double aRate)
{
  mRate = std::clamp(aRate, 0.1, 100.0);
  mTimer.setInterval(static_cast<int>(std::lround(1000.0 / mRate)));
}

void PxSerialPortListener::Start()
{
  if (mRunning) {
    return;
  }
  SetUpTable();
  SetRate(mRate);
  mRunning = true;
  mTimer.start();
  Tick();
}

void PxSerialPortListener::Stop()
{
  if (!mRunning) {
    return;
  }
  mRunning = false;
  mDue = false;
  mTimer.stop();
  if (mReading) {
    mReading = false;
    // Abort reports the end of the read; the listener is no longer waiting for it.
    QSignalBlocker lBlock(this);
    mModbus->Abort();
  }
  emit Stopped();
}

void PxSerialPortListener::Tick()
{
  if (!mRunning) {
    return;
  }
  if (mReading || mModbus->IsBusy()) {
    // Late, not lost: it starts when the read under way ends. Only a second one due meanwhile is
    // missed, since the link cannot keep up with the rate.
    if (mDue) {
      ++mMissed;
    }
    mDue = true;
    return;
  }
  mDue = false;
  try {
    mModbus->StartReadHoldingRegisters(mFirst, mCount);
    mReading = true;
  } catch (const std::exception& e) {
    ++mFailed;
    emit PollFailed(QString::fromUtf8(e.what()));
  }
}

void PxSerialPortListener::ReadFinished()
{
  if (!mReading || signalsBlocked()) {
    return;
  }
  mReading = false;
  try {
    const std::vector<PtU16> lValues = mModbus->TakeValues();
    ++mPolls;
    ShowValues(lValues);
    emit Polled();
  } catch (const std::exception& e) {
    unsigned int lCode = 0;
    QString lText;
    PtExtractException(e, &lCode, &lText);
    // A read dropped because the port went away is that loss, reported by the port, not a poll
    // that failed.
    if (lCode != PtModbus::ERROR_BASE + PtModbus::ERROR_ABORTED) {
      ++mFailed;
      emit PollFailed(lText);
    }
  }
  if (mDue && mRunning) {
    Tick();
  }
}

void PxSerialPortListener::SetUpTable()
{
  mTable->clear();
  mTable->setColumnCount(C_COUNT);
  mTable->setHorizontalHeaderLabels({tr("Register"), tr("Name"), tr("Value"), tr("Raw")});
  mTable->setRowCount(mCount);
  mTable->verticalHeader()->hide();
  mTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
  for (int i = 0; i < mCount; ++i) {
    auto* lRegister = new QTableWidgetItem(QString::number(mFirst + i));
    lRegister->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    mTable->setItem(i, C_REGISTER, lRegister);
    mTable->setItem(i, C_NAME, new QTableWidgetItem(RegisterName(i)));
    for (int lColumn : {C_VALUE, C_RAW}) {
      auto* lItem = new QTableWidgetItem;
      lItem->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      mTable->setItem(i, lColumn, lItem);
    }
  }
  // Values change length as they change (a temperature gains a digit): their columns follow.
  QHeaderView* lHeader = mTable->horizontalHeader();
  lHeader->setSectionResizeMode(C_REGISTER, QHeaderView::ResizeToContents);
  lHeader->setSectionResizeMode(C_NAME, QHeaderView::ResizeToContents);
  lHeader->setSectionResizeMode(C_VALUE, QHeaderView::Stretch);
  lHeader->setSectionResizeMode(C_RAW, QHeaderView::ResizeToContents);
}

void PxSerialPortListener::ShowValues(const std::vector<PtU16>& aValues)
{
  const int lRows = std::min(mCount, static_cast<int>(aValues.size()));
  for (int i = 0; i < lRows; ++i) {
    // Only cells whose text changed: a repaint of 64 rows ten times a second is not free.
    const QString lValue = ValueText(i, aValues);
    const QString lRaw = QStringLiteral("0x%1").arg(aValues[static_cast<size_t>(i)], 4, 16, QLatin1Char('0'));
    for (const auto& [lColumn, lText] : {std::pair{int{C_VALUE}, lValue}, {int{C_RAW}, lRaw}}) {
      QTableWidgetItem* lItem = mTable->item(i, lColumn);
      if (lItem && lItem->text() != lText) {
        lItem->setText(lText);
      }
    }
  }
}

QString PxSerialPortListener::RegisterName(int aIndex) const
{
  return tr("Register %1").arg(mFirst + aIndex);
}

QString PxSerialPortListener::ValueText(int aIndex, const std::vector<PtU16>& aValues) const
{
  return QString::number(aValues[static_cast<size_t>(aIndex)]);
}
