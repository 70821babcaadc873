// The audio tracks of a file. The tracks of a stream differ only in their index, so one record of
// the stream represents them all, and no cost depends on the value of a channelCount.
#pragma once

#include <cstddef>
#include <cstdint>

#include "analyser/file_streams.h"
#include "analyser/surround_labels.h"
#include "api/service_map_result.h"

namespace kestrel {

/// One track: the position of its stream among the streams with tracks, and its position in the
/// stream. The default is the first track of the file, or the end if the file has no tracks.
struct TrackCursor {
  std::size_t stream = 0;
  std::int32_t offset = 0;  // 0 .. channelCount - 1
};

/// In 32 bits, as an index in a group counts.
constexpr std::int32_t wrappingSum(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

class FileTracks {
 public:
  /// Gives streams with the same track number what they share, keeps those that have tracks, and
  /// joins the groups of pair-coded streams. Raises nothing.
  explicit FileTracks(FileStreams streams);

  bool atEnd(TrackCursor at) const { return at.stream == streams_.list.size(); }

  /// The stream of a track. It has the labels of the first stream with its track number, and the
  /// format keys of the last.
  const FileStream& stream(TrackCursor at) const { return streams_.list[at.stream]; }

  /// What a result record says about a track.
  TrackSlot slot(TrackCursor at) const {
    const FileStream& own = stream(at);
    return {own.trackNumber, own.group, own.sourceGroup, indexInGroup(at)};
  }

  /// The label of a track; kNoLabel if it has none or if labels are not asked for.
  SurroundLabel label(TrackCursor at) const;

  /// The first track of the next stream.
  static TrackCursor nextStream(TrackCursor at) { return {at.stream + 1, 0}; }

  /// Tracks from the cursor to the end of its stream, at least 1.
  std::int32_t restOfStream(TrackCursor at) const { return stream(at).channelCount - at.offset; }

  /// Tracks from the cursor to the end of the file.
  std::int64_t countFrom(TrackCursor at) const;

  /// Moves over the next `count` tracks of the cursor's stream, or over the rest of it if that is
  /// less, and returns the number of tracks passed.
  std::int32_t passInStream(TrackCursor& at, std::int32_t count) const {
    const std::int32_t rest = restOfStream(at);
    if (count >= rest) {
      at = nextStream(at);
      return rest;
    }
    at.offset += count;
    return count;
  }

  /// The same for the tracks of the file.
  std::int32_t pass(TrackCursor& at, std::int32_t count) const {
    std::int32_t passed = 0;
    while (passed < count && !atEnd(at)) passed += passInStream(at, count - passed);
    return passed;
  }

 private:
  std::int32_t indexInGroup(TrackCursor at) const {
    return wrappingSum(stream(at).firstIndexInGroup, at.offset);
  }

  FileStreams streams_;
};

}  // namespace kestrel
