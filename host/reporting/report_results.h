// The results that a report is made of: those of many scans, of all files or of those that are
// asked for.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/basics/json.h"

namespace kestrel::host {

struct Report {
  std::string text;
  std::vector<std::string> warnings;  ///< a sentence for each file whose last line is torn
};

/// The files that a report is of; nothing: all that have a result.
using WantedFiles = std::optional<std::vector<std::filesystem::path>>;

/// Takes a result and the place of its file (file_names.h); it replaces what came before it there.
using UseResult = std::function<void(const std::string& place, const Json&)>;

/// Calls `use` with each result in turn, in the order of the results files. Gives the warnings.
/// Raises NoResults for what is no file of results, where there is no result at all, and where a
/// wanted file has none.
std::vector<std::string> readResults(const std::vector<std::filesystem::path>& results,
                                     const WantedFiles& wanted, const UseResult& use);

}  // namespace kestrel::host
