#include "analyser/audio_service_map_manager.h"

#include <array>
#include <string>
#include <utility>

#include "analyser/layout_description.h"

namespace kestrel {

namespace {

constexpr std::array<TrackSlot, kSlotCount> kUnusedSlots{};

}  // namespace

AudioServiceMapManager::AudioServiceMapManager(std::string_view layoutDescription,
                                               FileStreams streams, bool reportAll)
    : memory_(streams.list.get_allocator().resource()),
      hasStreams_(!streams.list.empty()),
      fileTrackCount_(countFileTracks(streams.list)),
      expectedServices_(readExpectedServices(findServiceList(layoutDescription, fileTrackCount_),
                                             reportAll, memory_)),
      fileTracks_(std::move(streams)),
      placement_{PlacedServices(memory_), {}},
      disagreements_(memory_) {}

Outcome AudioServiceMapManager::detectServices() {
  if (!hasStreams_ || expectedServices_.empty()) return Outcome::kUntouched;
  misalignment_ = findMisalignment(expectedServices_, fileTracks_);
  if (misalignment_) return Outcome::kUntouched;
  placement_ = placeServices(expectedServices_, fileTracks_, memory_);
  disagreements_ = findDisagreements(placement_.services, fileTracks_, memory_);
  return disagreements_.empty() ? Outcome::kFilled : Outcome::kEmptied;
}

std::vector<ServiceMapResult> AudioServiceMapManager::buildResults(
    std::wstring_view surroundChannelOrder) const {
  std::vector<ServiceMapResult> results;
  results.reserve(placement_.services.size());
  for (const PlacedService& placed : placement_.services) {
    const ExpectedService& service = *placed.service;
    // Copying unused slots is much faster than setting each of their fields.
    ServiceMapResult& record =
        results.emplace_back(kUnusedSlots, placed.trackCount, service.reported, service.isEmca,
                             service.requested, std::wstring());
    fillSlots(placed, fileTracks_, record.slots);
    if (placed.takesHostsOrder) record.label = surroundChannelOrder;
    if (placed.labels) {
      const auto text = textOf(*placed.labels);
      record.label = std::wstring(text.begin(), text.end());
    }
  }
  return results;
}

}  // namespace kestrel
