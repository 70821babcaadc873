// The names of files as texts, and what tells two files apart.
#pragma once

#include <filesystem>
#include <string>

namespace kestrel::host {

/// The bytes of a file's name, on Windows in UTF-8.
std::string utf8FromPath(const std::filesystem::path& path);

/// The file of such a name.
std::filesystem::path pathFromUtf8(const std::string& name);

/// The same text for two names of one place: absolute, without "." and doubled slashes. ".." stays,
/// since what stands before it may be a link.
std::string placeOf(const std::filesystem::path& path);

}  // namespace kestrel::host
