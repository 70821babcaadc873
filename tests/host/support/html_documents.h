// Results of made-up files, for the tests of pages.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "host/basics/json.h"

namespace kestrel::host {

/// Eight tracks, held against a declared code of 5.1 and stereo: the stereo pair differs in
/// format, a label stands on a track of its own, and the labels speak for another layout.
Json brokenDocument();

/// Four tracks that are identified: stereo, and Dolby E of two programmes on the second pair.
Json codedDocument();

/// Two tracks that conform.
Json conformingDocument();

/// A file that is no media file, with a name that attacks the page.
Json unexaminedDocument();

/// The four.
Json allDocuments();

/// As a line of results.
std::string line(const Json& document);

}  // namespace kestrel::host
