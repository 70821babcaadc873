#include "analyser/file_tracks.h"

#include <algorithm>
#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace kestrel {

namespace {

bool numbersAscend(std::span<const FileStream> streams) {
  return std::ranges::adjacent_find(streams, std::ranges::greater_equal{},
                                    &FileStream::trackNumber) == streams.end();
}

std::pair<std::int64_t, std::int32_t> numberAndIndex(const FileStream& stream) {
  return {stream.trackNumber, stream.index};
}

// Gives streams with the same track number the labels of the first and the format keys of the last.
void linkSameNumbers(std::span<FileStream> streams) {
  if (numbersAscend(streams)) return;  // as in nearly all files: no two numbers are the same
  std::ranges::sort(streams, {}, numberAndIndex);
  for (auto first = streams.begin(); first != streams.end();) {
    const auto end = std::find_if(first, streams.end(), [&](const FileStream& stream) {
      return stream.trackNumber != first->trackNumber;
    });
    const LabelRange labels = first->labels;
    const FormatKeys formatKeys = std::prev(end)->formatKeys;
    for (; first != end; ++first) {
      first->labels = labels;
      first->formatKeys = formatKeys;
    }
  }
  std::ranges::sort(streams, {}, &FileStream::index);
}

bool continuesPair(const FileStream& stream, const FileStream& last) {
  return stream.trackNumber == last.trackNumber && stream.group != last.group;
}

// A pair-coded stream may continue the group of the track before it. Only its first track needs a
// decision: if that track joins, the others follow it; if not, all keep their own group.
void joinGroups(std::span<FileStream> streams) {
  bool sharedPairStarted = false;  // never reset: later sharers join whatever precedes them
  const FileStream* before = nullptr;
  for (FileStream& stream : streams) {
    const FileStream* const last = std::exchange(before, &stream);
    if (stream.isPairCoded != 1) continue;
    if (last == nullptr) {
      sharedPairStarted = true;
      continue;
    }
    const bool joins = stream.sharesPair ? sharedPairStarted : continuesPair(stream, *last);
    if (stream.sharesPair) sharedPairStarted = true;
    if (!joins) continue;
    stream.group = last->group;
    stream.firstIndexInGroup = wrappingSum(last->firstIndexInGroup, last->channelCount);
  }
}

}  // namespace

FileTracks::FileTracks(FileStreams streams) : streams_(std::move(streams)) {
  linkSameNumbers(streams_.list);
  std::erase_if(streams_.list, [](const FileStream& stream) { return stream.channelCount <= 0; });
  joinGroups(streams_.list);
}

SurroundLabel FileTracks::label(TrackCursor at) const {
  const LabelRange& labels = stream(at).labels;
  const std::int32_t index = indexInGroup(at);  // below 0 if it has wrapped
  if (index < 0 || index >= labels.count) return kNoLabel;
  return streams_.labels[labels.begin + static_cast<std::size_t>(index)];
}

std::int64_t FileTracks::countFrom(TrackCursor at) const {
  std::int64_t count = 0;
  for (; !atEnd(at); at = nextStream(at)) count += restOfStream(at);
  return count;
}

}  // namespace kestrel
