#include "tests/host/temporary_directory.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace kestrel::host {

TemporaryDirectory::TemporaryDirectory() {
  std::string name = (std::filesystem::temp_directory_path() / "kestrel-test-XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw std::runtime_error("no temporary directory");
  }
  path_ = name;
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
