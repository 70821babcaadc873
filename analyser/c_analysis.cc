// The analysis part of the plain C interface. A request is turned into the records of the C++
// interface and given to the same analyser, so that both always come to the same verdict. Services
// are kept as findings and written out as records when the host asks for them.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/diagnosis.h"
#include "analyser/finding_text.h"
#include "analyser/layout_description.h"
#include "analyser/neighbours.h"
#include "analyser/slots.h"
#include "analyser/utf8.h"
#include "api/kestrel.h"
#include "catalogue/c_barrier.h"

namespace kestrel {

namespace {

static_assert(KESTREL_SLOTS == kSlotCount);
static_assert(sizeof(KestrelStream) == 48 && sizeof(KestrelRequest) == 40);
static_assert(sizeof(KestrelTrack) == sizeof(TrackSlot) && sizeof(KestrelService) == 800);
static_assert(sizeof(KestrelFinding) == 64);

// What a text that is not UTF-8 makes of a call.
struct BadText {
  std::size_t byte;
  std::int32_t stream;  // -1: a text of the request
};

// Raised between the reading of a request and the barrier.
struct RefusedRequest {
  KestrelStatus status;
  BadText badText{0, -1};
};

std::string_view checkedText(const char* text, std::int32_t stream) {
  if (text == nullptr) throw RefusedRequest{KESTREL_NULL_ARGUMENT};
  const std::string_view view(text);
  if (const auto bad = firstBadByte(view)) throw RefusedRequest{KESTREL_BAD_TEXT, {*bad, stream}};
  return view;
}

AudioStreamInfo toInfo(const KestrelStream& stream, std::int32_t index) {
  AudioStreamInfo info;
  info.streamId = widen(checkedText(stream.streamId, index));
  info.trackLabels = widen(checkedText(stream.trackLabels, index));
  info.group = stream.group;
  info.channelCount = stream.channelCount;
  info.formatKey1 = stream.formatKey1;
  info.formatKey2 = stream.formatKey2;
  info.formatKey3 = stream.formatKey3;
  info.isPairCoded = stream.isPairCoded;
  info.isPairShared = stream.isPairShared;
  return info;
}

const KestrelRequest& checkedRequest(const KestrelRequest& request) {
  if (request.structSize < sizeof(KestrelRequest)) throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
  if (request.streamCount < 0) throw RefusedRequest{KESTREL_BAD_COUNT};
  if (request.streamCount == 0) return request;
  if (request.streams == nullptr) throw RefusedRequest{KESTREL_NULL_ARGUMENT};
  if (request.streamStride < sizeof(KestrelStream) ||
      request.streamStride % alignof(KestrelStream) != 0)
    throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
  return request;
}

std::vector<AudioStreamInfo> readStreams(const KestrelRequest& request) {
  std::vector<AudioStreamInfo> infos;
  infos.reserve(static_cast<std::size_t>(request.streamCount));
  const auto* bytes = reinterpret_cast<const std::byte*>(request.streams);
  for (std::int32_t i = 0; i < request.streamCount; ++i, bytes += request.streamStride) {
    const auto& stream = *reinterpret_cast<const KestrelStream*>(bytes);
    if (stream.structSize < sizeof(KestrelStream) || stream.structSize > request.streamStride)
      throw RefusedRequest{KESTREL_BAD_RECORD_SIZE};
    infos.push_back(toInfo(stream, i));
  }
  return infos;
}

std::vector<std::int32_t> readTotals(std::string_view description) {
  std::vector<std::int32_t> totals;
  std::array<bool, 100> listed{};  // a total has at most two digits
  while (const auto entry = takeEntry(description)) {
    if (std::exchange(listed[entry->trackTotal], true)) continue;
    totals.push_back(static_cast<std::int32_t>(entry->trackTotal));
  }
  return totals;
}

// "2, 4 and 8".
std::string spokenList(const std::vector<std::int32_t>& numbers) {
  if (numbers.empty()) return "no other total";
  std::string text = std::to_string(numbers.front());
  for (std::size_t i = 1; i < numbers.size(); ++i)
    text += (i + 1 < numbers.size() ? ", " : " and ") + std::to_string(numbers[i]);
  return text;
}

struct FoundService {
  ServiceFinding finding;
  std::array<char, 20> derivedLabel{};  // empty where the service has the label of the request
};

FoundService keep(const ServiceFinding& finding) {
  FoundService found{finding, {}};
  // Derived labels are made of the six labels of a 5.1 mix, and so of ASCII.
  std::ranges::transform(finding.label, found.derivedLabel.begin(),
                         [](wchar_t c) { return static_cast<char>(c); });
  found.finding.label = {};
  return found;
}

}  // namespace

}  // namespace kestrel

struct KestrelAnalysis {
  explicit KestrelAnalysis(const KestrelRequest& request);

  std::string layoutDescription;
  std::string surroundChannelOrder;
  std::vector<kestrel::AudioStreamInfo> streams;
  // Its 5.1 mixes carry no label of their own here: the order is kept in UTF-8 above.
  kestrel::AudioServiceMapManager analyser;
  std::int32_t outcome = KESTREL_UNTOUCHED;
  std::vector<kestrel::FoundService> services;
  std::vector<KestrelFinding> findings;
  std::vector<std::int32_t> totals;
  std::string spokenTotals;

 private:
  void analyse(bool surroundCheck);
};

