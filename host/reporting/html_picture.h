// The picture of a file's tracks: the expected services above what the tracks carry, the tracks on
// which they disagree marked.
#pragma once

#include "host/basics/json.h"
#include "host/reporting/html_tracks.h"

namespace kestrel::host {

/// What the template of a result draws; null when there is nothing to draw.
Json pictureView(const Json& document, const TrackMarks& marks);

}  // namespace kestrel::host
