// The number at the start of a text, as the track number of a stream is written in its streamId.
#pragma once

#include <cstdint>
#include <string>

namespace kestrel {

/// Reads leading white space (ASCII blank, \t \n \v \f \r), at most one sign, and ASCII digits up
/// to the first other character, of a NUL-terminated text. Saturates at the limits of 64 bits; 0
/// when there is no digit. The same on every platform and in every locale.
std::int64_t leadingNumber(const wchar_t* text) noexcept;
std::int64_t leadingNumber(const char* text) noexcept;

inline std::int64_t leadingNumber(const std::wstring& text) noexcept {
  return leadingNumber(text.c_str());
}

}  // namespace kestrel
