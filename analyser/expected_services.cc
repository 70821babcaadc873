#include "analyser/expected_services.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "analyser/layout_description.h"
#include "analyser/track_number_counter.h"

namespace kestrel {

namespace {

void readService(std::string_view element, bool reportAll, ExpectedService& service) {
  const bool silent = isSilent(element);
  service.element = element;
  service.streamType = serviceNamed(element);
  service.trackCount = tracksOf(service.streamType);
  service.reported = reportAll || !silent;
  service.requested = reportAll && !silent;
  service.isEmca = service.streamType == kEmca;
}

std::uint32_t tracksNeeded(const ExpectedService& service) {
  return static_cast<std::uint32_t>(std::max(service.trackCount, 0));
}

// Takes all numbers of a call in one step, so that they are consecutive.
void numberTracks(std::span<ExpectedService> services, std::uint32_t total) {
  std::int32_t next = takeTrackNumbers(total);
  for (ExpectedService& service : services) {
    service.firstTrack = next;
    next = trackNumberAfter(next, tracksNeeded(service));
  }
}

}  // namespace

ExpectedServices readExpectedServices(std::string_view serviceList, bool reportAll,
                                      std::pmr::memory_resource* memory) {
  ExpectedServices services(memory);
  const auto commas = static_cast<std::size_t>(std::ranges::count(serviceList, ','));
  services.reserve(commas + 1);
  std::uint32_t tracks = 0;
  while (!serviceList.empty()) {
    ExpectedService& service = services.emplace_back();
    service.index = static_cast<std::int32_t>(services.size() - 1);
    readService(takeElement(serviceList), reportAll, service);
    tracks += tracksNeeded(service);
  }
  numberTracks(services, tracks);
  return services;
}

}  // namespace kestrel
