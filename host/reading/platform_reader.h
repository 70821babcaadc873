// The reader of media files that this platform has.
#pragma once

#include <chrono>
#include <memory>

#include "host/reading/media_reader.h"

namespace kestrel::host {

/// Null where there is none: then the streams of a file come from elsewhere.
std::shared_ptr<const MediaReader> platformReader(std::chrono::milliseconds timeLimit);

}  // namespace kestrel::host
