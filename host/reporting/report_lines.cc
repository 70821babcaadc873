#include "host/reporting/report_lines.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>

#include "host/reporting/scan_summary.h"

namespace kestrel::host {

Report reportLines(const std::vector<std::filesystem::path>& results, const WantedFiles& wanted) {
  std::map<std::string, std::string> lines;
  Report report;
  report.warnings =
      readResults(results, wanted, [&](const std::string& place, const Json& document) {
        factsOf(document);  // a line that lacks what is counted is refused, as by the other forms
        lines[place] = document.dump() + "\n";
      });
  for (const auto& [place, line] : lines) {
    report.text += line;
  }
  return report;
}

}  // namespace kestrel::host
