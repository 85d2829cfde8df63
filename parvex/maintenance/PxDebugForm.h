#pragma once

#include "PtTypes.h"
#include "PxDockWidget.h"

#include <QByteArray>

class PxSensor;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSpinBox;

// The "Debug" window: reads a range of one of the sensor's memories into an editable hexadecimal
// view and writes the edited bytes back. What the device refuses (an address beyond the memory, a
// memory that cannot be written, a lost link) is shown in the form and logged; nothing is thrown
// out of it.
class PX_EXPORT PxDebugForm : public PxDockWidget
{
  Q_OBJECT

public:
  static constexpr int BYTES_PER_LINE = 16;
  // One read or write at most: the view stays readable and the link is not held for long.
  static constexpr int MAX_LENGTH = 65536;

  explicit PxDebugForm(QWidget* aParent = nullptr);

  unsigned int PermanentId() const override { return 2; }
  void SetSensor(PxSensor* aSensor);

  // "0000 0010: 00 01 ...  ascii" lines of aData, the first at aAddress.
  static QString FormatHex(PtU64 aAddress, const QByteArray& aData);
  // The bytes of the lines FormatHex makes (the address and the text column are skipped); false
  // when a byte is not two hexadecimal digits.
  static bool ParseHex(const QString& aText, QByteArray* aData);

  QComboBox* MemoryBox() const { return mMemory; }
  QLineEdit* AddressEdit() const { return mAddress; }
  QSpinBox* LengthBox() const { return mLength; }
  QPlainTextEdit* HexView() const { return mHex; }
  QLabel* StatusLabel() const { return mStatus; }

public Q_SLOTS:
  void PBReadClicked();
  void PBWriteClicked();

private:
  // The address typed in, hexadecimal with or without "0x"; false when it does not read as one.
  bool Address(PtU64* aAddress);
  void ShowError(const QString& aText);
  void ShowStatus(const QString& aText);

  PxSensor* mSensor = nullptr;
  QComboBox* mMemory = nullptr;
  QLineEdit* mAddress = nullptr;
  QSpinBox* mLength = nullptr;
  QPushButton* mRead = nullptr;
  QPushButton* mWrite = nullptr;
  QPlainTextEdit* mHex = nullptr;
  QLabel* mStatus = nullptr;
  // Where the bytes in the view came from: Write puts them back there.
  int mReadMemory = -1;
  PtU64 mReadAddress = 0;
};
