#include "host/scanning/scan_resume.h"

#include <fmt/format.h>

#include <functional>
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

// Takes a line about one of the scan's files, and the name that the file has there.
using UseLine = std::function<void(std::size_t index, const Json& document, const fs::path& file)>;

std::unordered_map<std::string, std::size_t> placesOf(const std::vector<std::string>& files) {
  std::unordered_map<std::string, std::size_t> places;
  for (std::size_t index = 0; index < files.size(); ++index) {
    places.emplace(placeOf(files[index]), index);
  }
  return places;
}

[[noreturn]] void refuse(const fs::path& results, const std::vector<std::string>& differences) {
  throw UsageError(fmt::format(
      "\"{}\" holds results of other options ({}): go on with those, or take another file",
      printable(utf8FromPath(results)), fmt::join(differences, ", ")));
}

ResultsEnd readEarlier(const fs::path& results, const Json& options,
                       const std::vector<std::string>& files, const UseLine& use) {
  const auto places = placesOf(files);
  std::vector<std::string> differences;  // of the first line that has other options
  const ResultsEnd end = readResultsFile(results, [&](const Json& document) {
    const auto itsOptions = document.find(kOptionsMember);
    if (itsOptions != document.end() && differences.empty()) {
      differences = differingOptions(*itsOptions, options);
    }
    const fs::path file = fileNameIn(document);
    if (const auto place = places.find(placeOf(file)); place != places.end()) {
      use(place->second, document, file);
    }
  });
  if (!differences.empty()) {
    refuse(results, differences);
  }
  return end;
}

bool stillHolds(const Json& document, const fs::path& file, const Json& options) {
  const auto identity = document.find(kIdentityMember);
  return identity != document.end() && *identity == identityOf(file) &&
         isLasting(document, options);
}

}  // namespace

ResultsEnd removeDone(const fs::path& results, const InspectOptions& options,
                      std::vector<std::string>& files, ScanSummary& summary) {
  const Json now = optionsOf(options);
  std::vector<std::optional<ResultFacts>> done(files.size());
  const ResultsEnd end = readEarlier(
      results, now, files, [&](std::size_t index, const Json& document, const fs::path& file) {
        done[index] =
            stillHolds(document, file, now) ? std::optional(factsOf(document)) : std::nullopt;
      });
  std::size_t index = 0;
  std::erase_if(files, [&](const std::string&) {
    const std::optional<ResultFacts>& facts = done[index++];
    if (facts) {
      summary.add(*facts);
    }
    return facts.has_value();
  });
  return end;
}

ResultsEnd readVerdicts(const fs::path& results, const InspectOptions& options,
                        const std::vector<std::string>& files, std::vector<std::string>& verdicts) {
  verdicts.assign(files.size(), "");
  return readEarlier(results, optionsOf(options), files,
                     [&](std::size_t index, const Json& document, const fs::path& /*file*/) {
                       verdicts[index] = document.at("verdict").at("result").get<std::string>();
                     });
}

}  // namespace kestrel::host
