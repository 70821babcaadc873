// The program's own operator new goes before that of the standard library, also for the shared
// library that the program loads.
#include "bench/allocation_counter.h"

#include <cstdlib>
#include <new>

namespace {

std::int64_t count = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++count;
  if (void* const block = std::malloc(size)) return block;
  throw std::bad_alloc();
}

void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }

namespace kestrel::bench {

std::int64_t allocationCount() { return count; }

}  // namespace kestrel::bench
