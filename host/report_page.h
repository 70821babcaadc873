// `kestrel report`: the results of many scans as one page.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel::host {

struct ReportPage {
  std::string html;
  std::vector<std::string> warnings;  ///< a sentence for each file whose last line is torn
};

/// Files stand in the order of their names. Of several results for one file, by whatever name, the
/// last counts, in the order of the results files. Raises NoResults for what is no file of results
/// or has none.
ReportPage reportPage(const std::vector<std::filesystem::path>& results);

}  // namespace kestrel::host
