// The audio tracks of a file. A stream's tracks always share everything but a running index, so
// they are kept as one record per stream: memory grows with the streams, never with a channelCount.
// A stream without tracks has none; it may only lend its labels or format keys to its track number.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>

#include "analyser/scratch_array.h"
#include "analyser/stream_list.h"

namespace kestrel {

/// What the analyser keeps of one stream with tracks: its numbers, and what they and the other
/// streams make of its tracks. The texts are not needed any more, but for labels.
struct StreamTracks {
  std::int64_t trackNumber = 0;        // leading number of the stream's id
  std::int32_t channelCount = 0;       // tracks, at least 1
  std::int32_t sourceGroup = 0;        // the stream's own group
  std::int32_t group = 0;              // that, or the one that the stream joined
  std::int32_t firstIndexInGroup = 0;  // of the first track; the others count up and wrap
  std::int32_t stream = 0;             // index of the stream
  std::int32_t labelStream = 0;        // index of the first stream with this track number
  std::int32_t formatKey1 = 0;         // keys of the last stream with this track number
  std::int32_t formatKey2 = 0;
  std::int32_t formatKey3 = 0;
  std::uint8_t isPairCoded = 0;
  bool sharesPair = false;  // pair-coded or not: marked to share the one pair of all its like
};

/// One track: its stream's place among the streams with tracks, and its place in that stream. At
/// first it is the first track of the file, or the end when there is none.
struct TrackCursor {
  std::int32_t record = 0;
  std::int32_t offset = 0;  // 0 .. channelCount - 1

  /// The first track after those of this one's stream.
  TrackCursor nextStream() const { return {record + 1, 0}; }
};

/// Tracks to walk over; their records stand elsewhere.
class TrackList {
 public:
  TrackList() = default;
  explicit TrackList(std::span<const StreamTracks> records) : records_(records) {}

  /// One record per stream with tracks, in the order of the streams.
  std::span<const StreamTracks> records() const { return records_; }

  bool atEnd(TrackCursor at) const { return index(at) == records_.size(); }

  /// Moves the cursor over the next `count` tracks, or as many as there are, and returns how many.
  std::int32_t pass(TrackCursor& at, std::int32_t count) const {
    std::int32_t passed = 0;
    while (passed < count && !atEnd(at)) {
      const std::int32_t step = std::min(count - passed, restOfStream(at));
      passed += step;
      at = behind(at, step);
    }
    return passed;
  }

  /// The track `count` further on, or the end; count >= 0.
  TrackCursor advance(TrackCursor at, std::int32_t count) const {
    pass(at, count);
    return at;
  }

  /// The track behind the next `count` tracks of the cursor's stream, which has as many.
  TrackCursor behind(TrackCursor at, std::int32_t count) const {
    at.offset += count;
    return at.offset == tracks(at).channelCount ? at.nextStream() : at;
  }

  /// Tracks from the cursor to the end of its stream, at least 1.
  std::int32_t restOfStream(TrackCursor at) const { return tracks(at).channelCount - at.offset; }

  const StreamTracks& tracks(TrackCursor at) const { return records_[index(at)]; }

  std::int32_t indexInGroup(TrackCursor at) const {
    return wrappingSum(tracks(at).firstIndexInGroup, at.offset);
  }

 protected:
  void setRecords(std::span<const StreamTracks> records) { records_ = records; }

  static std::int32_t wrappingSum(std::int32_t a, std::int32_t b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
  }

 private:
  static std::size_t index(TrackCursor at) { return static_cast<std::size_t>(at.record); }

  std::span<const StreamTracks> records_;
};

/// The file's track total: the channels of ordinary streams, two for each pair of pair-coded ones.
/// Summed as unsigned 32-bit, wrapping.
std::uint32_t countFileTracks(StreamList streams) noexcept;

class FileTracks : public TrackList {
 public:
  explicit FileTracks(StreamList streams) : streams_(streams) {}

  /// Derives the tracks of every stream and joins the groups of pair-coded ones. Before it the list
  /// has no tracks to visit. Raises std::bad_alloc.
  void expand();

  StreamList streams() const { return streams_; }

  LabelText labels(TrackCursor at) const {
    return streams_.labels(static_cast<std::size_t>(tracks(at).labelStream));
  }

 private:
  bool readStreams();
  void joinGroups();
  void linkSameNumbers();

  StreamList streams_;
  ScratchArray<StreamTracks, 32> storage_;
  bool hasPairCoded_ = false;
};

}  // namespace kestrel
