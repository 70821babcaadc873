#include "host/reporting/result_json.h"

#include <array>
#include <nlohmann/json.hpp>

#include "api/kestrel.h"
#include "host/evidence/track_map.h"

namespace kestrel::host {

NLOHMANN_JSON_SERIALIZE_ENUM(Severity, {{Severity::kError, "error"},
                                        {Severity::kWarning, "warning"},
                                        {Severity::kNote, "note"}})
NLOHMANN_JSON_SERIALIZE_ENUM(VerdictResult, {{VerdictResult::kConforms, "conforms"},
                                             {VerdictResult::kDoesNotConform, "does-not-conform"},
                                             {VerdictResult::kIdentified, "identified"},
                                             {VerdictResult::kNotExamined, "not-examined"}})
NLOHMANN_JSON_SERIALIZE_ENUM(ExpectationKind, {{ExpectationKind::kLayout, "layout"},
                                               {ExpectationKind::kLayoutFile, "layout-file"},
                                               {ExpectationKind::kItem, "item"},
                                               {ExpectationKind::kCode, "code"},
                                               {ExpectationKind::kDeclared, "declared"}})

namespace {

template <typename Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

// Bytes that are not UTF-8 become U+FFFD.
std::string asUtf8(const std::string& text) {
  constexpr auto kReplace = Json::error_handler_t::replace;
  return Json::parse(Json(text).dump(-1, ' ', false, kReplace)).get<std::string>();
}

std::string hexOf(const std::string& bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string hex;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += {kDigits[value >> 4U], kDigits[value & 15U]};
  }
  return hex;
}

std::string bytesOf(const std::string& hex) {
  std::string bytes;
  for (std::size_t at = 0; at + 1 < hex.size(); at += 2) {
    bytes.push_back(static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16)));
  }
  return bytes;
}

// A name that is not UTF-8 cannot stand in a document; its exact bytes stand beside it.
void addFileName(Json& document, const std::string& name) {
  const std::string shown = asUtf8(name);
  document["file"] = shown;
  if (shown != name) {
    document["fileBytes"] = hexOf(name);
  }
}

}  // namespace

// NOLINTBEGIN(readability-identifier-naming): nlohmann::json finds these by name and argument.
void to_json(Json& json, const AudioStream& stream) {
  json = {{"id", stream.id},
          {"channel", orNull(stream.channel)},
          {"format", stream.format},
          {"channels", stream.channels},
          {"sampleRate", stream.sampleRate},
          {"bitDepth", stream.bitDepth},
          {"labels", stream.labels},
          {"pairCoded", stream.isPairCoded},
          {"programme", orNull(stream.programme)},
          {"tracks", stream.tracks}};
}

void to_json(Json& json, const AudioTrack& track) {
  json = {{"number", track.number},   {"name", track.name},   {"streams", track.streams},
          {"channel", track.channel}, {"label", track.label}, {"pairCoded", track.isPairCoded}};
}

void to_json(Json& json, const NamedItem& item) { json = {{"id", item.id}, {"name", item.name}}; }

void to_json(Json& json, const DeclaredLayout& declared) {
  json = {{"text", declared.text},
          {"vocabulary", declared.vocabulary},
          {"code", declared.code},
          {"item", orNull(declared.item)}};
}

void to_json(Json& json, const Expectation& expectation) {
  json = {{"kind", expectation.kind},
          {"text", asUtf8(expectation.text)},
          {"item", orNull(expectation.item)},
          {"code", expectation.code},
          {"description", expectation.description}};
}

void to_json(Json& json, const ServiceProgramme& programme) {
  json = {
      {"stream", programme.stream}, {"channels", programme.channels}, {"labels", programme.labels}};
}

void to_json(Json& json, const ResultService& service) {
  json = {{"name", service.name},     {"tracks", service.tracks},
          {"held", service.isHeld},   {"requested", service.isRequested},
          {"labels", service.labels}, {"programmes", service.programmes}};
}

void to_json(Json& json, const PlacedService& service) {
  json = {{"name", service.name}, {"tracks", service.tracks}};
}

void to_json(Json& json, const Reason& reason) {
  json = {{"id", reason.id},
          {"points", reason.points},
          {"sentence", reason.sentence},
          {"tracks", reason.tracks}};
}

void to_json(Json& json, const Candidate& candidate) {
  json = {{"item", candidate.item},
          {"score", candidate.score},
          {"codes", candidate.codes},
          {"services", candidate.services},
          {"reasons", candidate.reasons}};
}

void to_json(Json& json, const EvidenceValue& value) {
  json = {{"source", value.source}, {"value", value.value}};
}

void to_json(Json& json, const Disagreement& disagreement) {
  json = {{"id", disagreement.id},
          {"sentence", disagreement.sentence},
          {"tracks", disagreement.tracks},
          {"values", disagreement.values}};
}

void to_json(Json& json, const Majority& majority) {
  json = {{"item", orNull(majority.item)},
          {"sources", majority.sources},
          {"sourceCount", majority.sourceCount},
          {"sentence", majority.sentence}};
}

void to_json(Json& json, const CrossCheck& check) {
  json = {{"agrees", check.disagreements.empty()},
          {"disagreements", check.disagreements},
          {"majority", check.majority}};
}

void to_json(Json& json, const Finding& finding) {
  json = {{"id", finding.id},
          {"severity", finding.severity},
          {"sentence", finding.sentence},
          {"service", orNull(finding.service)},
          {"tracks", finding.tracks}};
}

void to_json(Json& json, const Verdict& verdict) {
  json = {{"result", verdict.result},
          {"exitCode", static_cast<int>(verdict.exitCode)},
          {"sentence", verdict.sentence}};
}

void to_json(Json& json, const ExaminationError& error) {
  json = {{"id", error.id}, {"sentence", error.sentence}};
}

// NOLINTEND(readability-identifier-naming)

Json toJson(const FileResult& result) {
  Json json = {{"schema", kResultSchema}, {"kestrel", KESTREL_VERSION}};
  addFileName(json, result.facts.file);
  json["verdict"] = result.verdict;
  json["error"] = orNull(result.error);
  json["reader"] = result.facts.reader;
  json["container"] = result.facts.container;
  json["trackTotal"] = trackTotal(result.facts.map);
  json["streams"] = result.facts.map.streams;
  json["tracks"] = result.facts.map.tracks;
  json["declared"] = orNull(result.judgement.declared);
  json["expectation"] = orNull(result.judgement.expectation);
  json["services"] = result.judgement.services;
  json["identification"] = result.judgement.identification;
  json["crossCheck"] = orNull(result.judgement.crossCheck);
  json["findings"] = result.judgement.findings;
  return json;
}

Json toJson(const Expectation& expectation) {
  Json json = expectation;  // in braces it would become an array
  return json;
}

std::string fileNameIn(const Json& document) {
  const auto bytes = document.find("fileBytes");
  return bytes == document.end() ? document.at("file").get<std::string>()
                                 : bytesOf(bytes->get<std::string>());
}

}  // namespace kestrel::host
