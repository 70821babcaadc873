// How streams become tracks: counting them, numbering them, joining the groups of pair-coded
// streams that carry one pair, and linking the streams that share a track number.
#include "analyser/file_tracks.h"

#include <numeric>
#include <optional>

#include "analyser/leading_number.h"

namespace kestrel {

namespace {

bool hasHyphen(const AudioStreamInfo& stream) {
  return stream.streamId.find(L'-') != std::wstring::npos;
}

// A pair-coded stream that shares the one pair of all its like.
bool sharesPair(const AudioStreamInfo& stream) {
  return stream.isPairShared != 0 && !hasHyphen(stream);
}

// Links the members of each run of equal track numbers in `order`, which lists the streams by track
// number and then by index.
void linkRuns(std::span<StreamTracks> streams, std::span<const std::int32_t> order) {
  const auto at = [&](std::size_t i) -> StreamTracks& {
    return streams[static_cast<std::size_t>(order[i])];
  };
  for (std::size_t begin = 0, end = 0; begin < order.size(); begin = end) {
    while (end < order.size() && at(end).trackNumber == at(begin).trackNumber) ++end;
    for (std::size_t i = begin; i < end; ++i) {
      at(i).firstStream = order[begin];
      at(i).lastStream = order[end - 1];
    }
  }
}

}  // namespace

std::uint32_t countFileTracks(std::span<const AudioStreamInfo> streams) noexcept {
  std::uint32_t sum = 0;
  std::optional<std::int32_t> lastPair;  // none at first, which no number equals
  bool sharedPairCounted = false;
  for (const AudioStreamInfo& stream : streams) {
    if (stream.isPairCoded == 0) {
      sum += static_cast<std::uint32_t>(stream.channelCount);
      continue;
    }
    const auto number = static_cast<std::int32_t>(leadingNumber(stream.streamId));
    if (sharesPair(stream)) {
      if (!sharedPairCounted) sum += 2;
      sharedPairCounted = true;
    } else if (number != lastPair) {
      sum += 2;
    }
    lastPair = number;
  }
  return sum;
}

void FileTracks::expand() {
  tracks_.reset(streams_.size());
  // Files list their streams by ascending track number as a rule; then no two share one.
  if (!numberStreams()) linkSameNumbers();
  joinGroups();
}

// Returns whether each number is greater than the one before it.
bool FileTracks::numberStreams() {
  const auto tracks = tracks_.records();
  bool ascending = true;
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    StreamTracks& own = tracks[i];
    own = {};
    own.trackNumber = leadingNumber(streams_[i].streamId);
    own.group = streams_[i].group;
    own.firstStream = own.lastStream = static_cast<std::int32_t>(i);
    if (i > 0 && own.trackNumber <= tracks[i - 1].trackNumber) ascending = false;
  }
  return ascending;
}

// A pair-coded stream may continue the group of the track before it. Only its first track needs a
// decision: when that one joins, the rest join through it; when it does not, they see their own
// group in front of them and count on.
void FileTracks::joinGroups() {
  bool sharedPairStarted = false;  // never cleared: later sharers join whatever precedes them
  TrackCursor previous = {streamCount(), 0};
  for (TrackCursor at = begin(); !atEnd(at); previous = at, at = nextStream(at)) {
    if (info(at).isPairCoded != 1) continue;
    if (atEnd(previous)) {
      sharedPairStarted = true;
      continue;
    }
    const StreamTracks& before = tracks(previous);
    StreamTracks& own = tracks_.records()[index(at.stream)];
    const bool shares = sharesPair(info(at));
    const bool joins = shares ? sharedPairStarted
                              : own.trackNumber == before.trackNumber && own.group != before.group;
    if (shares) sharedPairStarted = true;
    if (!joins) continue;
    own.group = before.group;
    own.firstIndexInGroup = wrappingSum(before.firstIndexInGroup, info(previous).channelCount);
  }
}

// Streams of one pair repeat their number one after the other; then their own order serves.
void FileTracks::linkSameNumbers() {
  const auto tracks = tracks_.records();
  ScratchArray<std::int32_t, 32> orderStorage;
  orderStorage.reset(tracks.size());
  const auto order = orderStorage.records();
  std::iota(order.begin(), order.end(), 0);
  const auto numberOf = [&](std::int32_t stream) { return tracks[index(stream)].trackNumber; };
  if (!std::ranges::is_sorted(order, {}, numberOf))
    std::ranges::sort(order, {},
                      [&](std::int32_t stream) { return std::pair(numberOf(stream), stream); });
  linkRuns(tracks, order);
}

}  // namespace kestrel
