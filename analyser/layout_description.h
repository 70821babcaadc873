// The layout description: the host's text that says which services it expects for which track
// total.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "api/catalogue_ids.h"

namespace kestrel {

/// One entry of a description, "T8=5.1 Mix,Stereo".
struct LayoutEntry {
  std::uint32_t trackTotal = 0;  // 0 to 99
  std::string_view serviceList;  // never empty
};

/// Removes the next entry, and everything before it, from the start of `text`, and returns it.
/// Returns nothing and empties `text` if there is no further entry. Works on bytes in any locale.
std::optional<LayoutEntry> takeEntry(std::string_view& text) noexcept;

/// The service list of the first entry for a track total; empty if there is no such entry.
std::string_view findServiceList(std::string_view description, std::uint32_t trackTotal) noexcept;

/// One element of a service list.
struct LayoutElement {
  std::string_view text;
  StreamType service = kUnknown;  // what it names: kMono to k71Mix, kEmca, or kUnknown; if it has
                                  // a leading "-", every "-" in it is skipped
};

/// Removes the next element from the start of a service list and returns it; nothing at the end of
/// the list. A final comma adds no element, two adjacent commas enclose an empty one, and blanks
/// are not trimmed.
std::optional<LayoutElement> takeElement(std::string_view& serviceList) noexcept;

/// Whether an element has a leading "-", so that its service is not to be reported.
constexpr bool isSilent(std::string_view element) { return element.starts_with('-'); }

/// Number of tracks that such a service occupies; -1 for kUnknown.
std::int32_t tracksOf(StreamType service) noexcept;

}  // namespace kestrel
