// Names of files from a list that another program made: `find -print0`, an asset system.
#pragma once

#include <filesystem>
#include <istream>
#include <vector>

namespace kestrel::host {

enum class NameEnd : char {
  kNewline = '\n',
  kNull = '\0',  ///< names may hold newlines
};

/// The names as they stand, byte by byte; empty ones are left out. The last one needs no end.
std::vector<std::filesystem::path> namesIn(std::istream& list, NameEnd end);

/// @param file  "-": the standard input. Raises UsageError when it cannot be read.
std::vector<std::filesystem::path> namesFrom(const std::filesystem::path& file, NameEnd end);

}  // namespace kestrel::host
