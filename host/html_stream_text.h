// An audio stream and its programme in words.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace kestrel::host {

/// "L R C" of an array of texts.
std::string labelsText(const nlohmann::ordered_json& labels);

/// "Stream 2003 / 2004-1: Dolby E, programme 1, 6 channels, 48000 Hz, 16 bits, L R C LFE Ls Rs".
std::string streamText(const nlohmann::ordered_json& stream);

/// "1: L R C LFE Ls Rs", or "1: 6 channels" without labels.
std::string programmeText(const nlohmann::ordered_json& stream);

}  // namespace kestrel::host
