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
  TrackSlot slot(TrackCursor at) const;

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
  std::int32_t passInStream(TrackCursor& at, std::int32_t count) const;

  /// The same for the tracks of the file.
  std::int32_t pass(TrackCursor& at, std::int32_t count) const;

 private:
  std::int32_t indexInGroup(TrackCursor at) const;

  FileStreams streams_;
};

}  // namespace kestrel
