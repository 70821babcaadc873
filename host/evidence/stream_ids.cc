#include "host/evidence/stream_ids.h"

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "host/basics/text_parts.h"
#include "host/evidence/split_id.h"

namespace kestrel::host {
namespace {

bool isSplit(const RawAudioStream& stream) { return stream.muxingMode.starts_with("Multiple"); }

std::int64_t trackOf(const IdentifiedStream& stream) {
  return leadingNumber<std::int64_t>(stream.shownId).value_or(0);
}

std::vector<IdentifiedStream> numberStreams(const RawMedia& media) {
  std::vector<IdentifiedStream> streams;
  for (const RawAudioStream& raw : media.audioStreams) {
    const std::string id = raw.id.empty() ? std::to_string(streams.size() + 1) : raw.id;
    streams.push_back({raw, id, id, std::nullopt});
  }
  return streams;
}

// The records of one track may stand apart: 3-1, 3-2, 4, 3-3, 3-4. The tracks keep the order of
// their first records.
void bringTracksTogether(std::vector<IdentifiedStream>& streams) {
  std::map<std::int64_t, std::size_t> rank;
  for (const IdentifiedStream& stream : streams) {
    rank.try_emplace(trackOf(stream), rank.size());
  }
  std::ranges::stable_sort(
      streams, {}, [&](const IdentifiedStream& stream) { return rank.at(trackOf(stream)); });
}

bool hasSeveralTracks(const std::vector<IdentifiedStream>& streams) {
  return std::ranges::any_of(streams, [&](const IdentifiedStream& stream) {
    return trackOf(stream) != trackOf(streams.front());
  });
}

// The one track of a Wave file has no number, so its parts are numbered by channel as they come.
void numberSplitParts(std::vector<IdentifiedStream>& streams, bool isWave) {
  const bool besideOtherTracks = hasSeveralTracks(streams);
  for (IdentifiedStream& stream : streams) {
    if (!isSplit(stream.raw)) {
      continue;
    }
    if (const auto part = parseSplitId(stream.shownId)) {
      stream.streamId = channelId(*part, besideOtherTracks);
      stream.splitChannel = part->channel;
    } else if (isWave) {
      stream.splitChannel = trackOf(stream);
    }
  }
}

}  // namespace

bool isWaveLike(const std::string& container) {
  constexpr std::array<std::string_view, 4> kWaveLike = {"Wave", "Wave64", "AIFF", "CAF"};
  return std::ranges::find(kWaveLike, container) != kWaveLike.end();
}

std::vector<IdentifiedStream> identifyStreams(const RawMedia& media) {
  std::vector<IdentifiedStream> streams = numberStreams(media);
  const bool isWave = isWaveLike(media.container);
  if (!isWave || std::ranges::any_of(media.audioStreams, isSplit)) {
    bringTracksTogether(streams);
  }
  numberSplitParts(streams, isWave);
  return streams;
}

}  // namespace kestrel::host
