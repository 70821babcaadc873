// UTF-8 in its plain, slow form, for tests to compare the library with and to make texts of: a
// character is well-formed when writing it anew gives the same bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kestrel::plain {

/// Writes a character by its number, whatever it is, behind the text.
void appendUtf8(std::string& text, std::uint32_t code);

/// The 0-based position of the first byte that belongs to no well-formed character.
std::optional<std::size_t> firstBadByte(std::string_view text);

/// The wide form, of any bytes: one that belongs to no well-formed character becomes the character
/// of its number.
std::wstring widened(std::string_view text);

/// A wide character is a whole character or, where it has two bytes, half of a pair.
std::string toUtf8(const std::wstring& wide);

}  // namespace kestrel::plain
