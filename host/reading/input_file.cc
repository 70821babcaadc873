#include "host/reading/input_file.h"

#include <fstream>
#include <system_error>

#include "host/reading/not_examined.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void rejectMissing(const fs::path& file) {
  std::error_code ignored;
  const bool isLink = fs::is_symlink(fs::symlink_status(file, ignored));
  if (isLink) {
    throw NotExamined("dangling-link", "a link to a file that does not exist");
  }
  throw NotExamined("no-such-file", "no such file");
}

void checkType(const fs::path& file) {
  std::error_code error;
  switch (fs::status(file, error).type()) {
    case fs::file_type::regular:
      return;
    case fs::file_type::not_found:
      rejectMissing(file);
    case fs::file_type::directory:
      throw NotExamined("directory", "a directory, not a file");
    case fs::file_type::none:
    case fs::file_type::unknown:
      throw NotExamined("unreachable", "cannot be reached: " + error.message());
    default:
      throw NotExamined("not-a-regular-file", "a pipe or a device, not a regular file");
  }
}

}  // namespace

void checkInputFile(const fs::path& file) {
  checkType(file);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw NotExamined("no-permission", "cannot be opened for reading");
  }
  if (stream.peek() == std::ifstream::traits_type::eof()) {
    throw NotExamined("empty", "empty, or cannot be read");
  }
}

}  // namespace kestrel::host
