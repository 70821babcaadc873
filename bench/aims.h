// What the library's times are held against: each row of the table compares two benchmarks of one
// run.
#pragma once

#include <functional>
#include <string>

namespace kestrel::bench {

/// A benchmark's figures.
struct Figures {
  double time = 0;  // nanoseconds; the least of the repetitions, which other programs disturb least
  double allocations = 0;
};

using FindFigures = std::function<const Figures*(const std::string& benchmark)>;

/// Prints each aim whose benchmarks were run, the figure and whether it holds.
void printAims(const FindFigures& find);

}  // namespace kestrel::bench
