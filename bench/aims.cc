#include "bench/aims.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace kestrel::bench {

namespace {

struct Aim {
  const char* row;
  const char* benchmark;
  const char* against;
  double limit;  // times the other; 0: shown only
};

constexpr std::array kAims = {
    Aim{"8 tracks, 5.1 and stereo", "/library", "/floor", 5},
    Aim{"16 mono tracks", "/library", "/floor", 3},
    Aim{"4 stereo and EMCA pairs", "/library", "/floor", 4},
    Aim{"100,000 streams", "/library", "/reading pass", 3},
    Aim{"1 MB description", "/library", "/reading pass", 3},
    Aim{"30 entries, the last fits", "/library", "/floor", 0},
    Aim{"8 tracks, 5.1 and stereo", "/plain C", "/library", 0},
    Aim{"16 mono tracks", "/plain C", "/library", 0},
    Aim{"4 stereo and EMCA pairs", "/plain C", "/library", 0},
    Aim{"8 tracks, 5.1 and stereo", "/library", "/libavutil", 0},
    Aim{"item name", "/library", "/floor", 0},
    Aim{"name length", "/library", "/floor", 0},
    Aim{"row of item", "/library", "/floor", 0},
    Aim{"name at position", "/library", "/floor", 0},
    Aim{"type symbol", "/library", "/floor", 0},
    Aim{"type name", "/library", "/floor", 0},
    Aim{"type from name", "/library", "/floor", 0},
    Aim{"item from types, short", "/library", "/floor", 0},
    Aim{"item from types, long", "/library", "/floor", 0},
    Aim{"layout code", "/library", "/floor", 0},
    Aim{"layout code in a text", "/library", "/floor", 0},
};

// Benchmarks whose times show how they grow with their size.
struct Growth {
  const char* row;
  const char* small;
  const char* large;
  double times;  // as large
};

constexpr double kLargestExponent = 1.1;
constexpr std::array kGrowths = {
    Growth{"streams", "1,000 streams/library", "100,000 streams/library", 100},
    Growth{"description", "10 kB description/library", "1 MB description/library", 100},
};

// How often a call may allocate.
struct Allocations {
  const char* benchmark;
  double most;
};

constexpr std::array kAllocations = {
    Allocations{"8 tracks, 5.1 and stereo/library", 4},
    Allocations{"8 tracks, 5.1 and stereo/plain C", 4},
    Allocations{"16 mono tracks/library", 4},
    Allocations{"16 mono tracks/plain C", 4},
    Allocations{"4 stereo and EMCA pairs/library", 4},
    Allocations{"4 stereo and EMCA pairs/plain C", 4},
    Allocations{"30 entries, the last fits/library", 4},
    Allocations{"failing alignment/library", 0},
};

void print(const std::string& row, double figure, const char* unit, double limit, bool holds) {
  std::printf("%-60s %8.2f %-3s", row.c_str(), figure, unit);
  if (limit > 0 || !holds)
    std::printf(" aim %5.2f   %s\n", limit, holds ? "ok" : "MISSED");
  else
    std::printf("\n");
}

void printRatio(const Aim& aim, const FindFigures& find) {
  const std::string row = aim.row;
  const Figures* const own = find(row + aim.benchmark);
  const Figures* const other = find(row + aim.against);
  if (own == nullptr || other == nullptr) return;
  const double ratio = own->time / other->time;
  print(row + ": " + (aim.benchmark + 1) + " / " + (aim.against + 1), ratio, "x", aim.limit,
        aim.limit <= 0 || ratio <= aim.limit);
}

void printGrowth(const Growth& growth, const FindFigures& find) {
  const Figures* const small = find(growth.small);
  const Figures* const large = find(growth.large);
  if (small == nullptr || large == nullptr) return;
  const double exponent = std::log(large->time / small->time) / std::log(growth.times);
  print(std::string(growth.row) + ": exponent of the growth", exponent, "", kLargestExponent,
        exponent <= kLargestExponent);
}

void printAllocations(const Allocations& row, const FindFigures& find) {
  const Figures* const own = find(row.benchmark);
  if (own == nullptr) return;
  std::printf("%-60s %8.0f     aim %5.0f   %s\n",
              (std::string(row.benchmark) + ": allocations").c_str(), own->allocations, row.most,
              own->allocations <= row.most ? "ok" : "MISSED");
}

}  // namespace

void printAims(const FindFigures& find) {
  std::printf("\nAims, as ratios of this run (an aim is the most that is allowed)\n");
  for (const Aim& aim : kAims) printRatio(aim, find);
  for (const Growth& growth : kGrowths) printGrowth(growth, find);
  for (const Allocations& row : kAllocations) printAllocations(row, find);
}

}  // namespace kestrel::bench
