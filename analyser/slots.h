// Writes out which tracks a finding was given.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "analyser/file_tracks.h"

namespace kestrel {

/// Fills one slot per track of a finding, from the first slot on. A finding has the cursor `first`
/// and the number `found`, a slot the members of a TrackSlot.
template <class Finding, class Slots>
void fillSlots(const Finding& finding, const TrackList& tracks, Slots& slots) {
  TrackCursor at = finding.first;
  for (std::int32_t slot = 0; slot < finding.found;) {
    const StreamTracks& own = tracks.tracks(at);
    auto index = static_cast<std::uint32_t>(tracks.indexInGroup(at));  // wraps
    const std::int32_t end = slot + std::min(finding.found - slot, tracks.restOfStream(at));
    for (; slot < end; ++slot, ++index) {
      auto& filled = slots[static_cast<std::size_t>(slot)];
      filled.trackNumber = own.trackNumber;
      filled.group = own.group;
      filled.sourceGroup = own.sourceGroup;
      filled.indexInGroup = static_cast<std::int32_t>(index);
    }
    if (slot < finding.found) at = at.nextStream();
  }
}

}  // namespace kestrel
