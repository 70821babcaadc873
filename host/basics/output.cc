#include "host/basics/output.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <memory>
#include <random>
#include <system_error>

#include "host/basics/file_names.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file, const std::error_code& error) {
  throw OutputError(fmt::format("the result cannot be written to \"{}\": {}",
                                printable(utf8FromPath(file)), error.message()));
}

std::error_code lastError() { return {errno, std::generic_category()}; }

struct Close {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Nothing on success.
std::error_code writeAll(std::FILE* file, std::string_view content) {
  errno = 0;
  const bool isWritten = std::fwrite(content.data(), 1, content.size(), file) == content.size();
  return isWritten && std::fflush(file) == 0 ? std::error_code{} : lastError();
}

std::FILE* openForWriting(const fs::path& file) {
#if defined(_WIN32)
  return ::_wfopen(file.c_str(), L"wb");
#else
  return std::fopen(file.c_str(), "wbe");
#endif
}

void writeDirectly(const fs::path& target, const fs::path& named, std::string_view content) {
  const std::unique_ptr<std::FILE, Close> file(openForWriting(target));
  const std::error_code error = file ? writeAll(file.get(), content) : lastError();
  if (error) {
    fail(named, error);
  }
}

// A name beside the file that no one else takes.
fs::path temporaryBeside(const fs::path& file) {
  std::random_device random;
  fs::path beside = file;
  beside += fmt::format(".kestrel-{:08x}.tmp", random());
  return beside;
}

bool isToBeReplaced(const fs::path& file) {
  std::error_code error;
  const fs::file_type type = fs::status(file, error).type();
  return type == fs::file_type::regular || type == fs::file_type::not_found;
}

}  // namespace

void writeWholeFile(const fs::path& file, std::string_view content) {
  if (!isToBeReplaced(file)) {
    writeDirectly(file, file, content);
    return;
  }
  std::error_code error;
  const fs::path real = fs::weakly_canonical(file, error);  // a link keeps leading to the file
  const fs::path target = error ? file : real;
  const fs::path temporary = temporaryBeside(target);
  try {
    writeDirectly(temporary, file, content);
  } catch (const OutputError&) {
    fs::remove(temporary, error);
    throw;
  }
  fs::rename(temporary, target, error);
  if (error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
    fail(file, error);
  }
}

void writeResult(const std::string& file, std::string_view content) {
  if (!file.empty()) {
    writeWholeFile(pathFromUtf8(file), content);
  } else if (writeAll(stdout, content)) {
    throw OutputError("the result cannot be written to the standard output");
  }
}

void printMessage(const std::string& text) { fmt::print(stderr, "kestrel: {}\n", visible(text)); }

void printFileMessage(const std::string& name, const std::string& why) {
  printMessage(fmt::format("\"{}\": {}", printable(name), why));
}

}  // namespace kestrel::host
