// A text that is read from a file or from the standard input, piece by piece. An error while it is
// read is never taken for its end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <stdexcept>
#include <string>

namespace kestrel::host {

/// A text cannot be read to its end; what() says which, up to where and why.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class TextInput {
 public:
  /// @param file  "-": the standard input. Raises InputError when it cannot be opened
  explicit TextInput(const std::filesystem::path& file);
  TextInput(const TextInput&) = delete;
  TextInput& operator=(const TextInput&) = delete;
  ~TextInput();

  /// Takes what stands before the next `end`, and that; the last line needs none. Of a line that is
  /// longer than `limit` bytes it takes more than that, but not the whole. False at the end of the
  /// text. Raises InputError.
  bool takeLine(std::string& line, char end = '\n',
                std::size_t limit = std::numeric_limits<std::size_t>::max());

  /// Whether the line that was taken last has its end.
  bool isLineComplete() const { return isLineComplete_; }

  /// Takes what is left, but no more than that many bytes. Raises InputError.
  std::string takeRest(std::size_t limit);

 private:
  bool hasMore();
  [[noreturn]] void fail() const;

  std::string name_;
  int descriptor_;
  std::string block_;
  std::size_t used_ = 0;  ///< of the block
  std::uintmax_t read_ = 0;
  bool isLineComplete_ = false;
};

}  // namespace kestrel::host
