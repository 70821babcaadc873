// The analysis part of the plain C interface.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "api/kestrel.h"
#include "api/service_map_result.h"
#include "plain_c/barrier.h"
#include "plain_c/described_totals.h"
#include "plain_c/finding_text.h"
#include "plain_c/kept_analysis.h"
#include "plain_c/request.h"

// The functions of the interface are global; what they use is in the namespace.
using namespace kestrel;

namespace {

static_assert(KESTREL_SLOTS == kSlotCount);
static_assert(sizeof(KestrelStream) == 48 && sizeof(KestrelRequest) == 40);
static_assert(sizeof(KestrelTrack) == sizeof(TrackSlot) && sizeof(KestrelService) == 800);
static_assert(sizeof(KestrelFinding) == 64);

void tell(const RefusedRequest& refused, std::size_t* badByte, std::int32_t* badStream) {
  if (badByte != nullptr) *badByte = refused.badByte;
  if (badStream != nullptr) *badStream = refused.badStream;
}

// The element with this index; nullptr if there is none.
template <class T>
const T* elementOf(const std::vector<T>& list, std::int32_t index) {
  const bool exists = index >= 0 && static_cast<std::size_t>(index) < list.size();
  return exists ? &list[static_cast<std::size_t>(index)] : nullptr;
}

KestrelService labelled(const KestrelAnalysis& analysis, const KeptService& service) {
  KestrelService record = service.record;
  record.label =
      service.takesHostsOrder ? analysis.surroundChannelOrder.c_str() : service.derivedLabel.data();
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
      *analysis = makeAnalysis(*request);
      return KESTREL_OK;
    } catch (const RefusedRequest& refused) {
      if (refused.status == KESTREL_BAD_TEXT) tell(refused, badByte, badStream);
      return refused.status;
    }
  });
}

void kestrelFreeAnalysis(KestrelAnalysis* analysis) { delete analysis; }

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
  const KeptService* const kept = elementOf(analysis->services, index);
  return kept == nullptr ? KESTREL_BAD_INDEX : copyOut(labelled(*analysis, *kept), *service);
}

KestrelStatus kestrelFindingCount(const KestrelAnalysis* analysis, int32_t* count) {
  if (anyNull(analysis, count)) return KESTREL_NULL_ARGUMENT;
  *count = static_cast<std::int32_t>(analysis->findings.size());
  return KESTREL_OK;
}

KestrelStatus kestrelGetFinding(const KestrelAnalysis* analysis, int32_t index,
                                KestrelFinding* finding) {
  if (anyNull(analysis, finding)) return KESTREL_NULL_ARGUMENT;
  const KestrelFinding* const kept = elementOf(analysis->findings, index);
  return kept == nullptr ? KESTREL_BAD_INDEX : copyOut(*kept, *finding);
}

KestrelStatus kestrelFindingText(const KestrelAnalysis* analysis, int32_t index, char* text,
                                 size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  const KestrelFinding* const finding = elementOf(analysis->findings, index);
  if (finding == nullptr) return KESTREL_BAD_INDEX;
  return guarded([=] { return copyOut(findingText(*finding, *analysis), text, capacity, needed); });
}

KestrelStatus kestrelDescribedTotals(const KestrelAnalysis* analysis, int32_t* totals,
                                     size_t capacity, size_t* needed) {
  if (analysis == nullptr) return KESTREL_NULL_ARGUMENT;
  return copyOut(DescribedTotals(analysis->layoutDescription).list(), totals, capacity, needed);
}
