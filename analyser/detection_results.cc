// Turns what the tracks hold into the host's records.
#include <algorithm>
#include <cstddef>

#include "analyser/audio_service_map_manager.h"
#include "analyser/neighbours.h"
#include "analyser/slots.h"

namespace kestrel {

void AudioServiceMapManager::appendRecord(std::vector<ServiceMapResult>& results,
                                          const ServiceFinding& finding) const {
  const ExpectedService& service = *finding.service;
  ServiceMapResult& record = results.emplace_back();
  record.trackCount = finding.trackCount;
  record.reported = service.reported;
  record.isEmca = service.isEmca;
  record.requested = service.requested;
  if (finding.labels) {
    const auto text = textOf<wchar_t>(*finding.labels);
    record.label.assign(text.data(), text.size());
  } else if (!service.label.empty()) {
    record.label = service.label;
  }
  fillSlots(finding, fileTracks_, record.slots);
}

void AudioServiceMapManager::buildResults(std::vector<ServiceMapResult>& results,
                                          std::int32_t& status) {
  results.clear();
  // Right unless an EMCA service holds several programmes; then the vector grows.
  results.reserve(static_cast<std::size_t>(
      std::ranges::count(expectedServices(), true, &ExpectedService::reported)));
  Assignment assignment = this->assignment();
  while (assignment.next()) {
    if (!neighboursAgree(assignment.finding(), fileTracks_)) {
      results = std::vector<ServiceMapResult>();  // without storage
      status = NO_SERVICE_MAP_ITEM;
      return;
    }
    appendRecord(results, assignment.finding());
  }
}

}  // namespace kestrel
