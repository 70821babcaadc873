// Each result is made into its section as it is read, so that only one document is held at a time.
#include "host/reporting/report_page.h"

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <unordered_map>
#include <utility>

#include "host/basics/json.h"
#include "host/reporting/html_page.h"
#include "host/reporting/result_json.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
class Sections {
 public:
  void add(const std::string& place, const Json& document) {
    const std::string file = fileNameIn(document);
    HtmlSection section = htmlSection(document, ++number_, /*isOpen=*/false);
    std::string& name = names_[place];
    sections_.erase(name);
    name = file;
    sections_.insert_or_assign(file, std::move(section));
  }

  std::string page() && {
    std::vector<HtmlSection> sections;
    sections.reserve(sections_.size());
    for (auto& [file, section] : sections_) {
      sections.push_back(std::move(section));
    }
    return htmlReport(sections);
  }

 private:
  std::map<std::string, HtmlSection> sections_;
  std::unordered_map<std::string, std::string> names_;  // of each place, the last
  std::size_t number_ = 0;
};

}  // namespace

Report reportPage(const std::vector<fs::path>& results, const WantedFiles& wanted) {
  Sections sections;
  Report report;
  report.warnings = readResults(
      results, wanted,
      [&](const std::string& place, const Json& document) { sections.add(place, document); });
  report.text = std::move(sections).page();
  return report;
}

}  // namespace kestrel::host
