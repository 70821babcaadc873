// An array of working records whose length is known when it is filled and which lives for one call:
// on the stack up to kInline records, in one heap block beyond that. With it the usual call does
// not touch the heap, and a long one touches it once, with a small stack in both cases.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <type_traits>

namespace kestrel {

template <class T, std::size_t kInline>
class ScratchArray {
  static_assert(std::is_trivially_destructible_v<T>, "records are dropped, not destroyed");

 public:
  ScratchArray() = default;
  ScratchArray(const ScratchArray&) = delete;
  ScratchArray& operator=(const ScratchArray&) = delete;

  /// Makes room for `size` records, all T{}; what was held before is gone.
  /// Raises std::bad_alloc with the array as it was.
  void reset(std::size_t size) {
    if (size > kInline) {
      heap_ = std::make_unique<T[]>(size);
      records_ = {heap_.get(), size};
    } else {
      T* const first = reinterpret_cast<T*>(inline_);
      std::uninitialized_value_construct_n(first, size);
      records_ = {first, size};
    }
  }

  std::span<T> records() { return records_; }
  std::span<const T> records() const { return records_; }

 private:
  alignas(T) std::byte inline_[kInline * sizeof(T)];  // raw, so that unused records cost nothing
  std::unique_ptr<T[]> heap_;
  std::span<T> records_;
};

}  // namespace kestrel
