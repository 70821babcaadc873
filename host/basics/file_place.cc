#include "host/basics/file_place.h"

#include <system_error>

#include "host/basics/utf8.h"

namespace kestrel::host {

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
