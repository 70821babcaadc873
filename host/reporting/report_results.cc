#include "host/reporting/report_results.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <unordered_set>

#include "host/basics/file_names.h"
#include "host/basics/utf8.h"
#include "host/reporting/json_lines.h"
#include "host/reporting/result_json.h"

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

}  // namespace

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
    if (readJsonLines(file, useWanted).isTorn) {
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

}  // namespace kestrel::host
