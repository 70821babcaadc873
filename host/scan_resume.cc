#include "host/scan_resume.h"

#include <nlohmann/json.hpp>
#include <string>
#include <unordered_map>

#include "host/result_json.h"
#include "host/scan_files.h"
#include "host/scan_identity.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

class DoneFiles {
 public:
  explicit DoneFiles(const std::vector<std::string>& files) : isDone_(files.size()) {
    for (std::size_t index = 0; index < files.size(); ++index) {
      places_.emplace(placeOf(files[index]), index);
    }
  }

  /// Whether the document is the result of a file of the scan as that file is now.
  bool take(const Json& document) {
    const fs::path file = fileNameIn(document);
    const auto place = places_.find(placeOf(file));
    const auto identity = document.find(kIdentityMember);
    if (place == places_.end() || isDone_[place->second] || identity == document.end()) {
      return false;
    }
    isDone_[place->second] = *identity == identityOf(file);
    return isDone_[place->second];
  }

  bool isDone(std::size_t index) const { return isDone_[index]; }

 private:
  std::vector<bool> isDone_;
  std::unordered_map<std::string, std::size_t> places_;
};

}  // namespace

JsonLinesEnd removeDone(const fs::path& results, std::vector<std::string>& files,
                        ScanSummary& summary) {
  DoneFiles done(files);
  const JsonLinesEnd end = readJsonLines(results, [&](const Json& document) {
    if (done.take(document)) {
      summary.add(factsOf(document));
    }
  });
  std::size_t index = 0;
  std::erase_if(files, [&](const std::string&) { return done.isDone(index++); });
  return end;
}

}  // namespace kestrel::host
