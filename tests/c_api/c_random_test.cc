// Compares the plain C interface with the plain form on random inputs, and checks that its findings
// fit the input and the outcome, whatever they are. The inputs of a seed are always the same, so a
// failure comes back on every run; it prints the whole input.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/plain/plain_layout_description.h"
#include "tests/plain/plain_service_map.h"
#include "tests/random_inputs.h"
#include "tests/test_rounds.h"

namespace kestrel::test {
namespace {

using plain::PlainExpectedService;
using plain::PlainResult;
using plain::ServiceMapInput;

constexpr int kInputs = 120'000;
constexpr int kMismatchesShown = 3;

// --- Inputs

void appendUtf8(std::string& text, std::uint32_t code) {
  const auto append = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (code < 0x80) return append(code);
  if (code < 0x800) {
    append(0xC0 | code >> 6);
  } else if (code < 0x10000) {
    append(0xE0 | code >> 12);
    append(0x80 | (code >> 6 & 0x3F));
  } else {
    append(0xF0 | code >> 18);
    append(0x80 | (code >> 12 & 0x3F));
    append(0x80 | (code >> 6 & 0x3F));
  }
  append(0x80 | (code & 0x3F));
}

// A wide character is a whole character or, where it has two bytes, half of a pair.
std::string toUtf8(const std::wstring& wide) {
  std::string text;
  for (std::size_t i = 0; i < wide.size(); ++i) {
    auto code = static_cast<std::uint32_t>(wide[i]);
    if (code >= 0xD800 && code < 0xDC00 && i + 1 < wide.size()) {
      code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(wide[++i]) - 0xDC00);
    }
    appendUtf8(text, code);
  }
  return text;
}

// Random descriptions hold any bytes; here each becomes the character of its number.
std::string bytesToUtf8(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) appendUtf8(text, static_cast<unsigned char>(byte));
  return text;
}

// The same input as a request, with its texts.
class Request {
 public:
  explicit Request(const ServiceMapInput& input) : order_(toUtf8(input.order)) {
    texts_.reserve(2 * input.streams.size());
    for (const AudioStreamInfo& info : input.streams) addStream(info);
    record_.structSize = sizeof record_;
    record_.streamCount = static_cast<std::int32_t>(streams_.size());
    record_.layoutDescription = input.description.c_str();
    record_.surroundChannelOrder = order_.c_str();
    record_.streams = streams_.data();
    record_.streamStride = sizeof(KestrelStream);
    record_.reportAll = input.reportAll ? 1 : 0;
    record_.surroundCheck = input.surroundCheck ? 1 : 0;
  }

  const KestrelRequest* record() const { return &record_; }

 private:
  void addStream(const AudioStreamInfo& info) {
    KestrelStream stream{};
    stream.structSize = sizeof stream;
    stream.group = info.group;
    stream.streamId = texts_.emplace_back(toUtf8(info.streamId)).c_str();
    stream.trackLabels = texts_.emplace_back(toUtf8(info.trackLabels)).c_str();
    stream.channelCount = info.channelCount;
    stream.formatKey1 = info.formatKey1;
    stream.formatKey2 = info.formatKey2;
    stream.formatKey3 = info.formatKey3;
    stream.isPairCoded = info.isPairCoded;
    stream.isPairShared = info.isPairShared;
    streams_.push_back(stream);
  }

  std::string order_;
  std::vector<std::string> texts_;
  std::vector<KestrelStream> streams_;
  KestrelRequest record_{};
};

// --- Answers

struct Answer {
  PlainResult result;
  std::uint32_t trackTotal = 0;
  std::vector<KestrelService> services;
  std::vector<std::string> labels;
  std::vector<KestrelFinding> findings;
  std::vector<std::string> sentences;
};

template <class Record>
std::vector<Record> readAll(const KestrelAnalysis* analysis,
                            KestrelStatus (*count)(const KestrelAnalysis*, std::int32_t*),
                            KestrelStatus (*get)(const KestrelAnalysis*, std::int32_t, Record*)) {
  std::int32_t number = 0;
  EXPECT_EQ(count(analysis, &number), KESTREL_OK);
  std::vector<Record> records(static_cast<std::size_t>(number));
  for (std::int32_t i = 0; i < number; ++i) {
    Record& record = records[static_cast<std::size_t>(i)];
    record.structSize = sizeof record;
    EXPECT_EQ(get(analysis, i, &record), KESTREL_OK);
  }
  return records;
}

