// The reader that uses libmediainfo, in child processes with a time limit, since the library never
// returns on some well-formed files. A child that has answered waits for the next file; one that
// has not is ended, and the next file gets a new one.
#pragma once

#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "host/reading/child_process.h"
#include "host/reading/media_reader.h"

namespace kestrel::host {

class LibmediainfoReader : public MediaReader {
 public:
  /// @param program  the program that is started as the reader process: the host's own
  /// @param limits   of one try; a file that takes longer gets a second, quicker try
  LibmediainfoReader(std::string program, const ReadingLimits& limits);

  ReadMedia read(const std::filesystem::path& file) const override;

 private:
  std::unique_ptr<ChildProcess> idleChild() const;
  ChildOutcome ask(const ChildRequest& request) const;
  std::optional<RawMedia> tryReading(const std::filesystem::path& file,
                                     const char* parseSpeed) const;

  std::string program_;
  ReadingLimits limits_;
  mutable std::mutex mutex_;
  mutable std::vector<std::unique_ptr<ChildProcess>> idle_;  ///< at most one for each thread
};

}  // namespace kestrel::host
