// A directory of its own for one test, removed afterwards with all it holds.
#pragma once

#include <filesystem>
#include <string>

namespace kestrel::host {

class TemporaryDirectory {
 public:
  TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory();

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

  /// Makes a file and returns its path.
  std::filesystem::path write(const std::string& name, const std::string& content) const;

 private:
  std::filesystem::path path_;
};

}  // namespace kestrel::host
