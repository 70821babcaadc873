#include "analyser/surround_labels.h"

#include <algorithm>
#include <bitset>

namespace kestrel {

namespace {

template <class Char>
SurroundLabel labelNamed(std::basic_string_view<Char> token) {
  for (std::size_t i = 0; i < kSurroundLabels.size(); ++i)
    if (std::ranges::equal(token, kSurroundLabels[i])) return static_cast<SurroundLabel>(i);
  return kOtherLabel;
}

template <class Char>
void appendTokens(std::basic_string_view<Char> text, SurroundLabels& labels) {
  while (!text.empty()) {
    const auto end = std::ranges::find(text, Char{' '});
    const auto length = static_cast<std::size_t>(end - text.begin());
    if (length > 0) labels.push_back(labelNamed(text.substr(0, length)));
    text.remove_prefix(std::min(length + 1, text.size()));
  }
}

}  // namespace

void appendLabels(std::wstring_view text, SurroundLabels& labels) { appendTokens(text, labels); }

void appendLabels(std::string_view text, SurroundLabels& labels) { appendTokens(text, labels); }

std::optional<SurroundOrder> checkSurroundLabels(std::span<const SurroundLabel> labels) noexcept {
  SurroundOrder order{};
  if (labels.size() != order.size()) return std::nullopt;
  std::ranges::copy(labels, order.begin());
  std::bitset<kSurroundLabels.size()> found;
  for (const SurroundLabel label : order)
    if (label >= 0) found.set(static_cast<std::size_t>(label));
  if (!found.all()) return std::nullopt;
  return order;
}

std::array<char, 15> textOf(const SurroundOrder& order) noexcept {
  std::array<char, 15> text{};
  std::size_t length = 0;
  for (const SurroundLabel label : order) {
    if (length > 0) text[length++] = ' ';
    for (const char c : kSurroundLabels[static_cast<std::size_t>(label)]) text[length++] = c;
  }
  return text;
}

}  // namespace kestrel
