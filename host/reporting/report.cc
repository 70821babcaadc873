#include "host/reporting/report.h"

#include <fmt/format.h>

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "host/basics/file_names.h"
#include "host/basics/json.h"
#include "host/basics/utf8.h"
#include "host/reporting/html_page.h"
#include "host/reporting/result_json.h"
#include "host/reporting/results_file.h"
#include "host/reporting/scan_summary.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
using Places = std::unordered_set<std::string>;

// Those among the wanted places that have no result yet.
class Selection {
 public:
  explicit Selection(const WantedFiles& wanted) : wanted_(wanted) {
    if (wanted) {
      for (const fs::path& file : *wanted) {
        places_.insert(placeOf(file));
      }
      lacking_ = places_;
    }
  }

  bool takes(const std::string& place) {
    lacking_.erase(place);
    return !wanted_ || places_.contains(place);
  }

  void requireAll() const {
    if (!lacking_.empty()) {
      throw NoResults(fmt::format("{} of the {} files of the list have no result, such as \"{}\"",
                                  lacking_.size(), places_.size(), firstLacking()));
    }
  }

 private:
  std::string firstLacking() const {
    for (const fs::path& file : *wanted_) {
      if (lacking_.contains(placeOf(file))) {
        return printable(utf8FromPath(file));
      }
    }
    return {};
  }

  const WantedFiles& wanted_;
  Places places_;
  Places lacking_;
};

// Takes a result and the place of its file; it replaces what came before it there.
using UseResult = std::function<void(const std::string& place, const Json&)>;

// Calls `use` with each result in turn, in the order of the results files. Gives the warnings.
std::vector<std::string> readResults(const std::vector<fs::path>& results,
                                     const WantedFiles& wanted, const UseResult& use) {
  Selection selection(wanted);
  std::vector<std::string> warnings;
  bool isEmpty = true;
  const auto useWanted = [&](const Json& document) {
    const std::string place = placeOf(pathFromUtf8(fileNameIn(document)));
    if (selection.takes(place)) {
      use(place, document);
      isEmpty = false;
    }
  };
  for (const fs::path& file : results) {
    if (readResultsFile(file, useWanted).isTorn) {
      warnings.push_back(
          fmt::format("\"{}\": the last line is torn and left out", printable(utf8FromPath(file))));
    }
  }
  selection.requireAll();
  if (isEmpty) {
    throw NoResults("no result to report");
  }
  return warnings;
}

// Several results for one file, by whatever name, leave the last.
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

Report reportLines(const std::vector<fs::path>& results, const WantedFiles& wanted) {
  std::map<std::string, std::string> lines;
  Report report;
  report.warnings =
      readResults(results, wanted, [&](const std::string& place, const Json& document) {
        factsOf(document);  // a line that lacks what is counted is refused, as by the other forms
        lines[place] = jsonText(document) + "\n";
      });
  for (const auto& [place, line] : lines) {
    report.text += line;
  }
  return report;
}

Report reportTotals(const std::vector<fs::path>& results, const WantedFiles& wanted) {
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
