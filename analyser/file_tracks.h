// The audio tracks of a file. The tracks of a stream share everything but a running index, so a
// stream stands for all of its tracks, and no cost depends on the value of a channelCount.
#pragma once

#include <cstddef>
#include <cstdint>

#include "analyser/file_streams.h"
#include "analyser/surround_labels.h"
#include "api/service_map_result.h"

namespace kestrel {

/// One track: its stream's place among the streams with tracks, and its place in that stream. At
/// first it is the first track of the file, or the end if there is none.
struct TrackCursor {
  std::size_t stream = 0;
  std::int32_t offset = 0;  // 0 .. channelCount - 1
};

class FileTracks {
 public:
  /// Keeps the streams that have tracks, gives streams of one track number what they share, and
  /// joins the groups of pair-coded streams. Raises std::bad_alloc.
  explicit FileTracks(FileStreams streams);

  bool atEnd(TrackCursor at) const { return at.stream == streams_.list.size(); }

  /// The stream of a track. Its labels are those of the first stream with its track number, its
  /// format keys those of the last.
  const FileStream& stream(TrackCursor at) const { return streams_.list[at.stream]; }

  /// What a result record says of a track.
  TrackSlot slot(TrackCursor at) const;

  /// kNoLabel too if the labels were not asked for.
  SurroundLabel label(TrackCursor at) const;

  /// The first track of the next stream.
  static TrackCursor nextStream(TrackCursor at) { return {at.stream + 1, 0}; }

  /// Tracks from the cursor to the end of its stream, at least 1.
  std::int32_t restOfStream(TrackCursor at) const { return stream(at).channelCount - at.offset; }

  /// Tracks from the cursor to the end of the file.
  std::int64_t countFrom(TrackCursor at) const;

  /// Moves over the next `count` tracks of the cursor's stream, or as many as it has left, and
  /// returns how many.
  std::int32_t passInStream(TrackCursor& at, std::int32_t count) const;

  /// The same for the tracks of the file.
  std::int32_t pass(TrackCursor& at, std::int32_t count) const;

 private:
  std::int32_t indexInGroup(TrackCursor at) const;

  FileStreams streams_;
};

}  // namespace kestrel
