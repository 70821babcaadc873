// A result as text for people.
#pragma once

#include <string>

#include "host/file_result.h"
#include "host/text_style.h"

namespace kestrel::host {

std::string textReport(const FileResult& result, const TextStyle& style);

}  // namespace kestrel::host
