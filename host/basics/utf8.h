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

/// What cannot be seen or would steer a terminal: controls, line and paragraph separators, those
/// that turn the direction of writing, those without width.
bool isUnseen(char32_t character);

/// The text with each character that isUnseen(), and each byte that is not UTF-8, written as an
/// escape: "\x1b", "\u202e". Every text on its way to a terminal goes through it, at the latest in
/// text_columns.h and in printMessage(). Doing it twice changes nothing.
std::string visible(std::string_view text);

/// A name or another text of a file within quotes: visible(), and quotes and backslashes are
/// escaped too, so that its end is plain.
std::string printable(std::string_view text);

}  // namespace kestrel::host
