// The channel labels of a 5.1 mix: reading them off the label texts of streams and testing them.
// Only the six labels of a mix mean something, so a label is kept as its number among them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "analyser/file_tracks.h"

namespace kestrel {

inline constexpr std::size_t kSurroundLabelCount = 6;

/// A number of kSurroundLabels, or one of the two below.
using SurroundLabel = std::int32_t;
inline constexpr SurroundLabel kNoLabel = -1;
inline constexpr SurroundLabel kOtherLabel = -2;  // a label, but none of a 5.1 mix

inline constexpr std::array<std::string_view, kSurroundLabelCount> kSurroundLabels = {
    "L", "R", "C", "LFE", "Ls", "Rs"};

/// The six labels of a mix, each once, in the order of its tracks.
using SurroundOrder = std::array<SurroundLabel, kSurroundLabelCount>;

/// Length of the labels of a mix, joined by single blanks.
inline constexpr std::size_t kSurroundTextLength = 15;

/// The labels of a mix, joined by single blanks.
template <class Char>
constexpr std::array<Char, kSurroundTextLength> textOf(const SurroundOrder& order) {
  std::array<Char, kSurroundTextLength> text{};
  std::size_t length = 0;
  for (const SurroundLabel label : order) {
    if (length > 0) text[length++] = ' ';
    for (const char c : kSurroundLabels[static_cast<std::size_t>(label)])
      text[length++] = static_cast<Char>(c);
  }
  return text;
}

/// The blank-separated token of `text` with a 0-based number. Only the blank U+0020 separates.
SurroundLabel labelAt(LabelText text, std::int32_t index) noexcept;

/// The labels of `text`, which holds L, R, C, LFE, Ls and Rs, each once, in any order, and no other
/// token; else nothing.
std::optional<SurroundOrder> surroundOrderOf(LabelText text) noexcept;

/// Reads the labels of 5.1 mixes off the tracks of a file, one mix after the other.
class SurroundLabelReader {
 public:
  explicit SurroundLabelReader(const FileTracks& tracks) : tracks_(tracks) {}

  /// The labels of the six tracks from `at`, when they are L, R, C, LFE, Ls and Rs in any order;
  /// else nothing.
  std::optional<SurroundOrder> read(TrackCursor at) noexcept;

  /// The label of one track, which is not the end.
  SurroundLabel labelOf(TrackCursor at) noexcept;

 private:
  const FileTracks& tracks_;

  // Where the last label was read: `rest_` begins with the label number `index_` of a stream. So
  // the labels of a stream are passed once, not once a track.
  std::int32_t stream_ = -1;
  std::int32_t index_ = 0;
  LabelText all_;  // from the stream's first label on
  LabelText rest_;
};

}  // namespace kestrel
