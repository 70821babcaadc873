// What is odd about the labels on the tracks of a 5.1 Mix. None of it keeps a file from conforming.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/evidence/tracks.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// @param index  of the service among the expected ones
/// @param order  the surround channel order: "L R C LFE Ls Rs"
std::vector<Finding> labelFindings(const ResultService& service, std::size_t index,
                                   const TrackMap& map, const std::string& order);

}  // namespace kestrel::host
