#include "host/scanning/scan_file_list.h"

#include <fmt/format.h>

#include <fstream>
#include <iostream>
#include <string>
#include <system_error>

#include "host/basics/file_names.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"

namespace kestrel::host {

namespace fs = std::filesystem;

std::vector<fs::path> namesIn(std::istream& list, NameEnd end) {
  std::vector<fs::path> names;
  for (std::string name; std::getline(list, name, static_cast<char>(end));) {
    if (!name.empty()) {
      names.push_back(pathFromUtf8(name));
    }
  }
  return names;
}

std::vector<fs::path> namesFrom(const fs::path& file, NameEnd end) {
  if (file == "-") {
    return namesIn(std::cin, end);
  }
  std::ifstream list(file, std::ios::binary);
  std::error_code ignored;
  if (!list || fs::is_directory(file, ignored)) {
    throw UsageError(
        fmt::format("--files-from: \"{}\" cannot be read", printable(utf8FromPath(file))));
  }
  return namesIn(list, end);
}

}  // namespace kestrel::host
