// The track totals for which a layout description has entries.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace kestrel {

class DescribedTotals {
 public:
  explicit DescribedTotals(std::string_view layoutDescription) noexcept;

  /// Each total once, in the order of the text.
  std::span<const std::int32_t> list() const { return {totals_.data(), count_}; }

  /// "2, 4 and 8". Raises std::bad_alloc.
  std::string spoken() const;

 private:
  std::array<std::int32_t, 100> totals_{};  // a total has at most two digits
  std::size_t count_ = 0;
};

}  // namespace kestrel
