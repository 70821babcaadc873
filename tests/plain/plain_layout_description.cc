// An entry is found by a regular-expression search that starts again behind each match. The list of
// the chosen entry is read as lines that end in a comma, and each line becomes one service. The
// patterns are compiled anew by every call: nothing here is done for speed.
#include "tests/plain/plain_layout_description.h"

#include <regex>
#include <sstream>

namespace kestrel::plain {
namespace {

std::regex assembleEntryPattern() {
  std::ostringstream pattern;
  pattern << "T"
          << "([0-9]{1,2})"
          << "=([a-zA-Z517,-. ]+)";
  return std::regex(pattern.str(), std::regex::ECMAScript);
}

std::string withoutHyphens(const std::string& text) {
  const std::regex hyphen("-", std::regex::ECMAScript);
  return std::regex_replace(text, hyphen, "");
}

std::int32_t readNumber(const std::string& digits) {
  std::istringstream stream(digits);
  std::int32_t number = 0;
  stream >> number;
  return number;
}

std::int32_t nameToTrackCount(const std::string& name) {
  if (name == "Mono") return 1;
  if (name == "Stereo") return 2;
  if (name == "5.1 Mix") return 6;
  if (name == "7.1 Mix") return 8;
  return -1;
}

StreamType trackCountToStreamType(std::int32_t trackCount) {
  switch (trackCount) {
    case 0:
      return kDolbyE;
    case 1:
      return kMono;
    case 2:
      return kStereo;
    case 6:
      return k51Mix;
    case 8:
      return k71Mix;
    default:
      return kUnknown;
  }
}

// Signed overflow is undefined, so the counter goes over its end as an unsigned number.
std::int32_t plusWrapping(std::int32_t number, std::int32_t increment) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(number) +
                                   static_cast<std::uint32_t>(increment));
}

void numberTracks(PlainExpectedService& service, std::int32_t& counter) {
  if (service.trackCount <= 0) return;
  for (std::int32_t i = 0; i < service.trackCount; ++i) {
    service.tracks[static_cast<std::size_t>(i)] = plusWrapping(counter, 1 + i);
  }
  counter = plusWrapping(counter, service.trackCount);
}

PlainExpectedService readElement(std::string element, bool reportAll, std::int32_t& counter) {
  const char first = element.empty() ? '\0' : element[0];
  if (first == '-') element = withoutHyphens(element);
  PlainExpectedService service;
  service.isEmca = element == "EMCA";
  service.trackCount = service.isEmca ? 2 : nameToTrackCount(element);
  service.streamType = service.isEmca ? kEmca : trackCountToStreamType(service.trackCount);
  service.reported = first != '-';
  numberTracks(service, counter);
  if (reportAll) {
    service.requested = service.reported;
    service.reported = true;
  }
  return service;
}

std::vector<PlainExpectedService> readList(const std::string& list, bool reportAll,
                                           std::int32_t& counter) {
  std::vector<PlainExpectedService> services;
  std::istringstream stream(list);
  for (std::string element; std::getline(stream, element, ',');) {
    services.push_back(readElement(element, reportAll, counter));
  }
  return services;
}

}  // namespace

std::vector<PlainExpectedService> parse(const std::string& description,
                                        std::uint32_t fileTrackCount, bool reportAll,
                                        std::int32_t& counter) {
  const std::regex pattern = assembleEntryPattern();
  std::string rest = description;
  std::smatch match;
  while (std::regex_search(rest, match, pattern)) {
    const std::int32_t total = readNumber(match[1].str());
    if (static_cast<std::uint32_t>(total) == fileTrackCount) {
      return readList(match[2].str(), reportAll, counter);
    }
    rest = match.suffix().str();
  }
  return {};
}

}  // namespace kestrel::plain
