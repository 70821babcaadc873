// The analysis part of the plain C interface. A request is given to the same analyser as the
// records of the C++ interface, so that both always come to the same verdict. Services are kept as
// findings and written out as records when the host asks for them.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "analyser/c_request.h"
#include "analyser/described_totals.h"
#include "analyser/diagnosis.h"
#include "analyser/finding_text.h"
#include "analyser/slots.h"
#include "api/kestrel.h"
#include "catalogue/c_barrier.h"

namespace kestrel {

namespace {

static_assert(KESTREL_SLOTS == kSlotCount);
static_assert(sizeof(KestrelStream) == 48 && sizeof(KestrelRequest) == 40);
static_assert(sizeof(KestrelTrack) == sizeof(TrackSlot) && sizeof(KestrelService) == 800);
static_assert(sizeof(KestrelFinding) == 64);

struct FoundService {
  explicit FoundService(const ServiceFinding& found) : finding(found) {
    if (found.labels) std::ranges::copy(textOf<char>(*found.labels), derivedLabel.begin());
  }

  ServiceFinding finding;
  std::array<char, kSurroundTextLength + 1> derivedLabel{};  // empty where the request's holds
};

}  // namespace

}  // namespace kestrel

struct KestrelAnalysis {
  explicit KestrelAnalysis(const kestrel::CheckedRequest& request);

  std::string layoutDescription;
  std::string surroundChannelOrder;
  // Its 5.1 mixes carry no label of their own here: the order is kept in UTF-8 above.
  kestrel::AudioServiceMapManager analyser;
  std::int32_t outcome = KESTREL_UNTOUCHED;
  std::vector<kestrel::FoundService> services;
  std::vector<KestrelFinding> findings;

 private:
  void analyse(bool surroundCheck);
  void findServices(kestrel::Diagnosis& diagnosis);
};

KestrelAnalysis::KestrelAnalysis(const kestrel::CheckedRequest& request)
    : layoutDescription(request.layoutDescription),
      surroundChannelOrder(request.surroundChannelOrder),
      analyser(layoutDescription, {}, false, request.streams, request.reportAll,
               request.surroundCheck) {
  analyse(request.surroundCheck);
}

void KestrelAnalysis::analyse(bool surroundCheck) {
  kestrel::Diagnosis diagnosis(analyser, layoutDescription, surroundChannelOrder, surroundCheck);
  if (analyser.detectServices() == 0) {
    diagnosis.explainDetection();
  } else {
    findServices(diagnosis);
  }
  diagnosis.explainElements();
  findings = diagnosis.takeFindings();
}

void KestrelAnalysis::findServices(kestrel::Diagnosis& diagnosis) {
  outcome = KESTREL_FILLED;
  services.reserve(analyser.expectedServices().size());
  kestrel::Assignment walk = analyser.assignment();
  while (walk.next()) {
    if (!diagnosis.explainFinding(walk.finding())) outcome = KESTREL_EMPTIED;
    services.emplace_back(walk.finding());
  }
  if (outcome == KESTREL_EMPTIED) services.clear();
  diagnosis.explainRest(walk.at());
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
  record.reported = 1;  // the walk passes the others by
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
      *analysis = new KestrelAnalysis(CheckedRequest(*request));
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
    const std::string totals = DescribedTotals(analysis->layoutDescription).spoken();
    const std::string sentence =
        findingText(analysis->findings[static_cast<std::size_t>(index)],
                    {analysis->layoutDescription, analysis->analyser.serviceList(), totals});
    return copyOut(sentence, text, capacity, needed);
  });
}

KestrelStatus kestrelDescribedTotals(const KestrelAnalysis* analysis, int32_t* totals,
                                     size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  return copyOut(DescribedTotals(analysis->layoutDescription).list(), totals, capacity, needed);
}
