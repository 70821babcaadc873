#include "tests/c_api/c_answer_checks.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "tests/plain/plain_layout_description.h"
#include "tests/plain/plain_utf8.h"

namespace kestrel::test {
namespace {

using plain::PlainExpectedService;
using plain::PlainResult;
using plain::ServiceMapInput;
using plain::toUtf8;

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
}  // namespace

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

std::string wrongIn(const Answer& answer, const ServiceMapInput& input,
                    const PlainResult& expected) {
  const auto& findings = answer.findings;
  const auto count = static_cast<std::int32_t>(input.streams.size());
  if (answer.result.outcome != expected.outcome) return "the outcome";
  if (answer.trackTotal != plain::fileTrackCount(input.streams.data(), count))
    return "the track total";
  if (!sameServices(answer, expected)) return "the services";
  const auto elements = elementsOf(input, answer.trackTotal);
  const bool isFilled = expected.outcome == plain::Outcome::kFilled;
  if (isFilled && !matchElements(answer.services, elements)) return "indices and types of services";
  if (!std::all_of(findings.begin(), findings.end(),
                   [&](const auto& finding) { return fieldsFit(finding, input, elements); }))
    return "the fields of the findings";
  if (std::any_of(findings.begin(), findings.end(), isError) == isFilled)
    return "errors stand beside the outcome";
  if (!standInOrder(findings)) return "the order of the findings";
  if (!unknownElementsAreFound(answer, elements)) return "unknown elements";
  if (!labelsFitFindings(answer, input)) return "labels and their findings";
  if (!std::all_of(answer.sentences.begin(), answer.sentences.end(), isSentence))
    return "the sentences";
  return "";
}

}  // namespace kestrel::test
