// What a file IS: every layout of the catalogue that its tracks can carry, the best supported
// first.
#pragma once

#include <string>
#include <vector>

#include "host/evidence/tracks.h"
#include "host/judging/catalogue_items.h"
#include "host/judging/library_analysis.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// Layouts with equal scores stand in the catalogue's order. None when no layout fits.
std::vector<Candidate> identify(const TrackMap& map, const LibraryStreams& streams);

/// The names of the best candidates, quoted: several when nothing tells them apart.
std::string bestInWords(const std::vector<Candidate>& candidates);

/// What the labels say for (above 0) or against (below 0) the services of an item.
std::vector<Reason> labelReasons(const CatalogueItem& item, const TrackMap& map);

std::int32_t pointsOf(const std::vector<Reason>& reasons);

}  // namespace kestrel::host
