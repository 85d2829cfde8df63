#pragma once

// Counts every heap allocation of the benchmark program, so a benchmark can report allocations per
// operation ("no allocation per frame in steady state"). Include it from exactly one source file of
// a benchmark program: it replaces the global operator new and delete.

#include <atomic>
#include <cstdlib>
#include <new>

inline std::atomic<long> sPxBenchAllocations{0};

// The number of allocations so far.
inline long PxBenchAllocations()
{
  return sPxBenchAllocations.load(std::memory_order_relaxed);
}

void* operator new(std::size_t aSize)
{
  sPxBenchAllocations.fetch_add(1, std::memory_order_relaxed);
  if (void* lMemory = std::malloc(aSize ? aSize : 1)) {
    return lMemory;
  }
  throw std::bad_alloc();
}

void operator delete(void* aPointer) noexcept
{
  std::free(aPointer);
}

void operator delete(void* aPointer, std::size_t) noexcept
{
  std::free(aPointer);
}
