#pragma once

#include "PtTypes.h"

// The configuration-server protocol of the Parvex 16-segment range-finding sensor, as the reference
// driver and the simulated sensor both speak it. Every request and answer is a PtCom message
// (protocol id 2); this header names the request codes, the element ids each request and answer
// carries, and the device's answer codes. docs/driver-protocol.md has a table per request.
//
// Element ids the framework decodes itself (echo fields, trace elements, the state timestamp, the
// sensor's scale properties) keep the values the framework expects; everything else is ours.
namespace PxSimProtocol {
// ---- Request codes ----------------------------------------------------------------------------
enum Request : PtU16 {
  REQ_IDENTITY = 1,        // who the device is: type, versions, part and serial numbers, name
  REQ_READ_CONFIG = 2,     // every property (or the ones listed in ID_SELECT)
  REQ_WRITE_CONFIG = 3,    // property elements, applied at once, all or nothing
  REQ_SAVE_CONFIG = 4,     // the running configuration to non-volatile memory
  REQ_RESET = 5,           // restart; optionally back to factory defaults
  REQ_STATE = 6,           // state group (provider 2)
  REQ_ECHOES = 7,          // echoes group (provider 16)
  REQ_RAW_TRACES = 8,      // 16-bit traces (provider 4)
  REQ_FILTERED_TRACES = 9, // 32-bit traces (provider 8)
  REQ_DEBUG_FAULT = 10,    // first debug command: arm or clear a failure mode
  REQ_DEBUG_SCENE = 11,    // second debug command: noise seed and scene motion
  REQ_READ_MEMORY = 12,    // bytes of a device memory
  REQ_WRITE_MEMORY = 13,   // bytes into a writable device memory
  REQ_FIRMWARE_BEGIN = 14, // announce an image: component, size, checksum, version
  REQ_FIRMWARE_CHUNK = 15, // the next chunk of the image, in order
  REQ_FIRMWARE_END = 16,   // verify, install and restart on the new version
  REQ_LAST = REQ_FIRMWARE_END,
};

// ---- Device answer codes (below 1000: the link stays up) ---------------------------------------
enum AnswerCode : PtU16 {
  ANSWER_OK = 0,
  ANSWER_UNKNOWN_REQUEST = 1, // request code not known
  ANSWER_BAD_ELEMENT = 2,     // unknown element id, wrong item size or count, malformed payload
  ANSWER_MISSING_ELEMENT = 3, // a required request element is absent
  ANSWER_OUT_OF_RANGE = 4,    // value outside its limits or enumeration, address beyond a memory
  ANSWER_READ_ONLY = 5,       // element or memory that cannot be written
  ANSWER_SEQUENCE = 6,        // firmware chunk without an update in progress or out of order
  ANSWER_CHECKSUM = 7,        // firmware image checksum does not match
  ANSWER_SIZE = 8,            // firmware image incomplete, too long or too large
  ANSWER_STORAGE = 9,         // non-volatile memory could not be written
  ANSWER_BUSY = 10,           // configuration change refused while a firmware update runs
  ANSWER_INTERNAL = 99,       // the device failed on its own; the request may be repeated
};

// ---- Identity (answer of REQ_IDENTITY) ---------------------------------------------------------
constexpr PtU16 ID_DEVICE_TYPE = 0x0010;      // u16
constexpr PtU16 ID_PRODUCT_TYPE = 0x0011;     // u16
constexpr PtU16 ID_FPGA_VERSION = 0x0012;     // u16: major << 8 | minor
constexpr PtU16 ID_SOFTWARE_VERSION = 0x0013; // u16: build in bits 0-13, 0x4000 factory, 0x8000 upgrade
constexpr PtU16 ID_SOFTWARE_CRC = 0x0014;     // u32: CRC-32 of the running software image
constexpr PtU16 ID_SOFTWARE_PART = 0x0015;    // 11 bytes ASCII, NUL-padded
constexpr PtU16 ID_HARDWARE_PART = 0x0016;    // 11 bytes ASCII, NUL-padded
constexpr PtU16 ID_SERIAL_NUMBER = 0x0017;    // 16 bytes ASCII, NUL-padded
constexpr PtU16 ID_DEVICE_NAME = 320;         // 64 bytes UTF-16 (32 characters), writable

constexpr PtU32 SOFTWARE_PART_LENGTH = 11;
constexpr PtU32 HARDWARE_PART_LENGTH = 11;
constexpr PtU32 SERIAL_NUMBER_LENGTH = 16;
constexpr PtU32 DEVICE_NAME_LENGTH = 64;

constexpr PtU16 DEVICE_TYPE = 0x0A16;
constexpr PtU16 PRODUCT_TYPE = 0x0016;
constexpr PtU16 CHANNEL_COUNT = 16;

// ---- Sensor constants (read-only, in the configuration answer) ----------------------------------
constexpr PtU16 ID_CHANNEL_COUNT = 432;          // u32: 16
constexpr PtU16 ID_ECHO_DISTANCE_SCALE = 4100;   // i32: raw distance units per metre
constexpr PtU16 ID_TRACE_AMPLITUDE_SCALE = 4101; // i32: raw trace units per amplitude unit
constexpr PtU16 ID_ECHO_AMPLITUDE_SCALE = 4102;  // i32: raw amplitude units per amplitude unit
constexpr PtU16 ID_ECHO_DISTANCE_OFFSET = 4105;  // i32: metres x 65536 from sample 0 to optical zero
constexpr PtU16 ID_POINT_STEP = 4107;            // f32: metres between two trace samples
constexpr PtU16 ID_FIELD_OF_VIEW = 0x0020;       // f32: degrees, the whole fan
constexpr PtU16 ID_RANGE = 0x0021;               // f32: metres, the longest distance measured
constexpr PtU16 ID_TEMPERATURE_SCALE = 0x0022;   // i32: raw temperature units per degree Celsius
constexpr PtU16 ID_TIMEBASE_SCALE = 0x0023;      // i32: raw timebase units per metre

// ---- Settings (read-write, saved to non-volatile memory) ---------------------------------------
constexpr PtU16 ID_REFRESH_RATE = 0x0100;        // f32 Hz, 1 to 1000
constexpr PtU16 ID_ACCUMULATION = 0x0101;        // u16 enum: 1, 2, 4, 8, 16, 32, 64 pulses
constexpr PtU16 ID_OVERSAMPLING = 0x0102;        // u8 enum: 1, 2, 4, 8
constexpr PtU16 ID_BAUD_RATE = 0x0103;           // u32 enum: 9600, 19200, 38400, 57600, 115200
constexpr PtU16 ID_LIGHT_POWER = 0x0104;         // u8 %, 0 to 100
constexpr PtU16 ID_SMOOTHING = 0x0105;           // i8, -16 to 16
constexpr PtU16 ID_MODBUS_ADDRESS = 0x0106;      // u8, 1 to 247
constexpr PtU16 ID_DETECTION_THRESHOLD = 0x0107; // f32 amplitude units, 0 to 1000
constexpr PtU16 ID_DISTANCE_OFFSETS = 0x0108;    // i32 x 16: metres x 65536 per segment, -5 to 5 m
constexpr PtU16 ID_TEMPERATURE_HIGH = 0x0109;    // f32 degrees Celsius, -40 to 125
constexpr PtU16 ID_TEMPERATURE_LOW = 0x010A;     // f32 degrees Celsius, -40 to 125
constexpr PtU16 ID_NOISE_REMOVAL = 0x010B;       // bool (1 byte)
constexpr PtU16 ID_MODBUS_ENABLED = 0x010C;      // bool (1 byte)
constexpr PtU16 ID_SEGMENT_MASK = 0x010D;        // u32 bit field, bits 0-15 = segments
constexpr PtU16 ID_TRACE_LENGTH = 0x010E;        // u16 samples per trace, 16 to 2048
constexpr PtU16 ID_LOCATION = 0x010F;            // 32 bytes ASCII, NUL-padded

constexpr PtU32 LOCATION_LENGTH = 32;
constexpr PtU32 MAX_TRACE_LENGTH = 2048;

// ---- Request elements --------------------------------------------------------------------------
constexpr PtU16 ID_SELECT = 0x0301;        // REQ_READ_CONFIG: u16 x n, the device ids wanted
constexpr PtU16 ID_RESET_KIND = 0x0300;    // REQ_RESET: u8, RESET_RESTART or RESET_FACTORY
constexpr PtU16 ID_ERROR_ELEMENT = 0x03F0; // in error answers: u16, the element that was refused

enum ResetKind : PtByte {
  RESET_RESTART = 0, // reload the saved configuration
  RESET_FACTORY = 1, // factory defaults, and erase the saved configuration
};

// ---- State group (answer of REQ_STATE) ---------------------------------------------------------
constexpr PtU16 ID_TIMESTAMP = 4176;           // u32: device time in ms
constexpr PtU16 ID_TEMPERATURES = 0x0200;      // i16 x 2: board, light source; raw / temperature scale
constexpr PtU16 ID_CPU_LOAD = 0x0201;          // u16: tenths of a percent
constexpr PtU16 ID_ACQUISITION_STATE = 0x0202; // u16: AcquisitionState
constexpr PtU16 ID_FRAME_COUNTER = 0x0203;     // u32: frames since the last restart

enum AcquisitionState : PtU16 {
  ACQUISITION_STARTING = 0, // the first frames after a restart, while accumulation fills up
  ACQUISITION_RUNNING = 1,
  ACQUISITION_UPDATING = 2, // a firmware update is in progress
};
// Frames reported as ACQUISITION_STARTING after a restart.
constexpr PtU32 STARTING_FRAMES = 4;

// ---- Echoes group (answer of REQ_ECHOES): one element per field, count = echoes ---------------
constexpr PtU16 ID_ECHO_AMPLITUDE = 4227; // u32 raw / amplitude scale
constexpr PtU16 ID_ECHO_DISTANCE = 4228;  // i32 raw / distance scale
constexpr PtU16 ID_ECHO_BASE = 4229;      // u32: trace level under the echo, raw / amplitude scale
constexpr PtU16 ID_ECHO_INDEX = 4230;     // u16: rank of the echo within its segment, nearest first
constexpr PtU16 ID_ECHO_SEGMENT = 4231;   // u8
constexpr PtU16 ID_ECHO_FLAG = 4232;      // u8: ECHO_VALID, ECHO_SATURATED
constexpr PtByte ECHO_VALID = 1;          // every echo the device reports; the displays show these
constexpr PtByte ECHO_SATURATED = 2;      // the peak reached the top of the trace
constexpr PtU16 ID_ECHO_TIMESTAMP = 4233; // u32: the frame's timestamp in ms
constexpr PtU16 ID_ECHO_FRAME = 4234;     // u32: the frame counter
constexpr PtU32 MAX_ECHOES = 96;

// ---- Trace groups (answers of REQ_RAW_TRACES and REQ_FILTERED_TRACES), in this order -----------
constexpr PtU16 ID_TRACE_LENGTH_ELEMENT = 419; // u32: samples per trace
constexpr PtU16 ID_TRACE_FRAME = 420;          // u32: the frame counter
constexpr PtU16 ID_TRACE_ACTIVE = 421;         // u32: the segment mask the frame was taken with
constexpr PtU16 ID_TRACE_SAMPLES = 3;          // 16 items of length x 2 (raw) or length x 4 (filtered)
constexpr PtU16 ID_TRACE_DELAYS = 4116;        // i32 x 16: distance of sample 0, raw / timebase scale

// ---- Debug commands: four parameters each (u64, u32, u8, u64) ----------------------------------
constexpr PtU16 ID_DEBUG_P1 = 0x0310;     // u64
constexpr PtU16 ID_DEBUG_P2 = 0x0311;     // u32
constexpr PtU16 ID_DEBUG_P3 = 0x0312;     // u8
constexpr PtU16 ID_DEBUG_P4 = 0x0313;     // u64
constexpr PtU16 ID_DEBUG_RESULT = 0x0314; // u64

// REQ_DEBUG_FAULT: P1 = request code hit (0 = any), P2 = answer code or delay in ms, P3 = Fault,
// P4 = number of requests hit (0 = every one until cleared). The arming request is never hit.
enum Fault : PtByte {
  FAULT_NONE = 0,           // clear
  FAULT_ERROR_ANSWER = 1,   // answer with device answer code P2 (default ANSWER_INTERNAL)
  FAULT_LATE_ANSWER = 2,    // answer P2 ms late (default 5000)
  FAULT_DROP_LINK = 3,      // close the link instead of answering
  FAULT_CORRUPT_HEADER = 4, // answer with a header of the wrong protocol id
  FAULT_LAST = FAULT_CORRUPT_HEADER,
};
constexpr PtU32 DEFAULT_LATE_MS = 5000;

// REQ_DEBUG_SCENE: P1 = noise seed (0 = keep), P2 = SceneFlags; answer ID_DEBUG_RESULT = frame counter.
enum SceneFlags : PtU32 {
  SCENE_FREEZE_MOTION = 1, // the moving target stands still
  SCENE_NO_NOISE = 2,      // distances, amplitudes and traces without noise
};

// ---- Memories ----------------------------------------------------------------------------------
constexpr PtU16 ID_MEMORY_AREA = 0x0320;    // u8: MemoryArea
constexpr PtU16 ID_MEMORY_ADDRESS = 0x0321; // u32
constexpr PtU16 ID_MEMORY_LENGTH = 0x0322;  // u32: bytes to read, 1 to MAX_MEMORY_TRANSFER
constexpr PtU16 ID_MEMORY_DATA = 0x0323;    // u8 x n
constexpr PtU32 MAX_MEMORY_TRANSFER = 4096;

enum MemoryArea : PtByte {
  MEMORY_RAM = 0,       // 64 KiB scratch RAM, read-write, cleared by a restart
  MEMORY_REGISTERS = 1, // 256 bytes of live registers, read-only (layout in the docs)
  MEMORY_NVM = 2,       // the saved configuration image, read-only
  MEMORY_FIRMWARE = 3,  // the running software image, read-only
};
constexpr PtU32 RAM_SIZE = 65536;
constexpr PtU32 REGISTER_SIZE = 256;

// ---- Firmware update ---------------------------------------------------------------------------
constexpr PtU16 ID_FIRMWARE_COMPONENT = 0x0330; // u8: 1 FPGA, 2 software
constexpr PtU16 ID_FIRMWARE_SIZE = 0x0331;      // u32: image bytes
constexpr PtU16 ID_FIRMWARE_CRC = 0x0332;       // u32: CRC-32 (IEEE 802.3) of the image
constexpr PtU16 ID_FIRMWARE_VERSION = 0x0333;   // u16: the version word the image installs
constexpr PtU16 ID_FIRMWARE_OFFSET = 0x0334;    // u32: where the chunk starts
constexpr PtU16 ID_FIRMWARE_DATA = 0x0335;      // u8 x n, 1 to MAX_FIRMWARE_CHUNK
constexpr PtU16 ID_FIRMWARE_RECEIVED = 0x0336;  // u32: bytes received so far
constexpr PtU16 ID_FIRMWARE_PROGRESS = 0x0337;  // u8: percent received
constexpr PtU16 ID_FIRMWARE_MAX_CHUNK = 0x0338; // u32: the largest chunk accepted
constexpr PtU32 MAX_FIRMWARE_CHUNK = 4096;
constexpr PtU32 MAX_FIRMWARE_SIZE = 4u * 1024u * 1024u;
// The firmware a device leaves the factory with (the software word carries the factory flag), and
// the release before it, which a simulated device can be started on to test updates.
constexpr PtU16 FACTORY_FPGA_VERSION = 0x0103;
constexpr PtU16 FACTORY_SOFTWARE_VERSION = 0x4000 | 212;
constexpr PtU16 OLDER_FPGA_VERSION = 0x0102;
constexpr PtU16 OLDER_SOFTWARE_VERSION = 0x4000 | 211;

enum FirmwareComponent : PtByte {
  COMPONENT_FPGA = 1,
  COMPONENT_SOFTWARE = 2,
};
} // namespace PxSimProtocol
