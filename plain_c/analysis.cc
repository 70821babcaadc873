// The analysis part of the plain C interface. A request is given to the same analyser as the
// records of the C++ interface, so that both always come to the same verdict. Services are written
// out as records when the host asks for them.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "analyser/layout_description.h"
#include "analyser/slots.h"
#include "api/kestrel.h"
#include "api/service_map_result.h"
#include "plain_c/barrier.h"
#include "plain_c/described_totals.h"
#include "plain_c/finding_text.h"
#include "plain_c/kept_analysis.h"
#include "plain_c/request.h"

// The functions of the interface are global; what they use is not.
using namespace kestrel;

namespace {

static_assert(KESTREL_SLOTS == kSlotCount);
static_assert(sizeof(KestrelStream) == 48 && sizeof(KestrelRequest) == 40);
static_assert(sizeof(KestrelTrack) == sizeof(TrackSlot) && sizeof(KestrelService) == 800);
static_assert(sizeof(KestrelFinding) == 64);

void tell(const BadText& bad, std::size_t* badByte, std::int32_t* badStream) {
  if (badByte != nullptr) *badByte = bad.byte;
  if (badStream != nullptr) *badStream = bad.stream;
}

template <class List>
bool contains(const List& list, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.size();
}

KestrelService writtenOut(const KestrelAnalysis& analysis, const KeptService& service) {
  KestrelService record{};
  record.trackCount = service.trackCount;
  record.serviceIndex = service.index;
  record.streamType = service.streamType;
  record.reported = 1;  // the walk passes the others by
  record.isEmca = service.isEmca ? 1 : 0;
  record.requested = service.requested ? 1 : 0;
  record.label = service.derivedLabel.data();
  if (service.derivedLabel[0] == '\0' && service.streamType == k51Mix)
    record.label = analysis.surroundChannelOrder.data();
  std::ranges::fill(record.slots, KestrelTrack{-1, -1, -1, -1, -1});
  fillSlots(service, analysis.tracks, record.slots);
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
      *analysis = makeAnalysis(CheckedRequest(*request));
      return KESTREL_OK;
    } catch (const RefusedRequest& refused) {
      if (refused.status == KESTREL_BAD_TEXT) tell(refused.badText, badByte, badStream);
      return refused.status;
    }
  });
}

void kestrelFreeAnalysis(KestrelAnalysis* analysis) { freeAnalysis(analysis); }

KestrelStatus kestrelOutcome(const KestrelAnalysis* analysis, int32_t* outcome,
                             uint32_t* trackTotal) {
  if (anyNull(analysis, outcome)) return KESTREL_NULL_ARGUMENT;
  *outcome = analysis->outcome;
  if (trackTotal != nullptr) *trackTotal = analysis->trackTotal;
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
    const std::string_view list =
        findServiceList(analysis->layoutDescription, analysis->trackTotal);
    const std::string sentence = findingText(analysis->findings[static_cast<std::size_t>(index)],
                                             {analysis->layoutDescription, list, totals});
    return copyOut(sentence, text, capacity, needed);
  });
}

KestrelStatus kestrelDescribedTotals(const KestrelAnalysis* analysis, int32_t* totals,
                                     size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  return copyOut(DescribedTotals(analysis->layoutDescription).list(), totals, capacity, needed);
}
