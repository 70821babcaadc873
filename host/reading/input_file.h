// The file that is examined: opened once, and from then on known by its descriptor alone.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace kestrel::host {

class InputFile {
 public:
  /// Raises NotExamined unless the path leads to a regular, readable file that is not empty. May
  /// wait as long as the system does, for a lease or a network.
  explicit InputFile(const std::filesystem::path& file);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  int descriptor() const { return descriptor_; }
  std::uint64_t size() const { return size_; }  ///< in bytes, as it was when the file was opened

  /// Fills the buffer from this offset on, or up to the end of the file, and returns the number of
  /// bytes. Raises NotExamined when the file cannot be read there or has become shorter.
  std::size_t read(std::span<std::uint8_t> buffer, std::uint64_t offset) const;

 private:
  int descriptor_;
  std::uint64_t size_ = 0;
};

}  // namespace kestrel::host
