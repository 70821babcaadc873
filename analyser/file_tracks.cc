// How streams become tracks: counting them, numbering them, joining the groups of pair-coded
// streams that carry one pair, and linking the streams that share a track number.
#include "analyser/file_tracks.h"

#include <functional>
#include <numeric>
#include <optional>

#include "analyser/leading_number.h"

namespace kestrel {

namespace {

// Of pair-coded streams: whether it shares the one pair of all its like.
template <class Stream>
bool sharesPair(const Stream& stream) {
  return stream.isPairShared != 0 && !hasHyphen(stream);
}

// Sets each field in its place: a record that is made elsewhere and copied here has to wait until
// its small fields can be read again as parts of larger ones.
template <class Stream>
void readStream(const Stream& stream, std::int32_t index, StreamTracks& tracks) {
  tracks.trackNumber = leadingNumber(idOf(stream));
  tracks.channelCount = stream.channelCount;
  tracks.sourceGroup = stream.group;
  tracks.group = stream.group;
  tracks.firstIndexInGroup = 0;
  tracks.firstStream = index;
  tracks.lastStream = index;
  tracks.formatKey1 = stream.formatKey1;
  tracks.formatKey2 = stream.formatKey2;
  tracks.formatKey3 = stream.formatKey3;
  tracks.isPairCoded = stream.isPairCoded;
  tracks.sharesPair = sharesPair(stream);
}

template <class Streams>
std::uint32_t countTracks(const Streams& streams) {
  std::uint32_t sum = 0;
  std::optional<std::int32_t> lastPair;  // none at first, which no number equals
  bool sharedPairCounted = false;
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const auto& stream = streams[i];
    if (stream.isPairCoded == 0) {
      sum += static_cast<std::uint32_t>(stream.channelCount);
      continue;
    }
    const auto number = static_cast<std::int32_t>(leadingNumber(idOf(stream)));
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

std::uint32_t countFileTracks(StreamList streams) noexcept {
  return streams.visit([](const auto& list) { return countTracks(list); });
}

void FileTracks::expand() {
  readStreams();
  linkSameNumbers();
  if (hasPairCoded_) joinGroups();
}

void FileTracks::readStreams() {
  streams_.visit([this](const auto& streams) {
    const auto tracks = tracks_.reset(streams.size());
    for (std::size_t i = 0; i < tracks.size(); ++i) {
      readStream(streams[i], static_cast<std::int32_t>(i), tracks[i]);
      if (tracks[i].isPairCoded != 0) hasPairCoded_ = true;
    }
  });
}

// A pair-coded stream may continue the group of the track before it. Only its first track needs a
// decision: when that one joins, the rest join through it; when it does not, they see their own
// group in front of them and count on.
void FileTracks::joinGroups() {
  bool sharedPairStarted = false;  // never cleared: later sharers join whatever precedes them
  TrackCursor previous = {streamCount(), 0};
  for (TrackCursor at = begin(); !atEnd(at); previous = at, at = nextStream(at)) {
    if (tracks(at).isPairCoded != 1) continue;
    if (atEnd(previous)) {
      sharedPairStarted = true;
      continue;
    }
    const StreamTracks& before = tracks(previous);
    StreamTracks& own = tracks_.records()[index(at.stream)];
    const bool joins = own.sharesPair
                           ? sharedPairStarted
                           : own.trackNumber == before.trackNumber && own.group != before.group;
    if (own.sharesPair) sharedPairStarted = true;
    if (!joins) continue;
    own.group = before.group;
    own.firstIndexInGroup = wrappingSum(before.firstIndexInGroup, before.channelCount);
  }
}

// Files list their streams by ascending track number as a rule; then no two share one. Streams of
// one pair repeat their number one after the other; then their own order serves.
void FileTracks::linkSameNumbers() {
  const auto tracks = tracks_.records();
  const auto isBelow = [](const StreamTracks& a, const StreamTracks& b) {
    return a.trackNumber < b.trackNumber;
  };
  if (std::ranges::adjacent_find(tracks, std::not_fn(isBelow)) == tracks.end()) return;
  ScratchArray<std::int32_t, 32> orderStorage;
  const auto order = orderStorage.reset(tracks.size());
  std::iota(order.begin(), order.end(), 0);
  const auto numberOf = [&](std::int32_t stream) { return tracks[index(stream)].trackNumber; };
  if (!std::ranges::is_sorted(order, {}, numberOf))
    std::ranges::sort(order, {},
                      [&](std::int32_t stream) { return std::pair(numberOf(stream), stream); });
  linkRuns(tracks, order);
}

}  // namespace kestrel
