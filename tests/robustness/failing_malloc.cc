// malloc() and free() of this program; the standard library's operator new calls them. calloc() and
// realloc() go past them: nothing that is written in C++ calls these.
#include <cstddef>

#include "tests/robustness/failing_memory.h"

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

__attribute__((visibility("default"))) void* malloc(std::size_t size) {
  if (kestrel::test::isToFail()) return nullptr;
  kestrel::test::countBlock(1);
  return __libc_malloc(size);
}

// Lists in std::pmr memory are allocated with their alignment.
__attribute__((visibility("default"))) void* aligned_alloc(std::size_t alignment,
                                                           std::size_t size) {
  if (kestrel::test::isToFail()) return nullptr;
  kestrel::test::countBlock(1);
  return __libc_memalign(alignment, size);
}

__attribute__((visibility("default"))) void free(void* block) {
  if (block != nullptr) kestrel::test::countBlock(-1);
  __libc_free(block);
}
}
