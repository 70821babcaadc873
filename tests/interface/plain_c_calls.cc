// The functions fall into few shapes: one value, a list or a text for some ids, a value for a text,
// and the same for an analysis, which each call makes anew.
#include <array>
#include <cstddef>
#include <vector>

#include "api/kestrel.h"
#include "tests/c_api/c_request.h"
#include "tests/interface/exported_calls.h"

namespace kestrel::test {
namespace {

constexpr std::array kTexts = {"Stereo", "5.1 Mix,Stereo", "2 Mono",  "Dolby E", "7.1 Mix",
                               "6 mono", "EBU R 123: 8B",  "\xff 8b", "12a",     "4a"};

constexpr std::array kDescriptions = {
    "T8=5.1 Mix,Stereo", "T8=5.1 Mix,Mono,Mono;T6=Stereo", "T8=Stereo,Other,,-Mono",
    "T8=EMCA,5.1 Mix",   "T4=Stereo,Stereo;T2=Stereo",     "T8=7.1 Mix"};

template <class List>
const char* oneOf(const List& list, std::int32_t number) {
  return list[static_cast<std::size_t>(number) % list.size()];
}

std::string said(const char* text) { return text == nullptr ? "NULL" : text; }
std::string said(std::int64_t value) { return std::to_string(value); }
std::string said(const KestrelService& service) {
  std::string text = said(service.label);
  for (const KestrelTrack& slot : service.slots)
    text += " " + said(slot.trackNumber) + "/" + said(slot.indexInGroup);
  return text;
}
std::string said(const KestrelFinding& finding) {
  return said(finding.code) + " on " + said(finding.track) + ": " + said(finding.first) + " " +
         said(finding.second) + " at " + said(finding.textOffset);
}

// The status and the value of a call that writes one value behind its other arguments.
template <class Value, class Function, class... In>
std::string one(Function* function, const In&... in) {
  Value value{};
  if constexpr (requires { value.structSize; }) value.structSize = sizeof value;
  const KestrelStatus status = function(in..., &value);
  return said(status) + " " + said(value);
}

template <class Function, class... In>
std::string list(Function* function, const In&... in) {
  std::array<std::int32_t, 16> values{};
  std::size_t needed = 0;
  std::string text = said(function(in..., values.data(), values.size(), &needed));
  for (std::size_t i = 0; i < needed; ++i) text += " " + said(values.at(i));
  return text;
}

template <class Function, class... In>
std::string text(Function* function, const In&... in) {
  std::array<char, 512> buffer{};
  std::size_t needed = 0;
  const KestrelStatus status = function(in..., buffer.data(), buffer.size(), &needed);
  return said(status) + " " + said(static_cast<std::int64_t>(needed)) + " " + buffer.data();
}

// The analysis of one of a number of requests, some of which carry their services.
Analysis analysisOf(std::int32_t number) {
  std::vector<KestrelStream> streams = {stream("1", 6, kSixLabels), stream("7", 1), stream("8", 1)};
  streams[1].formatKey1 = number % 4;
  streams[2].formatKey1 = number % 3;
  const KestrelRequest asked = request(oneOf(kDescriptions, number), streams);
  KestrelAnalysis* analysis = nullptr;
  kestrelAnalyse(&asked, &analysis, nullptr, nullptr);
  return Analysis(analysis);
}

std::string catalogueSize(std::int32_t) {
  std::int32_t rows = 0, items = 0, types = 0;
  const KestrelStatus status = kestrelCatalogueSize(&rows, &items, &types);
  return said(status) + " " + said(rows) + " " + said(items) + " " + said(types);
}

std::string layoutCode(std::int32_t number) {
  const char* code = nullptr;
  std::int32_t item = -1;
  const KestrelStatus status = kestrelLayoutCode(number - 2, &code, &item);
  return said(status) + " " + said(code) + " " + said(item);
}

std::string outcome(std::int32_t number) {
  std::int32_t outcome = -1;
  std::uint32_t total = 0;
  const KestrelStatus status = kestrelOutcome(analysisOf(number).get(), &outcome, &total);
  return said(status) + " " + said(outcome) + " " + said(total);
}

// A request that cannot be read, and what it leaves behind.
std::string refusedRequest(std::int32_t number) {
  const std::vector<KestrelStream> streams(1, stream(number % 2 == 0 ? "1" : "\xc3", 2));
  const KestrelRequest asked = request(oneOf(kDescriptions, number), streams);
  KestrelAnalysis* analysis = nullptr;
  std::size_t badByte = 77;
  std::int32_t badStream = 77;
  const KestrelStatus status = kestrelAnalyse(&asked, &analysis, &badByte, &badStream);
  const Analysis freed(analysis);
  return said(status) + " " + said(static_cast<std::int64_t>(badByte)) + " " + said(badStream) +
         (freed == nullptr ? "" : " an analysis");
}

// Freeing answers nothing; what it must not disturb is a second analysis.
std::string freed(std::int32_t number) {
  const Analysis kept = analysisOf(number);
  kestrelFreeAnalysis(analysisOf(number).release());
  kestrelFreeAnalysis(nullptr);
  return text(kestrelFindingText, kept.get(), 0);
}

std::string services(std::int32_t number) {
  const Analysis analysis = analysisOf(number);
  std::string all;
  for (std::int32_t i = 0; i < 4; ++i)
    all += one<KestrelService>(kestrelGetService, analysis.get(), i) + "; ";
  return all;
}

std::string findings(std::int32_t number) {
  const Analysis analysis = analysisOf(number);
  std::string all;
  for (std::int32_t i = 0; i < 4; ++i)
    all += one<KestrelFinding>(kestrelGetFinding, analysis.get(), i) + "; ";
  return all;
}

using Id = std::int32_t;

// Ids begin below the first one, so that some are unknown.
constexpr std::array kCalls = {
    ExportedCall{"kestrelStatusText", [](Id n) { return said(kestrelStatusText(n % 12)); }},
    ExportedCall{"kestrelVersion", [](Id) { return said(kestrelVersion()); }},
    ExportedCall{"kestrelAbiVersion", [](Id) { return said(kestrelAbiVersion()); }},
    ExportedCall{"kestrelCatalogueSize", catalogueSize},
    ExportedCall{"kestrelRowTracks", [](Id n) { return one<Id>(kestrelRowTracks, n - 2); }},
    ExportedCall{"kestrelRowItems", [](Id n) { return list(kestrelRowItems, n - 2); }},
    ExportedCall{"kestrelRowDefaultItem",
                 [](Id n) { return one<Id>(kestrelRowDefaultItem, n - 2); }},
    ExportedCall{"kestrelItemRow", [](Id n) { return one<Id>(kestrelItemRow, n - 2); }},
    ExportedCall{"kestrelItemName", [](Id n) { return one<const char*>(kestrelItemName, n - 2); }},
    ExportedCall{"kestrelItemFromName",
                 [](Id n) { return one<Id>(kestrelItemFromName, oneOf(kTexts, n)); }},
    ExportedCall{"kestrelItemStreamTypes",
                 [](Id n) { return list(kestrelItemStreamTypes, n - 2); }},
    ExportedCall{"kestrelItemText", [](Id n) { return text(kestrelItemText, n - 2); }},
    ExportedCall{"kestrelItemFromText",
                 [](Id n) { return one<Id>(kestrelItemFromText, oneOf(kTexts, n)); }},
    ExportedCall{"kestrelItemStreamName",
                 [](Id n) { return text(kestrelItemStreamName, n - 2, n % 5); }},
    ExportedCall{"kestrelStreamTypeName",
                 [](Id n) { return one<const char*>(kestrelStreamTypeName, n % 8 - 1); }},
    ExportedCall{"kestrelStreamTypeTracks",
                 [](Id n) { return one<Id>(kestrelStreamTypeTracks, n % 8 - 1); }},
    ExportedCall{"kestrelStreamTypeFromName",
                 [](Id n) { return one<Id>(kestrelStreamTypeFromName, oneOf(kTexts, n)); }},
    ExportedCall{"kestrelItemFromLayoutCode",
                 [](Id n) { return one<Id>(kestrelItemFromLayoutCode, oneOf(kTexts, n)); }},
    ExportedCall{"kestrelLayoutCode", layoutCode},
    ExportedCall{"kestrelAnalyse", refusedRequest},
    ExportedCall{"kestrelFreeAnalysis", freed},
    ExportedCall{"kestrelOutcome", outcome},
    ExportedCall{"kestrelServiceCount",
                 [](Id n) { return one<Id>(kestrelServiceCount, analysisOf(n).get()); }},
    ExportedCall{"kestrelGetService", services},
    ExportedCall{"kestrelFindingCount",
                 [](Id n) { return one<Id>(kestrelFindingCount, analysisOf(n).get()); }},
    ExportedCall{"kestrelGetFinding", findings},
    ExportedCall{"kestrelFindingText",
                 [](Id n) { return text(kestrelFindingText, analysisOf(n).get(), n % 3); }},
    ExportedCall{"kestrelDescribedTotals",
                 [](Id n) { return list(kestrelDescribedTotals, analysisOf(n).get()); }},
};

}  // namespace

std::span<const ExportedCall> plainCCalls() { return kCalls; }

}  // namespace kestrel::test
