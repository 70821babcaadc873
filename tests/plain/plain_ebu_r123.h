// The EBU R 123 evaluation in its plain, slow form, for tests to compare the library with. It walks
// over the channels one after the other; meant for tracks of few channels.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <vector>

#include "api/audio_stream_info.h"
#include "api/service_map_result.h"
#include "standards/ebu_r123_evaluation.h"

namespace kestrel::plain {

/// How an evaluation ends.
enum class R123End {
  kNotAnalysable,    ///< the channels cannot be counted
  kNoConfiguration,  ///< no configuration has their number
  kNoTrackLeft,      ///< a group remains, but no track for it
  kWrongStreamType,  ///< a group's stream type does not suit the track
  kGroupOutside,     ///< a track's group is no index of a track
  kRanPastTheEnd,    ///< the tracks end within a group
  kIncompatible,     ///< the tracks of a group disagree in their format keys
  kNothingToReport,  ///< all groups matched, and none is to be reported
  kConforms,
};

struct R123Input {
  std::vector<AudioStreamInfo> streams;
  bool allowTwoTrackStreams = false;
  R123Configurations configurations;
  std::int32_t item = 0;
};

struct R123Result {
  std::int32_t item = 0;
  std::vector<ServiceMapResult> records;
  R123End end = R123End::kNotAnalysable;
  bool groupBeganInsideTrack = false;  ///< behind channels that an earlier group took
};

/// The number of channels that the streams carry; -1 when a stream is too wide.
std::int32_t countR123Channels(const std::vector<AudioStreamInfo>& streams,
                               bool allowTwoTrackStreams);

R123Result evaluateEbuR123(const R123Input& input);

/// True when both have the same item and equal records.
bool sameResults(const R123Result& left, const R123Result& right);

std::ostream& operator<<(std::ostream& out, R123End end);
std::ostream& operator<<(std::ostream& out, const R123Input& input);
std::ostream& operator<<(std::ostream& out, const R123Result& result);

}  // namespace kestrel::plain
