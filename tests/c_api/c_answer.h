// What an analysis of the plain C interface says, read in full, and the request for it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "api/kestrel.h"
#include "tests/plain/plain_service_map.h"

namespace kestrel::test {

struct Answer {
  plain::PlainResult result;  ///< the outcome alone
  std::uint32_t trackTotal = 0;
  std::vector<KestrelService> services;
  std::vector<std::string> labels;
  std::vector<KestrelFinding> findings;
  std::vector<std::string> sentences;
};

/// Raises std::runtime_error when a call fails that must not.
Answer answerOf(const KestrelAnalysis* analysis);

/// Requests the analysis of an input whose description is UTF-8. Raises as answerOf() does.
Answer answerTo(const plain::ServiceMapInput& input);

}  // namespace kestrel::test
