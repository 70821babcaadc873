// Each result is made into its section as it is read, so that only one document is held at a time.
#include "host/report_page.h"

#include <fmt/format.h>

#include <map>
#include <nlohmann/json.hpp>
#include <unordered_map>
#include <utility>

#include "host/file_place.h"
#include "host/html_page.h"
#include "host/json.h"
#include "host/json_lines.h"
#include "host/result_json.h"
#include "host/utf8.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
class Report {
 public:
  void addAll(const fs::path& results) {
    const JsonLinesEnd end = readJsonLines(results, [this](const Json& line) { add(line); });
    if (end.isTorn) {
      page_.warnings.push_back(fmt::format("\"{}\": the last line is torn and left out",
                                           printable(utf8FromPath(results))));
    }
  }

  ReportPage page() && {
    std::vector<HtmlSection> sections;
    sections.reserve(sections_.size());
    for (auto& [file, section] : sections_) {
      sections.push_back(std::move(section));
    }
    if (sections.empty()) {
      throw NoResults("no result to report");
    }
    page_.html = htmlReport(sections);
    return std::move(page_);
  }

 private:
  void add(const Json& document) {
    const std::string file = fileNameIn(document);
    HtmlSection section = htmlSection(document, ++number_, /*isOpen=*/false);
    std::string& name = names_[placeOf(pathFromUtf8(file))];
    sections_.erase(name);
    name = file;
    sections_.insert_or_assign(file, std::move(section));
  }

  std::map<std::string, HtmlSection> sections_;
  std::unordered_map<std::string, std::string> names_;  // of each place, the last
  std::size_t number_ = 0;
  ReportPage page_;
};

}  // namespace

ReportPage reportPage(const std::vector<fs::path>& results) {
  Report report;
  for (const fs::path& file : results) {
    report.addAll(file);
  }
  return std::move(report).page();
}

}  // namespace kestrel::host
