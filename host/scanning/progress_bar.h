// A progress bar on the standard error, where that is a terminal. Debian 12 packages no C++ library
// for one.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace kestrel::host {

struct Progress {
  std::size_t done = 0;
  std::size_t total = 0;
  std::chrono::duration<double> elapsed{};
};

/// "[#######       ]  512 of 1000   23.4 files/s   0:21 left", at most `columns` wide. Without room
/// for all of it the time goes first, then the rate, then the bar.
std::string progressLine(const Progress& progress, std::size_t columns);

/// One thread at a time.
class ProgressBar {
 public:
  /// Draws nothing when it is not shown or the standard error is no terminal.
  ProgressBar(std::size_t total, bool isShown);
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;
  ~ProgressBar();  ///< takes the bar away

  void advance();  ///< one more is done

 private:
  using Clock = std::chrono::steady_clock;
  void draw();

  bool isShown_;
  Progress progress_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point drawn_;
};

}  // namespace kestrel::host
