// Loaded before the libraries of a program, it lets calls fail that a good disk never refuses. The
// variables say which, and for what:
//
// KESTREL_FAIL_FILE   the end of the name of the file
// KESTREL_FAIL_CALL   read, fsync or close
// KESTREL_FAIL_AFTER  the bytes that are read before the first failure
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

std::string_view variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// What is loaded so early must not throw, hence no std::filesystem.
bool isToFail(std::string_view call, int descriptor) {
  if (variable("KESTREL_FAIL_CALL") != call) {
    return false;
  }
  std::array<char, 32> link{};
  std::array<char, 4096> name{};
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", descriptor);
  const ssize_t length = ::readlink(link.data(), name.data(), name.size());
  return length > 0 && std::string_view(name.data(), static_cast<std::size_t>(length))
                           .ends_with(variable("KESTREL_FAIL_FILE"));
}

int failWith(int error) {
  errno = error;
  return -1;
}

}  // namespace

extern "C" {

ssize_t read(int descriptor, void* buffer, size_t size) {
  static std::size_t left = std::strtoul(variable("KESTREL_FAIL_AFTER").data(), nullptr, 10);
  if (!isToFail("read", descriptor)) {
    return ::syscall(SYS_read, descriptor, buffer, size);
  }
  if (left == 0) {
    return failWith(EIO);
  }
  const ssize_t count = ::syscall(SYS_read, descriptor, buffer, std::min(size, left));
  left -= static_cast<std::size_t>(std::max<ssize_t>(count, 0));
  return count;
}

int fsync(int descriptor) {
  return isToFail("fsync", descriptor) ? failWith(EIO)
                                       : static_cast<int>(::syscall(SYS_fsync, descriptor));
}

// As a network file system says that a quota is full: the descriptor is closed all the same.
int close(int descriptor) {
  const bool fails = isToFail("close", descriptor);
  const int result = static_cast<int>(::syscall(SYS_close, descriptor));
  return fails ? failWith(EDQUOT) : result;
}
}
