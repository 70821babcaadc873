// Turns what the tracks hold into the host's records, and tests that the tracks of one service go
// together.
#include <algorithm>
#include <cstddef>

#include "analyser/audio_service_map_manager.h"

namespace kestrel {

bool AudioServiceMapManager::tracksCompatible(std::int32_t a, std::int32_t b) const noexcept {
  const AudioStreamInfo& first = streams_[static_cast<std::size_t>(a)];
  const AudioStreamInfo& second = streams_[static_cast<std::size_t>(b)];
  return first.formatKey1 == second.formatKey1 && first.formatKey2 == second.formatKey2 &&
         first.formatKey3 == second.formatKey3;
}

// Each track stands for the last stream with its track number. A missing track agrees with nothing.
bool AudioServiceMapManager::neighboursAgree(const ServiceFinding& finding) const noexcept {
  if (finding.trackCount < 2 || finding.service->isEmca) return true;
  if (finding.found < finding.trackCount) return false;
  TrackCursor at = finding.first;
  for (std::int64_t i = fileTracks_.restOfStream(at); i < finding.trackCount;
       i += fileTracks_.restOfStream(at)) {
    const TrackCursor next = fileTracks_.nextStream(at);
    if (!tracksCompatible(fileTracks_.tracks(at).lastStream, fileTracks_.tracks(next).lastStream))
      return false;
    at = next;
  }
  return true;
}

void AudioServiceMapManager::fillRecord(ServiceMapResult& record,
                                        const ServiceFinding& finding) const {
  TrackCursor at = finding.first;
  for (std::int32_t i = 0; i < finding.found; ++i, at = fileTracks_.advance(at, 1)) {
    const StreamTracks& tracks = fileTracks_.tracks(at);
    record.slots[static_cast<std::size_t>(i)] = {
        tracks.trackNumber, tracks.group, fileTracks_.info(at).group, fileTracks_.indexInGroup(at)};
  }
  record.trackCount = finding.trackCount;
  record.reported = finding.service->reported ? 1 : 0;
  record.isEmca = finding.service->isEmca ? 1 : 0;
  record.requested = finding.service->requested ? 1 : 0;
  record.label = finding.label;
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
    fillRecord(results.emplace_back(), assignment.finding());
  }
}

}  // namespace kestrel
