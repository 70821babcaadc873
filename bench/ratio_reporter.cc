#include "bench/ratio_reporter.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace kestrel::bench {

namespace {

constexpr std::string_view kLibrary = "/library";

std::string oneDecimal(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", value);
  return text;
}

}  // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
  if (runs.front().run_type == Run::RT_Aggregate || runs.size() == 1)
    ConsoleReporter::ReportRuns(runs);
  for (const Run& run : runs) {
    if (run.run_type == Run::RT_Aggregate) continue;
    const std::string name = run.run_name.function_name;
    const auto [entry, isNew] = figures_.try_emplace(name);
    if (isNew) order_.push_back(name);
    Figures& figures = entry->second;
    const double time = run.GetAdjustedCPUTime();
    figures.time = isNew ? time : std::min(figures.time, time);
    const auto counter = [&](const char* named) {
      const auto found = run.counters.find(named);
      return found == run.counters.end() ? 0 : found->second.value;
    };
    figures.allocations = counter("allocations");
  }
}

void RatioReporter::printRatios() const {
  const char* const row = "%-28s %10s %12s %12s %12s %16s\n";
  std::printf("\n");
  std::printf(row, "", "library", "plain /", "library /", "plain C /", "allocations,");
  std::printf(row, "", "ns", "library", "floor", "library", "library (floor)");
  for (const std::string& name : order_) {
    if (!name.ends_with(kLibrary)) continue;
    const std::string stem = name.substr(0, name.size() - kLibrary.size());
    const Figures& library = figures_.at(name);
    const auto floor = figures_.find(stem + "/floor");
    if (floor == figures_.end()) continue;
    const auto against = [&](const char* form) {
      const auto other = figures_.find(stem + form);
      return other == figures_.end() ? "-" : oneDecimal(other->second.time / library.time);
    };
    std::printf("%-28s %10.1f %12s %12.2f %12s %12.0f (%.0f)\n", stem.c_str(), library.time,
                against("/plain").c_str(), library.time / floor->second.time,
                against("/plain C").c_str(), library.allocations, floor->second.allocations);
  }
  printAims([this](const std::string& benchmark) {
    const auto found = figures_.find(benchmark);
    return found == figures_.end() ? nullptr : &found->second;
  });
}

}  // namespace kestrel::bench
