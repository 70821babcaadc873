// The track-allocation configurations of EBU R 123 that a file's tracks can be judged against.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

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

}  // namespace kestrel
