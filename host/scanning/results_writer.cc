#include "host/scanning/results_writer.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <system_error>

#include "host/basics/descriptors.h"
#include "host/basics/file_names.h"
#include "host/basics/output.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

constexpr mode_t kMode = 0666;  // less the user's umask

// The lock is one of the process: a reader that is just being forked does not share it, so it ends
// with the scan, however that ends. But it also ends when the process closes any other descriptor
// of the file, so it is taken again whenever the file was or may have been read meanwhile. Another
// process that holds it is told at once; a file system without locks has none.
bool isLockedByAnother(int descriptor) {
  struct flock whole {};
  whole.l_type = F_WRLCK;
  whole.l_whence = SEEK_SET;
  return ::fcntl(descriptor, F_SETLK, &whole) != 0 && (errno == EAGAIN || errno == EACCES);
}

off_t sizeOf(int descriptor) {
  struct stat status {};
  return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : -1;
}

// Should this fail too, the torn line is found by the reader of the file.
void takeBack(int descriptor, off_t size) {
  if (size >= 0) {
    [[maybe_unused]] const int ignored = ::ftruncate(descriptor, size);
  }
}

}  // namespace

ResultsWriter::ResultsWriter() : name_("the standard output"), descriptor_(STDOUT_FILENO) {}

ResultsWriter::ResultsWriter(const std::filesystem::path& file)
    : name_(fmt::format("\"{}\"", printable(utf8FromPath(file)))),
      descriptor_(::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, kMode)) {
  if (descriptor_ < 0) {
    fail(lastError());
  }
  if (isLockedByAnother(descriptor_)) {
    ::close(descriptor_);
    refuse();
  }
  size_ = sizeOf(descriptor_);
}

ResultsWriter::~ResultsWriter() {
  if (descriptor_ != STDOUT_FILENO) {
    ::close(descriptor_);
  }
}

void ResultsWriter::fail(const std::error_code& error) const {
  throw OutputError(fmt::format("{} cannot be written: {}", name_, error.message()));
}

void ResultsWriter::refuse() const { throw OutputError(name_ + ": another scan is writing to it"); }

void ResultsWriter::keepLocked() const {
  if (descriptor_ != STDOUT_FILENO && isLockedByAnother(descriptor_)) {
    refuse();
  }
}

void ResultsWriter::mend(const ResultsEnd& end) {
  keepLocked();
  if (sizeOf(descriptor_) != size_) {
    refuse();
  }
  if (end.isTorn && ::ftruncate(descriptor_, static_cast<off_t>(end.size)) != 0) {
    fail(lastError());
  }
  if (end.lacksNewline) {
    write("\n");
  }
}

void ResultsWriter::append(const std::string& line) {
  keepLocked();
  write(line + "\n");
}

void ResultsWriter::clear() {
  keepLocked();
  if (size_ > 0 && ::ftruncate(descriptor_, 0) != 0) {
    fail(lastError());
  }
}

void ResultsWriter::finish() {
  std::error_code error = size_ < 0 ? std::error_code{} : synchronise(descriptor_);
  if (!error) {
    error = tryClosing(descriptor_);
  }
  if (error) {
    fail(error);
  }
}

void ResultsWriter::write(std::string_view text) {
  const off_t before = sizeOf(descriptor_);
  if (const std::error_code error = writeAll(descriptor_, text)) {
    takeBack(descriptor_, before);
    fail(error);
  }
}

}  // namespace kestrel::host
