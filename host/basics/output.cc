#include "host/basics/output.h"

#include <fmt/format.h>

#include <cstdio>
#include <random>
#include <system_error>

#include "host/basics/descriptors.h"
#include "host/basics/file_names.h"
#include "host/basics/usage_error.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const fs::path& file, const std::error_code& error) {
  throw OutputError(fmt::format("the result cannot be written to \"{}\": {}",
                                printable(utf8FromPath(file)), error.message()));
}

std::error_code writeInPlace(const fs::path& file, std::string_view content) {
  const int descriptor = openForWriting(file);
  if (descriptor < 0) {
    return lastError();
  }
  const std::error_code error = writeAll(descriptor, content);
  const std::error_code closing = closeFile(descriptor);
  return error ? error : closing;
}

// A name in the folder of the file that no one else takes; it is short, whatever the file's is.
fs::path temporaryBeside(const fs::path& file) {
  std::random_device random;
  return file.parent_path() / fmt::format(".kestrel-{:08x}{:08x}.tmp", random(), random());
}

std::error_code fill(int descriptor, std::string_view content) {
  std::error_code error = writeAll(descriptor, content);
  if (!error) {
    error = synchronise(descriptor);
  }
  const std::error_code closing = closeFile(descriptor);
  return error ? error : closing;
}

std::error_code replace(const fs::path& target, std::string_view content) {
  const fs::path temporary = temporaryBeside(target);
  const int descriptor = createLike(temporary, target);
  if (descriptor < 0) {
    return lastError();
  }
  std::error_code error = fill(descriptor, content);
  if (!error) {
    fs::rename(temporary, target, error);
  }
  if (error) {
    std::error_code ignored;
    fs::remove(temporary, ignored);
  }
  return error;
}

bool isToBeReplaced(const fs::path& file) {
  std::error_code error;
  const fs::file_type type = fs::status(file, error).type();
  return type == fs::file_type::regular || type == fs::file_type::not_found;
}

// A link keeps leading to its file.
fs::path behindLinks(const fs::path& file) {
  std::error_code error;
  const fs::path real = fs::weakly_canonical(file, error);
  return error ? file : real;
}

std::error_code writeStandardOutput(std::string_view content) {
  const std::error_code error = writeAll(kStandardOutput, content);
  return error ? error : tryClosing(kStandardOutput);
}

// Where there is no output yet only its place tells, and the inputs need not be asked for.
bool isOneFile(const fs::path& output, const fs::path& input) {
  std::error_code error;
  switch (fs::status(output, error).type()) {
    case fs::file_type::regular:
      return fs::equivalent(output, input, error);
    case fs::file_type::not_found:
      return placeOf(output) == placeOf(input);
    default:
      return false;
  }
}

}  // namespace

void requireOtherFile(const fs::path& output, const std::string& input) {
  constexpr char kStandardInputFile[] = "/dev/stdin";
  const fs::path read = input == "-" ? fs::path(kStandardInputFile) : pathFromUtf8(input);
  if (!input.empty() && isOneFile(output, read)) {
    throw UsageError(fmt::format("\"{}\" is itself an input: give -o another name",
                                 printable(utf8FromPath(output))));
  }
}

void writeWholeFile(const fs::path& file, std::string_view content) {
  const std::error_code error =
      isToBeReplaced(file) ? replace(behindLinks(file), content) : writeInPlace(file, content);
  if (error) {
    fail(file, error);
  }
}

void writeResult(const std::string& file, std::string_view content) {
  if (!file.empty() && file != "-") {
    return writeWholeFile(pathFromUtf8(file), content);
  }
  if (const std::error_code error = writeStandardOutput(content)) {
    throw OutputError("the result cannot be written to the standard output: " + error.message());
  }
}

void printText(const std::string& text) { std::fputs(text.c_str(), stderr); }

void printMessage(const std::string& text) {
  printText(fmt::format("kestrel: {}\n", visible(text)));
}

void printFileMessage(const std::string& name, const std::string& why) {
  printMessage(fmt::format("\"{}\": {}", printable(name), why));
}

}  // namespace kestrel::host