std::string sentenceOf(const KestrelAnalysis* analysis, std::int32_t index) {
  std::size_t needed = 0;
  std::vector<char> text(16);
  if (kestrelFindingText(analysis, index, text.data(), 16, &needed) != KESTREL_OK) {
    text.resize(needed);
    EXPECT_EQ(kestrelFindingText(analysis, index, text.data(), needed, &needed), KESTREL_OK);
  }
  return text.data();
}

Answer answerTo(const ServiceMapInput& input) {
  const Request request(input);
  KestrelAnalysis* made = nullptr;
  EXPECT_EQ(kestrelAnalyse(request.record(), &made, nullptr, nullptr), KESTREL_OK);
  const std::unique_ptr<KestrelAnalysis, decltype(&kestrelFreeAnalysis)> analysis(
      made, &kestrelFreeAnalysis);
  Answer answer;
  std::int32_t outcome = -1;
  EXPECT_EQ(kestrelOutcome(made, &outcome, &answer.trackTotal), KESTREL_OK);
  answer.result.outcome = static_cast<plain::Outcome>(outcome);
  answer.services = readAll<KestrelService>(made, kestrelServiceCount, kestrelGetService);
  answer.findings = readAll<KestrelFinding>(made, kestrelFindingCount, kestrelGetFinding);
  for (const KestrelService& service : answer.services) answer.labels.push_back(service.label);
  for (std::size_t i = 0; i < answer.findings.size(); ++i) {
    answer.sentences.push_back(sentenceOf(made, static_cast<std::int32_t>(i)));
  }
  return answer;
}

// --- Services

bool sameTrack(const KestrelTrack& track, const TrackSlot& slot) {
  return track.trackNumber == slot.trackNumber && track.group == slot.group &&
         track.sourceGroup == slot.sourceGroup && track.indexInGroup == slot.indexInGroup &&
         track.reserved == -1;
}

bool sameService(const KestrelService& service, const std::string& label,
                 const ServiceMapResult& expected) {
  return std::equal(std::begin(service.slots), std::end(service.slots), expected.slots.begin(),
                    sameTrack) &&
         service.trackCount == expected.trackCount && service.reported == expected.reported &&
         service.isEmca == expected.isEmca && service.requested == expected.requested &&
         label == toUtf8(expected.label);
}

bool sameServices(const Answer& answer, const PlainResult& expected) {
  if (answer.services.size() != expected.results.size()) return false;
  for (std::size_t i = 0; i < expected.results.size(); ++i) {
    if (!sameService(answer.services[i], answer.labels[i], expected.results[i])) return false;
  }
  return true;
}

std::vector<PlainExpectedService> elementsOf(const ServiceMapInput& input, std::uint32_t total) {
  std::int32_t counter = -1;
  return plain::parse(input.description, total, input.reportAll, counter);
}

// True when the services found are the reported elements in their order: each ordinary one once, a
// pair-coded one any number of times.
bool matchElements(const std::vector<KestrelService>& services,
                   const std::vector<PlainExpectedService>& elements) {
  std::size_t next = 0;
  for (std::size_t e = 0; e < elements.size(); ++e) {
    if (!elements[e].reported) continue;
    const std::size_t begin = next;
    while (next < services.size() && services[next].serviceIndex == static_cast<std::int32_t>(e)) {
      if (services[next++].streamType != elements[e].streamType) return false;
    }
    if (!elements[e].isEmca && next != begin + 1) return false;
  }
  return next == services.size();
}

// --- Findings

enum Used : unsigned { kService = 1, kSlot = 2, kTrack = 4, kValues = 8, kFirst = 16, kText = 32 };

