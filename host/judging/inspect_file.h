// The examination of one file: read, mapped, held against what is expected, identified.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "host/judging/result.h"
#include "host/reading/media_reader.h"

namespace kestrel::host {

/// More than any real file has; it bounds the memory that a forged number of channels takes.
inline constexpr std::int32_t kMostExaminedTracks = 4096;

struct InspectOptions {
  /// What the user expects; empty: what the file declares, or nothing.
  std::optional<Expectation> expectation;
  std::string surroundChannelOrder = "L R C LFE Ls Rs";
  bool checkLabels = true;
  bool reportAll = false;
  bool isStrict = false;               ///< warnings fail too
  std::chrono::seconds timeLimit{30};  ///< that the reader has, for the record
  /// Not null. It may be shared by any number of threads.
  std::shared_ptr<const MediaReader> reader;
};

/// Raises nothing for a file, however bad: the verdict is then kNotExamined and the error says why.
/// Any number of threads may call it at once.
FileResult inspectFile(const std::filesystem::path& file, const InspectOptions& options);

}  // namespace kestrel::host
