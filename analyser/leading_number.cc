// Numbers are accumulated as negative values: the negative range of 64 bits is larger by one, so
// the smallest number needs no special case.
#include "analyser/leading_number.h"

#include <limits>

namespace kestrel {

namespace {

constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();

template <class Char>
bool isSpace(Char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

template <class Char>
bool isDigit(Char c) {
  return c >= '0' && c <= '9';
}

// The negated value of the digits at the start of the text; kLowest if it would be lower.
template <class Char>
std::int64_t negatedDigits(const Char* text) {
  std::int64_t value = 0;
  for (; isDigit(*text); ++text) {
    const std::int64_t digit = *text - '0';
    if (value < (kLowest + digit) / 10) return kLowest;
    value = value * 10 - digit;
  }
  return value;
}

template <class Char>
std::int64_t numberAtFront(const Char* text) {
  while (isSpace(*text)) ++text;
  const bool negative = *text == '-';
  if (negative || *text == '+') ++text;
  const std::int64_t negated = negatedDigits(text);
  if (negative) return negated;
  return negated == kLowest ? std::numeric_limits<std::int64_t>::max() : -negated;
}

}  // namespace

std::int64_t leadingNumber(const wchar_t* text) noexcept { return numberAtFront(text); }
std::int64_t leadingNumber(const char* text) noexcept { return numberAtFront(text); }

}  // namespace kestrel
