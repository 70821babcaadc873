// The reader that uses libmediainfo, in a child process with a time limit, since the library never
// returns on some well-formed files.
#pragma once

#include <chrono>
#include <string>

#include "host/media_reader.h"

namespace kestrel::host {

class LibmediainfoReader : public MediaReader {
 public:
  /// @param program    the program that is started as the reader process: the host's own
  /// @param timeLimit  of one try; a file that takes longer gets a second, quicker try
  LibmediainfoReader(std::string program, std::chrono::milliseconds timeLimit);

  ReadMedia read(const std::filesystem::path& file) const override;

 private:
  std::string program_;
  std::chrono::milliseconds timeLimit_;
};

}  // namespace kestrel::host
