// The first test of a file against the expected services: pair-coded services must meet pair-coded
// tracks, and the others ordinary ones.
#pragma once

#include <span>

#include "analyser/expected_services.h"
#include "analyser/file_tracks.h"

namespace kestrel {

/// Whether each pair-coded service meets a run of pair-coded tracks of one group and each other
/// service as many ordinary tracks as it occupies. A track that the file lacks is a mismatch;
/// tracks left over are none. Services of unknown names meet nothing and hold no test up.
bool servicesAlign(std::span<const ExpectedService> services, const FileTracks& tracks) noexcept;

}  // namespace kestrel
