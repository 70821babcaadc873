// The second test: neighbouring tracks of one ordinary service must go together.
#pragma once

#include <cstdint>
#include <optional>

#include "analyser/assignment.h"
#include "analyser/file_tracks.h"
#include "analyser/tracks_compatible.h"

namespace kestrel {

/// Walks the places in a finding where one stream's tracks end and another's begin, and stops at
/// those whose tracks do not go together. Tracks of one stream always do. A pair-coded finding, and
/// one of a single track, has no such places.
class DisagreementWalk {
 public:
  DisagreementWalk(const ServiceFinding& finding, const FileTracks& tracks) noexcept
      : tracks_(tracks),
        slots_(finding.service->isEmca || finding.trackCount < 2 ? 0 : finding.found),
        right_(finding.first) {}

  /// Moves to the next disagreement; false when there is none left.
  bool next() noexcept {
    while (slots_ > 0 && slot_ + tracks_.restOfStream(right_) < slots_) {
      left_ = right_;
      slot_ += tracks_.restOfStream(left_);
      right_ = left_.nextStream();
      if (!tracksCompatible(tracks_.tracks(left_), tracks_.tracks(right_))) return true;
    }
    return false;
  }

  TrackCursor left() const { return left_; }
  TrackCursor right() const { return right_; }
  /// The slot of the right-hand track.
  std::int32_t slot() const { return static_cast<std::int32_t>(slot_); }

 private:
  const FileTracks& tracks_;
  std::int64_t slots_;
  std::int64_t slot_ = 0;
  TrackCursor left_;
  TrackCursor right_;
};

/// Whether a finding lacks tracks that a neighbour test would need. A missing track agrees with
/// nothing, but a service of one track has no neighbours to test.
inline bool lacksNeighbours(const ServiceFinding& finding) {
  return finding.trackCount > 1 && finding.found < finding.trackCount;
}

inline bool neighboursAgree(const ServiceFinding& finding, const FileTracks& tracks) noexcept {
  return !lacksNeighbours(finding) && !DisagreementWalk(finding, tracks).next();
}

}  // namespace kestrel
