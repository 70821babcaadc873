// Reads a media file and hands back what its reader library says about the audio. Each way of
// reading, a library or another program's output, is one implementation.
#pragma once

#include <filesystem>
#include <string>

#include "host/reading/raw_media.h"

namespace kestrel::host {

struct ReadMedia {
  RawMedia raw;
  std::string reader;       ///< as FileResult has it
  std::string quickReason;  ///< why only a quick look was possible, a sentence; empty: it was not
};

class MediaReader {
 public:
  MediaReader() = default;
  MediaReader(const MediaReader&) = delete;
  MediaReader& operator=(const MediaReader&) = delete;
  virtual ~MediaReader() = default;

  /// Raises NotExamined when the file cannot be read or is not a media file. A media file without
  /// audio is not an error: it has no streams. Any number of threads may call it at once.
  virtual ReadMedia read(const std::filesystem::path& file) const = 0;
};

}  // namespace kestrel::host
