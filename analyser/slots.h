// Writes out which tracks a finding was given.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "analyser/assignment.h"
#include "analyser/file_tracks.h"

namespace kestrel {

/// Fills one slot per track of the finding, from the first slot on. A slot is a TrackSlot or a
/// record with the same members.
template <class Slots>
void fillSlots(const ServiceFinding& finding, const FileTracks& tracks, Slots& slots) {
  std::size_t slot = 0;
  const auto found = static_cast<std::size_t>(finding.found);
  for (TrackCursor at = finding.first; slot < found; at = tracks.nextStream(at)) {
    const StreamTracks& own = tracks.tracks(at);
    auto index = static_cast<std::uint32_t>(tracks.indexInGroup(at));  // wraps
    const std::size_t end =
        std::min(found, slot + static_cast<std::size_t>(tracks.restOfStream(at)));
    for (; slot < end; ++slot, ++index) {
      slots[slot].trackNumber = own.trackNumber;
      slots[slot].group = own.group;
      slots[slot].sourceGroup = own.sourceGroup;
      slots[slot].indexInGroup = static_cast<std::int32_t>(index);
    }
  }
}

}  // namespace kestrel
