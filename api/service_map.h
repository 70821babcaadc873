// The analyser: matches the services that a host expects with the audio tracks of a file.
#pragma once

#include <cstdint>
#include <vector>

#include "audio_stream_info.h"
#include "export.h"
#include "service_map_result.h"

namespace kestrel {
extern "C" {

/// Decides whether the file's tracks carry the services of a layout description, and which track
/// carries which service.
///
/// The layout description is a list of entries. Each consists of "T", the track total in one or two
/// digits, "=" and a comma-separated list of "Mono", "Stereo", "5.1 Mix", "7.1 Mix" and "EMCA" (a
/// pair-coded service). A leading "-" keeps a service out of the results. Separate entries by ";":
/// "T8=5.1 Mix,Stereo;T4=Stereo,Stereo". The first entry whose total equals the file's is used.
///
/// @param layoutDescription     NUL-terminated; empty is allowed, NULL counts as empty
/// @param surroundChannelOrder  NUL-terminated, blank-separated labels of a 5.1 mix, for example
///                              "L R C LFE Ls Rs"; it becomes the label of each 5.1 Mix whose own
///                              labels are not derived or do not make a full set; empty is allowed,
///                              NULL counts as empty
/// @param allowTwoTrackStreams  not used by this function
/// @param streams               streamCount records, only read; NULL counts as no streams
/// @param streamCount           0 or less: no streams
/// @param results               receives the records; a vector of the host's standard library,
///                              which must be the one that the library uses. If NULL, the function
///                              does nothing and returns 0
/// @param reportAll             non-zero: services with a leading "-" are reported too, with
///                              requested 0
/// @param surroundCheck         non-zero: the label of a 5.1 Mix is derived from the streams'
///                              trackLabels
///
/// @return 1: the tracks carry the services. *results holds one record per reported service (an
///            EMCA service yields one per pair-coded programme); its previous contents are
///            released.
///         0: they do not. Either detection failed and *results is unchanged, or neighbouring
///            tracks of one service do not agree and *results is empty.
///
/// Time and memory grow linearly with the streams and the texts; only streams whose track numbers
/// do not ascend are also sorted. Raises only std::bad_alloc or std::length_error, and then leaves
/// *results unchanged. Any number of threads may call it at once, each with its own vector.
KESTREL_EXPORT std::int32_t getServiceMap(const char* layoutDescription,
                                          const wchar_t* surroundChannelOrder,
                                          std::int32_t allowTwoTrackStreams,
                                          const AudioStreamInfo* streams, std::int32_t streamCount,
                                          std::vector<ServiceMapResult>* results,
                                          std::uint8_t reportAll, std::uint8_t surroundCheck);

}  // extern "C"
}  // namespace kestrel
