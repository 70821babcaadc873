// What an analysis of the plain C interface keeps: everything that a host may ask for. The analyser
// itself exists only during the call.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "api/kestrel.h"

namespace kestrel {

/// A service that was found.
struct KeptService {
  KestrelService record{};  // without its label
  /// NUL-terminated; empty if the label is not derived from the tracks.
  std::array<char, 16> derivedLabel{};
  bool takesHostsOrder = false;
};

}  // namespace kestrel

struct KestrelAnalysis {
  std::string layoutDescription;
  std::string surroundChannelOrder;
  std::uint32_t trackTotal = 0;
  std::int32_t outcome = KESTREL_UNTOUCHED;
  std::vector<kestrel::KeptService> services;
  std::vector<KestrelFinding> findings;
  /// The elements of the expected services, as parts of layoutDescription; empty if there are no
  /// findings.
  std::vector<std::string_view> elements;
};

namespace kestrel {

/// Analyses a request. The caller deletes the result. Raises RefusedRequest or std::bad_alloc.
KestrelAnalysis* makeAnalysis(const KestrelRequest& request);

}  // namespace kestrel
