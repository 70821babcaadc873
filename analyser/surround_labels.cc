// A label of a 5.1 mix has at most three characters, so the text of a mix has a fixed room and a
// longer token ends the reading at once.
#include "analyser/surround_labels.h"

#include <algorithm>
#include <string>

namespace kestrel {

namespace {

// Takes `skipped` tokens and one more off the front of the text, and returns the last one.
std::wstring_view takeLabelAfter(std::wstring_view& text, std::int64_t skipped) {
  for (; skipped > 0 && !text.empty(); --skipped) takeLabel(text);
  return takeLabel(text);
}

template <class Char>
bool isFullSet(std::basic_string_view<Char> text) {
  std::array<bool, kSurroundLabels.size()> seen{};
  for (auto label = takeLabel(text); !label.empty(); label = takeLabel(text)) {
    const auto known = std::ranges::find_if(
        kSurroundLabels, [&](std::wstring_view one) { return std::ranges::equal(one, label); });
    if (known == kSurroundLabels.end()) return false;
    bool& alreadySeen = seen[static_cast<std::size_t>(known - kSurroundLabels.begin())];
    if (alreadySeen) return false;
    alreadySeen = true;
  }
  return std::ranges::all_of(seen, [](bool label) { return label; });
}

}  // namespace

std::wstring_view labelAt(std::wstring_view text, std::int32_t index) noexcept {
  return index < 0 ? std::wstring_view{} : takeLabelAfter(text, index);
}

bool checkSurroundLabels(std::wstring_view text) noexcept { return isFullSet(text); }
bool checkSurroundLabels(std::string_view text) noexcept { return isFullSet(text); }

std::wstring_view SurroundLabelReader::read(TrackCursor at) noexcept {
  length_ = 0;
  for (std::int32_t i = 0; i < kLabels; ++i, at = tracks_.advance(at, 1))
    if (tracks_.atEnd(at) || !append(labelOf(at))) return {};
  const std::wstring_view text(text_.data(), length_);
  return checkSurroundLabels(text) ? text : std::wstring_view{};
}

// The label text of a track number is that of the first stream with the number.
std::wstring_view SurroundLabelReader::labelOf(TrackCursor at) noexcept {
  const std::int32_t stream = tracks_.tracks(at).firstStream;
  const std::int32_t index = tracks_.indexInGroup(at);
  if (index < 0) return {};
  if (stream != stream_ || index < nextIndex_) {
    stream_ = stream;
    nextIndex_ = 0;
    rest_ = tracks_.firstOfNumber(at).trackLabels;
  }
  const std::wstring_view label = takeLabelAfter(rest_, index - nextIndex_);
  nextIndex_ = std::int64_t{index} + 1;
  return label;
}

bool SurroundLabelReader::append(std::wstring_view label) noexcept {
  if (label.empty() || label.size() > kLongestLabel) return false;
  if (length_ > 0) text_[length_++] = L' ';
  std::ranges::copy(label, text_.begin() + static_cast<std::ptrdiff_t>(length_));
  length_ += label.size();
  return true;
}

}  // namespace kestrel
