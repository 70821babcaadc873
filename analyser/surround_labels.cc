#include "analyser/surround_labels.h"

#include <algorithm>

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
  constexpr Char kBlank = ' ';
  std::size_t begin = text.find_first_not_of(kBlank);
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find(kBlank, begin), text.size());
    labels.push_back(labelNamed(text.substr(begin, end - begin)));
    begin = text.find_first_not_of(kBlank, end);
  }
}

}  // namespace

void appendLabels(std::wstring_view text, SurroundLabels& labels) { appendTokens(text, labels); }

void appendLabels(std::string_view text, SurroundLabels& labels) { appendTokens(text, labels); }

std::optional<SurroundOrder> checkSurroundLabels(std::span<const SurroundLabel> labels) noexcept {
  SurroundOrder order{};
  if (labels.size() != order.size()) return std::nullopt;
  std::ranges::copy(labels, order.begin());
  for (std::size_t i = 0; i < kSurroundLabels.size(); ++i)
    if (std::ranges::count(order, static_cast<SurroundLabel>(i)) != 1) return std::nullopt;
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
