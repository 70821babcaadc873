#include "host/evidence/stream_mapping.h"

#include <fmt/format.h>

#include <string_view>

#include "host/basics/text_parts.h"
#include "host/basics/utf8.h"
#include "host/evidence/stream_ids.h"
#include "host/evidence/track_labels.h"

namespace kestrel::host {
namespace {

// The muxing mode decides before the format: the reader may call the last programme of a pair PCM.
bool isPairCoded(const RawAudioStream& raw) {
  return raw.muxingMode.find("SMPTE ST 337") != std::string::npos || raw.format == "Dolby E" ||
         raw.format == "Dolby ED2";
}

// In a two-channel Wave file the programmes of the one pair are numbered "1", "2", ... In other
// containers such numbers are tracks, hence pairs of their own.
bool isPairShared(const std::string& container, const std::string& streamId) {
  return isWaveLike(container) && streamId.find_first_of("-/") == std::string::npos;
}

std::int32_t numberOr(std::int32_t fallback, const std::string& text) {
  return leadingNumber<std::int32_t>(text).value_or(fallback);
}

// FNV-1a: the same text gives the same key in every run and on every platform.
std::int32_t stableHash(std::string_view text) {
  std::uint32_t hash = 2166136261U;
  for (const char byte : text) {
    hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
  }
  return static_cast<std::int32_t>(hash);
}

std::int32_t channelCount(const IdentifiedStream& stream, std::vector<MappingWarning>& warnings) {
  if (const auto count = leadingNumber<std::int32_t>(stream.raw.channels)) {
    return *count;
  }
  if (isPairCoded(stream.raw)) {
    return 2;
  }
  warnings.push_back({"channel-count-unknown",
                      fmt::format("The number of channels of stream {} is not known; it is taken "
                                  "to have none.",
                                  printable(stream.shownId))});
  return 0;
}

AudioStreamInfo streamInfo(const IdentifiedStream& stream, const std::string& container,
                           MappedMedia& mapped) {
  const bool pairCoded = isPairCoded(stream.raw);
  AudioStreamInfo info;
  info.streamId = wideFromUtf8(stream.streamId).value_or(L"");
  info.group = static_cast<std::int32_t>(mapped.streams.size());
  info.channelCount = channelCount(stream, mapped.warnings);
  info.formatKey1 = numberOr(0, stream.raw.samplingRate);
  info.formatKey2 = numberOr(0, stream.raw.bitDepth);
  info.formatKey3 = stableHash(stream.raw.format);
  info.isPairCoded = pairCoded ? 1 : 0;
  info.isPairShared = pairCoded && isPairShared(container, stream.streamId) ? 1 : 0;
  return info;
}

void setLabels(const std::vector<IdentifiedStream>& streams, std::vector<AudioStreamInfo>& infos) {
  std::vector<TrackLabels> labels;
  std::vector<bool> pairCoded;
  for (std::size_t index = 0; index < streams.size(); ++index) {
    pairCoded.push_back(infos[index].isPairCoded != 0);
    labels.push_back(labelsInFile({streams[index].raw, pairCoded.back(),
                                   streams[index].splitChannel, infos[index].channelCount}));
  }
  readBackAsSurround(labels, pairCoded);
  for (std::size_t index = 0; index < infos.size(); ++index) {
    const std::string joined = fmt::format("{}", fmt::join(labels[index], " "));
    infos[index].trackLabels = wideFromUtf8(joined).value_or(L"");
  }
}

}  // namespace

MappedMedia mapMedia(const RawMedia& media) {
  MappedMedia mapped{media.container, media.declaredLayout, {}, {}, {}};
  if (media.isTruncated == "Yes") {
    mapped.warnings.push_back(
        {"truncated",
         "The file is truncated: its end is missing. It was examined as far as it goes."});
  }
  const std::vector<IdentifiedStream> streams = identifyStreams(media);
  for (const IdentifiedStream& stream : streams) {
    mapped.streams.push_back(streamInfo(stream, media.container, mapped));
    mapped.shown.push_back({stream.shownId, stream.raw.format, stream.splitChannel});
  }
  setLabels(streams, mapped.streams);
  return mapped;
}

}  // namespace kestrel::host
