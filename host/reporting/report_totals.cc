// Many files have the same facts, which are held once; of a file only its place and theirs.
#include "host/reporting/report_totals.h"

#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <unordered_map>

#include "host/reporting/scan_summary.h"

namespace kestrel::host {

Report reportTotals(const std::vector<std::filesystem::path>& results, const WantedFiles& wanted) {
  std::set<ResultFacts> facts;
  std::unordered_map<std::string, const ResultFacts*> factsOfPlace;
  Report report;
  report.warnings =
      readResults(results, wanted, [&](const std::string& place, const Json& document) {
        factsOfPlace[place] = &*facts.insert(factsOf(document)).first;
      });
  ScanSummary summary;
  for (const auto& [place, itsFacts] : factsOfPlace) {
    summary.add(*itsFacts);
  }
  report.text = summaryText(summary);
  return report;
}

}  // namespace kestrel::host
