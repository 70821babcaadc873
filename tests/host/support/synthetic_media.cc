#include "tests/host/support/synthetic_media.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/basics/text_parts.h"
#include "host/evidence/stream_mapping.h"
#include "host/evidence/track_map.h"

namespace kestrel::host {
namespace {

class ReadyReader : public MediaReader {
 public:
  explicit ReadyReader(RawMedia media) : media_(std::move(media)) {}
  ReadMedia read(const std::filesystem::path& /*file*/) const override {
    return {media_, "mediainfo-json", ""};
  }

 private:
  RawMedia media_;
};

RawAudioStream programme(int track, int number, int channels) {
  RawAudioStream raw = plainStream(fmt::format("{} / {}-{}", track, track + 1, number), channels);
  raw.format = "Dolby E";
  raw.muxingMode = "SMPTE ST 337";
  raw.bitDepth = "20";
  return raw;
}

}  // namespace

RawAudioStream plainStream(const std::string& id, int channels, const std::string& labels) {
  RawAudioStream raw;
  raw.id = id;
  raw.format = "PCM";
  raw.channels = std::to_string(channels);
  raw.channelLayout = labels;
  raw.samplingRate = "48000";
  raw.bitDepth = "24";
  return raw;
}

RawMedia mediaOf(std::vector<RawAudioStream> streams) {
  return {"MXF", "", "", std::move(streams)};
}

RawMedia monoTracks(const std::string& labels) {
  std::vector<RawAudioStream> streams;
  int track = 1;
  for (const std::string_view label : splitAtBlanks(labels)) {
    if (label == "E") {
      streams.push_back(programme(track, 1, 6));
      streams.push_back(programme(track, 2, 2));
      track += 2;
    } else {
      streams.push_back(
          plainStream(std::to_string(track++), 1, label == "-" ? "" : std::string(label)));
    }
  }
  return mediaOf(std::move(streams));
}

TrackMap trackMapOf(const RawMedia& media) { return trackMap(mapMedia(media)); }

FileResult inspectMedia(const RawMedia& media, InspectOptions options) {
  options.reader = std::make_shared<ReadyReader>(media);
  return inspectFile("made-up.mxf", options);
}

std::string findingIds(const FileResult& result, Severity severity) {
  std::string ids;
  for (const Finding& finding : result.judgement.findings) {
    if (finding.severity == severity) {
      ids += (ids.empty() ? "" : " ") + finding.id;
    }
  }
  return ids;
}

std::string sentenceOf(const FileResult& result, const std::string& id) {
  const auto found = std::ranges::find(result.judgement.findings, id, &Finding::id);
  return found == result.judgement.findings.end() ? "none" : found->sentence;
}

std::string tracksOfFinding(const FileResult& result, const std::string& id) {
  std::string text;
  for (const Finding& finding : result.judgement.findings) {
    if (finding.id == id) {
      text += fmt::format("{}{} {}", text.empty() ? "" : "; ", id, fmt::join(finding.tracks, " "));
    }
  }
  return text;
}

}  // namespace kestrel::host
