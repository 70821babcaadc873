// Neighbouring tracks of one service that differ in a property of their format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/evidence/tracks.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// @param code  the library's code of a finding; nothing is returned for codes about other things
std::optional<Finding> unequalFormats(std::int32_t code, const std::vector<ResultService>& services,
                                      std::size_t service, const TrackMap& map);

}  // namespace kestrel::host
