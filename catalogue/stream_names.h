// Names of the streams of a layout, and the way back from names to ids.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "api/catalogue_ids.h"
#include "catalogue/catalogue_tables.h"

namespace kestrel {

/// As many characters as the longest name of a stream may have.
inline constexpr std::size_t kLongestStreamName = 15;

/// The name of the stream at a position of an item, with a NUL behind it: that of its type, and an
/// ordinal where the item holds the type more than once ("Stereo", "Mono 3"). Raises
/// std::out_of_range when the item is unknown or holds no such position.
std::string_view streamName(ServiceMapItem item, std::int32_t position);

/// The stream type with exactly this NUL-terminated name; kUnknown when there is none.
StreamType streamTypeNamed(const char* name) noexcept;

/// The stream types of an item as names joined by commas, with a NUL behind them. Raises
/// std::out_of_range for an unknown item.
std::string_view streamTypesText(ServiceMapItem item);

/// The first item whose stream types, as names joined by commas, are this text;
/// NO_SERVICE_MAP_ITEM when there is none.
ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept;

}  // namespace kestrel