KestrelAnalysis::KestrelAnalysis(const KestrelRequest& request)
    : layoutDescription(kestrel::checkedText(request.layoutDescription, -1)),
      surroundChannelOrder(kestrel::checkedText(request.surroundChannelOrder, -1)),
      streams(kestrel::readStreams(request)),
      analyser(layoutDescription, {}, false, streams.data(), request.streamCount,
               request.reportAll != 0, request.surroundCheck != 0),
      totals(kestrel::readTotals(layoutDescription)),
      spokenTotals(kestrel::spokenList(totals)) {
  analyse(request.surroundCheck != 0);
}

void KestrelAnalysis::analyse(bool surroundCheck) {
  kestrel::Diagnosis diagnosis(analyser, layoutDescription, surroundChannelOrder, surroundCheck);
  if (analyser.detectServices() == 0) {
    diagnosis.explainDetection();
  } else {
    outcome = KESTREL_FILLED;
    kestrel::Assignment walk = analyser.assignment();
    while (walk.next()) {
      if (!diagnosis.explainFinding(walk.finding())) outcome = KESTREL_EMPTIED;
      services.push_back(kestrel::keep(walk.finding()));
    }
    if (outcome == KESTREL_EMPTIED) services.clear();
    diagnosis.explainRest(walk.at());
  }
  diagnosis.explainElements();
  findings = diagnosis.takeFindings();
}

// The functions of the interface are global; what they use is not.
using namespace kestrel;

namespace {

void tell(const BadText& bad, std::size_t* badByte, std::int32_t* badStream) {
  if (badByte != nullptr) *badByte = bad.byte;
  if (badStream != nullptr) *badStream = bad.stream;
}

template <class List>
bool contains(const List& list, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.size();
}

KestrelService writtenOut(const KestrelAnalysis& analysis, const FoundService& found) {
  const ServiceFinding& finding = found.finding;
  const ExpectedService& service = *finding.service;
  KestrelService record{};
  record.trackCount = finding.trackCount;
  record.serviceIndex =
      static_cast<std::int32_t>(&service - analysis.analyser.expectedServices().data());
  record.streamType = service.streamType;
  record.reported = service.reported ? 1 : 0;
  record.isEmca = service.isEmca ? 1 : 0;
  record.requested = service.requested ? 1 : 0;
  record.label = found.derivedLabel.data();
  if (found.derivedLabel[0] == '\0' && service.streamType == k51Mix)
    record.label = analysis.surroundChannelOrder.c_str();
  std::ranges::fill(record.slots, KestrelTrack{-1, -1, -1, -1, -1});
  fillSlots(finding, analysis.analyser.fileTracks(), record.slots);
  return record;
}

}  // namespace

KestrelStatus kestrelAnalyse(const KestrelRequest* request, KestrelAnalysis** analysis,
                             size_t* badByte, int32_t* badStream) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  *analysis = nullptr;
  if (request == nullptr) return KESTREL_NULL_ARGUMENT;
  return guarded([=] {
    try {
      *analysis = new KestrelAnalysis(checkedRequest(*request));
      return KESTREL_OK;
    } catch (const RefusedRequest& refused) {
      if (refused.status == KESTREL_BAD_TEXT) tell(refused.badText, badByte, badStream);
      return refused.status;
    }
  });
}

void kestrelFreeAnalysis(KestrelAnalysis* analysis) { delete analysis; }

KestrelStatus kestrelOutcome(const KestrelAnalysis* analysis, int32_t* outcome,
                             uint32_t* trackTotal) {
  if (anyNull(analysis, outcome)) return KESTREL_NULL_ARGUMENT;
  *outcome = analysis->outcome;
  if (trackTotal != nullptr) *trackTotal = analysis->analyser.fileTrackCount();
  return KESTREL_OK;
}

KestrelStatus kestrelServiceCount(const KestrelAnalysis* analysis, int32_t* count) {
  if (anyNull(analysis, count)) return KESTREL_NULL_ARGUMENT;
  *count = static_cast<std::int32_t>(analysis->services.size());
  return KESTREL_OK;
}

KestrelStatus kestrelGetService(const KestrelAnalysis* analysis, int32_t index,
                                KestrelService* service) {
  if (anyNull(analysis, service)) return KESTREL_NULL_ARGUMENT;
  if (!contains(analysis->services, index)) return KESTREL_BAD_INDEX;
  return copyOut(writtenOut(*analysis, analysis->services[static_cast<std::size_t>(index)]),
                 *service);
}

KestrelStatus kestrelFindingCount(const KestrelAnalysis* analysis, int32_t* count) {
  if (anyNull(analysis, count)) return KESTREL_NULL_ARGUMENT;
  *count = static_cast<std::int32_t>(analysis->findings.size());
  return KESTREL_OK;
}

KestrelStatus kestrelGetFinding(const KestrelAnalysis* analysis, int32_t index,
                                KestrelFinding* finding) {
  if (anyNull(analysis, finding)) return KESTREL_NULL_ARGUMENT;
  if (!contains(analysis->findings, index)) return KESTREL_BAD_INDEX;
  return copyOut(analysis->findings[static_cast<std::size_t>(index)], *finding);
}

KestrelStatus kestrelFindingText(const KestrelAnalysis* analysis, int32_t index, char* text,
                                 size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  if (!contains(analysis->findings, index)) return KESTREL_BAD_INDEX;
  return guarded([=] {
    const std::string sentence = findingText(
        analysis->findings[static_cast<std::size_t>(index)],
        {analysis->layoutDescription, analysis->analyser.serviceList(), analysis->spokenTotals});
    return copyOut(sentence, text, capacity, needed);
  });
}

KestrelStatus kestrelDescribedTotals(const KestrelAnalysis* analysis, int32_t* totals,
                                     size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  return copyOut(analysis->totals, totals, capacity, needed);
}
