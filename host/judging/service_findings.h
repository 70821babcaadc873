// What is wrong or odd about one expected service on its tracks: neighbours that differ in a
// property of their format, and the labels of a 5.1 Mix.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "host/evidence/tracks.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// Neighbouring tracks of the service that differ in a property of their format.
/// @param code  the library's code of a finding; nothing is returned for codes about other things
std::optional<Finding> unequalFormats(std::int32_t code, const std::vector<ResultService>& services,
                                      std::size_t service, const TrackMap& map);

/// What is odd about the labels on the tracks of a 5.1 Mix. None of it keeps a file from
/// conforming.
/// @param index  of the service among the expected ones
/// @param order  the surround channel order: "L R C LFE Ls Rs"
std::vector<Finding> labelFindings(const ResultService& service, std::size_t index,
                                   const TrackMap& map, const std::string& order);

}  // namespace kestrel::host
