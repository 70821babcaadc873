// An array of working records whose length is known when it is filled and which lives for one call:
// on the stack up to kInline records, in one heap block beyond that. With it the usual call does
// not touch the heap, and a long one touches it once, with a small stack in both cases.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <type_traits>

namespace kestrel {

struct DeleteScratch {
  void operator()(std::byte* block) const { ::operator delete(block); }
};

/// Raw memory. The forms of new and delete for arrays would only be two more names to look up when
/// the library is loaded.
using ScratchBlock = std::unique_ptr<std::byte, DeleteScratch>;

inline ScratchBlock allocateScratch(std::size_t size) {
  return ScratchBlock(static_cast<std::byte*>(::operator new(size)));
}

template <class T, std::size_t kInline>
class ScratchArray {
  static_assert(std::is_trivially_copyable_v<T>,
                "records are assigned to raw memory, then dropped");

 public:
  ScratchArray() = default;
  ScratchArray(const ScratchArray&) = delete;
  ScratchArray& operator=(const ScratchArray&) = delete;

  /// Makes room for `size` records, each of which must be assigned before it is read; what was held
  /// before is gone. Raises std::bad_alloc with the array as it was.
  std::span<T> reset(std::size_t size) {
    std::byte* room = inline_;
    if (size > kInline) {
      heap_ = allocateScratch(size * sizeof(T));
      room = heap_.get();
    }
    records_ = {reinterpret_cast<T*>(room), size};
    return records_;
  }

  /// Drops the records behind the first `size`.
  std::span<T> keep(std::size_t size) { return records_ = records_.first(size); }

  std::span<T> records() { return records_; }
  std::span<const T> records() const { return records_; }

 private:
  alignas(T) std::byte inline_[kInline * sizeof(T)];  // raw, so that unused records cost nothing
  ScratchBlock heap_;
  std::span<T> records_;
};

}  // namespace kestrel
