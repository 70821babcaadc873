// The look at an input file before any reader touches it, so that the usual mistakes get a plain
// answer and no pipe or device is ever read.
#pragma once

#include <filesystem>

namespace kestrel::host {

/// Raises NotExamined unless the path leads to a regular, readable, non-empty file.
void checkInputFile(const std::filesystem::path& file);

}  // namespace kestrel::host
