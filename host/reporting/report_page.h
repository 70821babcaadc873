// `kestrel report`: the results of many scans as one page.
#pragma once

#include <filesystem>
#include <vector>

#include "host/reporting/report_results.h"

namespace kestrel::host {

/// Files stand in the order of their names. Of several results for one file, by whatever name, the
/// last counts, in the order of the results files. Raises NoResults as readResults() does.
Report reportPage(const std::vector<std::filesystem::path>& results,
                  const WantedFiles& wanted = {});

}  // namespace kestrel::host
