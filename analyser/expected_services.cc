// The list is walked twice, once to count its elements and once to read them, so that room is made
// at one stroke. All track numbers of a call are taken at one stroke too.
#include "analyser/expected_services.h"

#include <algorithm>
#include <cstddef>
#include <span>

#include "analyser/layout_description.h"

namespace kestrel {

namespace {

// As many as takeElement() will take: a comma at the end adds none.
std::size_t countElements(std::string_view serviceList) {
  const auto commas = static_cast<std::size_t>(std::ranges::count(serviceList, ','));
  return serviceList.ends_with(',') ? commas : commas + 1;
}

ExpectedService readService(std::string_view element, bool reportAll) {
  ExpectedService service;
  service.streamType = serviceNamed(element);
  service.trackCount = tracksOf(service.streamType);
  service.isEmca = service.streamType == kEmca;
  service.reported = reportAll || !isSilent(element);
  service.requested = reportAll && !isSilent(element);
  return service;
}

void numberTracks(std::span<ExpectedService> services) {
  std::uint32_t total = 0;
  for (const ExpectedService& service : services)
    if (service.trackCount > 0) total += static_cast<std::uint32_t>(service.trackCount);
  std::int32_t next = takeTrackNumbers(total);
  for (ExpectedService& service : services) {
    if (service.trackCount <= 0) continue;
    service.firstTrack = next;
    next = trackNumberAfter(next, static_cast<std::uint32_t>(service.trackCount));
  }
}

}  // namespace

void readExpectedServices(std::string_view serviceList, bool reportAll,
                          ExpectedServices& services) {
  services.reset(countElements(serviceList));
  std::size_t next = 0;
  while (const auto element = takeElement(serviceList))
    services.records()[next++] = readService(*element, reportAll);
  numberTracks(services.records());
}

}  // namespace kestrel
