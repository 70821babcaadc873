#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "host/basics/descriptors.h"

namespace kestrel::host {
namespace {

constexpr std::size_t kLongestStep = 1U << 20;
constexpr int kOwn = _O_BINARY | _O_NOINHERIT;

std::error_code errorUnless(bool isGood) { return isGood ? std::error_code{} : lastError(); }

unsigned step(std::size_t size) { return static_cast<unsigned>(std::min(size, kLongestStep)); }

}  // namespace

std::error_code lastError() { return {errno, std::generic_category()}; }

int openForReading(const std::filesystem::path& file) {
  return ::_wopen(file.c_str(), _O_RDONLY | kOwn);
}

int openForWriting(const std::filesystem::path& file) {
  return ::_wopen(file.c_str(), _O_WRONLY | kOwn);
}

// Who may do what with a file follows from its folder.
int createLike(const std::filesystem::path& file, const std::filesystem::path& /*model*/) {
  return ::_wopen(file.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | kOwn, _S_IREAD | _S_IWRITE);
}

std::ptrdiff_t readSome(int descriptor, char* buffer, std::size_t size) {
  return ::_read(descriptor, buffer, step(size));
}

std::error_code writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const int count = ::_write(descriptor, content.data(), step(content.size()));
    if (count < 0) {
      return lastError();
    }
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return {};
}

std::error_code synchronise(int descriptor) { return errorUnless(::_commit(descriptor) == 0); }

std::error_code closeFile(int descriptor) { return errorUnless(::_close(descriptor) == 0); }

std::error_code tryClosing(int descriptor) {
  const int copy = ::_dup(descriptor);
  return copy < 0 ? lastError() : closeFile(copy);
}

}  // namespace kestrel::host
