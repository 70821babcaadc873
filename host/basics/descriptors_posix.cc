#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "host/basics/descriptors.h"

namespace kestrel::host {
namespace {

constexpr mode_t kForTheOwner = 0600;
constexpr mode_t kForAll = 0666;  // less the user's umask
constexpr mode_t kPermissions = 0777;

template <typename Call>
auto again(const Call& call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

std::error_code errorUnless(bool isGood) { return isGood ? std::error_code{} : lastError(); }

// Another group than before gets no rights from it.
void takeOwnerAndMode(int descriptor, const struct stat& model) {
  constexpr mode_t kOfTheGroup = 0070;
  mode_t mode = model.st_mode & kPermissions;
  const bool isOwned = ::fchown(descriptor, model.st_uid, model.st_gid) == 0;
  if (!isOwned && ::fchown(descriptor, static_cast<uid_t>(-1), model.st_gid) != 0) {
    mode &= ~kOfTheGroup;
  }
  [[maybe_unused]] const int ignored = ::fchmod(descriptor, mode);
}

}  // namespace

std::error_code lastError() { return {errno, std::generic_category()}; }

int openForReading(const std::filesystem::path& file) {
  return again([&] { return ::open(file.c_str(), O_RDONLY | O_CLOEXEC); });
}

int openForWriting(const std::filesystem::path& file) {
  return again([&] { return ::open(file.c_str(), O_WRONLY | O_CLOEXEC); });
}

int createLike(const std::filesystem::path& file, const std::filesystem::path& model) {
  struct stat status {};
  const bool hasModel = ::stat(model.c_str(), &status) == 0;
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                                hasModel ? kForTheOwner : kForAll);
  if (descriptor >= 0 && hasModel) {
    takeOwnerAndMode(descriptor, status);
  }
  return descriptor;
}

std::ptrdiff_t readSome(int descriptor, char* buffer, std::size_t size) {
  return again([&] { return ::read(descriptor, buffer, size); });
}

// A write that a full disk cuts short is followed by one that says why.
std::error_code writeAll(int descriptor, std::string_view content) {
  while (!content.empty()) {
    const ssize_t count =
        again([&] { return ::write(descriptor, content.data(), content.size()); });
    if (count < 0) {
      return lastError();
    }
    content.remove_prefix(static_cast<std::size_t>(count));
  }
  return {};
}

// A file system that cannot do it says so by EINVAL.
std::error_code synchronise(int descriptor) {
  return errorUnless(again([&] { return ::fsync(descriptor); }) == 0 || errno == EINVAL);
}

// Linux has closed it even when it was interrupted.
std::error_code closeFile(int descriptor) {
  return errorUnless(::close(descriptor) == 0 || errno == EINTR);
}

// The system asks the file system at the end of each copy.
std::error_code tryClosing(int descriptor) {
  const int copy = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  return copy < 0 ? lastError() : closeFile(copy);
}

}  // namespace kestrel::host