const std::map<std::int32_t, unsigned>& usedFields() {
  static const std::map<std::int32_t, unsigned> fields = {
      {KESTREL_NO_STREAMS, 0},
      {KESTREL_NO_ENTRY, kFirst},
      {KESTREL_PAIR_CODED_TRACK, kService | kSlot | kTrack},
      {KESTREL_PLAIN_TRACK, kService | kSlot | kTrack},
      {KESTREL_TOO_FEW_TRACKS, kService | kSlot | kValues},
      {KESTREL_KEY1_DIFFERS, kService | kSlot | kTrack | kValues},
      {KESTREL_KEY2_DIFFERS, kService | kSlot | kTrack | kValues},
      {KESTREL_KEY3_DIFFERS, kService | kSlot | kTrack | kValues},
      {KESTREL_UNKNOWN_SERVICE, kService | kText},
      {KESTREL_EMPTY_ELEMENT, kService | kText},
      {KESTREL_TRACKS_LEFT_OVER, kTrack | kValues},
      {KESTREL_LABEL_MISSING, kService | kSlot | kTrack},
      {KESTREL_LABEL_UNKNOWN, kService | kSlot | kTrack},
      {KESTREL_LABEL_DOUBLED, kService | kSlot | kTrack | kFirst},
      {KESTREL_LABELS_REORDERED, kService | kSlot | kTrack},
      {KESTREL_RUN_TOO_LONG, kService | kTrack | kValues},
      {KESTREL_SERVICE_WITHOUT_TRACK, kService | kFirst},
  };
  return fields;
}

// The track number of a stream, from one whose streams are all the file has.
std::int64_t trackNumberOf(const AudioStreamInfo& stream) {
  AudioStreamInfo alone = stream;
  alone.channelCount = 1;
  alone.isPairCoded = 0;
  return plain::serviceMap({"T1=Mono", L"", {alone}, false, false}).results[0].slots[0].trackNumber;
}

// True when the finding has the fields of its code, within the input, and no others.
bool fieldsFit(const KestrelFinding& finding, const ServiceMapInput& input,
               const std::vector<PlainExpectedService>& elements) {
  const auto used = usedFields().find(finding.code);
  if (used == usedFields().end()) return false;
  const auto uses = [&](unsigned field) { return (used->second & field) != 0; };
  const auto isIndex = [](std::int64_t index, std::size_t count, bool isUsed) {
    return isUsed ? index >= 0 && static_cast<std::size_t>(index) < count : index == -1;
  };
  if (!isIndex(finding.service, elements.size(), uses(kService))) return false;
  if (!isIndex(finding.slot, 8, uses(kSlot))) return false;
  if (!isIndex(finding.stream, input.streams.size(), uses(kTrack))) return false;
  const std::int64_t track =
      uses(kTrack) ? trackNumberOf(input.streams[static_cast<std::size_t>(finding.stream)]) : -1;
  if (finding.track != track) return false;
  if (!isIndex(finding.textOffset, input.description.size() + 1, uses(kText))) return false;
  if (!isIndex(finding.textLength, input.description.size() + 1, uses(kText))) return false;
  if (!uses(kValues | kFirst) && finding.first != 0) return false;
  if (!uses(kValues) && finding.second != 0) return false;
  return finding.reserved == 0 && (!uses(kValues) || finding.first != finding.second);
}

bool isError(const KestrelFinding& finding) { return finding.code < 100; }

// True when errors stand first, and among each kind the services ascend.
bool standInOrder(const std::vector<KestrelFinding>& findings) {
  const auto before = [](const KestrelFinding& left, const KestrelFinding& right) {
    if (isError(left) != isError(right)) return isError(left);
    return left.service != -1 && right.service != -1 && left.service < right.service;
  };
  for (std::size_t i = 0; i + 1 < findings.size(); ++i) {
    if (before(findings[i + 1], findings[i])) return false;
  }
  return true;
}

// How often a finding of these codes is there for the service.
std::ptrdiff_t countOf(const std::vector<KestrelFinding>& findings, std::size_t service,
                       std::int32_t firstCode, std::int32_t lastCode) {
  return std::count_if(findings.begin(), findings.end(), [&](const KestrelFinding& finding) {
    return finding.service == static_cast<std::int32_t>(service) && finding.code >= firstCode &&
           finding.code <= lastCode;
  });
}

