// The texts that hosts pass are NUL-terminated; NULL counts as an empty text.
#pragma once

#include <string_view>

namespace kestrel {

template <class Char>
constexpr std::basic_string_view<Char> viewOf(const Char* text) {
  return text == nullptr ? std::basic_string_view<Char>{} : std::basic_string_view<Char>{text};
}

}  // namespace kestrel
