// The channel labels of a 5.1 mix. Only the six labels of a mix mean anything here, so a label is
// kept as its number among them.
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

/// An index into kSurroundLabels, or one of the two below.
using SurroundLabel = std::int8_t;
inline constexpr SurroundLabel kNoLabel = -1;
inline constexpr SurroundLabel kOtherLabel = -2;  // a label, but none of a 5.1 mix

using SurroundLabels = std::pmr::vector<SurroundLabel>;

/// Appends the labels of a text, which are separated by blanks (U+0020 only). Raises
/// std::bad_alloc.
void appendLabels(std::wstring_view text, SurroundLabels& labels);
void appendLabels(std::string_view text, SurroundLabels& labels);

/// The six labels of a mix, each once, in the order of its tracks.
using SurroundOrder = std::array<SurroundLabel, kSurroundLabels.size()>;

/// The labels as an order, if they are L, R, C, LFE, Ls and Rs, each once, in any order.
std::optional<SurroundOrder> checkSurroundLabels(std::span<const SurroundLabel> labels) noexcept;

/// The labels of a mix, joined by single blanks.
std::array<char, 15> textOf(const SurroundOrder& order) noexcept;

}  // namespace kestrel
