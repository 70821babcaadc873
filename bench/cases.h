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

}  // namespace kestrel::bench
