// The calls that the benchmarks time.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/plain/plain_service_map.h"

namespace kestrel::bench {

struct Case {
  std::string name;
  plain::ServiceMapInput input;
};

/// The layouts of everyday files, all of which the tracks carry, and one that they do not.
std::vector<Case> everydayCases();

/// A file of `streams` streams, numbered upwards, whose track total wraps to 2; with "T2=Stereo".
plain::ServiceMapInput manyStreams(std::size_t streams);

/// A description of about `length` bytes in which only the last entry fits.
plain::ServiceMapInput longDescription(std::size_t length);

/// `streams` streams of six channels and one number, on which as many 5.1 mixes look for labels.
/// The last label follows `10 * streams` blanks.
plain::ServiceMapInput streamsOfOneNumber(std::size_t streams);

/// A description of `services` elements that name nothing, each of which yields a finding.
plain::ServiceMapInput unknownServices(std::size_t services);

}  // namespace kestrel::bench
