// What the scans before this one have done already.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/judging/inspect_file.h"
#include "host/reporting/results_file.h"
#include "host/reporting/scan_summary.h"

namespace kestrel::host {

/// Takes out of `files` those whose result still holds, and counts these results. Of several lines
/// for one file the last counts. A file is left in when it has changed since, and when its result
/// is not one that would come again (scan_line.h). Raises NoResults when the file holds anything
/// else, UsageError when it holds results of other options; nothing in it is changed.
ResultsEnd removeDone(const std::filesystem::path& results, const InspectOptions& options,
                      std::vector<std::string>& files, ScanSummary& summary);

/// The verdict that the last line of each file gives, by the name that it has in a document; empty
/// for a file without one. Raises as removeDone() does.
ResultsEnd readVerdicts(const std::filesystem::path& results, const InspectOptions& options,
                        const std::vector<std::string>& files, std::vector<std::string>& verdicts);

}  // namespace kestrel::host
