// RawMedia as JSON: the form in which it crosses the pipe from the reader process.
#pragma once

#include <string>
#include <string_view>

#include "host/reading/raw_media.h"

namespace kestrel::host {

/// One line of ASCII, so that no text of a file can disturb the pipe.
std::string rawMediaToJson(const RawMedia& media);

/// Raises NotExamined when the text is not what rawMediaToJson writes.
RawMedia rawMediaFromJson(std::string_view json);

}  // namespace kestrel::host
