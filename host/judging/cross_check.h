// The layout code that a file declares, held against all else that is known about it.
#pragma once

#include <optional>

#include "host/evidence/tracks.h"
#include "host/judging/library_analysis.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// The sources of evidence, by the names that results give them.
inline constexpr char kDeclaredCode[] = "declared code";
inline constexpr char kExpectedMap[] = "expected map";
inline constexpr char kTracks[] = "tracks";
inline constexpr char kLabels[] = "labels";

struct CrossCheckInput {
  const Expectation& declared;  ///< the expectation that the declared code makes
  /// What the user expects, as its services; empty when nothing, or nothing but the declaration.
  const std::vector<ResultService>& expected;
  const TrackMap& map;
  const LibraryStreams& streams;
  const std::vector<Candidate>& identification;
};

CrossCheck crossCheck(const CrossCheckInput& input);

/// The layout for which most of the sources of evidence speak.
Majority evidenceMajority(const CrossCheckInput& input);

}  // namespace kestrel::host
