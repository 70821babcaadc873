// The entry is walked twice, once to count its elements and once to read them, so that room is made
// at one stroke. All track numbers of a call are taken at one stroke too.
#include "analyser/expected_services.h"

#include <cstddef>
#include <span>

#include "analyser/layout_description.h"

namespace kestrel {

namespace {

std::size_t countElements(std::string_view serviceList) {
  std::size_t count = 0;
  while (takeElement(serviceList)) ++count;
  return count;
}

ExpectedService toService(const ServiceElement& element, bool reportAll) {
  ExpectedService service;
  service.streamType = element.streamType;
  service.trackCount = element.trackCount;
  service.isEmca = element.streamType == kEmca;
  service.reported = reportAll || !element.silent;
  service.requested = reportAll && !element.silent;
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

void readExpectedServices(std::string_view description, std::uint32_t fileTrackCount,
                          bool reportAll, ExpectedServices& services) {
  const auto entry = findEntry(description, fileTrackCount);
  if (!entry) return;
  std::string_view list = entry->serviceList;
  services.reset(countElements(list));
  std::size_t next = 0;
  while (const auto element = takeElement(list))
    services.records()[next++] = toService(readElement(*element), reportAll);
  numberTracks(services.records());
}

}  // namespace kestrel
