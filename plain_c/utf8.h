// Strict UTF-8, the encoding of the texts of the plain C interface.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrel {

/// The 0-based position of the first byte that does not belong to a well-formed character; nothing
/// if there is none. Overlong forms, surrogates and code points above U+10FFFF are not well-formed.
std::optional<std::size_t> firstBadByte(std::string_view text) noexcept;

}  // namespace kestrel
