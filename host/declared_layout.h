// The layout that a file's AS-11 metadata declares.
#pragma once

#include <optional>
#include <string_view>

namespace kestrel::host {

/// The EBU R 123 code in a declaration: "8b" of "EBU R 123: 8b". Nothing for another vocabulary:
/// EBU R 48 has codes that look alike and mean something else.
inline std::optional<std::string_view> declaredR123Code(std::string_view declaration) {
  constexpr std::string_view kPrefix = "EBU R 123: ";
  if (!declaration.starts_with(kPrefix)) {
    return std::nullopt;
  }
  return declaration.substr(kPrefix.size());
}

}  // namespace kestrel::host
