// A label of a 5.1 mix has at most three characters, so of a longer one no more is looked at than
// that it is longer: its end is looked for only when a label behind it is wanted.
#include "analyser/surround_labels.h"

#include <algorithm>
#include <type_traits>

namespace kestrel {

namespace {

constexpr std::size_t kLongestLabel = 3;  // LFE

constexpr bool isBlank(auto c) { return c == ' '; }

// Up to three characters of a label as a number.
using PackedLabel = std::uint32_t;

constexpr PackedLabel append(PackedLabel label, std::uint32_t c) { return label << 8U | c; }

constexpr auto kPackedLabels = [] {
  std::array<PackedLabel, kSurroundLabelCount> packed{};
  for (std::size_t i = 0; i < packed.size(); ++i)
    for (const char c : kSurroundLabels[i])
      packed[i] = append(packed[i], static_cast<unsigned char>(c));
  return packed;
}();

template <class Char>
void skipBlanks(std::basic_string_view<Char>& text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
}

template <class Char>
void skipLabel(std::basic_string_view<Char>& text) {
  while (!text.empty() && !isBlank(text.front())) text.remove_prefix(1);
  skipBlanks(text);
}

// The label at the front of a text that does not begin with a blank.
template <class Char>
SurroundLabel frontLabel(std::basic_string_view<Char> text) {
  PackedLabel label = 0;
  std::size_t length = 0;
  for (; length < text.size() && !isBlank(text[length]); ++length) {
    const auto c = std::uint32_t{static_cast<std::make_unsigned_t<Char>>(text[length])};
    if (length == kLongestLabel || c < 1 || c > 0x7F) return kOtherLabel;
    label = append(label, c);
  }
  if (length == 0) return kNoLabel;
  const auto known = std::ranges::find(kPackedLabels, label);
  return known == kPackedLabels.end() ? kOtherLabel
                                      : static_cast<SurroundLabel>(known - kPackedLabels.begin());
}

// Moves behind `count` labels and the blanks in front of the next one, which it returns.
SurroundLabel skipTo(LabelText& text, std::int32_t count) {
  return std::visit(
      [=](auto& rest) {
        skipBlanks(rest);
        for (std::int32_t i = 0; i < count && !rest.empty(); ++i) skipLabel(rest);
        return frontLabel(rest);
      },
      text);
}

// Puts a label into its place unless it is none of the six or stands already.
bool add(SurroundOrder& order, std::size_t place, SurroundLabel label) {
  const auto before = order.begin() + static_cast<std::ptrdiff_t>(place);
  if (label < 0 || std::find(order.begin(), before, label) != before) return false;
  *before = label;
  return true;
}

}  // namespace

SurroundLabel labelAt(LabelText text, std::int32_t index) noexcept {
  return index < 0 ? kNoLabel : skipTo(text, index);
}

std::optional<SurroundOrder> surroundOrderOf(LabelText text) noexcept {
  SurroundOrder order{};
  for (std::size_t i = 0; i < order.size(); ++i)
    if (!add(order, i, skipTo(text, i == 0 ? 0 : 1))) return std::nullopt;
  if (skipTo(text, 1) != kNoLabel) return std::nullopt;
  return order;
}

std::optional<SurroundOrder> SurroundLabelReader::read(TrackCursor at) noexcept {
  SurroundOrder order{};
  for (std::size_t i = 0; i < order.size(); ++i, at = tracks_.advance(at, 1))
    if (tracks_.atEnd(at) || !add(order, i, labelOf(at))) return std::nullopt;
  return order;
}

// The label text of a track number is that of the first stream with the number.
SurroundLabel SurroundLabelReader::labelOf(TrackCursor at) noexcept {
  const std::int32_t stream = tracks_.tracks(at).labelStream;
  const std::int32_t index = tracks_.indexInGroup(at);
  if (index < 0) return kNoLabel;
  if (stream != stream_) {
    stream_ = stream;
    index_ = 0;
    all_ = tracks_.labels(at);
    skipTo(all_, 0);
    rest_ = all_;
  } else if (index < index_) {
    index_ = 0;
    rest_ = all_;
  }
  const std::int32_t skipped = index - index_;
  index_ = index;
  return skipTo(rest_, skipped);
}

}  // namespace kestrel
