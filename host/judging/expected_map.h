// The expected services laid over the tracks of a file: which of them hold, and what is wrong or
// odd about the others. Whether the file carries them is the library's answer; here it is put in
// the words of tracks and formats.
#pragma once

#include <vector>

#include "host/evidence/tracks.h"
#include "host/judging/library_analysis.h"
#include "host/judging/result.h"

namespace kestrel::host {

struct ExpectedMap {
  bool isCarried = false;
  std::vector<ResultService> services;
  std::vector<Finding> findings;
};

/// @param reportAll  services after "-" are listed too
ExpectedMap expectedMap(const TrackMap& map, const LibraryStreams& streams,
                        const std::string& description, const LabelOptions& options,
                        bool reportAll);

}  // namespace kestrel::host
