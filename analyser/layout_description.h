// The layout description: the host's text that says which services it expects for which track
// total.
#pragma once

#include <algorithm>
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

/// Removes the next element, and the comma after it, from the start of a service list, and returns
/// the element. The list must not be empty. A final comma adds no element, two adjacent commas
/// enclose an empty one, and blanks are not trimmed.
inline std::string_view takeElement(std::string_view& serviceList) noexcept {
  const std::string_view element = serviceList.substr(0, serviceList.find(','));
  serviceList.remove_prefix(std::min(element.size() + 1, serviceList.size()));
  return element;
}

/// The service that an element names: kMono to k71Mix, kEmca, or kUnknown. If the element has a
/// leading "-", every "-" in it is skipped.
StreamType serviceNamed(std::string_view element) noexcept;

/// Whether an element has a leading "-", so that its service is not to be reported.
constexpr bool isSilent(std::string_view element) { return element.starts_with('-'); }

/// Number of tracks that such a service occupies; -1 for kUnknown.
std::int32_t tracksOf(StreamType service) noexcept;

}  // namespace kestrel
