// The EBU R 123 analysis: judges a file's tracks against a track-allocation configuration.
#pragma once

#include <cstdint>

#include "audio_stream_info.h"
#include "catalogue_ids.h"
#include "export.h"
#include "service_map_result.h"

namespace kestrel {
extern "C" {

/// Counts the channels of the tracks, looks up the EBU R 123 configuration for that number and
/// matches its groups with the tracks. The library's table of configurations is empty, so every
/// call leaves *item unchanged and finds no records.
///
/// @param layoutDescription     as for getServiceMap(); NULL counts as empty
/// @param allowTwoTrackStreams  low byte non-zero: an ordinary stream may have two channels instead
///                              of one
/// @param streams               streamCount records, only read; NULL counts as no streams
/// @param streamCount           0 or less: no streams
/// @param block                 receives a block of *resultCount records from the C run-time's
///                              malloc(), which the host frees with free(); their labels are
///                              empty, so no destructor needs to run. NULL if malloc() fails
/// @param resultCount           receives the number of records
/// @param item                  in: the item that the host expects, or NO_SERVICE_MAP_ITEM to let
///                              the configuration decide; out: the item decided on, or
///                              NO_SERVICE_MAP_ITEM if the tracks do not conform
///
/// If *item is NO_SERVICE_MAP_ITEM on return, *block and *resultCount are not written. Otherwise
/// both are written, even if there are no records. If block, resultCount or item is NULL, the call
/// does nothing. Raises only std::bad_alloc, and then leaves all three out-values unchanged. Any
/// number of threads may call it at once.
KESTREL_EXPORT void getServiceMapEbuR123(const char* layoutDescription,
                                         std::uint32_t allowTwoTrackStreams,
                                         const AudioStreamInfo* streams, std::int32_t streamCount,
                                         ServiceMapResult** block, std::int32_t* resultCount,
                                         std::int32_t* item);

}  // extern "C"
}  // namespace kestrel
