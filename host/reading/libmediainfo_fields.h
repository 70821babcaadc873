// Reads the raw fields of a file with libmediainfo, in the calling process. The library may loop
// for ever on a file, or break down, so each file has a process of its own (reader_process.h).
#pragma once

#include <string>

#include "host/reading/input_file.h"
#include "host/reading/media_facts.h"

namespace kestrel::host {

/// Does ahead of the first file what libmediainfo does once in a process.
void prepareLibmediainfo();

/// @param parseSpeed  0 (fast, finds less) to 1, as libmediainfo takes it; empty: its default.
///                    It holds for the whole process from then on
/// Raises NotExamined when the file cannot be read or has its sound in other files. No other file
/// is opened if the process has been isolated (isolation.h).
RawMedia readFieldsWithLibmediainfo(const InputFile& file, const std::string& parseSpeed);

}  // namespace kestrel::host
