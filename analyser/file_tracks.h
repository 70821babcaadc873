// The audio tracks of a file. A stream's tracks always share everything but a running index, so
// they are kept as one run per stream: memory grows with the streams, never with a channelCount.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "analyser/scratch_array.h"
#include "api/audio_stream_info.h"

namespace kestrel {

/// What the analyser derives from one stream and the streams before it.
struct StreamTracks {
  std::int64_t trackNumber = 0;        // leading number of the stream's id
  std::int32_t firstStream = 0;        // index of the first stream with this track number
  std::int32_t lastStream = 0;         // and of the last one
  std::int32_t group = 0;              // the stream's group, or the one that it joined
  std::int32_t firstIndexInGroup = 0;  // of the first track; the others count up and wrap
};

/// One track: the stream that carries it and its place in that stream. A cursor never rests on a
/// stream without tracks.
struct TrackCursor {
  std::int32_t stream = 0;
  std::int32_t offset = 0;  // 0 .. channelCount - 1
};

/// The file's track total: the channels of ordinary streams, two for each pair of pair-coded ones.
/// Summed as unsigned 32-bit, wrapping.
std::uint32_t countFileTracks(std::span<const AudioStreamInfo> streams) noexcept;

class FileTracks {
 public:
  explicit FileTracks(std::span<const AudioStreamInfo> streams) : streams_(streams) {}

  /// Derives the tracks of every stream and joins the groups of pair-coded ones. Before it the list
  /// has no tracks to visit. Raises std::bad_alloc.
  void expand();

  TrackCursor begin() const { return skipEmpty({0, 0}); }
  bool atEnd(TrackCursor at) const { return at.stream == streamCount(); }

  /// The first track after those of the cursor's stream.
  TrackCursor nextStream(TrackCursor at) const { return skipEmpty({at.stream + 1, 0}); }

  /// The track `count` further on, or the end; count >= 0.
  TrackCursor advance(TrackCursor at, std::int32_t count) const {
    while (count > 0 && !atEnd(at)) {
      const std::int32_t step = std::min(count, restOfStream(at));
      count -= step;
      at.offset += step;
      if (at.offset == info(at).channelCount) at = nextStream(at);
    }
    return at;
  }

  /// Tracks from the cursor to the end of its stream, at least 1.
  std::int32_t restOfStream(TrackCursor at) const { return info(at).channelCount - at.offset; }

  const AudioStreamInfo& info(TrackCursor at) const { return streams_[index(at.stream)]; }
  const AudioStreamInfo& firstOfNumber(TrackCursor at) const {
    return streams_[index(tracks(at).firstStream)];
  }
  const AudioStreamInfo& lastOfNumber(TrackCursor at) const {
    return streams_[index(tracks(at).lastStream)];
  }
  const StreamTracks& tracks(TrackCursor at) const { return tracks_.records()[index(at.stream)]; }

  std::int32_t indexInGroup(TrackCursor at) const {
    return wrappingSum(tracks(at).firstIndexInGroup, at.offset);
  }

 private:
  static std::size_t index(std::int32_t stream) { return static_cast<std::size_t>(stream); }
  static std::int32_t wrappingSum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
  }

  std::int32_t streamCount() const { return static_cast<std::int32_t>(streams_.size()); }
  TrackCursor skipEmpty(TrackCursor at) const {
    while (!atEnd(at) && info(at).channelCount <= 0) ++at.stream;
    return at;
  }

  bool numberStreams();
  void joinGroups();
  void linkSameNumbers();

  std::span<const AudioStreamInfo> streams_;
  ScratchArray<StreamTracks, 32> tracks_;
};

}  // namespace kestrel
