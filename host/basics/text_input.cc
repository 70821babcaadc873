// By descriptors, since streams lose why a text cannot be read, and some of them even whether.
#include "host/basics/text_input.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>

#include "host/basics/descriptors.h"
#include "host/basics/file_names.h"
#include "host/basics/utf8.h"

namespace kestrel::host {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBlock = 1U << 16;

bool isStandardInput(const fs::path& file) { return file == "-"; }

}  // namespace

TextInput::TextInput(const fs::path& file)
    : name_(isStandardInput(file) ? "the standard input"
                                  : fmt::format("\"{}\"", printable(utf8FromPath(file)))),
      descriptor_(isStandardInput(file) ? kStandardInput : openForReading(file)) {
  if (descriptor_ < 0) {
    fail();
  }
}

TextInput::~TextInput() {
  if (descriptor_ != kStandardInput) {
    closeFile(descriptor_);
  }
}

bool TextInput::takeLine(std::string& line, char end, std::size_t limit) {
  line.clear();
  isLineComplete_ = false;
  bool hasAny = false;
  while (!isLineComplete_ && line.size() <= limit && hasMore()) {
    const std::size_t at = std::min(block_.find(end, used_), block_.size());
    line.append(block_, used_, at - used_);
    isLineComplete_ = at < block_.size();
    used_ = at + (isLineComplete_ ? 1 : 0);
    hasAny = true;
  }
  return hasAny;
}

std::string TextInput::takeRest(std::size_t limit) {
  std::string rest;
  while (rest.size() < limit && hasMore()) {
    const std::size_t count = std::min(block_.size() - used_, limit - rest.size());
    rest.append(block_, used_, count);
    used_ += count;
  }
  return rest;
}

bool TextInput::hasMore() {
  if (used_ < block_.size()) {
    return true;
  }
  block_.resize(kBlock);
  used_ = 0;
  const std::ptrdiff_t count = readSome(descriptor_, block_.data(), kBlock);
  if (count < 0) {
    fail();
  }
  block_.resize(static_cast<std::size_t>(count));
  read_ += block_.size();
  return !block_.empty();
}

void TextInput::fail() const {
  const std::error_code error = lastError();
  const std::string where = read_ == 0 ? "" : fmt::format(" beyond its first {} bytes", read_);
  throw InputError(fmt::format("{} cannot be read{}: {}", name_, where, error.message()));
}

}  // namespace kestrel::host
