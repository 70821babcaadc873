// A result as text for people.
#pragma once

#include <string>

#include "host/basics/text_columns.h"
#include "host/judging/result.h"

namespace kestrel::host {

std::string textReport(const FileResult& result, const TextStyle& style);

}  // namespace kestrel::host
