// `kestrel report --format jsonl`: several files of results as one that holds each file once.
#pragma once

#include <filesystem>
#include <vector>

#include "host/reporting/report_results.h"

namespace kestrel::host {

/// Lines as they stand in the results, by the places of their files. Of several for one file the
/// last counts. Raises NoResults as readResults() does.
Report reportLines(const std::vector<std::filesystem::path>& results,
                   const WantedFiles& wanted = {});

}  // namespace kestrel::host
