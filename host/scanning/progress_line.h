// The text of a progress bar.
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

}  // namespace kestrel::host
