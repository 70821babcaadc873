#include "host/reporting/scan_summary.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/basics/text_columns.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

using Count = std::pair<std::string, std::size_t>;

std::string table(const std::string& title, const std::vector<Count>& counts) {
  std::vector<TableRow> rows = {{title, "Files"}};
  for (const auto& [name, count] : counts) {
    rows.push_back({printable(name), std::to_string(count)});
  }
  return textTable(rows);
}

std::vector<Count> verdictCounts(const ScanSummary& summary) {
  std::vector<Count> counts = byCount(summary.verdicts);
  for (Count& count : counts) {
    count.first = verdictText(count.first);
  }
  return counts;
}

std::string layoutOf(const Json& document) {
  const Json& expectation = document.at("expectation");
  const bool conforms = document.at("verdict").at("result") == "conforms";
  if (conforms && expectation.is_object() && expectation.at("item").is_object()) {
    return expectation.at("item").at("name").get<std::string>();
  }
  const Json& candidates = document.at("identification");
  return candidates.empty() ? kNoLayout : candidates.at(0).at("item").at("name").get<std::string>();
}

std::vector<std::string> findingsOf(const Json& document) {
  std::vector<std::string> ids;
  for (const Json& finding : document.at("findings")) {
    ids.push_back(finding.at("id").get<std::string>());
  }
  if (const Json& error = document.at("error"); error.is_object()) {
    ids.push_back(error.at("id").get<std::string>());
  }
  std::ranges::sort(ids);
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  return ids;
}

}  // namespace

ResultFacts factsOf(const Json& document) {
  const Json& verdict = document.at("verdict");
  return {verdict.at("exitCode").get<int>(), verdict.at("result").get<std::string>(),
          layoutOf(document), findingsOf(document)};
}

std::string verdictText(const std::string& verdict) {
  std::string text = verdict;
  std::ranges::replace(text, '-', ' ');
  return text;
}

void ScanSummary::add(const ResultFacts& facts) {
  ++files;
  exitCode = std::max(exitCode, facts.exitCode);
  ++verdicts[facts.verdict];
  ++layouts[facts.layout];
  for (const std::string& id : facts.findings) {
    ++findings[id];
  }
}

std::vector<Count> byCount(const Counts& counts) {
  std::vector<Count> sorted(counts.begin(), counts.end());
  std::ranges::stable_sort(sorted, std::ranges::greater(), &Count::second);
  return sorted;
}

std::string summaryText(const ScanSummary& summary) {
  std::string text =
      table("Verdict", verdictCounts(summary)) + "\n" + table("Layout", byCount(summary.layouts));
  if (!summary.findings.empty()) {
    text += "\n" + table("Finding", byCount(summary.findings));
  }
  if (!summary.rechecked.empty()) {
    text += "\n" + table("Recheck", byCount(summary.rechecked));
  }
  return text;
}

}  // namespace kestrel::host
