// How streams become tracks: counting them, numbering them, joining the groups of pair-coded
// streams that carry one pair, and linking the streams that share a track number.
#include "analyser/file_tracks.h"

#include <algorithm>
#include <compare>
#include <limits>
#include <optional>
#include <utility>

#include "analyser/leading_number.h"

namespace kestrel {

namespace {

// Of pair-coded streams: whether it shares the one pair of all its like.
template <class Stream>
bool sharesPair(const Stream& stream) {
  return stream.isPairShared != 0 && !hasHyphen(stream);
}

template <class Stream>
bool hasTracks(const Stream& stream) {
  return stream.channelCount > 0;
}

template <class Stream>
void readFormatKeys(const Stream& stream, StreamTracks& tracks) {
  tracks.formatKey1 = stream.formatKey1;
  tracks.formatKey2 = stream.formatKey2;
  tracks.formatKey3 = stream.formatKey3;
}

// Sets each field in its place: a record that is made elsewhere and copied here has to wait until
// its small fields can be read again as parts of larger ones.
template <class Stream>
void readStream(const Stream& stream, std::int64_t number, std::size_t index,
                StreamTracks& tracks) {
  tracks.trackNumber = number;
  tracks.channelCount = stream.channelCount;
  tracks.sourceGroup = stream.group;
  tracks.group = stream.group;
  tracks.firstIndexInGroup = 0;
  tracks.stream = static_cast<std::int32_t>(index);
  tracks.labelStream = tracks.stream;
  readFormatKeys(stream, tracks);
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

// A stream with its number and its record, to be sorted by number and then by stream.
struct NumberedStream {
  std::int64_t number;
  std::int32_t stream;
  std::int32_t record;  // kNoRecord when it has no tracks

  auto operator<=>(const NumberedStream&) const = default;
};
constexpr std::int32_t kNoRecord = -1;

template <class Streams>
void listNumbers(const Streams& streams, std::span<NumberedStream> list) {
  std::int32_t records = 0;
  for (std::size_t i = 0; i < list.size(); ++i) {
    list[i].number = leadingNumber(idOf(streams[i]));
    list[i].stream = static_cast<std::int32_t>(i);
    list[i].record = hasTracks(streams[i]) ? records++ : kNoRecord;
  }
}

// Labels are those of the first stream of a number, format keys those of the last.
void linkStreams(StreamList list, std::span<const NumberedStream> sameNumber,
                 std::span<StreamTracks> records) {
  list.visit([=](const auto& streams) {
    const auto& last = streams[static_cast<std::size_t>(sameNumber.back().stream)];
    for (const NumberedStream& stream : sameNumber) {
      if (stream.record == kNoRecord) continue;
      StreamTracks& tracks = records[static_cast<std::size_t>(stream.record)];
      tracks.labelStream = sameNumber.front().stream;
      readFormatKeys(last, tracks);
    }
  });
}

}  // namespace

std::uint32_t countFileTracks(StreamList streams) noexcept {
  return streams.visit([](const auto& list) { return countTracks(list); });
}

void FileTracks::expand() {
  const bool numbersAscend = readStreams();
  if (!numbersAscend) linkSameNumbers();
  if (hasPairCoded_) joinGroups();
}

// Returns whether each stream's number is above the one before it, as in nearly all files: then no
// two share one.
bool FileTracks::readStreams() {
  const auto records = storage_.reset(streams_.size());
  std::size_t size = 0;
  bool ascend = true;
  streams_.visit([&](const auto& streams) {
    std::int64_t before = std::numeric_limits<std::int64_t>::min();
    for (std::size_t i = 0; i < streams.size(); ++i) {
      const auto& stream = streams[i];
      const std::int64_t number = leadingNumber(idOf(stream));
      ascend &= number > before;
      before = number;
      if (!hasTracks(stream)) continue;
      readStream(stream, number, i, records[size++]);
      hasPairCoded_ |= stream.isPairCoded != 0;
    }
  });
  setRecords(storage_.keep(size));
  return ascend;
}

// A pair-coded stream may continue the group of the track before it. Only its first track needs a
// decision: when that one joins, the rest join through it; when it does not, they see their own
// group in front of them and count on.
void FileTracks::joinGroups() {
  bool sharedPairStarted = false;  // never cleared: later sharers join whatever precedes them
  const StreamTracks* last = nullptr;
  for (StreamTracks& own : storage_.records()) {
    const StreamTracks* const before = std::exchange(last, &own);
    if (own.isPairCoded != 1) continue;
    if (before == nullptr) {
      sharedPairStarted = true;
      continue;
    }
    const bool joins = own.sharesPair
                           ? sharedPairStarted
                           : own.trackNumber == before->trackNumber && own.group != before->group;
    if (own.sharesPair) sharedPairStarted = true;
    if (!joins) continue;
    own.group = before->group;
    own.firstIndexInGroup = wrappingSum(before->firstIndexInGroup, before->channelCount);
  }
}

// Streams of one pair repeat their number one after the other; then their own order serves.
void FileTracks::linkSameNumbers() {
  ScratchArray<NumberedStream, 32> storage;
  const auto order = storage.reset(streams_.size());
  streams_.visit([&](const auto& streams) { listNumbers(streams, order); });
  if (!std::ranges::is_sorted(order)) std::ranges::sort(order);
  for (auto begin = order.begin(); begin != order.end();) {
    const auto end = std::find_if(begin, order.end(), [&](const NumberedStream& stream) {
      return stream.number != begin->number;
    });
    linkStreams(streams_, {begin, end}, storage_.records());
    begin = end;
  }
}

}  // namespace kestrel
