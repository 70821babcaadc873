// The picture of the tracks in rows and columns of text.
#pragma once

#include "host/basics/json.h"
#include "host/reporting/html_marks.h"

namespace kestrel::host {

/// A row per column of the picture.
Json trackRows(const Json& document, const TrackMarks& marks);

}  // namespace kestrel::host
