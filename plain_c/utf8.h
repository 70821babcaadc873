// Strict UTF-8, as the texts of the plain C interface are written in.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kestrel {

/// The 0-based position of the first byte that does not belong to a well-formed character (overlong
/// forms, surrogates and code points past U+10FFFF are not well-formed); nothing when all do.
std::optional<std::size_t> firstBadByte(std::string_view text) noexcept;

}  // namespace kestrel
