// Compares a file's tracks with the EBU R 123 configuration for their number of channels.
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
  std::uint32_t extra = 0;       // not interpreted
};

struct R123Configuration {
  std::int32_t item = 0;  // the service map item that the configuration stands for
  std::vector<R123GroupRequirement> groups;
};

/// Configurations by their number of channels.
using R123Configurations = std::map<std::int32_t, R123Configuration>;

/// The number of channels that the streams carry, which is the key of the configurations; -1 if a
/// stream that is not pair-coded is wider than permitted. The sum wraps in 32 bits.
std::int32_t countR123Channels(std::span<const AudioStreamInfo> streams,
                               bool allowTwoTrackStreams) noexcept;

/// The records of the groups that are to be reported.
/// @param item  in: what the host expects, or NO_SERVICE_MAP_ITEM to let the configuration decide;
///              out: what was decided, or NO_SERVICE_MAP_ITEM if the tracks do not conform (the
///              list is then empty). Unchanged if the tracks cannot be counted or there is no
///              configuration for their number of channels (the list is then empty as well)
/// Raises std::bad_alloc.
std::vector<ServiceMapResult> evaluateEbuR123(std::span<const AudioStreamInfo> streams,
                                              bool allowTwoTrackStreams,
                                              const R123Configurations& configurations,
                                              std::int32_t& item);

}  // namespace kestrel
