#include "host/basics/file_names.h"

#include <system_error>

namespace kestrel::host {

std::string utf8FromPath(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

std::filesystem::path pathFromUtf8(const std::string& name) {
  return {std::u8string(name.begin(), name.end())};
}

std::string placeOf(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::path whole = std::filesystem::absolute(path, error);
  std::filesystem::path place;
  for (const std::filesystem::path& part : error ? path : whole) {
    if (part != "." && !part.empty()) {
      place /= part;
    }
  }
  return utf8FromPath(place);
}

}  // namespace kestrel::host
