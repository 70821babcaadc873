// The services that a layout description expects of a file with a given track total.
#pragma once

#include <cstdint>
#include <string_view>

#include "analyser/scratch_array.h"
#include "analyser/track_number_counter.h"
#include "api/catalogue_ids.h"

namespace kestrel {

/// One element of the chosen entry.
struct ExpectedService {
  std::wstring_view label;       // the surround channel order for a 5.1 Mix, else empty
  std::int32_t trackCount = -1;  // tracks that it occupies; -1 for an unknown name
  std::int32_t firstTrack = -1;  // its first track number; the others follow
  StreamType streamType = kUnknown;
  bool reported = false;
  bool requested = false;  // meaningful with reportAll only, else false
  bool isEmca = false;

  /// Track number of the service's i-th track; -1 for an i outside 0 .. trackCount - 1.
  constexpr std::int32_t track(std::int32_t i) const {
    if (i < 0 || i >= trackCount) return -1;
    return trackNumberAfter(firstTrack, static_cast<std::uint32_t>(i));
  }
};

using ExpectedServices = ScratchArray<ExpectedService, 32>;

/// Fills `services` from the service list of an entry, in the order of the text. Services of known
/// names take their track numbers from the process-wide counter. Raises std::bad_alloc before any
/// number is taken.
void readExpectedServices(std::string_view serviceList, bool reportAll, ExpectedServices& services);

}  // namespace kestrel
