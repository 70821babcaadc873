#include "plain_c/kept_analysis.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "analyser/audio_service_map_manager.h"
#include "analyser/call_memory.h"
#include "plain_c/diagnosis.h"
#include "plain_c/request.h"

namespace kestrel {

namespace {

static_assert(KESTREL_UNTOUCHED == static_cast<std::int32_t>(Outcome::kUntouched));
static_assert(KESTREL_EMPTIED == static_cast<std::int32_t>(Outcome::kEmptied));
static_assert(KESTREL_FILLED == static_cast<std::int32_t>(Outcome::kFilled));

KestrelTrack trackOf(const TrackSlot& slot) {
  return {slot.trackNumber, slot.group, slot.sourceGroup, slot.indexInGroup, -1};
}

void keep(const PlacedService& placed, const FileTracks& tracks, KeptService& kept) {
  const ExpectedService& service = *placed.service;
  kept.record.trackCount = placed.trackCount;
  kept.record.serviceIndex = service.index;
  kept.record.streamType = service.streamType;
  kept.record.reported = 1;  // the others are not placed
  kept.record.isEmca = service.isEmca ? 1 : 0;
  kept.record.requested = service.requested ? 1 : 0;
  std::array<TrackSlot, kSlotCount> slots{};
  fillSlots(placed, tracks, slots);
  std::ranges::transform(slots, kept.record.slots, trackOf);
  if (placed.labels) std::ranges::copy(textOf(*placed.labels), kept.derivedLabel.begin());
  kept.takesHostsOrder = placed.takesHostsOrder;
}

std::vector<KeptService> keptServices(const AudioServiceMapManager& analyser) {
  const auto& placed = analyser.placement().services;
  std::vector<KeptService> kept;
  kept.reserve(placed.size());
  for (const PlacedService& service : placed)
    keep(service, analyser.fileTracks(), kept.emplace_back());
  return kept;
}

}  // namespace

KestrelAnalysis* makeAnalysis(const KestrelRequest& request) {
  CallMemory memory;
  CheckedRequest checked(request, memory.resource());
  auto kept = std::make_unique<KestrelAnalysis>();
  kept->layoutDescription = checked.layoutDescription;
  kept->surroundChannelOrder = checked.surroundChannelOrder;
  checked.layoutDescription = kept->layoutDescription;  // elements point into it
  AudioServiceMapManager analyser(checked.layoutDescription, std::move(checked.streams),
                                  checked.reportAll);
  const Outcome outcome = analyser.detectServices();
  kept->trackTotal = analyser.fileTrackCount();
  kept->outcome = static_cast<std::int32_t>(outcome);
  if (outcome == Outcome::kFilled) kept->services = keptServices(analyser);
  kept->findings = diagnose(analyser, outcome, checked, memory.resource());
  if (!kept->findings.empty())
    for (const ExpectedService& service : analyser.expectedServices())
      kept->elements.push_back(service.element);
  return kept.release();
}

}  // namespace kestrel
