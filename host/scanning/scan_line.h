// What a scan adds to a result's line, so that --resume knows the file and the question
// again: one file holds the results of one question only.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/basics/json.h"
#include "host/judging/inspect_file.h"

namespace kestrel::host {

/// The member of that name in a line of a scan.
inline constexpr char kOptionsMember[] = "options";

Json optionsOf(const InspectOptions& options);

/// The names of those that change a result and are not the same in the two; "--strict". How an
/// expectation is spelled does not count, and neither does the time limit: it says how long a
/// result is waited for, not which.
std::vector<std::string> differingOptions(const Json& before, const Json& now);

/// Whether the result is what the same question would give again now: the file was examined, and
/// not only in the quick mode that a longer time limit may spare it. A line of a version that wrote
/// no options does not tell.
bool isLasting(const Json& document, const Json& now);

/// The member of that name in a line of a scan.
inline constexpr char kIdentityMember[] = "identity";

/// By what a scan knows a file again that it has done; null for what is no regular file:
/// {"size": 1024, "modified": "2026-01-31T12:00:00.123456789Z", "changed": (the same), "device": 1,
/// "inode": 2}. The time of "modified" can be set back; that of "changed", of the status, cannot.
Json identityOf(const std::filesystem::path& file);

}  // namespace kestrel::host
