// Turns what the tracks hold into the host's records, and tests that the tracks of one service go
// together.
#include <algorithm>
#include <cstddef>
#include <string>

#include "analyser/audio_service_map_manager.h"
#include "analyser/tracks_compatible.h"

namespace kestrel {

// Each track stands for the last stream with its track number. A missing track agrees with nothing.
bool AudioServiceMapManager::neighboursAgree(const ServiceFinding& finding) const noexcept {
  if (finding.trackCount < 2 || finding.service->isEmca) return true;
  if (finding.found < finding.trackCount) return false;
  TrackCursor at = finding.first;
  for (std::int64_t i = fileTracks_.restOfStream(at); i < finding.trackCount;
       i += fileTracks_.restOfStream(at)) {
    const TrackCursor next = fileTracks_.nextStream(at);
    if (!tracksCompatible(fileTracks_.lastOfNumber(at), fileTracks_.lastOfNumber(next)))
      return false;
    at = next;
  }
  return true;
}

void AudioServiceMapManager::appendRecord(std::vector<ServiceMapResult>& results,
                                          const ServiceFinding& finding) const {
  const ExpectedService& service = *finding.service;
  // Built in place from the constant slots: copying them is far quicker than setting each field.
  ServiceMapResult& record =
      results.emplace_back(kUnusedSlots, finding.trackCount, service.reported, service.isEmca,
                           service.requested, std::wstring(finding.label));
  TrackCursor at = finding.first;
  for (std::int32_t i = 0; i < finding.found; ++i, at = fileTracks_.advance(at, 1)) {
    const StreamTracks& tracks = fileTracks_.tracks(at);
    record.slots[static_cast<std::size_t>(i)] = {
        tracks.trackNumber, tracks.group, fileTracks_.info(at).group, fileTracks_.indexInGroup(at)};
  }
}

void AudioServiceMapManager::buildResults(std::vector<ServiceMapResult>& results,
                                          std::int32_t& status) {
  results.clear();
  // Right unless an EMCA service holds several programmes; then the vector grows.
  results.reserve(static_cast<std::size_t>(
      std::ranges::count(expectedServices(), true, &ExpectedService::reported)));
  Assignment assignment = this->assignment();
  while (assignment.next()) {
    if (!neighboursAgree(assignment.finding())) {
      results = std::vector<ServiceMapResult>();  // without storage
      status = NO_SERVICE_MAP_ITEM;
      return;
    }
    appendRecord(results, assignment.finding());
  }
}

}  // namespace kestrel
