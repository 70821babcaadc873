// Names of the streams of a layout, and the conversion of names back to ids.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "api/catalogue_ids.h"

namespace kestrel {

/// A short text stored in place, so that making one allocates nothing.
class InlineText {
 public:
  constexpr void append(std::string_view part) {
    std::ranges::copy(part, characters_.data() + size_);
    size_ += part.size();
  }
  constexpr std::size_t size() const { return size_; }
  constexpr operator std::string_view() const { return {characters_.data(), size_}; }

 private:
  std::array<char, 79> characters_{};  // the longest is the text of 16 Mono streams
  std::size_t size_ = 0;
};

/// The name of the stream at a position of an item: the name of its type, followed by an ordinal if
/// the item contains the type more than once ("Stereo", "Mono 3"). Raises std::out_of_range if the
/// item is unknown or has no such position.
InlineText streamName(ServiceMapItem item, std::int32_t position);

/// The stream type with exactly this name; kUnknown if there is none.
StreamType streamTypeNamed(std::string_view name) noexcept;

/// The stream types of an item as names joined by commas. Raises std::out_of_range for an unknown
/// item.
std::string_view streamTypesText(ServiceMapItem item);

/// The first item whose stream types, as names joined by commas, are this text;
/// NO_SERVICE_MAP_ITEM if there is none.
ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept;

}  // namespace kestrel
