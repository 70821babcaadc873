// A list of working records that is filled one by one and lives for one call: on the stack up to
// kInline records, in a heap block that doubles beyond that. For a length that is known beforehand
// there is ScratchArray.
#pragma once

#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

#include "analyser/scratch_array.h"

namespace kestrel {

template <class T, std::size_t kInline>
class ScratchList {
  static_assert(std::is_trivially_copyable_v<T>, "records are moved as bytes, then dropped");

 public:
  ScratchList() = default;
  ScratchList(const ScratchList&) = delete;
  ScratchList& operator=(const ScratchList&) = delete;

  /// One more record behind the others, which must be assigned before it is read. Raises
  /// std::bad_alloc with the list as it was.
  T& append() {
    if (size_ == room_.size()) grow();
    return room_[size_++];
  }

  std::span<const T> records() const { return room_.first(size_); }

 private:
  void grow() {
    ScratchBlock larger = allocateScratch(2 * room_.size_bytes());
    std::memcpy(larger.get(), room_.data(), room_.size_bytes());
    heap_ = std::move(larger);
    room_ = {reinterpret_cast<T*>(heap_.get()), 2 * room_.size()};
  }

  alignas(T) std::byte inline_[kInline * sizeof(T)];  // raw, so that unused records cost nothing
  ScratchBlock heap_;
  std::span<T> room_{reinterpret_cast<T*>(inline_), kInline};
  std::size_t size_ = 0;
};

}  // namespace kestrel
