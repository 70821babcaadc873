#include "host/scanning/progress_bar.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdio>

namespace kestrel::host {
namespace {

constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr char kClearLine[] = "\r\x1b[K";

// One column stays free: a full line would wrap on some terminals.
std::size_t columns() {
  struct winsize size {};
  const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  return isKnown ? size.ws_col - 1U : 79U;
}

}  // namespace

ProgressBar::ProgressBar(std::size_t total, bool isShown)
    : isShown_(isShown && ::isatty(STDERR_FILENO) != 0), progress_{0, total, {}} {
  draw();
}

ProgressBar::~ProgressBar() {
  if (isShown_) {
    std::fputs(kClearLine, stderr);
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
  std::fputs((kClearLine + progressLine(progress_, columns())).c_str(), stderr);
}

}  // namespace kestrel::host
