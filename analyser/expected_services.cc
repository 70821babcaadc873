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

// Sets each field in its place: a record that is made elsewhere and copied here has to wait until
// its small fields can be read again as parts of larger ones.
void readService(const LayoutElement& element, bool reportAll, ExpectedService& service) {
  const bool silent = isSilent(element.text);
  service.label = {};
  service.trackCount = tracksOf(element.service);
  service.streamType = element.service;
  service.reported = reportAll || !silent;
  service.requested = reportAll && !silent;
  service.isEmca = element.service == kEmca;
}

}  // namespace

void readExpectedServices(std::string_view serviceList, bool reportAll,
                          ExpectedServices& services) {
  const std::span<ExpectedService> records = services.reset(countElements(serviceList));
  std::uint32_t total = 0;
  std::size_t next = 0;
  while (const auto element = takeElement(serviceList)) {
    ExpectedService& service = records[next++];
    readService(*element, reportAll, service);
    // From 0 as yet: the counter is asked when all are known.
    service.firstTrack = static_cast<std::int32_t>(total);
    if (service.trackCount > 0) total += static_cast<std::uint32_t>(service.trackCount);
  }
  const auto first = static_cast<std::uint32_t>(takeTrackNumbers(total));
  for (ExpectedService& service : records)
    service.firstTrack = trackNumberAfter(service.firstTrack, first);
}

}  // namespace kestrel
