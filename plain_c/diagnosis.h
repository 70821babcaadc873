// Explains why a file does not carry its services, and what is unusual about those that it carries.
#pragma once

#include <memory_resource>
#include <vector>

#include "analyser/audio_service_map_manager.h"
#include "api/kestrel.h"
#include "plain_c/request.h"

namespace kestrel {

/// The findings of an analysis whose detectServices() has returned `outcome`: first the errors,
/// then the others. Either are in the order of the services; a finding on no service comes last.
/// Raises std::bad_alloc.
std::vector<KestrelFinding> diagnose(const AudioServiceMapManager& analyser, Outcome outcome,
                                     const CheckedRequest& request,
                                     std::pmr::memory_resource* memory);

}  // namespace kestrel
