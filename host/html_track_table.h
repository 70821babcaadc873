// The picture of the tracks in rows and columns of text.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "host/html_marks.h"

namespace kestrel::host {

/// A row per column of the picture.
nlohmann::ordered_json trackRows(const nlohmann::ordered_json& document, const TrackMarks& marks);

}  // namespace kestrel::host
