// The host on what mediainfo says about files, any text: it is refused, or each file in it is
// examined with a verdict that is the plain form's, and written in every format.
//
//   input = flags "|" layout "\n" json
//   flags = any of "a" report all, "l" no look at labels, "s" strict, "h" as a page too
#include <algorithm>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/call_text.h"
#include "fuzz/disagreement.h"
#include "fuzz/harness.h"
#include "fuzz/host_text.h"
#include "fuzz/text_fields.h"
#include "host/basics/file_names.h"
#include "host/basics/usage_error.h"
#include "host/evidence/stream_mapping.h"
#include "host/judging/expectation.h"
#include "host/judging/inspect_file.h"
#include "host/reading/media_facts.h"
#include "host/reading/mediainfo_json.h"
#include "host/reporting/html_page.h"
#include "host/reporting/result_json.h"
#include "host/reporting/text_report.h"

#if !defined(_WIN32)
#include "host/reading/reader_protocol.h"
#endif

namespace kestrel::fuzz {
namespace {

using host::FileResult;
using host::InspectOptions;
using host::NamedMedia;
using host::RawAudioStream;
using host::RawMedia;
using Json = nlohmann::ordered_json;

constexpr std::size_t kMostFiles = 4;

class FixedReader : public host::MediaReader {
 public:
  explicit FixedReader(RawMedia media) : media_(std::move(media)) {}

  host::ReadMedia read(const std::filesystem::path& /*file*/) const override {
    return {media_, "mediainfo-json", ""};
  }

