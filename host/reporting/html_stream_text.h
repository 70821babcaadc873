// An audio stream and its programme in words.
#pragma once

#include <string>

#include "host/basics/json.h"

namespace kestrel::host {

/// "L R C" of an array of texts.
std::string labelsText(const Json& labels);

/// "Stream 2003 / 2004-1: Dolby E, programme 1, 6 channels, 48000 Hz, 16 bits, L R C LFE Ls Rs".
std::string streamText(const Json& stream);

/// "1: L R C LFE Ls Rs", or "1: 6 channels" without labels.
std::string programmeText(const Json& stream);

}  // namespace kestrel::host
