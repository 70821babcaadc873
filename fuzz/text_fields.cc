#include "fuzz/text_fields.h"

#include <charconv>
#include <limits>
#include <system_error>

namespace kestrel::fuzz {
namespace {

std::string_view takeUpTo(std::string_view& text, char separator) {
  std::size_t end = 0;
  while (end < text.size() && text[end] != separator) end += text[end] == '\\' ? 2U : 1U;
  const std::string_view taken = text.substr(0, end);
  text.remove_prefix(taken.size());
  if (!text.empty()) text.remove_prefix(1);
  return taken;
}

}  // namespace

std::string_view takeLine(std::string_view& text) { return takeUpTo(text, '\n'); }

std::string_view takeField(std::string_view& line) { return takeUpTo(line, '|'); }

std::string unescaped(std::string_view field) {
  std::string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    const bool isEscape = field[i] == '\\' && i + 1 < field.size();
    if (isEscape) ++i;
    text += isEscape && field[i] == 'n' ? '\n' : field[i];
  }
  return text;
}

std::string escaped(std::string_view text) {
  std::string field;
  for (const char c : text) {
    if (c == '\\' || c == '|' || c == '\n') field += '\\';
    field += c == '\n' ? 'n' : c;
  }
  return field;
}

std::string upToNul(const std::string& text) { return text.substr(0, text.find('\0')); }

std::int64_t numberOf(std::string_view field) {
  std::int64_t number = 0;
  const auto read = std::from_chars(field.data(), field.data() + field.size(), number);
  if (read.ec != std::errc::result_out_of_range) return number;
  using Limits = std::numeric_limits<std::int64_t>;
  return field.front() == '-' ? Limits::min() : Limits::max();
}

std::int32_t numberOf32(std::string_view field) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(numberOf(field)));
}

}  // namespace kestrel::fuzz
