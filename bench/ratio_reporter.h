// Gathers the times of one run and prints them as ratios, since only those mean something on a
// machine that others use too.
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

#include "bench/aims.h"

namespace kestrel::bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  RatioReporter() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override;

  /// For each benchmark "NAME/library": its time against "NAME/plain" and "NAME/floor", and the
  /// heap allocations of one call. Then the aims.
  void printRatios() const;

 private:
  std::map<std::string, Figures> figures_;
  std::vector<std::string> order_;
};

}  // namespace kestrel::bench
