#pragma once

#include <cstddef>
#include <cstdint>

// The fixed-width integer names the whole product uses for wire and file data.
using PtByte = std::uint8_t;
using PtU16 = std::uint16_t;
using PtU32 = std::uint32_t;
using Pt32 = std::int32_t;
using PtU64 = std::uint64_t;
using Pt64 = std::int64_t;

// All-ones index or count: "every value" in property signals, "none found" in lookups.
constexpr std::size_t PT_ALL = static_cast<std::size_t>(-1);
constexpr PtU32 PT_NONE32 = 0xFFFFFFFFu;
