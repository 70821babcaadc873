// The working memory of one call: a buffer on the stack, and the heap once the buffer is full. A
// usual call therefore allocates only what the host receives.
#pragma once

#include <cstddef>
#include <memory_resource>

namespace kestrel {

class CallMemory {
 public:
  std::pmr::memory_resource* resource() { return &resource_; }

 private:
  static constexpr std::size_t kSize = 8192;  // 32 mono streams and their services take 6 KB

  alignas(std::max_align_t) std::byte buffer_[kSize];
  std::pmr::monotonic_buffer_resource resource_{buffer_, kSize};
};

}  // namespace kestrel
