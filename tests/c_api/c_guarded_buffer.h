// A buffer that shows what was written in it and beside it.
#pragma once

#include <cstddef>
#include <vector>

namespace kestrel::test {

/// A buffer between two margins, all of one value that no answer holds.
template <class Element>
class Guarded {
 public:
  explicit Guarded(std::size_t capacity) : elements_(capacity + 2 * kMargin, kCanary) {}

  Element* data() { return elements_.data() + kMargin; }

  /// True when only the first `count` elements of the buffer may have been written.
  bool holdsAtMost(std::size_t count) const {
    for (std::size_t i = 0; i < elements_.size(); ++i) {
      const bool written = i >= kMargin && i < kMargin + count;
      if (!written && elements_[i] != kCanary) return false;
    }
    return true;
  }

 private:
  static constexpr std::size_t kMargin = 2;
  static constexpr auto kCanary = static_cast<Element>(0x7E);
  std::vector<Element> elements_;
};

}  // namespace kestrel::test
