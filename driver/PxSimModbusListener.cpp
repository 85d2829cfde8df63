#include "PxSimModbusListener.h"

#include "PxSimModbusMap.h"

namespace {
using namespace PxSimModbusMap;

PtU32 Long(const std::vector<PtU16>& aValues, int aIndex)
{
  return aValues[static_cast<size_t>(aIndex)] | (static_cast<PtU32>(aValues[static_cast<size_t>(aIndex) + 1]) << 16);
}

double Temperature(PtU16 aRaw)
{
  return static_cast<std::int16_t>(aRaw) / TEMPERATURE_SCALE;
}
} // namespace

PxSimModbusListener::PxSimModbusListener(PtModbus* aModbus, QTableWidget* aTable)
    : PxSerialPortListener(aModbus, aTable, 0, REGISTER_COUNT)
{
}

PxSerialPortListener* PxSimModbusListener::Create(PtModbus* aModbus, QTableWidget* aTable)
{
  return new PxSimModbusListener(aModbus, aTable);
}

QString PxSimModbusListener::RegisterName(int aIndex) const
{
  switch (aIndex) {
  case R_FRAME_COUNTER:
    return tr("Frame counter");
  case R_DEVICE_TIME:
    return tr("Device time");
  case R_BOARD_TEMPERATURE:
    return tr("Board temperature");
  case R_LIGHT_TEMPERATURE:
    return tr("Light source temperature");
  case R_LOAD:
    return tr("Load");
  case R_ACQUISITION_STATE:
    return tr("Acquisition state");
  case R_SEGMENT_MASK:
    return tr("Segment mask");
  case R_RATE:
    return tr("Measurement rate");
  case R_FRAME_COUNTER + 1:
  case R_DEVICE_TIME + 1:
  case R_SEGMENT_MASK + 1:
  case R_RATE + 1:
    return tr("(high word)");
  default:
    return tr("Reserved");
  }
}

QString PxSimModbusListener::ValueText(int aIndex, const std::vector<PtU16>& aValues) const
{
  switch (aIndex) {
  case R_FRAME_COUNTER:
    return QString::number(Long(aValues, aIndex));
  case R_DEVICE_TIME:
    return tr("%1 s").arg(Long(aValues, aIndex) / 1000.0, 0, 'f', 3);
  case R_BOARD_TEMPERATURE:
  case R_LIGHT_TEMPERATURE:
    return tr("%1 °C").arg(Temperature(aValues[static_cast<size_t>(aIndex)]), 0, 'f', 2);
  case R_LOAD:
    return tr("%1 %").arg(aValues[static_cast<size_t>(aIndex)] / 10.0, 0, 'f', 1);
  case R_SEGMENT_MASK:
    return QStringLiteral("0x%1").arg(Long(aValues, aIndex), 4, 16, QLatin1Char('0'));
  case R_RATE:
    return tr("%1 Hz").arg(Long(aValues, aIndex) / 100.0, 0, 'f', 2);
  case R_FRAME_COUNTER + 1:
  case R_DEVICE_TIME + 1:
  case R_SEGMENT_MASK + 1:
  case R_RATE + 1:
    return QString();
  default:
    return PxSerialPortListener::ValueText(aIndex, aValues);
  }
}
