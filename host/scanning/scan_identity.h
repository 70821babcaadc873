// By what a scan knows a file again that it has done: its size and the time of its last change.
#pragma once

#include <filesystem>

#include "host/basics/json.h"

namespace kestrel::host {

/// The member of that name in a line of a scan.
inline constexpr char kIdentityMember[] = "identity";

/// {"size": 1024, "modified": "2026-01-31T12:00:00.123456789Z"}; null for what is no regular file.
Json identityOf(const std::filesystem::path& file);

}  // namespace kestrel::host
