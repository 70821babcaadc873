#include "analyser/audio_service_map_manager.h"

#include <string>
#include <utility>

#include "analyser/layout_description.h"

namespace kestrel {

AudioServiceMapManager::AudioServiceMapManager(std::string_view layoutDescription,
                                               FileStreams streams, bool reportAll,
                                               bool surroundCheck)
    : memory_(streams.list.get_allocator().resource()),
      hasStreams_(!streams.list.empty()),
      surroundCheck_(surroundCheck),
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
  placement_ = placeServices(expectedServices_, fileTracks_, surroundCheck_, memory_);
  disagreements_ = findDisagreements(placement_.services, fileTracks_, memory_);
  return disagreements_.empty() ? Outcome::kFilled : Outcome::kEmptied;
}

std::vector<ServiceMapResult> AudioServiceMapManager::buildResults(
    std::wstring_view surroundChannelOrder) const {
  std::vector<ServiceMapResult> results;
  results.reserve(placement_.services.size());
  for (const PlacedService& placed : placement_.services) {
    const ExpectedService& service = expectedServices_[static_cast<std::size_t>(placed.service)];
    ServiceMapResult& record = results.emplace_back();
    fillSlots(placed, fileTracks_, record.slots);
    record.trackCount = placed.trackCount;
    record.reported = service.reported ? 1 : 0;
    record.isEmca = service.isEmca ? 1 : 0;
    record.requested = service.requested ? 1 : 0;
    if (placed.takesHostsOrder) record.label = surroundChannelOrder;
    if (placed.labels) {
      const auto text = textOf(*placed.labels);
      record.label = std::wstring(text.begin(), text.end());
    }
  }
  return results;
}

}  // namespace kestrel
