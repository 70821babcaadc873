#include "host/scanning/progress_bar.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "host/basics/console.h"
#include "host/basics/output.h"

namespace kestrel::host {
namespace {

constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr char kClearLine[] = "\r\x1b[K";

// One column stays free: a full line would wrap on some terminals.
std::size_t columns() {
  const std::size_t known = terminalColumns(StandardStream::kErrors);
  return known > 1 ? known - 1 : 79;
}

constexpr std::size_t kWidestBar = 40;
constexpr std::size_t kNarrowestBar = 10;
constexpr std::size_t kFrame = 4;  // two brackets and the blanks after them

std::string rateText(const Progress& progress) {
  const double seconds = progress.elapsed.count();
  const double rate = seconds > 0 ? static_cast<double>(progress.done) / seconds : 0;
  return fmt::format("   {:.1f} files/s", rate);
}

std::string timeText(const Progress& progress) {
  const auto remaining = static_cast<double>(progress.total - progress.done);
  const double each = progress.elapsed.count() / static_cast<double>(progress.done);
  const auto seconds = std::llround(std::min(each * remaining, 359999.0));
  if (seconds >= 3600) {
    return fmt::format("   {}:{:02}:{:02} left", seconds / 3600, seconds / 60 % 60, seconds % 60);
  }
  return fmt::format("   {}:{:02} left", seconds / 60, seconds % 60);
}

std::string bar(const Progress& progress, std::size_t width) {
  const std::size_t filled = progress.total > 0 ? width * progress.done / progress.total : 0;
  return fmt::format("[{:<{}}]  ", std::string(filled, '#'), width);
}

}  // namespace

ProgressBar::ProgressBar(std::size_t total, bool isShown)
    : isShown_(isShown && isTerminal(StandardStream::kErrors)), progress_{0, total, {}} {
  draw();
}

ProgressBar::~ProgressBar() {
  if (isShown_) {
    printText(kClearLine);
  }
}

void ProgressBar::advance() {
  ++progress_.done;
  if (Clock::now() - drawn_ >= kBetweenDrawings || progress_.done == progress_.total) {
    draw();
  }
}

void ProgressBar::draw() {
  if (!isShown_) {
    return;
  }
  drawn_ = Clock::now();
  progress_.elapsed = drawn_ - start_;
  printText(kClearLine + progressLine(progress_, columns()));
}

std::string progressLine(const Progress& progress, std::size_t columns) {
  std::string line = fmt::format("{} of {}", progress.done, progress.total);
  if (progress.done > 0) {
    const std::string rate = rateText(progress);
    const std::string time = timeText(progress);
    const std::size_t room = columns - std::min(columns, line.size());
    line += rate.size() <= room ? rate : "";
    line += rate.size() + time.size() <= room ? time : "";
  }
  if (line.size() + kFrame + kNarrowestBar <= columns) {
    line = bar(progress, std::min(kWidestBar, columns - line.size() - kFrame)) + line;
  }
  return line.substr(0, columns);
}

}  // namespace kestrel::host
