// Files are told apart by where they are, not by how they are named.
#pragma once

#include <filesystem>
#include <string>

namespace kestrel::host {

/// The same text for two names of one place: absolute, without "." and doubled slashes. ".." stays,
/// since what stands before it may be a link.
std::string placeOf(const std::filesystem::path& path);

}  // namespace kestrel::host