// True when each element of unknown name has its finding, and no other has one.
bool unknownElementsAreFound(const Answer& answer,
                             const std::vector<PlainExpectedService>& elements) {
  for (std::size_t e = 0; e < elements.size(); ++e) {
    const std::ptrdiff_t expected = elements[e].streamType == kUnknown ? 1 : 0;
    const std::ptrdiff_t found =
        countOf(answer.findings, e, KESTREL_UNKNOWN_SERVICE, KESTREL_EMPTY_ELEMENT);
    if (found != expected) return false;
  }
  return true;
}

// True when a label read off the streams has no finding but that of its order, and when one that
// could not be read has one for the reason. A label that equals a full order may be either.
bool labelsFitFindings(const Answer& answer, const ServiceMapInput& input) {
  for (std::size_t i = 0; i < answer.services.size(); ++i) {
    const auto service = static_cast<std::size_t>(answer.services[i].serviceIndex);
    const bool isDerived = answer.labels[i] != toUtf8(input.order);
    const auto single =
        countOf(answer.findings, service, KESTREL_LABEL_MISSING, KESTREL_LABEL_DOUBLED);
    const auto order =
        countOf(answer.findings, service, KESTREL_LABELS_REORDERED, KESTREL_LABELS_REORDERED);
    if (answer.services[i].streamType != KESTREL_51_MIX || !input.surroundCheck) {
      if (single + order != 0) return false;
    } else if (isDerived) {
      if (single != 0) return false;
    } else if (order != 0 || (single == 0 && input.order.size() < 2)) {
      return false;
    }
  }
  return true;
}

bool isSentence(const std::string& text) {
  return text.size() > 1 && text.front() >= 'A' && text.front() <= 'Z' && text.back() == '.';
}

// --- Comparison

// Compares one input, and says whether all is as it must be.
bool agrees(const ServiceMapInput& input, const Answer& answer) {
  const PlainResult expected = plain::serviceMap(input);
  const auto elements = elementsOf(input, answer.trackTotal);
  const auto& findings = answer.findings;
  const auto count = static_cast<std::int32_t>(input.streams.size());
  bool same = true;
  const auto check = [&](bool holds, const char* what) {
    EXPECT_TRUE(holds) << what << "\n" << input << "expected: " << expected;
    same = same && holds;
  };
  check(answer.result.outcome == expected.outcome, "the outcome");
  check(answer.trackTotal == plain::fileTrackCount(input.streams.data(), count), "the track total");
  check(sameServices(answer, expected), "the services");
  check(expected.outcome != plain::Outcome::kFilled || matchElements(answer.services, elements),
        "indices and types of services");
  check(std::all_of(findings.begin(), findings.end(),
                    [&](const auto& finding) { return fieldsFit(finding, input, elements); }),
        "the fields of the findings");
  check(std::any_of(findings.begin(), findings.end(), isError) !=
            (expected.outcome == plain::Outcome::kFilled),
        "errors stand beside other outcomes");
  check(standInOrder(findings), "the order of the findings");
  check(unknownElementsAreFound(answer, elements), "unknown elements");
  check(labelsFitFindings(answer, input), "labels and their findings");
  check(std::all_of(answer.sentences.begin(), answer.sentences.end(), isSentence), "sentences");
  return same;
}

TEST(CRandom, EveryAnalysisEndsAsThePlainFormSaysAndItsFindingsFit) {
  Random random(20'260'504);
  std::map<std::int32_t, int> spread;
  int filled = 0;
  int mismatches = 0;
  const int inputs = rounds(kInputs);
  for (int i = 0; i < inputs && mismatches < kMismatchesShown; ++i) {
    ServiceMapInput input = randomServiceMapInput(random);
    input.description = bytesToUtf8(input.description);
    const Answer answer = answerTo(input);
    for (const KestrelFinding& finding : answer.findings) ++spread[finding.code];
    if (answer.result.outcome == plain::Outcome::kFilled) ++filled;
    if (!agrees(input, answer)) ++mismatches;
  }
  ASSERT_EQ(mismatches, 0);
  for (const auto& [code, number] : spread) std::cout << "code " << code << ": " << number << "\n";
  EXPECT_GE(filled * 3, inputs);
  if (!allRounds()) return;
  for (const auto& [code, fields] : usedFields()) EXPECT_GT(spread[code], 0) << "code " << code;
}

}  // namespace
}  // namespace kestrel::test
