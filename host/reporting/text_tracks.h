// The tracks of a file in the text for people: one line per track, with the services beside them.
#pragma once

#include <string>

#include "host/basics/text_columns.h"
#include "host/judging/result.h"

namespace kestrel::host {

/// The expected services stand beside the tracks, and those of the best candidate where they differ
/// or nothing is expected.
std::string textTracks(const FileResult& result, const TextStyle& style);

}  // namespace kestrel::host
