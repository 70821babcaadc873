// `kestrel report --format text`: how many files there are of each verdict, layout and finding. A
// million files take some hundred bytes each and a page of them nobody could open.
#pragma once

#include <filesystem>
#include <vector>

#include "host/reporting/report_results.h"

namespace kestrel::host {

/// The tables that a scan ends with. Of several results for one file the last counts. Raises
/// NoResults as readResults() does.
Report reportTotals(const std::vector<std::filesystem::path>& results,
                    const WantedFiles& wanted = {});

}  // namespace kestrel::host
