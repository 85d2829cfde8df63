#pragma once

#include "PtTypes.h"

#include <cstring>

// Copies between packed wire items and strided memory records. Items of 1, 2, 4 and 8 bytes move
// as single loads and stores, so one field of every record (for example the distance of every echo)
// travels without an intermediate buffer; other sizes fall back to a byte copy per item.
namespace PxStridedCopy
{
template <size_t N> inline void Scatter(PtByte* aDest, const PtByte* aSrc, size_t aCount, size_t aStride)
{
  // Four items per step, each stored at a fixed multiple of the stride from the step's start: a
  // pointer advanced by the stride after every item chains every store behind the add before it.
  const size_t lStride3 = 3 * aStride;
  size_t i = 0;
  for (; i + 4 <= aCount; i += 4, aDest += 4 * aStride, aSrc += 4 * N) {
    std::memcpy(aDest, aSrc, N);
    std::memcpy(aDest + aStride, aSrc + N, N);
    std::memcpy(aDest + 2 * aStride, aSrc + 2 * N, N);
    std::memcpy(aDest + lStride3, aSrc + 3 * N, N);
  }
  for (; i < aCount; ++i, aDest += aStride, aSrc += N) {
    std::memcpy(aDest, aSrc, N);
  }
}

template <size_t N> inline void Gather(PtByte* aDest, const PtByte* aSrc, size_t aCount, size_t aStride)
{
#pragma GCC unroll 8
  for (size_t i = 0; i < aCount; ++i) {
    std::memcpy(aDest + i * N, aSrc + i * aStride, N);
  }
}

// Packed aSrc (aCount items of aSize bytes) to aDest, item i at i x aStride.
inline void Scatter(void* aDest, const void* aSrc, size_t aCount, size_t aSize, size_t aStride)
{
  auto* lDest = static_cast<PtByte*>(aDest);
  const auto* lSrc = static_cast<const PtByte*>(aSrc);
  switch (aSize) {
  case 1:
    Scatter<1>(lDest, lSrc, aCount, aStride);
    break;
  case 2:
    Scatter<2>(lDest, lSrc, aCount, aStride);
    break;
  case 4:
    Scatter<4>(lDest, lSrc, aCount, aStride);
    break;
  case 8:
    Scatter<8>(lDest, lSrc, aCount, aStride);
    break;
  default:
    for (size_t i = 0; i < aCount; ++i) {
      std::memcpy(lDest + i * aStride, lSrc + i * aSize, aSize);
    }
  }
}

// aSrc records (item i at i x aStride) to packed aDest.
inline void Gather(void* aDest, const void* aSrc, size_t aCount, size_t aSize, size_t aStride)
{
  auto* lDest = static_cast<PtByte*>(aDest);
  const auto* lSrc = static_cast<const PtByte*>(aSrc);
  switch (aSize) {
  case 1:
    Gather<1>(lDest, lSrc, aCount, aStride);
    break;
  case 2:
    Gather<2>(lDest, lSrc, aCount, aStride);
    break;
  case 4:
    Gather<4>(lDest, lSrc, aCount, aStride);
    break;
  case 8:
    Gather<8>(lDest, lSrc, aCount, aStride);
    break;
  default:
    for (size_t i = 0; i < aCount; ++i) {
      std::memcpy(lDest + i * aSize, lSrc + i * aStride, aSize);
    }
  }
}
} // namespace PxStridedCopy
