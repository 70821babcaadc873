#include "host/scanning/scan_resume.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <unordered_map>

#include "host/basics/file_names.h"
#include "host/basics/json.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"
#include "host/reporting/result_json.h"
#include "host/scanning/scan_line.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
class EarlierResults {
 public:
  EarlierResults(const std::vector<std::string>& files, const InspectOptions& options)
      : options_(optionsOf(options)), facts_(files.size()) {
    for (std::size_t index = 0; index < files.size(); ++index) {
      places_.emplace(placeOf(files[index]), index);
    }
  }

  void take(const Json& document) {
    const auto options = document.find(kOptionsMember);
    if (options != document.end() && differences_.empty()) {
      differences_ = differingOptions(*options, options_);
    }
    const fs::path file = fileNameIn(document);
    if (const auto place = places_.find(placeOf(file)); place != places_.end()) {
      facts_[place->second] =
          stillHolds(document, file) ? std::optional(factsOf(document)) : std::nullopt;
    }
  }

  /// Of the first line that has other options.
  const std::vector<std::string>& differences() const { return differences_; }

  /// Nothing for a file that is to be examined.
  const std::optional<ResultFacts>& facts(std::size_t index) const { return facts_[index]; }

 private:
  bool stillHolds(const Json& document, const fs::path& file) const {
    const auto identity = document.find(kIdentityMember);
    return identity != document.end() && *identity == identityOf(file) &&
           isLasting(document, options_);
  }

  Json options_;
  std::vector<std::string> differences_;
  std::vector<std::optional<ResultFacts>> facts_;
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

ResultsEnd removeDone(const fs::path& results, const InspectOptions& options,
                      std::vector<std::string>& files, ScanSummary& summary) {
  EarlierResults earlier(files, options);
  const ResultsEnd end =
      readResultsFile(results, [&](const Json& document) { earlier.take(document); });
  if (!earlier.differences().empty()) {
    throw UsageError(fmt::format(
        "\"{}\" holds results of other options ({}): go on with those, or take another file",
        printable(utf8FromPath(results)), fmt::join(earlier.differences(), ", ")));
  }
  std::size_t index = 0;
  std::erase_if(files, [&](const std::string&) {
    const std::optional<ResultFacts>& facts = earlier.facts(index++);
    if (facts) {
      summary.add(*facts);
    }
    return facts.has_value();
  });
  return end;
}

}  // namespace kestrel::host
