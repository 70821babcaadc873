// The services that a layout description expects of a file with a given track total.
#pragma once

#include <cstdint>
#include <memory_resource>
#include <string_view>
#include <vector>

#include "api/catalogue_ids.h"

namespace kestrel {

/// One element of the chosen entry.
struct ExpectedService {
  std::string_view element;      // as written, including a leading "-"
  std::int32_t index = 0;        // among the elements, from 0
  std::int32_t trackCount = -1;  // tracks that it occupies; -1 for an unknown name
  std::int32_t firstTrack = -1;  // its first track number; the others follow it
  StreamType streamType = kUnknown;
  bool reported = false;
  bool requested = false;  // false unless reportAll is set
  bool isEmca = false;
};

using ExpectedServices = std::pmr::vector<ExpectedService>;

/// The services of a service list, in the order of the text. Services of known names take their
/// track numbers from the process-wide counter. Raises std::bad_alloc before it takes any number.
ExpectedServices readExpectedServices(std::string_view serviceList, bool reportAll,
                                      std::pmr::memory_resource* memory);

}  // namespace kestrel
