// Says why a file does not carry its services, and what is odd about those that it carries.
#pragma once

#include <memory_resource>
#include <string_view>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "api/kestrel.h"

namespace kestrel {

/// What a diagnosis needs of the request.
struct DiagnosedRequest {
  std::string_view layoutDescription;  // which the expected services are parts of
  std::string_view surroundChannelOrder;
  bool surroundCheck = false;
};

/// The findings of an analysis whose detectServices() has returned `outcome`: errors first, then
/// the others, each in the order of the services, those on no service last. Raises std::bad_alloc.
std::vector<KestrelFinding> diagnose(const AudioServiceMapManager& analyser, Outcome outcome,
                                     const DiagnosedRequest& request,
                                     std::pmr::memory_resource* memory);

}  // namespace kestrel
