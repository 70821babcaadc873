// The child side of reading: the program, started by itself with a command that no user types,
// reads files with libmediainfo, one at a time, and answers with their raw fields as JSON.
//
// It loads libmediainfo once, prepares it once, and forks for each file: each is read in a process
// of its own, which nothing that libmediainfo did with another file can have touched, and which
// costs no start of a program.
#pragma once

#include <string>
#include <vector>

namespace kestrel::host {

inline constexpr int kReaderCannotOpen = 3;  ///< exit code: libmediainfo cannot open the file

/// The arguments that make the program a reader process.
std::vector<std::string> readerArguments();

/// Whether main's arguments, without the program's name, are those of a reader process.
bool isReaderCommand(const std::vector<std::string>& arguments);

/// Answers the requests of the standard input (reader_protocol.h) until that ends, then ends the
/// process. The end of the input also ends what is being read.
[[noreturn]] void runReaderProcess();

}  // namespace kestrel::host
