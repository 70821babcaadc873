#include "host/libmediainfo_reader.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <optional>
#include <utility>

#include "host/child_process.h"
#include "host/input_file.h"
#include "host/not_examined.h"
#include "host/raw_media_json.h"
#include "host/reader_process.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kOutputLimit = 16U << 20;  // some 40 000 audio streams

// At any lower speed than the default, Dolby E on two mono tracks is not found, so the default
// comes first.
constexpr char kDefaultSpeed[] = "";
constexpr char kQuickSpeed[] = "0";

RawMedia rawMediaOf(const ChildOutcome& outcome) {
  switch (outcome.end) {
    case ChildEnd::kSignalled:
      throw NotExamined("reader-failed",
                        fmt::format("the reader was ended by signal {}", outcome.code));
    case ChildEnd::kOverOutput:
      throw NotExamined("reader-failed", "the reader's answer is too long");
    default:
      break;
  }
  if (outcome.code == kReaderCannotOpen) {
    throw NotExamined("not-opened", "cannot be opened by libmediainfo");
  }
  if (outcome.code != 0) {
    throw NotExamined("reader-failed",
                      fmt::format("the reader failed with exit code {}", outcome.code));
  }
  return rawMediaFromJson(outcome.output);
}

// Nothing when the time limit was reached.
std::optional<RawMedia> tryReading(const std::string& program, std::chrono::milliseconds timeLimit,
                                   const std::filesystem::path& file, const char* parseSpeed) {
  ChildCommand command{{program}, timeLimit, kOutputLimit};
  for (std::string& argument : readerArguments(file, parseSpeed)) {
    command.words.push_back(std::move(argument));
  }
  const ChildOutcome outcome = runChild(command);
  if (outcome.end == ChildEnd::kOverTime) {
    return std::nullopt;
  }
  return rawMediaOf(outcome);
}

ReadMedia checked(RawMedia raw, const char* reader, std::string quickReason) {
  if (raw.container.empty()) {
    throw NotExamined("not-media", "not a media file that libmediainfo knows");
  }
  return {std::move(raw), reader, std::move(quickReason)};
}

}  // namespace

LibmediainfoReader::LibmediainfoReader(std::string program, std::chrono::milliseconds timeLimit)
    : program_(std::move(program)), timeLimit_(timeLimit) {}

ReadMedia LibmediainfoReader::read(const std::filesystem::path& file) const {
  checkInputFile(file);
  if (auto raw = tryReading(program_, timeLimit_, file, kDefaultSpeed)) {
    return checked(*std::move(raw), "libmediainfo", {});
  }
  const std::chrono::duration<double> limit = timeLimit_;
  if (auto raw = tryReading(program_, timeLimit_, file, kQuickSpeed)) {
    return checked(*std::move(raw), "libmediainfo-quick",
                   fmt::format("libmediainfo did not return within {}; the file was read in its "
                               "quick mode, which may miss Dolby E and other pair-coded audio",
                               limit));
  }
  throw NotExamined(
      "time-limit",
      fmt::format("libmediainfo did not return within the time limit of {}, twice", limit));
}

}  // namespace kestrel::host
