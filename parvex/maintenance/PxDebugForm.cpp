#include "PxDebugForm.h"

#include "PtAssert.h"
#include "PtErrorLogForm.h"
#include "PtMessageBox.h"
#include "PxSensor.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QVBoxLayout>

PxDebugForm::PxDebugForm(QWidget* aParent)
    : PxDockWidget(aParent)
{
  setWindowTitle(tr("Debug"));
  auto* lContent = new QWidget(this);
  auto* lLayout = new QVBoxLayout(lContent);
  auto* lForm = new QFormLayout;
  mMemory = new QComboBox;
  mAddress = new QLineEdit(QStringLiteral("0x0"));
  mLength = new QSpinBox;
  mLength->setRange(1, MAX_LENGTH);
  lForm->addRow(tr("Memory:"), mMemory);
  lForm->addRow(tr("Address:"), mAddress);
  lForm->addRow(tr("Length (bytes):"), mLength);
  lLayout->addLayout(lForm);

  auto* lButtons = new QHBoxLayout;
  mRead = new QPushButton(tr("Read"));
  mWrite = new QPushButton(tr("Write"));
  mWrite->setEnabled(false);
  lButtons->addWidget(mRead);
  lButtons->addWidget(mWrite);
  lButtons->addStretch(1);
  lLayout->addLayout(lButtons);

  mHex = new QPlainTextEdit;
  mHex->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  mHex->setLineWrapMode(QPlainTextEdit::NoWrap);
  mHex->setMinimumWidth(mHex->fontMetrics().horizontalAdvance(QLatin1Char('0')) * 80);
  lLayout->addWidget(mHex, 1);
  mStatus = new QLabel;
  mStatus->setWordWrap(true);
  lLayout->addWidget(mStatus);
  setWidget(lContent);

  connect(mRead, &QPushButton::clicked, this, &PxDebugForm::PBReadClicked);
  connect(mWrite, &QPushButton::clicked, this, &PxDebugForm::PBWriteClicked);
}

void PxDebugForm::SetSensor(PxSensor* aSensor)
{
  PT_ASSERT(aSensor);
  mSensor = aSensor;
  mMemory->clear();
  mMemory->addItems(aSensor->MemoryNames());
  mLength->setValue(static_cast<int>(qBound<PtU32>(1, aSensor->GetDebugDefaultMemoryLength(), MAX_LENGTH)));
  const bool lHasMemories = mMemory->count() > 0;
  mRead->setEnabled(lHasMemories);
  if (!lHasMemories) {
    ShowStatus(tr("This sensor has no memories to read."));
  }
}

QString PxDebugForm::FormatHex(PtU64 aAddress, const QByteArray& aData)
{
  QString lText;
  for (int lLine = 0; lLine < aData.size(); lLine += BYTES_PER_LINE) {
    const PtU64 lAddress = aAddress + static_cast<PtU64>(lLine);
    lText += QStringLiteral("%1 %2:")
                 .arg(lAddress >> 16, 4, 16, QLatin1Char('0'))
                 .arg(lAddress & 0xFFFF, 4, 16, QLatin1Char('0'))
                 .toUpper();
    QString lAscii;
    for (int i = lLine; i < lLine + BYTES_PER_LINE; ++i) {
      if (i < aData.size()) {
        const auto lByte = static_cast<unsigned char>(aData.at(i));
        lText += QStringLiteral(" %1").arg(lByte, 2, 16, QLatin1Char('0')).toUpper();
        lAscii += (lByte >= 0x20 && lByte < 0x7F) ? QChar(lByte) : QLatin1Char('.');
      } else {
        lText += QStringLiteral("   ");
      }
    }
    lText += QStringLiteral("  ") + lAscii + QLatin1Char('\n');
  }
  return lText;
}

bool PxDebugForm::ParseHex(const QString& aText, QByteArray* aData)
{
  aData->clear();
  static const QRegularExpression sByte(QStringLiteral("^[0-9A-Fa-f]{2}$"));
  for (const QString& lLine : aText.split(QLatin1Char('\n'))) {
    const int lColon = lLine.indexOf(QLatin1Char(':'));
    if (lColon < 0) {
      if (lLine.trimmed().isEmpty()) {
        continue;
      }
      return false;
    }
    // The bytes end where the text column begins, after two blanks.
    QString lBytes = lLine.mid(lColon + 1);
    const int lText = lBytes.indexOf(QStringLiteral("  "), 1);
    if (lText >= 0) {
      lBytes.truncate(lText);
    }
    for (const QString& lToken : lBytes.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
      if (!sByte.match(lToken).hasMatch()) {
        return false;
      }
      aData->append(static_cast<char>(lToken.toUInt(nullptr, 16)));
    }
  }
  return true;
}

bool PxDebugForm::Address(PtU64* aAddress)
{
  QString lText = mAddress->text().trimmed();
  if (lText.startsWith(QStringLiteral("0x"), Qt::CaseInsensitive)) {
    lText = lText.mid(2);
  }
  bool lOk = false;
  *aAddress = lText.toULongLong(&lOk, 16);
  return lOk;
}

void PxDebugForm::ShowError(const QString& aText)
{
  mStatus->setStyleSheet(QStringLiteral("color: #b00020;"));
  mStatus->setText(aText);
}

void PxDebugForm::ShowStatus(const QString& aText)
{
  mStatus->setStyleSheet(QString());
  mStatus->setText(aText);
}

void PxDebugForm::PBReadClicked()
{
  PtU64 lAddress = 0;
  if (!Address(&lAddress)) {
    ShowError(tr("The address must be a hexadecimal number."));
    return;
  }
  const int lMemory = mMemory->currentIndex();
  try {
    const QByteArray lData = mSensor->ReadMemory(lMemory, lAddress, static_cast<PtU32>(mLength->value()));
    mHex->setPlainText(FormatHex(lAddress, lData));
    mReadMemory = lMemory;
    mReadAddress = lAddress;
    mWrite->setEnabled(true);
    ShowStatus(tr("Read %n byte(s) of %1 at 0x%2.", nullptr, lData.size())
                   .arg(mMemory->currentText(), QString::number(lAddress, 16).toUpper()));
  } catch (const std::exception& e) {
    // The device's refusal is an answer to show here, not a failure of the application.
    PtErrorLogForm::LogError(e);
    ShowError(tr("Read failed: %1").arg(PtMessageBox::ExceptionText(e)));
  }
}

void PxDebugForm::PBWriteClicked()
{
  QByteArray lData;
  if (!ParseHex(mHex->toPlainText(), &lData) || lData.isEmpty()) {
    ShowError(tr("The bytes to write must be pairs of hexadecimal digits."));
    return;
  }
  try {
    mSensor->WriteMemory(mReadMemory, mReadAddress, lData);
    ShowStatus(tr("Wrote %n byte(s) to %1 at 0x%2.", nullptr, lData.size())
                   .arg(mMemory->itemText(mReadMemory), QString::number(mReadAddress, 16).toUpper()));
  } catch (const std::exception& e) {
    PtErrorLogForm::LogError(e);
    ShowError(tr("Write failed: %1").arg(PtMessageBox::ExceptionText(e)));
  }
}
