// Reads a media file and hands back what its reader library says about the audio. Each way of
// reading, a library or another program's output, is one implementation.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/raw_media.h"

namespace kestrel::host {

struct ReadMedia {
  RawMedia raw;
  std::vector<std::string> warnings;  ///< what the user should know about how the file was read
};

class MediaReader {
 public:
  MediaReader() = default;
  MediaReader(const MediaReader&) = delete;
  MediaReader& operator=(const MediaReader&) = delete;
  virtual ~MediaReader() = default;

  /// Raises NotExamined when the file cannot be read or is not a media file. A media file without
  /// audio is not an error: it has no streams.
  virtual ReadMedia read(const std::filesystem::path& file) = 0;
};

}  // namespace kestrel::host
