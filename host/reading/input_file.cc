#include "host/reading/input_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "host/basics/descriptors.h"
#include "host/reading/media_facts.h"

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

// The look before the file is opened: to open a pipe would wait for its writer.
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

int opened(const fs::path& file) {
  checkType(file);
  const int descriptor = openForReading(file);
  if (descriptor < 0) {
    throw NotExamined("no-permission", "cannot be opened for reading");
  }
  return descriptor;
}

[[noreturn]] void failToRead(const std::string& why) {
  throw NotExamined("read-error", "cannot be read to its end: " + why);
}

}  // namespace

InputFile::InputFile(const fs::path& file) : descriptor_(opened(file)) {
  struct stat status {};
  if (::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
  }
  if (size_ == 0) {
    ::close(descriptor_);
    throw NotExamined("empty", "empty");
  }
}

InputFile::~InputFile() { ::close(descriptor_); }

std::size_t InputFile::read(std::span<std::uint8_t> buffer, std::uint64_t offset) const {
  const std::uint64_t rest = offset < size_ ? size_ - offset : 0;
  buffer = buffer.first(static_cast<std::size_t>(std::min<std::uint64_t>(rest, buffer.size())));
  for (std::size_t done = 0; done < buffer.size();) {
    const ssize_t count = ::pread(descriptor_, buffer.data() + done, buffer.size() - done,
                                  static_cast<off_t>(offset + done));
    if (count == 0) {
      failToRead("it has become shorter");
    }
    if (count < 0 && errno != EINTR) {
      failToRead(std::generic_category().message(errno));
    }
    done += count > 0 ? static_cast<std::size_t>(count) : 0;
  }
  return buffer.size();
}

}  // namespace kestrel::host
