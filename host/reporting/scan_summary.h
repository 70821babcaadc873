// Counts results: by verdict, by layout, by finding.
#pragma once

#include <compare>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "host/basics/json.h"

namespace kestrel::host {

/// Where no layout of the catalogue fits.
inline constexpr char kNoLayout[] = "none";

/// What is counted of one result.
struct ResultFacts {
  int exitCode = 0;
  std::string verdict;  ///< by the name that it has in a document
  /// What the tracks are: the layout that they carry as expected, else the one that is supported
  /// best; kNoLayout where none fits.
  std::string layout;
  /// The ids of its findings, and of the error that kept it from being examined; each once.
  std::vector<std::string> findings;

  auto operator<=>(const ResultFacts&) const = default;
};

ResultFacts factsOf(const Json& document);

/// "does not conform" for "does-not-conform".
std::string verdictText(const std::string& verdict);

using Counts = std::map<std::string, std::size_t>;

struct ScanSummary {
  std::size_t files = 0;
  int exitCode = 0;  ///< the highest of the files
  Counts verdicts;
  Counts layouts;
  Counts findings;  ///< the number of files that have one of that id
  /// How they stand to earlier results; empty when they were not examined for that.
  Counts rechecked;

  void add(const ResultFacts& facts);
};

/// The highest count first, equal ones by name.
std::vector<std::pair<std::string, std::size_t>> byCount(const Counts& counts);

/// Tables for people.
std::string summaryText(const ScanSummary& summary);

}  // namespace kestrel::host
