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

/// Takes the next entry off the front of `text`, with everything before it; nothing (and `text`
/// empty) when there is none left. Works on bytes, whatever the locale.
std::optional<LayoutEntry> takeEntry(std::string_view& text) noexcept;

/// The service list of the first entry for a track total; empty when there is no such entry.
std::string_view findServiceList(std::string_view description, std::uint32_t trackTotal) noexcept;

/// One element of a service list.
struct LayoutElement {
  std::string_view text;
  StreamType service = kUnknown;  // what it names: kMono to k71Mix, kEmca, or kUnknown; with a
                                  // leading "-" every "-" in it is passed over
};

/// Takes the next element off the front of a service list; nothing when the list is used up. A
/// comma at the end adds no element, two commas in a row enclose an empty one; nothing is trimmed.
std::optional<LayoutElement> takeElement(std::string_view& serviceList) noexcept;

/// Whether an element is written with a leading "-": its service is not to be reported.
constexpr bool isSilent(std::string_view element) { return element.starts_with('-'); }

/// Number of tracks that such a service occupies; -1 for kUnknown.
std::int32_t tracksOf(StreamType service) noexcept;

}  // namespace kestrel
