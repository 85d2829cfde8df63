#pragma once

#include "PxSimProtocol.h"

// The register map the simulated sensor serves as a Modbus RTU slave, shared by the simulator and
// the driver's serial-port listener. Holding registers 0 to 63 mirror the first 128 bytes of the
// live register area (docs/driver-protocol.md), one little-endian 16-bit word each; a 32-bit value
// takes two registers, low word first.
namespace PxSimModbusMap {
constexpr int REGISTER_COUNT = 64;
constexpr int DEFAULT_SLAVE_ADDRESS = 17;
// The serial-port viewer's listener type of this map.
constexpr int LISTENER_TYPE = 16;

enum Register : int {
  R_FRAME_COUNTER = 0,     // u32
  R_DEVICE_TIME = 2,       // u32, ms
  R_BOARD_TEMPERATURE = 4, // i16, raw (/ temperature scale = degrees Celsius)
  R_LIGHT_TEMPERATURE = 5, // i16, raw
  R_LOAD = 6,              // u16, tenths of %
  R_ACQUISITION_STATE = 7, // u16
  R_SEGMENT_MASK = 8,      // u32
  R_RATE = 10,             // u32, measurement rate x 100
};
// Raw temperature units per degree Celsius (the simulator's default configuration).
constexpr double TEMPERATURE_SCALE = 16.0;
} // namespace PxSimModbusMap