 private:
  RawMedia media_;
};

// --- Ways of writing and reading that give back the same

Json jsonOf(const RawAudioStream& stream) {
  return {{"@type", "Audio"},
          {"ID", stream.id},
          {"Format", stream.format},
          {"MuxingMode", stream.muxingMode},
          {"Channels", stream.channels},
          {"ChannelLayout", stream.channelLayout},
          {"ChannelLayoutID", stream.channelLayoutId},
          {"SamplingRate", stream.samplingRate},
          {"extra", {{"BitDepth", stream.bitDepth}}}};
}

std::string jsonOf(const NamedMedia& named) {
  Json tracks = Json::array();
  tracks.push_back({{"@type", "General"},
                    {"Format", named.media.container},
                    {"IsTruncated", named.media.isTruncated}});
  for (const RawAudioStream& stream : named.media.audioStreams) tracks.push_back(jsonOf(stream));
  tracks.push_back({{"@type", "Other"},
                    {"Format", "AS-11 Core"},
                    {"extra", {{"AudioTrackLayout", named.media.declaredLayout}}}});
  return Json{{"media", {{"@ref", named.file}, {"track", tracks}}}}.dump();
}

bool same(const RawAudioStream& left, const RawAudioStream& right) {
  return left.id == right.id && left.format == right.format &&
         left.muxingMode == right.muxingMode && left.channels == right.channels &&
         left.channelLayout == right.channelLayout &&
         left.channelLayoutId == right.channelLayoutId && left.samplingRate == right.samplingRate &&
         left.bitDepth == right.bitDepth;
}

bool same(const RawMedia& left, const RawMedia& right) {
  return left.container == right.container && left.isTruncated == right.isTruncated &&
         left.declaredLayout == right.declaredLayout &&
         std::ranges::equal(left.audioStreams, right.audioStreams,
                            [](const auto& a, const auto& b) { return same(a, b); });
}

void checkWaysBack(const NamedMedia& named) {
  const std::string json = jsonOf(named);
  const std::vector<NamedMedia> again = host::mediaFromMediainfoJson(json);
  if (again.size() != 1 || again[0].file != named.file || !same(again[0].media, named.media)) {
    disagree("media, written as JSON and read again", json);
  }
#if !defined(_WIN32)
  const std::string line = host::rawMediaToJson(named.media);
  if (!same(host::rawMediaFromJson(line), named.media)) disagree("the reader's pipe", line);
#endif
}

// --- The examination

bool mayBeRefused(const std::string& id) { return id == "no-audio" || id == "too-many-tracks"; }

void checkVerdict(const FileResult& result, const RawMedia& media, const InspectOptions& options) {
  const plain::ServiceMapInput input{
      result.judgement.expectation ? result.judgement.expectation->description : "",
      plain::widened(options.surroundChannelOrder), host::mapMedia(media).streams, true,
      options.checkLabels};
  if (!result.judgement.expectation || !suitsPlainForm(input)) return;
  const bool isError = std::ranges::any_of(
      result.judgement.findings,
      [](const host::Finding& finding) { return finding.severity == host::Severity::kError; });
  const plain::PlainResult expected = plain::serviceMap(input);
  if (isError == (expected.outcome == plain::Outcome::kFilled)) {
    disagree("the verdict and the plain form", result.verdict.sentence, "\n", input,
             "expected: ", expected);
  }
  const bool isCarried = result.verdict.result == host::VerdictResult::kConforms;
  const bool hasWarning = std::ranges::any_of(
      result.judgement.findings,
      [](const host::Finding& finding) { return finding.severity == host::Severity::kWarning; });
  requireEqual("the verdict", isCarried, !isError && !(options.isStrict && hasWarning));
}

// Tracks, streams and services that a result speaks of are there.
void checkIndices(const FileResult& result) {
  if (result.error) {
    requireEqual("the number of tracks", result.facts.map.tracks.size(), std::size_t{0});
  }
  for (const host::AudioTrack& track : result.facts.map.tracks) {
    for (const std::size_t stream : track.streams) {
      if (stream >= result.facts.map.streams.size()) disagree("a track's stream", stream);
    }
  }
  for (const host::Finding& finding : result.judgement.findings) {
    if (finding.service && *finding.service >= result.judgement.services.size()) {
      disagree("a finding's service", finding.sentence);
    }
  }
}

void checkFormats(const FileResult& result, bool asPage) {
  const Json document = host::toJson(result);
  const std::string text = document.dump();
  if (Json::parse(text) != document) disagree("a result, written and read again", text);
  requireVisible("the report", host::textReport(result, {}));
  if (!asPage) return;
  const std::string page = host::htmlPage(Json::array({document}));
  if (!page.ends_with("</html>\n")) disagree("the end of a page", page);
}

void checkMedia(const NamedMedia& named, InspectOptions options, bool asPage) {
  checkWaysBack(named);
  options.reader = std::make_shared<FixedReader>(named.media);
  const FileResult result = host::inspectFile(host::pathFromUtf8(named.file), options);
  if (result.error && !mayBeRefused(result.error->id)) {
    disagree("an examination", result.error->id, ": ", result.error->sentence);
  }
  if (!result.error) checkVerdict(result, named.media, options);
  checkIndices(result);
  checkFormats(result, asPage);
}

std::vector<NamedMedia> mediaOf(std::string_view json) {
  try {
    return host::mediaFromMediainfoJson(json);
  } catch (const host::NotExamined& reason) {
    requireEqual("why a JSON is refused", reason.id(), std::string("bad-json"));
    return {};
  }
}

std::optional<host::Expectation> expectationOf(const std::string& layout) {
  try {
    return host::expectedLayout(layout);
  } catch (const host::UsageError&) {
    return std::nullopt;
  }
}

void check(std::string_view text) {
  std::string_view line = takeLine(text);
  const std::string_view flags = takeField(line);
  const auto isSet = [&](char flag) { return flags.find(flag) != flags.npos; };
  InspectOptions options;
  options.reportAll = isSet('a');
  options.checkLabels = !isSet('l');
  options.isStrict = isSet('s');
  options.expectation = expectationOf(unescaped(takeField(line)));
  std::vector<NamedMedia> files = mediaOf(text);
  files.resize(std::min(files.size(), kMostFiles));
  for (const NamedMedia& named : files) checkMedia(named, options, isSet('h'));
}

}  // namespace
}  // namespace kestrel::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kestrel::fuzz::check({reinterpret_cast<const char*>(data), size});
  return 0;
}
