// The channel labels of a 5.1 mix: taking them from the label texts of streams and testing them.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "analyser/file_tracks.h"

namespace kestrel {

inline constexpr std::array<std::wstring_view, 6> kSurroundLabels = {L"L",   L"R",  L"C",
                                                                     L"LFE", L"Ls", L"Rs"};

/// Takes the next blank-separated token off the front of a text; empty when there is none. Only the
/// blank U+0020 separates.
template <class Char>
std::basic_string_view<Char> takeLabel(std::basic_string_view<Char>& text) noexcept {
  constexpr Char kBlank = ' ';
  text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
  const auto label = text.substr(0, text.find(kBlank));
  text.remove_prefix(label.size());
  return label;
}

/// The blank-separated token of `text` with a 0-based number; empty when it has no such token.
std::wstring_view labelAt(std::wstring_view text, std::int32_t index) noexcept;

/// Whether `text` holds the six labels L, R, C, LFE, Ls and Rs, each once, in any order, and no
/// other token.
bool checkSurroundLabels(std::wstring_view text) noexcept;
bool checkSurroundLabels(std::string_view text) noexcept;

/// Reads the labels of 5.1 mixes off the tracks of a file, one mix after the other.
class SurroundLabelReader {
 public:
  explicit SurroundLabelReader(const FileTracks& tracks) : tracks_(tracks) {}

  /// The labels of the six tracks from `at`, joined by single blanks, when they pass
  /// checkSurroundLabels(); else empty. Valid until the next call.
  std::wstring_view read(TrackCursor at) noexcept;

  /// The label of one track, which is not the end; empty when it has none.
  std::wstring_view labelOf(TrackCursor at) noexcept;

 private:
  bool append(std::wstring_view label) noexcept;

  static constexpr std::size_t kLongestLabel = 3;  // LFE
  static constexpr std::int32_t kLabels = 6;

  const FileTracks& tracks_;
  std::array<wchar_t, kLabels*(kLongestLabel + 1)> text_{};
  std::size_t length_ = 0;

  // Where the last label was read, so that the labels of a stream are split once, not once a track.
  std::int32_t stream_ = -1;
  std::int64_t nextIndex_ = 0;
  std::wstring_view rest_;
};

}  // namespace kestrel
