#include "host/evidence/stream_ids.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <map>
#include <string_view>

#include "host/basics/text_parts.h"

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

using Number = std::int64_t;

// programme: [ "-" number ]
bool takeProgramme(std::string_view& text, std::string& programme) {
  const std::string_view whole = text;
  if (takeText(text, "-") && !takeNumber<Number>(text)) {
    return false;
  }
  programme = whole.substr(0, whole.size() - text.size());
  return true;
}

// channels: number [ " / " number ]
bool takeChannels(std::string_view& text, SplitId& id) {
  const auto channel = takeNumber<Number>(text);
  if (!channel) {
    return false;
  }
  id.channel = *channel;
  if (!takeText(text, " / ")) {
    return true;
  }
  id.partner = takeNumber<Number>(text);
  return id.partner.has_value();
}

// part: number | pair programme | "(" pair ")" programme
bool takePart(std::string_view& text, SplitId& id) {
  const bool isBracketed = takeText(text, "(");
  if (!takeChannels(text, id)) {
    return false;
  }
  if (!id.partner) {
    return !isBracketed;
  }
  return (!isBracketed || takeText(text, ")")) && takeProgramme(text, id.programme);
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

// id: number "-" part
std::optional<SplitId> parseSplitId(std::string_view id) {
  const auto track = takeNumber<Number>(id);
  if (!track || !takeText(id, "-")) {
    return std::nullopt;
  }
  SplitId result{*track, 0, std::nullopt, {}};
  if (!takePart(id, result) || !id.empty()) {
    return std::nullopt;
  }
  return result;
}

std::string channelId(const SplitId& id, bool besideOtherTracks) {
  const Number base = besideOtherTracks ? id.track * 100 : 0;
  if (!id.partner) {
    return fmt::format("{}", base + id.channel);
  }
  return fmt::format("{} / {}{}", base + id.channel, base + *id.partner, id.programme);
}

}  // namespace kestrel::host
