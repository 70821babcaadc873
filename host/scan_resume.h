// What an interrupted scan has done already.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/json_lines.h"
#include "host/scan_summary.h"

namespace kestrel::host {

/// Takes out of `files` those that stand in the results and have not changed since, and counts
/// their results. A file that has changed is left in: its newer line is the one that counts. Raises
/// NoResults when the file holds anything else; nothing in it is changed.
JsonLinesEnd removeDone(const std::filesystem::path& results, std::vector<std::string>& files,
                        ScanSummary& summary);

}  // namespace kestrel::host
