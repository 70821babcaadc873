#include "tests/exhaustive/word_rule.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

namespace kestrel::test {
namespace {

using plain::Outcome;
using plain::PlainResult;

using Streams = std::vector<AudioStreamInfo>;

struct WordTrack {
  TrackSlot slot;
  std::size_t stream = 0;
};

using WordTracks = std::vector<WordTrack>;

struct Word {
  std::string letters;
  std::vector<std::size_t> trackCounts;  ///< of each letter
  WordTracks tracks;
};

// --- The word of a file

std::int64_t numberOf(const AudioStreamInfo& stream) { return std::stoi(stream.streamId); }

bool isShared(const AudioStreamInfo& stream) {
  return stream.isPairCoded == 1 && stream.isPairShared == 1;
}

// All shared streams are one pair, neighbours of one number among the others are one pair.
std::size_t countedTracks(const Streams& streams) {
  std::size_t plain = 0;
  std::vector<std::int64_t> pairs;
  for (const AudioStreamInfo& stream : streams) {
    if (stream.isPairCoded == 0) plain += static_cast<std::size_t>(stream.channelCount);
    if (stream.isPairCoded == 1 && !isShared(stream)) pairs.push_back(numberOf(stream));
  }
  const auto end = std::unique(pairs.begin(), pairs.end());
  const bool hasShared = std::any_of(streams.begin(), streams.end(), isShared);
  return plain + 2 * static_cast<std::size_t>(end - pairs.begin()) + (hasShared ? 2 : 0);
}

// A coded stream joins the track before it: one of the same number but another group; any one at
// all when the stream is shared and the file had a shared one earlier.
bool joins(const Streams& streams, std::size_t at, const Word& word) {
  if (word.tracks.empty()) return false;
  const auto here = streams.begin() + static_cast<std::ptrdiff_t>(at);
  if (isShared(*here)) return std::any_of(streams.begin(), here, isShared);
  const TrackSlot& before = word.tracks.back().slot;
  return before.trackNumber == numberOf(*here) && before.group != here->group;
}

// The index runs on from a stream to one that joins it.
TrackSlot firstSlotOf(const Streams& streams, std::size_t at, const Word& word) {
  const AudioStreamInfo& stream = streams[at];
  TrackSlot slot{numberOf(stream), stream.group, stream.group, 0};
  if (stream.isPairCoded == 0 || !joins(streams, at, word)) return slot;
  slot.group = word.tracks.back().slot.group;
  slot.indexInGroup = word.tracks.back().slot.indexInGroup + 1;
  return slot;
}

void appendLetter(char letter, std::size_t tracks, Word& word) {
  word.letters += letter;
  word.trackCounts.push_back(tracks);
}

void appendLetters(const AudioStreamInfo& stream, const TrackSlot& slot, Word& word) {
  const auto tracks = static_cast<std::size_t>(stream.channelCount);
  const bool goesOn = word.letters.ends_with('E') && word.tracks.back().slot.group == slot.group;
  if (stream.isPairCoded == 0) {
    for (std::size_t i = 0; i < tracks; ++i) appendLetter('p', 1, word);
  } else if (goesOn) {
    word.trackCounts.back() += tracks;
  } else {
    appendLetter('E', tracks, word);
  }
}

Word wordOf(const Streams& streams) {
  Word word;
  word.trackCounts.reserve(2 * streams.size());
  word.tracks.reserve(2 * streams.size());
  for (std::size_t at = 0; at < streams.size(); ++at) {
    TrackSlot slot = firstSlotOf(streams, at, word);
    appendLetters(streams[at], slot, word);
    for (std::int32_t i = 0; i < streams[at].channelCount; ++i, ++slot.indexInGroup) {
      word.tracks.push_back({slot, at});
    }
  }
  return word;
}

std::string lettersOf(const Item& item) {
  std::string letters;
  for (const ItemService& service : item.services) {
    letters += service.isCoded ? "E" : std::string(service.trackCount, 'p');
  }
  return letters;
}

// --- The records of the services

bool isSurroundSet(std::vector<std::wstring> labels) {
  static const std::vector<std::wstring> kSorted = {L"C", L"L", L"LFE", L"Ls", L"R", L"Rs"};
  std::sort(labels.begin(), labels.end());
  return labels == kSorted;
}

std::wstring labelOf(const WordTrack& track, const Carrier& carrier) {
  const std::vector<std::wstring> labels = labelsOf(carrier.streams[track.stream]);
  const auto at = static_cast<std::size_t>(track.slot.indexInGroup);
  return at < labels.size() ? labels[at] : L"";
}

std::wstring surroundLabel(const WordTracks& tracks, const Carrier& carrier) {
  if (!carrier.surroundCheck) return carrier.order;
  AudioStreamInfo joined;
  std::vector<std::wstring> labels;
  for (const WordTrack& track : tracks) labels.push_back(labelOf(track, carrier));
  setLabels(joined, labels);
  return isSurroundSet(labels) ? joined.trackLabels : carrier.order;
}

ServiceMapResult& appendRecord(const WordTracks& tracks, const Carrier& carrier,
                               PlainResult& result) {
  ServiceMapResult& record = result.results.emplace_back();
  for (std::size_t i = 0; i < tracks.size(); ++i) record.slots[i] = tracks[i].slot;
  record.trackCount = static_cast<std::int32_t>(tracks.size());
  record.reported = 1;
  record.requested = carrier.reportAll ? 1 : 0;
  return record;
}

// One record for each stretch of a run whose streams came with one group.
void appendCodedRecords(const WordTracks& run, const Carrier& carrier, PlainResult& result) {
  WordTracks stretch;
  for (std::size_t i = 0; i < run.size(); ++i) {
    stretch.push_back(run[i]);
    const bool goesOn =
        i + 1 < run.size() && run[i + 1].slot.sourceGroup == run[i].slot.sourceGroup;
    if (goesOn) continue;
    appendRecord(stretch, carrier, result).isEmca = 1;
    stretch.clear();
  }
}

bool haveOneFormat(const WordTracks& tracks, const Carrier& carrier) {
  const auto formatOf = [&carrier](const WordTrack& track) {
    const AudioStreamInfo& stream = carrier.streams[track.stream];
    return std::tie(stream.formatKey1, stream.formatKey2, stream.formatKey3);
  };
  return std::all_of(tracks.begin(), tracks.end(), [&](const WordTrack& track) {
    return formatOf(track) == formatOf(tracks[0]);
  });
}

PlainResult handOut(const Item& item, const Carrier& carrier, const Word& word) {
  PlainResult result{Outcome::kFilled, {}};
  result.results.reserve(word.letters.size());
  auto letter = word.trackCounts.begin();
  auto next = word.tracks.begin();
  for (const ItemService& service : item.services) {
    const std::size_t letters = service.isCoded ? 1 : service.trackCount;
    const std::size_t count = service.isCoded ? *letter : service.trackCount;
    const WordTracks tracks(next, next + static_cast<std::ptrdiff_t>(count));
    letter += static_cast<std::ptrdiff_t>(letters);
    next += static_cast<std::ptrdiff_t>(count);
    if (service.isCoded) {
      appendCodedRecords(tracks, carrier, result);
      continue;
    }
    if (!haveOneFormat(tracks, carrier)) return {Outcome::kEmptied, {}};
    ServiceMapResult& record = appendRecord(tracks, carrier, result);
    if (service.type == k51Mix) record.label = surroundLabel(tracks, carrier);
  }
  return result;
}

}  // namespace

PlainResult predict(const Item& item, const Carrier& carrier) {
  if (countedTracks(carrier.streams) != item.trackCount) return {Outcome::kUntouched, {}};
  const Word word = wordOf(carrier.streams);
  if (!word.letters.starts_with(lettersOf(item))) return {Outcome::kUntouched, {}};
  return handOut(item, carrier, word);
}

}  // namespace kestrel::test
