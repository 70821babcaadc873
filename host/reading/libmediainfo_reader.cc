#include "host/reading/libmediainfo_reader.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <csignal>
#include <optional>
#include <utility>

#include "host/reading/media_facts.h"
#include "host/reading/reader_process.h"
#include "host/reading/reader_protocol.h"

namespace kestrel::host {
namespace {

using namespace std::chrono_literals;

// At any lower speed than the default, Dolby E on two mono tracks is not found, so the default
// comes first.
constexpr char kDefaultSpeed[] = "";
constexpr char kQuickSpeed[] = "0";

[[noreturn]] void fail(const std::string& why) { throw NotExamined("reader-failed", why); }

[[noreturn]] void failBySignal(std::int64_t signal) {
  fail(fmt::format("the reader was ended by signal {}", signal));
}

[[noreturn]] void failByCode(std::int64_t code) {
  fail(fmt::format("the reader failed with exit code {}", code));
}

RawMedia rawMediaOf(const ReaderAnswer& answer) {
  if (answer.isSignalled) {
    failBySignal(answer.code);
  }
  if (answer.code == kReaderOverMemory) {
    throw NotExamined("memory-limit", "takes more memory than the limit (--memory-limit)");
  }
  if (answer.code != 0) {
    failByCode(answer.code);
  }
  return rawMediaFromJson(answer.output);
}

// The reader itself ended, not the process that it forks for a file.
[[noreturn]] void failByEnd(const ChildOutcome& outcome) {
  switch (outcome.end) {
    case ChildEnd::kSignalled:
      failBySignal(outcome.code);
    case ChildEnd::kOverOutput:
      fail("the reader's answer is too long");
    default:
      failByCode(outcome.code);
  }
}

ReadMedia checked(RawMedia raw, const char* reader, std::string quickReason) {
  if (raw.container.empty()) {
    throw NotExamined("not-media", "not a media file that libmediainfo knows");
  }
  return {std::move(raw), reader, std::move(quickReason)};
}

// A process that only reckons reaches the limit of its own time soon after that of the reading.
ProcessLimits processLimits(const ReadingLimits& limits) {
  return {limits.memory, std::chrono::ceil<std::chrono::seconds>(limits.time) + 1s};
}

}  // namespace

LibmediainfoReader::LibmediainfoReader(std::string program, const ReadingLimits& limits)
    : program_(std::move(program)), limits_(limits) {}

std::unique_ptr<ChildProcess> LibmediainfoReader::idleChild() const {
  const std::lock_guard lock(mutex_);
  if (idle_.empty()) {
    return nullptr;
  }
  std::unique_ptr<ChildProcess> child = std::move(idle_.back());
  idle_.pop_back();
  return child;
}

// An idle reader may have been ended from outside meanwhile, which says nothing about the file.
ChildOutcome LibmediainfoReader::ask(const ChildRequest& request) const {
  const auto hasEndedByItself = [](const ChildOutcome& outcome) {
    return outcome.end == ChildEnd::kExited || outcome.end == ChildEnd::kSignalled;
  };
  std::unique_ptr<ChildProcess> child = idleChild();
  std::optional<ChildOutcome> outcome;
  if (child) {
    outcome = child->ask(request);
  }
  if (!outcome || hasEndedByItself(*outcome)) {
    std::vector<std::string> words = readerArguments(processLimits(limits_));
    words.insert(words.begin(), program_);
    child = std::make_unique<ChildProcess>(words);
    outcome = child->ask(request);
  }
  if (outcome->end == ChildEnd::kAnswered) {
    const std::lock_guard lock(mutex_);
    idle_.push_back(std::move(child));
  }
  return *std::move(outcome);
}

// Nothing when the time limit was reached.
std::optional<RawMedia> LibmediainfoReader::tryReading(const std::filesystem::path& file,
                                                       const char* parseSpeed) const {
  const auto isWhole = [](std::string_view text) { return answerIn(text).has_value(); };
  const ChildOutcome outcome = ask(
      {textOf(ReaderRequest{parseSpeed, file.string()}), limits_.time, kLongestAnswer, isWhole});
  if (outcome.end == ChildEnd::kOverTime) {
    return std::nullopt;
  }
  if (outcome.end != ChildEnd::kAnswered) {
    failByEnd(outcome);
  }
  const ReaderAnswer answer = *answerIn(outcome.output);
  if (answer.isSignalled && answer.code == SIGXCPU) {
    return std::nullopt;
  }
  return rawMediaOf(answer);
}

ReadMedia LibmediainfoReader::read(const std::filesystem::path& file) const {
  if (auto raw = tryReading(file, kDefaultSpeed)) {
    return checked(*std::move(raw), "libmediainfo", {});
  }
  const std::chrono::duration<double> limit = limits_.time;
  if (auto raw = tryReading(file, kQuickSpeed)) {
    return checked(*std::move(raw), "libmediainfo-quick",
                   fmt::format("libmediainfo did not return within {}; the file was read in its "
                               "quick mode, which may miss Dolby E and other pair-coded audio",
                               limit));
  }
  throw NotExamined(
      "time-limit",
      fmt::format("libmediainfo did not return within the time limit of {}, twice", limit));
}

std::shared_ptr<const MediaReader> platformReader(const ReadingLimits& limits) {
  // The program itself, whatever name it was started by.
  constexpr char kOwnProgram[] = "/proc/self/exe";
  return std::make_shared<LibmediainfoReader>(kOwnProgram, limits);
}

std::vector<std::string> missingReaderWalls() { return missingWalls(); }

}  // namespace kestrel::host
