// The child side of reading: the program, started by itself with a command that no user types,
// reads files with libmediainfo, one at a time, and answers with their raw fields as JSON.
//
// It loads libmediainfo once, prepares it once, and forks for each file: each is read in a process
// of its own, which nothing that libmediainfo did with another file can have touched, and which
// costs no start of a program. Once it has opened the file, that process keeps nothing but it and
// the pipe of its answer (isolation.h).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/reading/isolation.h"

namespace kestrel::host {

inline constexpr int kReaderOverMemory = 3;  ///< exit code: the file takes more than the limit

/// The arguments that make the program a reader process; the limits hold for each file.
std::vector<std::string> readerArguments(const ProcessLimits& limits);

/// The limits, if main's arguments, without the program's name, are those of a reader process.
std::optional<ProcessLimits> readerCommandIn(const std::vector<std::string>& arguments);

/// Answers the requests of the standard input (reader_protocol.h) until that ends, then ends the
/// process. The end of the input also ends what is being read.
[[noreturn]] void runReaderProcess(const ProcessLimits& limits);

}  // namespace kestrel::host
