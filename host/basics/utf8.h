// Between UTF-8, the host's own form of text, and the wide texts of the library's records and of
// libmediainfo. No locale takes part.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kestrel::host {

/// Nothing when the text is not UTF-8.
std::optional<std::wstring> wideFromUtf8(std::string_view text);

/// A character that has no UTF-8 form becomes U+FFFD.
std::string utf8FromWide(std::wstring_view text);

/// The text on one line: control characters, quotes and bytes that are not UTF-8 are escaped.
std::string printable(std::string_view text);

}  // namespace kestrel::host
