// Judges a file's tracks against the EBU R 123 configuration for their number of channels.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"

namespace kestrel {

/// One group of a configuration: a stereo pair, a 5.1 mix, a Dolby E pair, ...
struct R123GroupRequirement {
  std::uint32_t streamType = 0;  // numbered like StreamType
  std::uint8_t report = 0;       // non-zero: the group yields a record
  std::uint32_t extra = 0;       // carried along, not interpreted
};

struct R123Configuration {
  std::int32_t item = 0;  // the service map item that the configuration stands for
  std::vector<R123GroupRequirement> groups;
};

/// Configurations by their number of channels.
using R123Configurations = std::map<std::int32_t, R123Configuration>;

/// The number of channels that the streams carry, the key into the configurations; -1 when a stream
/// that is not pair-coded is wider than permitted. Summed in 32 bits, wrapping.
std::int32_t countR123Channels(std::span<const AudioStreamInfo> streams,
                               bool allowTwoTrackStreams) noexcept;

/// The records of the groups that are to be reported.
/// @param item  in: what the host expects, or NO_SERVICE_MAP_ITEM to let the configuration decide;
///              out: what was decided, or NO_SERVICE_MAP_ITEM when the tracks do not conform (the
///              list is then empty). Untouched where the tracks cannot be counted or no
///              configuration has their number of channels (the list is then empty, too)
/// Raises std::bad_alloc.
std::vector<ServiceMapResult> evaluateEbuR123(std::span<const AudioStreamInfo> streams,
                                              bool allowTwoTrackStreams,
                                              const R123Configurations& configurations,
                                              std::int32_t& item);

}  // namespace kestrel
