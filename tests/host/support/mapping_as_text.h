// The library's records in a form that is easy to write down and to compare.
#pragma once

#include <string>
#include <vector>

#include "host/evidence/stream_mapping.h"

namespace kestrel::host {

/// One text per stream: "id [labels] channels x rate/depth", then "pair" or "shared pair" for a
/// pair-coded stream. For example "2001 [L] 1x48000/24" or "3 / 4-1 [] 6x48000/20 pair".
std::vector<std::string> mappingAsText(const MappedMedia& media);

}  // namespace kestrel::host
