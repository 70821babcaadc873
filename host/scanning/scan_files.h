// The files of a scan: those that are named, also in a list that another program made, whatever
// they are, and those below a named directory whose names end like a media file's.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::host {

struct ScanFiles {
  /// Each once, directories in the order of names. Texts, since a path takes many times their room.
  std::vector<std::string> files;
  std::vector<std::string> problems;  ///< a sentence for each place that cannot be looked into
};

/// Links to directories are not followed below a named directory, so that no link makes a circle.
ScanFiles filesOfScan(const std::vector<std::filesystem::path>& paths);

/// Whether a scan takes a file of this name from a directory; the case of letters does not count.
bool hasMediaExtension(const std::filesystem::path& file);

/// The extensions, each with its dot, separated by blanks.
std::string mediaExtensions();

enum class NameEnd : char {
  kNewline = '\n',
  kNull = '\0',  ///< names may hold newlines
};

/// The names as they stand, byte by byte; empty ones are left out. The last one needs no end.
/// @param list  "-": the standard input. Raises InputError when it cannot be read to its end
std::vector<std::filesystem::path> namesFrom(const std::filesystem::path& list, NameEnd end);

}  // namespace kestrel::host
