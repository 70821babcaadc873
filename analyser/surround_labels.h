// The channel labels of a 5.1 mix. Only these six labels have a meaning here, so a label is stored
// as an index into them.
#pragma once

#include <array>
#include <cstdint>
#include <memory_resource>  // IWYU pragma: keep (for std::pmr::vector)
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace kestrel {

inline constexpr std::array<std::string_view, 6> kSurroundLabels = {"L",   "R",  "C",
                                                                    "LFE", "Ls", "Rs"};

/// An index into kSurroundLabels, or one of the two values below.
using SurroundLabel = std::int16_t;
inline constexpr SurroundLabel kNoLabel = -1;
inline constexpr SurroundLabel kOtherLabel = -2;  // a label, but none of a 5.1 mix

using SurroundLabels = std::pmr::vector<SurroundLabel>;

/// Appends the labels of a text, separated by blanks (only U+0020). Raises std::bad_alloc.
void appendLabels(std::wstring_view text, SurroundLabels& labels);
void appendLabels(std::string_view text, SurroundLabels& labels);

/// The six labels of a mix, each once, in the order of its tracks.
using SurroundOrder = std::array<SurroundLabel, kSurroundLabels.size()>;

/// The labels as an order; nothing unless they are L, R, C, LFE, Ls and Rs, each once, in any
/// order.
std::optional<SurroundOrder> checkSurroundLabels(std::span<const SurroundLabel> labels) noexcept;

/// The labels of a mix, joined by single blanks.
std::array<char, 15> textOf(const SurroundOrder& order) noexcept;

}  // namespace kestrel
