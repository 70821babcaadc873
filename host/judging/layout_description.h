// The text of a layout description, taken apart with the place of each part, for explaining it and
// for naming the services that a file is expected to carry. Whether a file carries them is decided
// by the library alone, which reads the same text by the same rules; a test compares the two.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

/// One element of a service list.
struct LayoutElement {
  std::string name;        ///< without any "-" when it begins with one
  std::size_t offset = 0;  ///< of the element as written, in bytes
  std::size_t length = 0;
  bool isHidden = false;  ///< it begins with "-"
  /// The tracks that it takes; 0 for a text that is no known name.
  std::int32_t tracks = 0;
};

/// One entry: "T8=5.1 Mix,Stereo".
struct LayoutEntry {
  std::int32_t total = 0;
  std::size_t offset = 0;
  std::size_t length = 0;
  std::vector<LayoutElement> elements;
};

/// Every entry of the text, in its order; text between entries is passed over.
std::vector<LayoutEntry> layoutEntries(std::string_view text);

/// The first entry with the total.
std::optional<LayoutEntry> layoutEntry(std::string_view text, std::int32_t total);

/// The sum of the tracks of its elements.
std::int32_t tracksOf(const LayoutEntry& entry);

/// The known name that an unknown one is likely to mean: "EMCA" for "Dolby E".
std::string nearestService(const std::string& name);

}  // namespace kestrel::host
