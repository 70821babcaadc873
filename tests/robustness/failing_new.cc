// operator new and delete of this program, for arrays as well: under the address sanitizer the
// forms for arrays would not call the others.
#include <cstddef>
#include <cstdlib>
#include <new>

#include "tests/robustness/failing_memory.h"

namespace {

void* allocate(std::size_t size, std::size_t alignment) noexcept {
  if (kestrel::test::isToFail()) return nullptr;
  kestrel::test::countBlock(1);
  return std::aligned_alloc(alignment, (size + alignment) / alignment * alignment);
}

void* allocateOrThrow(std::size_t size, std::size_t alignment) {
  void* const block = allocate(size, alignment);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void release(void* block) noexcept {
  if (block != nullptr) kestrel::test::countBlock(-1);
  std::free(block);
}

constexpr std::size_t kAlignment = alignof(std::max_align_t);
std::size_t in(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size, kAlignment); }
void* operator new(std::size_t size, std::align_val_t a) { return allocateOrThrow(size, in(a)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size, kAlignment);
}
void operator delete(void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }

void* operator new[](std::size_t size) { return allocateOrThrow(size, kAlignment); }
void* operator new[](std::size_t size, std::align_val_t a) { return allocateOrThrow(size, in(a)); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size, kAlignment);
}
void operator delete[](void* block) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::align_val_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { release(block); }
