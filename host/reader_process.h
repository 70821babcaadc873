// The child side of reading: the program, started by itself with a command that no user types,
// reads one file with libmediainfo and writes the raw fields to its standard output as JSON.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::host {

inline constexpr int kReaderCannotOpen = 3;  ///< exit code: libmediainfo cannot open the file

/// The arguments that make the program a reader process of the calling process.
std::vector<std::string> readerArguments(const std::filesystem::path& file,
                                         const std::string& parseSpeed);

/// Whether main's arguments, without the program's name, are those of a reader process.
bool isReaderCommand(const std::vector<std::string>& arguments);

/// Does the reading and ends the process, without running anything on the way out: libmediainfo's
/// own clean-up is of no use to a process that ends.
[[noreturn]] void runReaderProcess(const std::vector<std::string>& arguments);

}  // namespace kestrel::host
