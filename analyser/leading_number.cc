// Digits are gathered below zero, because the negative range of 64 bits is the larger one: so the
// smallest number needs no case of its own.
#include "analyser/leading_number.h"

#include <limits>

namespace kestrel {

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();

bool isSpace(wchar_t c) { return c == L' ' || (c >= L'\t' && c <= L'\r'); }

bool isDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }

// The negated value of the digits at the front of the text, kLowest when it is below that.
std::int64_t negatedDigits(std::wstring_view text) {
  std::int64_t value = 0;
  for (const wchar_t c : text) {
    if (!isDigit(c)) break;
    const std::int64_t digit = c - L'0';
    if (value < kLowest / 10 || (value == kLowest / 10 && digit > -(kLowest % 10))) return kLowest;
    value = value * 10 - digit;
  }
  return value;
}

}  // namespace

std::int64_t leadingNumber(std::wstring_view text) noexcept {
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  const bool negative = !text.empty() && text.front() == L'-';
  if (negative || (!text.empty() && text.front() == L'+')) text.remove_prefix(1);
  const std::int64_t negated = negatedDigits(text);
  if (negative) return negated;
  return negated == kLowest ? std::numeric_limits<std::int64_t>::max() : -negated;
}

}  // namespace kestrel
