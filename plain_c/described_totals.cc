#include "plain_c/described_totals.h"

#include <utility>

#include "analyser/layout_description.h"

namespace kestrel {

DescribedTotals::DescribedTotals(std::string_view layoutDescription) noexcept {
  std::array<bool, std::tuple_size_v<decltype(totals_)>> listed{};
  while (const auto entry = takeEntry(layoutDescription)) {
    if (std::exchange(listed[entry->trackTotal], true)) continue;
    totals_[count_++] = static_cast<std::int32_t>(entry->trackTotal);
  }
}

std::string DescribedTotals::spoken() const {
  if (count_ == 0) return "no other total";
  std::string text = std::to_string(totals_.front());
  for (std::size_t i = 1; i < count_; ++i)
    text += (i + 1 < count_ ? ", " : " and ") + std::to_string(totals_[i]);
  return text;
}

}  // namespace kestrel
