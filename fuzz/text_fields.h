// Inputs of several parts are texts of lines and fields, so that a corpus can be read and reviewed
// and a dictionary applies to it. Any bytes are an input: what is missing is empty, or 0.
//
//   text  = line {"\n" line}
//   line  = field {"|" field}
//   A "\" takes the meaning of a separator from the byte behind it; "\n" (two bytes) is a newline.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kestrel::fuzz {

/// Takes a line, or a field of a line, off the front, with its separator.
std::string_view takeLine(std::string_view& text);
std::string_view takeField(std::string_view& line);

/// A field without its escapes, and with them.
std::string unescaped(std::string_view field);
std::string escaped(std::string_view text);

/// A text as it arrives where texts end at their first NUL.
std::string upToNul(const std::string& text);

/// The decimal number that a field begins with, its sign included; saturates, then wraps in 32
/// bits.
std::int64_t numberOf(std::string_view field);
std::int32_t numberOf32(std::string_view field);

}  // namespace kestrel::fuzz
