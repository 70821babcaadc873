// Small steps of reading and rewriting texts.
#pragma once

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace kestrel::host {

/// Takes a decimal number without sign from the front of the text. Nothing is taken when there is
/// none or when it does not fit.
template <typename Number>
std::optional<Number> takeNumber(std::string_view& text) {
  if (text.empty() || text.front() < '0' || text.front() > '9') {
    return std::nullopt;
  }
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{}) {
    return std::nullopt;
  }
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return value;
}

/// Takes the given text from the front; false when the text does not begin with it.
inline bool takeText(std::string_view& text, std::string_view wanted) {
  if (!text.starts_with(wanted)) {
    return false;
  }
  text.remove_prefix(wanted.size());
  return true;
}

/// The number that the text begins with: 6 of "6 / 2".
template <typename Number>
std::optional<Number> leadingNumber(std::string_view text) {
  return takeNumber<Number>(text);
}

/// The parts between blanks; a run of blanks is one separator.
std::vector<std::string_view> splitAtBlanks(std::string_view text);

/// ASCII letters alone change.
constexpr char lowerCase(char letter) {
  return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The text with a blank for each control character.
std::string onOneLine(std::string text);

}  // namespace kestrel::host
