#include "tests/host/support/temporary_directory.h"

#include <fstream>
#include <random>

namespace kestrel::host {

TemporaryDirectory::TemporaryDirectory() {
  std::random_device random;
  do {
    path_ = std::filesystem::temp_directory_path() / ("kestrel-test-" + std::to_string(random()));
  } while (!std::filesystem::create_directory(path_));
}

TemporaryDirectory::~TemporaryDirectory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TemporaryDirectory::write(const std::string& name,
                                                const std::string& content) const {
  std::ofstream(path_ / name, std::ios::binary) << content;
  return path_ / name;
}

}  // namespace kestrel::host
