// The ids that cross the interface: stream types, service map items and rows, all signed 32-bit.
#pragma once

#include <cstdint>

namespace kestrel {

/// The kind of one audio service.
using StreamType = std::int32_t;

inline constexpr StreamType kMono = 0;     ///< fills 1 track
inline constexpr StreamType kStereo = 1;   ///< fills 2 tracks
inline constexpr StreamType k51Mix = 2;    ///< fills 6 tracks
inline constexpr StreamType k71Mix = 3;    ///< fills 8 tracks
inline constexpr StreamType kDolbyE = 4;   ///< fills a pair of 2 tracks
inline constexpr StreamType kEmca = 5;     ///< a pair-coded service of a layout description
inline constexpr StreamType kUnknown = 6;  ///< no known name; never in the catalogue

/// The id of one catalogued layout, 0 to 40.
using ServiceMapItem = std::int32_t;

/// One past the last item id: "no item applies", or "the tracks do not conform".
inline constexpr ServiceMapItem NO_SERVICE_MAP_ITEM = 41;

}  // namespace kestrel
