// Times a piece of work and notes how often it allocates.
#pragma once

#include <benchmark/benchmark.h>

#include "bench/allocation_counter.h"

namespace kestrel::bench {

template <class Work>
void measure(benchmark::State& state, Work&& work) {
  const std::int64_t before = allocationCount();
  work();
  state.counters["allocations"] = static_cast<double>(allocationCount() - before);
  for ([[maybe_unused]] auto iteration : state) work();
}

}  // namespace kestrel::bench
