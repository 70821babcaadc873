// The tracks of a found service in words that people know from other programs: the ids that the
// reader gives, and channels of these.
#pragma once

#include <string>

#include "api/service_map_result.h"
#include "host/stream_mapping.h"

namespace kestrel::host {

/// "2001, 2002", "1 channels 3-4", "2003 / 2004-1 (6 channels)"
std::string serviceTracks(const ServiceMapResult& service, const MappedMedia& media);

}  // namespace kestrel::host
