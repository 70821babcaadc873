// The EBU R 123 analysis: judges a file's tracks against a track-allocation configuration.
#pragma once

#include <cstdint>

#include "audio_stream_info.h"
#include "catalogue_ids.h"
#include "export.h"
#include "service_map_result.h"

namespace kestrel {
extern "C" {

/// Counts the channels of the tracks, looks for the EBU R 123 configuration of that count and lays
/// its groups over the tracks. The library's table of configurations is empty: every call leaves
/// *item as it was and finds no records.
///
/// @param layoutDescription     as for getServiceMap(); NULL counts as empty
/// @param allowTwoTrackStreams  low byte non-zero: an ordinary stream may hold two channels, not
/// one
/// @param streams               streamCount records, only read; NULL counts as no streams
/// @param streamCount           0 or less: no streams
/// @param block                 receives a block of *resultCount records from the C run-time's
///                              malloc(), to be freed by the host with free(); their labels are
///                              empty, so no destructor needs to run. NULL when malloc() failed
/// @param resultCount           receives the number of records
/// @param item                  in: the item that the host expects, or NO_SERVICE_MAP_ITEM to let
///                              the configuration decide; out: the item decided, or
///                              NO_SERVICE_MAP_ITEM when the tracks do not conform
///
/// When *item is NO_SERVICE_MAP_ITEM on return, *block and *resultCount are not written. Otherwise
/// both are, also for no records. A NULL block, resultCount or item makes the call do nothing.
/// Raises nothing but std::bad_alloc, with all three out-values as they were. Any thread may call
/// it.
KESTREL_EXPORT void getServiceMapEbuR123(const char* layoutDescription,
                                         std::uint32_t allowTwoTrackStreams,
                                         const AudioStreamInfo* streams, std::int32_t streamCount,
                                         ServiceMapResult** block, std::int32_t* resultCount,
                                         std::int32_t* item);

}  // extern "C"
}  // namespace kestrel
