// The number at the start of a text, such as the track number in a streamId.
#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

/// Reads leading white space (ASCII blank, \t \n \v \f \r), at most one sign, and ASCII digits up
/// to the first other character. The text is NUL-terminated. Saturates at the limits of 64 bits; 0
/// if there is no digit. The result does not depend on platform or locale.
std::int64_t leadingNumber(const wchar_t* text) noexcept;
std::int64_t leadingNumber(const char* text) noexcept;

inline std::int64_t leadingNumber(const std::wstring& text) noexcept {
  return leadingNumber(text.c_str());
}

}  // namespace kestrel
