// Names of the streams of a layout, and the way back from names to ids.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "api/catalogue_ids.h"
#include "catalogue/catalogue_tables.h"

namespace kestrel {

/// More characters than any name of a stream needs.
inline constexpr std::size_t kLongestStreamName = 15;

/// The name of one stream of a layout: that of its type, and an ordinal where the layout holds the
/// type more than once. Written out: "Stereo", "Mono 3".
class StreamName {
 public:
  /// @param position  of the stream in the item's list; raises std::out_of_range when the item is
  ///                  unknown or holds no such position
  StreamName(ServiceMapItem item, std::int32_t position);

  std::size_t length() const;

  /// Writes length() characters and a NUL.
  void write(char* out) const;

 private:
  std::string_view typeName_;
  std::uint32_t ordinal_ = 0;  // from 1; 0 where the type stands once
};

/// The stream type with exactly this name; kUnknown when there is none.
StreamType streamTypeNamed(std::string_view name) noexcept;

/// The stream types of an item as names joined by commas, with a NUL behind them. Raises
/// std::out_of_range for an unknown item.
std::string_view streamTypesText(ServiceMapItem item);

/// The first item whose stream types, as names joined by commas, are this text;
/// NO_SERVICE_MAP_ITEM when there is none.
ServiceMapItem itemOfStreamTypes(std::string_view text) noexcept;

}  // namespace kestrel
