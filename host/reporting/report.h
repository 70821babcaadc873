// `kestrel report`: the results of many scans as one page, as totals or as one file of lines; of
// all files or of those that are asked for.
//
// Each raises NoResults for what is no file of results, where there is no result at all, and where
// a wanted file has none; InputError for what cannot be read to its end. Of several results for one
// file, by whatever name, the last counts, in the order of the results files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::host {

struct Report {
  std::string text;
  std::vector<std::string> warnings;  ///< a sentence for each file whose last line is torn
};

/// The files that a report is of; nothing: all that have a result.
using WantedFiles = std::optional<std::vector<std::filesystem::path>>;

/// A page, on which files stand in the order of their names.
Report reportPage(const std::vector<std::filesystem::path>& results,
                  const WantedFiles& wanted = {});

/// Lines as they stand in the results, by the places of their files.
Report reportLines(const std::vector<std::filesystem::path>& results,
                   const WantedFiles& wanted = {});

/// The tables that a scan ends with: a page of a million files nobody could open.
Report reportTotals(const std::vector<std::filesystem::path>& results,
                    const WantedFiles& wanted = {});

}  // namespace kestrel::host
