// The first test of a file against the expected services: pair-coded services must meet pair-coded
// tracks, and the others ordinary ones.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "analyser/expected_services.h"
#include "analyser/file_tracks.h"

namespace kestrel {

/// Where services and tracks stop lining up.
struct Misalignment {
  std::size_t service = 0;  // the service that does not meet what it should
  std::int32_t slot = 0;    // and which of its tracks
  TrackCursor at;           // what it meets instead; the end of the tracks when the file lacks one
};

/// Nothing when each pair-coded service meets a run of pair-coded tracks of one group and each
/// other service as many ordinary tracks as it occupies; else the first place where that fails.
/// Tracks left over do no harm. Services of unknown names meet nothing and hold no test up.
std::optional<Misalignment> findMisalignment(std::span<const ExpectedService> services,
                                             const FileTracks& tracks) noexcept;

}  // namespace kestrel
