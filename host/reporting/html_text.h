// Any text as the text of a page.
#pragma once

#include <string>
#include <string_view>

namespace kestrel::host {

/// Safe in elements and in quoted attributes. What cannot be seen, control characters and those
/// that have no width or turn the direction of writing, is shown by its number: "[U+000A]". Text
/// that is not UTF-8 is shown as printable() has it.
std::string htmlText(std::string_view text);

}  // namespace kestrel::host
