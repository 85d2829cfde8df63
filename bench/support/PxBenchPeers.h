#pragma once

// Peers the benchmarks measure the product against, in the same run.

#include <QByteArray>
#include <benchmark/benchmark.h>
#include <cstring>
#include <vector>

// The physical limit for a decode: copying the same bytes once with memcpy.
inline void PxBenchMemcpyPeer(benchmark::State& aState, const QByteArray& aBytes)
{
  std::vector<char> lOut(static_cast<size_t>(aBytes.size()));
  for (auto _ : aState) {
    std::memcpy(lOut.data(), aBytes.constData(), lOut.size());
    benchmark::DoNotOptimize(lOut.data());
    benchmark::ClobberMemory();
  }
  aState.SetBytesProcessed(static_cast<int64_t>(aState.iterations()) * aBytes.size());
}
