// Writes out which tracks a finding was given.
#pragma once

#include <cstddef>
#include <cstdint>

#include "analyser/assignment.h"
#include "analyser/file_tracks.h"

namespace kestrel {

/// Fills one slot per track of the finding, from the first slot on. A slot is a TrackSlot or a
/// record with the same members.
template <class Slots>
void fillSlots(const ServiceFinding& finding, const FileTracks& tracks, Slots& slots) {
  TrackCursor at = finding.first;
  for (std::int32_t i = 0; i < finding.found; ++i, at = tracks.advance(at, 1)) {
    auto& slot = slots[static_cast<std::size_t>(i)];
    slot.trackNumber = tracks.tracks(at).trackNumber;
    slot.group = tracks.tracks(at).group;
    slot.sourceGroup = tracks.info(at).group;
    slot.indexInGroup = tracks.indexInGroup(at);
  }
}

}  // namespace kestrel
