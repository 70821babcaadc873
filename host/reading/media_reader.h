// Reads a media file and hands back what its reader library says about the audio. Each way of
// reading, a library or another program's output, is one implementation.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "host/reading/media_facts.h"

namespace kestrel::host {

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

/// What a reader may use for one file.
struct ReadingLimits {
  std::chrono::milliseconds time{30'000};
  std::uint64_t memory = std::uint64_t{1} << 30;  ///< in bytes
};

/// The reader of media files that this platform has. Null where there is none: then the streams of
/// a file come from elsewhere.
std::shared_ptr<const MediaReader> platformReader(const ReadingLimits& limits);

/// The walls between a file and this machine that the system cannot raise: "landlock", "seccomp".
/// Empty too where there is no reader.
std::vector<std::string> missingReaderWalls();

}  // namespace kestrel::host
